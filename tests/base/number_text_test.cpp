#include "base/number_text.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>

namespace gc40 {
namespace {

std::string printfFixed(double value, int decimals) {
  char buffer[512];
  std::snprintf(buffer, sizeof buffer, "%.*f", decimals, value);
  return buffer;
}

TEST(NumberText, FixedFormattingMatchesPrintfInTheCLocale) {
  ASSERT_NE(std::setlocale(LC_NUMERIC, "C"), nullptr);
  std::mt19937_64 random(42);
  std::uniform_real_distribution<double> magnitude(-12.0, 12.0);
  for (int i = 0; i < 20000; ++i) {
    const double value = std::pow(10.0, magnitude(random)) * (i % 2 ? -1.0 : 1.0);
    const float narrowed = static_cast<float>(value);
    ASSERT_EQ(formatFixed(value, 6), printfFixed(value, 6)) << value;
    ASSERT_EQ(formatFixed(narrowed, 6), printfFixed(narrowed, 6)) << narrowed;
    ASSERT_EQ(formatFixed(value, 3), printfFixed(value, 3)) << value;
  }
  for (const double special :
       {0.0, -0.0, 0.5, 2.5, 1e300, -std::numeric_limits<double>::max(),
        std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_EQ(formatFixed(special, 6), printfFixed(special, 6)) << special;
  }
}

TEST(NumberText, DecimalPrefixReadsLikeStrtod) {
  EXPECT_DOUBLE_EQ(parseDecimalPrefix("  12.5abc"), 12.5);
  EXPECT_DOUBLE_EQ(parseDecimalPrefix("\t-0.5e1x"), -5.0);
  EXPECT_DOUBLE_EQ(parseDecimalPrefix("+3"), 3.0);
  EXPECT_DOUBLE_EQ(parseDecimalPrefix(".25"), 0.25);
  EXPECT_DOUBLE_EQ(parseDecimalPrefix("7."), 7.0);
  EXPECT_EQ(parseDecimalPrefix("abc"), 0.0);
  EXPECT_EQ(parseDecimalPrefix(""), 0.0);
  EXPECT_EQ(parseDecimalPrefix("-"), 0.0);
  EXPECT_EQ(parseDecimalPrefix("0x10"), 0.0);  // no hexadecimal
  EXPECT_EQ(parseDecimalPrefix("1,5"), 1.0);   // a comma ends the number
  EXPECT_EQ(parseDecimalPrefix("1e999"), std::numeric_limits<double>::infinity());
  EXPECT_EQ(parseDecimalPrefix("-1e999"), -std::numeric_limits<double>::infinity());
  EXPECT_EQ(parseDecimalPrefix("0.000001e400"), std::numeric_limits<double>::infinity());
  EXPECT_EQ(parseDecimalPrefix("1e-999"), 0.0);
  EXPECT_TRUE(std::signbit(parseDecimalPrefix("-1e-999")));
  EXPECT_TRUE(std::isnan(parseDecimalPrefix("nan")));
  EXPECT_EQ(parseDecimalPrefix("-inf"), -std::numeric_limits<double>::infinity());
  EXPECT_DOUBLE_EQ(parseDecimalPrefix(u" 47.5\u00b0"), 47.5);
}

TEST(NumberText, IntegerPrefixReadsLikeAtoiAndSaturates) {
  EXPECT_EQ(parseIntegerPrefix(" 42xyz"), 42);
  EXPECT_EQ(parseIntegerPrefix("-17"), -17);
  EXPECT_EQ(parseIntegerPrefix("3.9"), 3);
  EXPECT_EQ(parseIntegerPrefix("x12"), 0);
  EXPECT_EQ(parseIntegerPrefix("99999999999999999999"), std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(parseIntegerPrefix("-2147483648"), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(parseIntegerPrefix("-99999999999"), std::numeric_limits<std::int32_t>::min());
}

TEST(NumberText, ConversionsAreDefinedForEveryDouble) {
  const double inf = std::numeric_limits<double>::infinity();
  EXPECT_EQ(truncateToInt32(-2.7), -2);
  EXPECT_EQ(truncateToInt32(std::nan("")), 0);
  EXPECT_EQ(truncateToInt32(inf), std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(truncateToInt32(-1e30), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(narrowToFloat(1e300), std::numeric_limits<float>::infinity());
  EXPECT_EQ(narrowToFloat(-1e300), -std::numeric_limits<float>::infinity());
  EXPECT_EQ(narrowToFloat(0.2), 0.2f);
  EXPECT_TRUE(std::isnan(narrowToFloat(std::nan(""))));
}

}  // namespace
}  // namespace gc40
