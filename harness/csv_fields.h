#pragma once
// The fields of one line of the CSV files the export writes, as the tests
// and the README's picture tool read them back.

#include <string>
#include <string_view>
#include <vector>

namespace gc40 {

// Quotes taken off, a doubled quote inside quotes kept as one, CR dropped.
inline std::vector<std::string> csvFields(std::string_view line) {
  std::vector<std::string> fields(1);
  bool quoted = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    if (c == '"' && quoted && i + 1 < line.size() && line[i + 1] == '"')
      fields.back() += line[++i];
    else if (c == '"')
      quoted = !quoted;
    else if (c == ',' && !quoted)
      fields.emplace_back();
    else if (c != '\r')
      fields.back() += c;
  }
  return fields;
}

}  // namespace gc40
