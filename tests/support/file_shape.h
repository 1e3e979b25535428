#pragma once
// A recorded data file at a glance, for the whole-program tests.

#include <algorithm>
#include <string>
#include <variant>

#include "datafile/data_file_reader.h"

namespace gc40::testing {

// The readings in a file, or the notes that say `text`.
inline std::size_t countRecords(const DataFileContents& contents, const std::string& text = "") {
  return std::count_if(contents.records.begin(), contents.records.end(), [&](const FileRecord& r) {
    const auto* note = std::get_if<TextRecord>(&r.value);
    return text.empty() ? std::holds_alternative<ReadingRecord>(r.value)
                        : note && note->text == text;
  });
}

// One letter per record (one 'T' for a stretch of readings and GPS sentences,
// '(' letter and text ')' for a note or comment), so the run's shape reads as
// one string.
inline std::string shapeOf(const DataFileContents& contents) {
  std::string shape;
  for (const FileRecord& record : contents.records) {
    const char letter = "GHLBAZTS*?T"[record.value.index()];
    if (const auto* text = std::get_if<TextRecord>(&record.value))
      shape += std::string("(") + text->typeLetter + text->text + ")";
    else if (shape.empty() || letter != 'T' || shape.back() != 'T')
      shape += letter;
  }
  return shape;
}

}  // namespace gc40::testing
