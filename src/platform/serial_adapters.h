#pragma once
// The serial adapters plugged into this machine, as the operator needs to see
// them beside the port map: which device each COMn: name reaches, and which
// adapters are there to map. The query itself is serial_port_info.h.

#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include "platform/port_map.h"

namespace gc40 {

// Where udev keeps the stable names: they survive re-plugging.
inline constexpr std::string_view kSerialByIdFolder = "/dev/serial/by-id";

struct SerialAdapter {
  std::string devicePath;  // /dev/ttyUSB0
  std::string description;
  std::string manufacturer;
  std::string byIdPath;  // the link in kSerialByIdFolder to it, or empty
};

// The link in `folder` that leads to `device`, or empty when none does.
std::string linkLeadingTo(const std::filesystem::path& folder, const std::filesystem::path& device);

// The adapter at `path` (its device or its by-id link), or null.
const SerialAdapter* adapterAt(std::span<const SerialAdapter> adapters, std::string_view path);

// "FT232R USB UART (FTDI)": what the adapter calls itself.
std::string adapterName(const SerialAdapter& adapter);

// A line under a port's device path in the setup dialogs: the adapter behind
// it, else the adapters there are to map ("no adapter; found ttyUSB1"), else
// that none was found.
std::string adapterNote(std::span<const SerialAdapter> adapters, std::string_view path);

// --list-ports: each port name with its device and the adapter behind it,
// then every adapter found with its by-id link (or one line saying there is
// none). `mapFile` is named as the place to change the map.
std::string formatPortListing(const PortMap& map, const std::filesystem::path& mapFile,
                              std::span<const SerialAdapter> adapters);

}  // namespace gc40
