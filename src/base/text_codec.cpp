#include "base/text_codec.h"

#include <array>
#include <cstdint>

namespace gc40 {
namespace {

// Windows-1252 bytes 0x80..0x9F; the undefined ones keep their own value.
constexpr std::array<char16_t, 32> kHighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  //
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,  //
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  //
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char16_t byteToWide(unsigned char byte) {
  if (byte >= 0x80 && byte <= 0x9F) return kHighControls[byte - 0x80];
  return byte;
}

char wideToByte(char16_t c) {
  if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<char>(c);
  for (std::size_t i = 0; i < kHighControls.size(); ++i) {
    if (kHighControls[i] == c) return static_cast<char>(0x80 + i);
  }
  return '?';
}

bool isHighSurrogate(char16_t c) { return c >= 0xD800 && c <= 0xDBFF; }
bool isLowSurrogate(char16_t c) { return c >= 0xDC00 && c <= 0xDFFF; }

}  // namespace

std::u16string windows1252ToWide(std::string_view text) {
  std::u16string wide;
  wide.reserve(text.size());
  for (const char c : text) wide.push_back(byteToWide(static_cast<unsigned char>(c)));
  return wide;
}

std::string wideToWindows1252(std::u16string_view text) {
  std::string narrow;
  narrow.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool pair =
        isHighSurrogate(text[i]) && i + 1 < text.size() && isLowSurrogate(text[i + 1]);
    if (pair) {
      narrow.push_back('?');
      ++i;
    } else {
      narrow.push_back(wideToByte(text[i]));
    }
  }
  return narrow;
}

std::u16string_view leadingUnits(std::u16string_view text, std::size_t maxUnits) {
  if (text.size() <= maxUnits) return text;
  std::size_t length = maxUnits;
  if (length > 0 && isHighSurrogate(text[length - 1])) --length;
  return text.substr(0, length);
}

std::u16string utf8ToWide(std::string_view text) {
  std::u16string wide;
  for (std::size_t i = 0; i < text.size();) {
    const auto lead = static_cast<unsigned char>(text[i]);
    const std::size_t length = lead < 0x80 ? 1 : lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    char32_t code = length == 1 ? lead : lead & (0x3F >> (length - 1));
    bool wellFormed = (lead < 0x80 || lead >= 0xC2) && lead < 0xF5 && i + length <= text.size();
    for (std::size_t k = 1; wellFormed && k < length; ++k) {
      const auto next = static_cast<unsigned char>(text[i + k]);
      wellFormed = (next & 0xC0) == 0x80;
      code = (code << 6) | (next & 0x3F);
    }
    if (!wellFormed) {
      wide.push_back(u'?');
      ++i;
      continue;
    }
    wide.push_back(code < 0x10000 ? static_cast<char16_t>(code) : u'?');
    i += length;
  }
  return wide;
}

std::string wideToUtf8(std::u16string_view text) {
  std::string utf8;
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t code = text[i];
    const bool high = code >= 0xD800 && code <= 0xDBFF;
    const bool pairs =
        high && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF;
    if (pairs) {
      code = 0x10000 + ((code - 0xD800) << 10) + (text[++i] - 0xDC00);
    } else if (code >= 0xD800 && code <= 0xDFFF) {
      code = u'?';
    }
    if (code < 0x80) {
      utf8.push_back(static_cast<char>(code));
      continue;
    }
    constexpr unsigned char kLeadBits[] = {0, 0xC0, 0xE0, 0xF0};  // by the bytes that follow
    const int extra = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
    utf8.push_back(static_cast<char>(kLeadBits[extra] | (code >> (6 * extra))));
    for (int k = extra - 1; k >= 0; --k)
      utf8.push_back(static_cast<char>(0x80 | ((code >> (6 * k)) & 0x3F)));
  }
  return utf8;
}

}  // namespace gc40
