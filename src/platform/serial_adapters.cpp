#include "platform/serial_adapters.h"

#include <algorithm>
#include <system_error>

#include "base/number_text.h"
#include "settings/setting_choices.h"

namespace gc40 {

std::string linkLeadingTo(const std::filesystem::path& folder,
                          const std::filesystem::path& device) {
  std::error_code error;
  const std::filesystem::path target = std::filesystem::canonical(device, error);
  if (error) return {};
  for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
    std::error_code ignored;
    if (entry.is_symlink(ignored) && std::filesystem::canonical(entry.path(), ignored) == target)
      return entry.path().string();
  }
  return {};
}

const SerialAdapter* adapterAt(std::span<const SerialAdapter> adapters, std::string_view path) {
  const auto found = std::ranges::find_if(adapters, [path](const SerialAdapter& adapter) {
    return adapter.devicePath == path || (!adapter.byIdPath.empty() && adapter.byIdPath == path);
  });
  return found == adapters.end() ? nullptr : &*found;
}

std::string adapterName(const SerialAdapter& adapter) {
  if (adapter.description.empty() && adapter.manufacturer.empty()) return "(no description)";
  if (adapter.manufacturer.empty()) return adapter.description;
  if (adapter.description.empty()) return adapter.manufacturer;
  return adapter.description + " (" + adapter.manufacturer + ")";
}

std::string adapterNote(std::span<const SerialAdapter> adapters, std::string_view path) {
  if (const SerialAdapter* adapter = adapterAt(adapters, path)) return adapterName(*adapter);
  if (adapters.empty()) return "no adapter found";
  // Short: it shares a narrow column with the path.
  std::string note = "no adapter; found";
  for (const SerialAdapter& adapter : adapters)
    note += " " + std::filesystem::path(adapter.devicePath).filename().string();
  return note;
}

std::string formatPortListing(const PortMap& map, const std::filesystem::path& mapFile,
                              std::span<const SerialAdapter> adapters) {
  std::size_t pathWidth = 0;
  for (const std::string& path : map.paths) pathWidth = std::max(pathWidth, path.size());
  std::string text = "Port map (" + mapFile.string() + "):\n";
  for (std::size_t i = 0; i < map.paths.size(); ++i) {
    const std::string& path = map.paths[i];
    text += "  " + leftAligned(comPortName(static_cast<std::int32_t>(i)), 8);
    const SerialAdapter* adapter = adapterAt(adapters, path);
    text += (adapter ? leftAligned(path, pathWidth + 2) + adapterName(*adapter) : path) + "\n";
  }
  if (adapters.empty()) return text + "Serial adapters found: none\n";
  std::size_t deviceWidth = 0;
  for (const SerialAdapter& adapter : adapters)
    deviceWidth = std::max(deviceWidth, adapter.devicePath.size());
  text += "Serial adapters found:\n";
  for (const SerialAdapter& adapter : adapters) {
    text += "  " + leftAligned(adapter.devicePath, deviceWidth + 2) + adapterName(adapter) + "\n";
    if (!adapter.byIdPath.empty())
      text += "  " + std::string(deviceWidth + 2, ' ') + adapter.byIdPath + "\n";
  }
  return text;
}

}  // namespace gc40
