#include "base/text_codec.h"

#include <gtest/gtest.h>

namespace gc40 {
namespace {

TEST(TextCodec, EveryByteSurvivesTheRoundTrip) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte)
    all.push_back(static_cast<char>(byte));
  EXPECT_EQ(wideToWindows1252(windows1252ToWide(all)), all);
  EXPECT_EQ(windows1252ToWide("\x80\x9f\xe9"), u"\u20ac\u0178\u00e9");
}

TEST(TextCodec, CharactersWithoutAnEightBitFormBecomeOneQuestionMarkEach) {
  EXPECT_EQ(wideToWindows1252(u"Nord \u20ac \u6e2c\u7dda"), "Nord \x80 ??");
  EXPECT_EQ(wideToWindows1252(u"a\U0001F600b"), "a?b");  // a surrogate pair
  EXPECT_EQ(wideToWindows1252(u"a\xd800"), "a?");        // a lone half
}

TEST(TextCodec, LeadingUnitsNeverSplitAPair) {
  EXPECT_EQ(leadingUnits(u"abcdef", 4), u"abcd");
  EXPECT_EQ(leadingUnits(u"abc", 4), u"abc");
  EXPECT_EQ(leadingUnits(u"abc\U0001F600", 4), u"abc");
  EXPECT_EQ(leadingUnits(u"ab\U0001F600", 4), u"ab\U0001F600");
}

}  // namespace
}  // namespace gc40
