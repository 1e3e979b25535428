#include "platform/raw_capture.h"

#include <system_error>

#include "base/number_text.h"

namespace gc40 {
namespace {

constexpr int kMaxNameAttempts = 100;

std::string twoDigits(int value) { return formatZeroPadded(value, 2); }

}  // namespace

std::string rawCaptureName(std::string_view portRole, const LocalTime& now, int attempt) {
  // Appended piece by piece: GCC 12 warns falsely about chains of "-" + string.
  std::string name(portRole);
  for (const std::string& part :
       {formatInteger(now.year) + twoDigits(now.month) + twoDigits(now.day),
        twoDigits(now.hour) + twoDigits(now.minute) + twoDigits(now.second)}) {
    name += '-';
    name += part;
  }
  if (attempt > 1) {
    name += '-';
    name += formatInteger(attempt);
  }
  name += ".raw";
  return name;
}

std::optional<RawCapture> RawCapture::open(const std::filesystem::path& folder,
                                           std::string_view portRole, const LocalTime& now,
                                           std::string* error) {
  std::error_code ignored;
  std::filesystem::create_directories(folder, ignored);
  std::string reason;
  for (int attempt = 1; attempt <= kMaxNameAttempts; ++attempt) {
    std::filesystem::path path = folder / rawCaptureName(portRole, now, attempt);
    if (auto file = RawFile::createExclusive(path, &reason)) {
      return RawCapture(std::move(*file), std::move(path));
    }
    if (!std::filesystem::exists(path)) break;  // not a name clash: give up
  }
  if (error) *error = (folder / rawCaptureName(portRole, now, 1)).string() + ": " + reason;
  return std::nullopt;
}

}  // namespace gc40
