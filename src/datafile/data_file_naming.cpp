#include "datafile/data_file_naming.h"

#include <system_error>

#include "base/number_text.h"
#include "base/text_codec.h"

namespace gc40 {
namespace {

std::string twoDigits(int value) { return formatZeroPadded(value, 2); }

// Paths are UTF-8 here; the header wants the handheld's 8-bit text. A byte
// that is not part of a well-formed sequence, and any character beyond the
// 16-bit range (none has an 8-bit form), becomes '?'.
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

}  // namespace

std::string proposeDataFileName(const std::filesystem::path& folder, const LocalTime& now) {
  const std::string stem = twoDigits(now.month) + twoDigits(now.day) + twoDigits(now.hour);
  for (char letter = 'A'; letter <= 'Z'; ++letter) {
    const std::string name = stem + letter;
    std::error_code error;
    // symlink_status: a dangling link also blocks creating that name.
    const auto status =
        std::filesystem::symlink_status(folder / (name + std::string(kDataFileExtension)), error);
    if (!std::filesystem::exists(status)) return name;
  }
  return {};
}

std::string dataFileBaseName(const std::filesystem::path& chosen) {
  const std::u8string path = chosen.generic_u8string();
  const std::string_view text(reinterpret_cast<const char*>(path.data()), path.size());
  const std::size_t slash = text.rfind('/');
  std::string_view name = slash == std::string_view::npos ? text : text.substr(slash + 1);
  name = name.substr(0, name.find('.'));
  return wideToWindows1252(utf8ToWide(name));
}

}  // namespace gc40
