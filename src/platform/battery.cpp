#include "platform/battery.h"

#include <algorithm>
#include <fstream>
#include <string>
#include <system_error>
#include <vector>

#include "base/number_text.h"

namespace gc40::platform {
namespace {

std::string firstLine(const std::filesystem::path& file) {
  std::ifstream in(file);
  std::string line;
  std::getline(in, line);
  return line;
}

bool powersTheMachine(const std::filesystem::path& supply) {
  // Peripherals report scope "Device"; the machine's own batteries report
  // "System" or nothing.
  return firstLine(supply / "type") == "Battery" && firstLine(supply / "scope") != "Device";
}

}  // namespace

std::optional<int> batteryPercent(const std::filesystem::path& supplies) {
  std::error_code error;
  std::vector<std::filesystem::path> found;
  for (const auto& entry : std::filesystem::directory_iterator(supplies, error))
    found.push_back(entry.path());
  std::sort(found.begin(), found.end());  // BAT0 before BAT1, whatever the listing order
  for (const auto& supply : found) {
    if (!powersTheMachine(supply)) continue;
    const std::string capacity = firstLine(supply / "capacity");
    if (capacity.empty()) continue;
    return std::clamp(parseIntegerPrefix(capacity), 0, 100);
  }
  return std::nullopt;
}

}  // namespace gc40::platform
