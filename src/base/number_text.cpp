#include "base/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace gc40 {
namespace {

bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

bool isDigit(char c) { return c >= '0' && c <= '9'; }

std::string_view skipSpace(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size() && isSpace(text[i])) ++i;
  return text.substr(i);
}

// from_chars leaves the value alone when the number is out of range, where
// strtod gives HUGE_VAL or zero. Tell the two apart by the decimal exponent of
// the first significant digit.
double outOfRangeValue(std::string_view number) {
  std::int64_t digitsBeforePoint = 0;
  std::int64_t leadingZerosAfterPoint = 0;
  bool seenPoint = false;
  bool seenSignificant = false;
  std::size_t i = 0;
  for (; i < number.size(); ++i) {
    const char c = number[i];
    if (c == '.') {
      seenPoint = true;
    } else if (!isDigit(c)) {
      break;
    } else if (!seenSignificant && c == '0') {
      if (seenPoint) ++leadingZerosAfterPoint;
    } else {
      seenSignificant = true;
      if (!seenPoint) ++digitsBeforePoint;
    }
  }
  std::int64_t exponent = 0;
  if (i < number.size() && (number[i] == 'e' || number[i] == 'E')) {
    const std::string_view rest = number.substr(i + 1);
    exponent = parseIntegerPrefix(rest);
  }
  const std::int64_t magnitude =
      exponent + (digitsBeforePoint > 0 ? digitsBeforePoint : -leadingZerosAfterPoint);
  return magnitude > 0 ? std::numeric_limits<double>::infinity() : 0.0;
}

}  // namespace

std::string formatFixed(double value, int decimals) {
  // Enough for the largest double in fixed notation (309 digits) and decimals.
  std::array<char, 400> buffer{};
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                    std::chars_format::fixed, decimals);
  return std::string(buffer.data(), result.ptr);
}

std::u16string formatFixedWide(double value, int decimals) {
  const std::string text = formatFixed(value, decimals);  // ASCII only
  return std::u16string(text.begin(), text.end());
}

std::string formatRoundTrip(double value) {
  char text[32];
  const auto result = std::to_chars(text, text + sizeof text, value);
  return std::string(text, result.ptr);
}

std::string formatInteger(std::int64_t value) {
  std::array<char, 24> buffer{};
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
  return std::string(buffer.data(), result.ptr);
}

std::string formatZeroPadded(std::int64_t value, std::size_t width) {
  std::string text = formatInteger(value);
  const std::size_t sign = value < 0 ? 1 : 0;
  if (text.size() < width) text.insert(sign, width - text.size(), '0');
  return text;
}

std::string formatSignedZeroPadded(std::int64_t value, std::size_t width) {
  if (value < 0) return formatZeroPadded(value, width);
  return "+" + formatZeroPadded(value, width > 0 ? width - 1 : 0);
}

std::string leftAligned(std::string text, std::size_t width) {
  if (text.size() < width) text.append(width - text.size(), ' ');
  return text;
}

std::string rightAligned(std::string text, std::size_t width) {
  if (text.size() < width) text.insert(0, width - text.size(), ' ');
  return text;
}

double parseDecimalPrefix(std::string_view text) {
  text = skipSpace(text);
  bool negative = false;
  if (!text.empty() && (text.front() == '+' || text.front() == '-')) {
    negative = text.front() == '-';
    text.remove_prefix(1);
  }
  // from_chars takes neither a sign here nor hexadecimal, which keeps "0x10"
  // reading as 0: settings files hold decimal numbers only.
  double value = 0.0;
  const auto result =
      std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::general);
  if (result.ec == std::errc::invalid_argument) return 0.0;
  if (result.ec == std::errc::result_out_of_range) value = outOfRangeValue(text);
  return negative ? -value : value;
}

double parseDecimalPrefix(std::u16string_view text) {
  std::string narrow(text.size(), '?');
  std::transform(text.begin(), text.end(), narrow.begin(),
                 [](char16_t c) { return c < 0x80 ? static_cast<char>(c) : '?'; });
  return parseDecimalPrefix(std::string_view(narrow));
}

float parseFloatPrefix(std::u16string_view text) { return narrowToFloat(parseDecimalPrefix(text)); }

std::int32_t parseIntegerPrefix(std::string_view text) {
  text = skipSpace(text);
  bool negative = false;
  if (!text.empty() && (text.front() == '+' || text.front() == '-')) {
    negative = text.front() == '-';
    text.remove_prefix(1);
  }
  constexpr std::int64_t kLimit = std::int64_t{std::numeric_limits<std::int32_t>::max()} + 1;
  std::int64_t magnitude = 0;
  for (std::size_t i = 0; i < text.size() && isDigit(text[i]); ++i) {
    magnitude = std::min(kLimit, magnitude * 10 + (text[i] - '0'));
  }
  const std::int64_t value = negative ? -magnitude : magnitude;
  if (value > std::numeric_limits<std::int32_t>::max())
    return std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(value);
}

std::int32_t truncateToInt32(double value) {
  if (std::isnan(value)) return 0;
  if (value >= 2147483647.0) return std::numeric_limits<std::int32_t>::max();
  if (value <= -2147483648.0) return std::numeric_limits<std::int32_t>::min();
  return static_cast<std::int32_t>(value);
}

float narrowToFloat(double value) {
  constexpr double kMax = std::numeric_limits<float>::max();
  if (value > kMax) return std::numeric_limits<float>::infinity();
  if (value < -kMax) return -std::numeric_limits<float>::infinity();
  return static_cast<float>(value);
}

}  // namespace gc40
