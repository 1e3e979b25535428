#pragma once
// The settings file as the handheld wrote it with every value at its default.

#include <map>
#include <string>
#include <string_view>

namespace gc40::testing {

// The default file, line by line, as the handheld wrote it.
inline constexpr const char* kDefaultLines[] = {
    "CEVer2.11", "0",        "0",     "0",        "1",          "0",          "1",
    "1",         "1",        "1",     "1",        "1",          "1",          "1",
    "2",         "2",        "2",     "2",        "1",          "1",          "1",
    "1",         "16711680", "65280", "255",      "16711935",   "0",          "65535",
    "16711935",  "65280",    "0",     "0.000000", "500.000000", "-25.000000", "25.000000",
    "0",         "1",        "1",     "1",        "0",          "0",          "0",
    "0",         "0",        "10",    "1.000000", "0.200000",   "2.000000",   "0.200000",
    "0",         "1.000000", "0",     "1",        "0.000000",   "1.000000"};

inline std::string defaultFileBytes() {
  std::string bytes;
  for (const char* line : kDefaultLines)
    bytes += std::string(line) + "\r\n";
  return bytes;
}

// The default file with some lines (numbered from 1) replaced.
inline std::string fileWithLines(const std::map<int, std::string>& replaced,
                                 std::string_view replacedLineEnd = "\r\n") {
  std::string bytes;
  for (int number = 1; number <= 55; ++number) {
    const auto found = replaced.find(number);
    const bool isReplaced = found != replaced.end();
    bytes += isReplaced ? found->second : std::string(kDefaultLines[number - 1]);
    bytes += isReplaced ? replacedLineEnd : "\r\n";
  }
  return bytes;
}

// The default file with line `number` replaced, ended by `end`.
inline std::string fileWithLine(int number, const std::string& text,
                                std::string_view end = "\r\n") {
  return fileWithLines({{number, text}}, end);
}

}  // namespace gc40::testing
