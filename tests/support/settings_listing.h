#pragma once
// The settings file as the logger writes it with every value at its default.

#include <map>
#include <string>

namespace gc40::testing {

// clang-format off
inline constexpr const char* kDefaultLines[] = {
    "CEVer2.11", "0", "0", "0", "1", "0", "1", "1", "1", "1", "1", "1", "1", "1", "2", "2", "2",
    "2", "1", "1", "1", "1", "16711680", "65280", "255", "16711935", "0", "65535", "16711935",
    "65280", "0", "0.000000", "500.000000", "-25.000000", "25.000000", "0", "1", "1", "1", "0", "0",
    "0", "0", "0", "10", "1.000000", "0.200000", "2.000000", "0.200000", "0", "1.000000", "0", "1",
    "0.000000", "1.000000"};
// clang-format on

// The default file with some lines (numbered from 1) replaced; each replaced
// line is ended by `replacedLineEnd`, the others by CR LF.
inline std::string fileWithLines(const std::map<int, std::string>& replaced,
                                 const std::string& replacedLineEnd = "\r\n") {
  std::string bytes;
  for (int number = 1; number <= 55; ++number) {
    const auto found = replaced.find(number);
    bytes += found == replaced.end() ? std::string(kDefaultLines[number - 1]) + "\r\n"
                                     : found->second + replacedLineEnd;
  }
  return bytes;
}

inline std::string defaultFileBytes() { return fileWithLines({}); }

inline std::string fileWithLine(int number, const std::string& text,
                                const std::string& end = "\r\n") {
  return fileWithLines({{number, text}}, end);
}

}  // namespace gc40::testing
