#include "platform/port_map.h"

#include <ostream>

#include "base/number_text.h"
#include "base/raw_file.h"
#include "settings/setting_choices.h"

namespace gc40 {
namespace {

constexpr std::size_t kMaxPortMapBytes = 64 * 1024;

std::string_view trim(std::string_view text) {
  const auto first = text.find_first_not_of(" \t\r");
  if (first == std::string_view::npos) return {};
  const auto last = text.find_last_not_of(" \t\r");
  return text.substr(first, last - first + 1);
}

bool isComment(std::string_view line) {
  return line.empty() || line.front() == '#' || line.front() == ';';
}

char lower(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }

bool startsWithNoCase(std::string_view text, std::string_view prefix) {
  if (text.size() < prefix.size()) return false;
  for (std::size_t i = 0; i < prefix.size(); ++i) {
    if (lower(text[i]) != lower(prefix[i])) return false;
  }
  return true;
}

// Splits "NAME=PATH" (NAME may end in ':') into the port index and the path.
std::optional<PortAssignment> parseAssignment(std::string_view text) {
  const std::size_t equals = text.find('=');
  if (equals == std::string_view::npos) return std::nullopt;
  const std::optional<int> index = parseComPortName(trim(text.substr(0, equals)));
  const std::string_view path = trim(text.substr(equals + 1));
  if (!index || path.empty()) return std::nullopt;
  return PortAssignment{*index, std::string(path)};
}

PortMap parseAndReport(std::string_view text, const std::filesystem::path& path,
                       std::ostream& warnings) {
  ParsedPortMap parsed = parsePortMap(text);
  for (const PortMapProblem& problem : parsed.problems) {
    warnings << "gc40: " << path.string() << ":" << problem.lineNumber
             << ": ignored, not a COMn:=PATH line (n 1..12): " << problem.line << "\n";
  }
  return parsed.map;
}

}  // namespace

PortMap defaultPortMap() {
  PortMap map;
  for (std::size_t i = 0; i < map.paths.size(); ++i) {
    map.paths[i] = "/dev/ttyUSB" + formatInteger(static_cast<std::int64_t>(i));
  }
  return map;
}

std::string formatPortMap(const PortMap& map) {
  std::string text =
      "# gc40 port map: the device each port name stands for on this machine.\n"
      "# One COMn:=PATH line per port; gc40 --port COMn=PATH overrides a line for one run.\n";
  for (std::size_t i = 0; i < map.paths.size(); ++i) {
    text += comPortName(static_cast<std::int32_t>(i)) + "=" + map.paths[i] + "\n";
  }
  return text;
}

ParsedPortMap parsePortMap(std::string_view text, const PortMap& base) {
  ParsedPortMap parsed{base, {}};
  int lineNumber = 0;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    const std::string_view rawLine = text.substr(0, end);
    text = end == std::string_view::npos ? std::string_view{} : text.substr(end + 1);
    ++lineNumber;
    const std::string_view line = trim(rawLine);
    if (isComment(line)) continue;
    if (const std::optional<PortAssignment> assignment = parseAssignment(line)) {
      parsed.map.paths[static_cast<std::size_t>(assignment->index)] = assignment->path;
    } else {
      parsed.problems.push_back({lineNumber, std::string(line)});
    }
  }
  return parsed;
}

std::optional<int> parseComPortName(std::string_view name) {
  if (!startsWithNoCase(name, "COM")) return std::nullopt;
  name.remove_prefix(3);
  if (!name.empty() && name.back() == ':') name.remove_suffix(1);
  if (name.empty() || name.size() > 2) return std::nullopt;
  for (const char c : name) {
    if (c < '0' || c > '9') return std::nullopt;
  }
  const int number = parseIntegerPrefix(name);
  if (number < 1 || number > choices::kComPortCount) return std::nullopt;
  return number - 1;
}

std::optional<PortAssignment> parsePortAssignment(std::string_view text) {
  return parseAssignment(trim(text));
}

std::string devicePathFor(const PortMap& map, int index) {
  if (index < 0 || static_cast<std::size_t>(index) >= map.paths.size()) return {};
  return map.paths[static_cast<std::size_t>(index)];
}

PortMap loadPortMap(const std::filesystem::path& settingsFolder, std::ostream& warnings) {
  const std::filesystem::path path = settingsFolder / kPortMapFileName;
  const std::optional<std::string> text = readFilePrefix(path, kMaxPortMapBytes);
  if (!text) {
    std::string error;
    if (!replaceFileByLines(path, {formatPortMap(defaultPortMap())}, &error)) {
      warnings << "gc40: cannot write port map " << path.string() << ": " << error << "\n";
    }
    return defaultPortMap();
  }
  return parseAndReport(*text, path, warnings);
}

PortMap readPortMap(const std::filesystem::path& settingsFolder, std::ostream& warnings) {
  const std::filesystem::path path = settingsFolder / kPortMapFileName;
  const std::optional<std::string> text = readFilePrefix(path, kMaxPortMapBytes);
  return text ? parseAndReport(*text, path, warnings) : defaultPortMap();
}

}  // namespace gc40
