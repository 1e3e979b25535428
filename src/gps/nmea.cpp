#include "gps/nmea.h"

#include <limits>
#include <string>

namespace gc40 {
namespace {

int hexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

bool isCSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// strtoul(text, nullptr, 16) with a 32-bit unsigned long, so a checksum field
// reads the same on every machine: white space, a sign, an optional "0x",
// then hex digits; overflow gives the largest value and a minus sign negates
// modulo 2^32.
std::uint32_t readHexLikeStrtoul(std::string_view text) {
  std::size_t at = 0;
  while (at < text.size() && isCSpace(text[at])) ++at;
  bool negative = false;
  if (at < text.size() && (text[at] == '+' || text[at] == '-')) negative = text[at++] == '-';
  if (at + 2 < text.size() && text[at] == '0' && (text[at + 1] == 'x' || text[at + 1] == 'X') &&
      hexDigit(text[at + 2]) >= 0) {
    at += 2;
  }
  std::uint64_t value = 0;
  bool overflow = false;
  for (; at < text.size() && hexDigit(text[at]) >= 0; ++at) {
    value = value * 16 + static_cast<std::uint64_t>(hexDigit(text[at]));
    if (value > std::numeric_limits<std::uint32_t>::max()) overflow = true, value = 0;
  }
  if (overflow) return std::numeric_limits<std::uint32_t>::max();
  const auto result = static_cast<std::uint32_t>(value);
  return negative ? 0u - result : result;
}

}  // namespace

std::uint8_t nmeaChecksum(std::string_view line) {
  std::uint8_t sum = 0;
  for (std::size_t i = 1; i < line.size() && line[i] != '*'; ++i)
    sum ^= static_cast<std::uint8_t>(line[i]);
  return sum;
}

bool nmeaChecksumValid(std::string_view line) {
  const std::size_t star = line.rfind('*');
  if (star == std::string_view::npos) return false;
  return readHexLikeStrtoul(line.substr(star + 1)) == nmeaChecksum(line);
}

std::optional<std::string_view> getField(std::string_view text, int n, char separator) {
  if (n < 1) return std::nullopt;
  std::size_t start = 0;
  for (int found = 1; found < n; ++found) {
    const std::size_t at = text.find(separator, start);
    if (at == std::string_view::npos) return std::nullopt;
    start = at + 1;
  }
  const std::size_t end = text.find(separator, start);
  return text.substr(start, end == std::string_view::npos ? std::string_view::npos : end - start);
}

std::string nmeaChecksumTail(std::string_view line) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  const std::uint8_t sum = nmeaChecksum(line);
  return {'*', kDigits[sum >> 4], kDigits[sum & 15]};
}

}  // namespace gc40
