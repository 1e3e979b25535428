#pragma once
// GPS lines and the fields they show, in print for readable test failures;
// and the lines a logging run makes of a receiver's bytes.

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "capture_listings.h"
#include "gps/gps_line_assembler.h"
#include "gps/gps_status.h"

namespace gc40 {

inline void PrintTo(const GpsLine& line, std::ostream* out) {
  *out << (line.valid ? "valid " : "invalid ") << '"' << escapedText(line.text) << "\" @"
       << line.tick;
}

inline void PrintTo(const GpsFieldsShown& shown, std::ostream* out) {
  *out << '{' << fieldsText(shown) << " }";
}

inline std::vector<GpsLine> judgedGpsLines(std::string_view bytes, std::uint32_t tick = 0) {
  GpsLineAssembler assembler;
  return judgeGpsChunk(assembler, bytes, tick);
}

}  // namespace gc40
