#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdio>

#include "base/number_text.h"
#include "base/text_codec.h"

namespace gc40 {
namespace {

// As printf writes them in the C locale, up to the largest double and through
// NaN and infinity.
TEST(NumberText, FixedFormattingMatchesPrintfInTheCLocale) {
  ASSERT_NE(std::setlocale(LC_NUMERIC, "C"), nullptr);
  char printed[512];
  for (const double v : {0.0, -0.0, 2.5e-7, double{0.2f}, -1234567.125, 123456789.5, 1e300,
                         -HUGE_VAL, double{NAN}}) {
    std::snprintf(printed, sizeof printed, "%.6f", v);
    EXPECT_EQ(formatFixed(v, 6), printed);
  }
  for (const long value : {0L, 7L, -7L, -120L, 123456L, -2147483648L}) {
    std::snprintf(printed, sizeof printed, "%05ld", value);
    EXPECT_EQ(formatZeroPadded(value, 5), printed);
    std::snprintf(printed, sizeof printed, "%+05ld", value);
    EXPECT_EQ(formatSignedZeroPadded(value, 5), printed);
  }
}

// Overflow, NaN and infinity from damaged files are covered with the settings file.
TEST(NumberText, ParsingReadsLikeTheCLibrary) {
  using Case = std::pair<const char*, double>;
  for (const auto& [text, value] :
       {Case{"  12.5abc", 12.5}, Case{"\t-0.5e1x", -5.0}, Case{"+.25", 0.25}, Case{"abc", 0.0},
        Case{"0x10", 0.0}, Case{"1,5", 1.0}})
    EXPECT_EQ(parseDecimalPrefix(text), value) << text;
  EXPECT_EQ(parseDecimalPrefix(u" 47.5\u00b0"), 47.5);
  EXPECT_EQ(parseIntegerPrefix(" -42.9xyz"), -42);
}

TEST(TextCodec, EightBitTextRoundTripsAndTheRestBecomesQuestionMarks) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all.push_back(static_cast<char>(byte));
  EXPECT_EQ(wideToWindows1252(windows1252ToWide(all)), all);
  EXPECT_EQ(windows1252ToWide("\x80\x9f\xe9"), u"\u20ac\u0178\u00e9");
  EXPECT_EQ(wideToWindows1252(u"\u6e2c\u7dda a\U0001F600b\xd800"), "?? a?b?");
  EXPECT_EQ(leadingUnits(u"abc\U0001F600", 4), u"abc");  // never half a pair
  EXPECT_EQ(leadingUnits(u"ab\U0001F600", 4), u"ab\U0001F600");
}

// Every width of UTF-8 character, a pair, and half of one.
TEST(TextCodec, WideTextToUtf8) {
  EXPECT_EQ(wideToUtf8(u"a\u00e9\u20ac\U0001F600"), "a\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80");
  EXPECT_EQ(wideToUtf8(u"x\xd800y\xdc00"), "x?y?");
  EXPECT_EQ(utf8ToWide(wideToUtf8(u"LINE \u00c5\u0144 7")), u"LINE \u00c5\u0144 7");
}

}  // namespace
}  // namespace gc40
