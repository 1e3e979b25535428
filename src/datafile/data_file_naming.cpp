#include "datafile/data_file_naming.h"

#include <system_error>

#include "base/number_text.h"
#include "base/text_codec.h"

namespace gc40 {
namespace {

std::string twoDigits(int value) { return formatZeroPadded(value, 2); }

}  // namespace

std::string proposeDataFileName(const std::filesystem::path& folder, const LocalTime& now) {
  const std::string stem = twoDigits(now.month) + twoDigits(now.day) + twoDigits(now.hour);
  for (char letter = 'A'; letter <= 'Z'; ++letter) {
    std::string name = stem + letter;
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
