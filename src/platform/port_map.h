#pragma once
// The port map: which device path each of the operator's port names
// "COM1:".."COM12:" stands for on this machine. Kept in FLDINI/PORTS.INI as
// one "COMn:=PATH" line per port; --port COMn=PATH overrides it for one run.

#include <array>
#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace gc40 {

inline constexpr std::string_view kPortMapFileName = "PORTS.INI";

struct PortMap {
  std::array<std::string, 12> paths;  // index 0 is COM1:
};

struct PortMapProblem {
  int lineNumber = 0;
  std::string line;
};

struct ParsedPortMap {
  PortMap map;
  std::vector<PortMapProblem> problems;  // malformed lines, ignored
};

struct PortAssignment {
  int index = 0;  // 0 is COM1:
  std::string path;
};

// COM1: -> /dev/ttyUSB0 .. COM12: -> /dev/ttyUSB11.
PortMap defaultPortMap();

// The file written on first run: a comment that says how to edit it, then one
// line per port.
std::string formatPortMap(const PortMap& map);

// Lines "COMn:=PATH" (n 1..12; blank lines and lines starting with '#' or ';'
// are comments) applied over `base`. A later line for the same port wins.
ParsedPortMap parsePortMap(std::string_view text, const PortMap& base = defaultPortMap());

// "COM3:" or "COM3" (any case) -> index 2; nullopt for anything else.
std::optional<int> parseComPortName(std::string_view name);

// "COM3=/dev/pts/4" or "COM3:=/dev/pts/4" from the command line.
std::optional<PortAssignment> parsePortAssignment(std::string_view text);

// The device path for a port index; empty when the index names no port.
std::string devicePathFor(const PortMap& map, int index);

// Reads FLDINI/PORTS.INI, creating it with the defaults when missing, and
// reports each malformed line on `warnings` with the file and line number.
PortMap loadPortMap(const std::filesystem::path& settingsFolder, std::ostream& warnings);
// The same without writing anything: the defaults when the file is missing.
PortMap readPortMap(const std::filesystem::path& settingsFolder, std::ostream& warnings);

}  // namespace gc40
