#pragma once
// Readable test failures for GPS lines and the fields they show.

#include <ostream>

#include "gps/gps_line_assembler.h"
#include "gps/gps_status.h"

namespace gc40 {

inline void PrintTo(const GpsLine& line, std::ostream* out) {
  *out << (line.valid ? "valid " : "invalid ") << '"' << line.text << "\" @" << line.tick;
}

inline void PrintTo(const GpsFieldsShown& shown, std::ostream* out) {
  const auto field = [out](const char* name, const std::optional<std::string>& text) {
    if (text) *out << name << "=\"" << *text << "\" ";
  };
  *out << "{ ";
  field("activity", shown.activity);
  field("fixCount", shown.fixCount);
  field("satellites", shown.satellites);
  field("fix", shown.fix);
  field("pdop", shown.pdop);
  *out << "}";
}

}  // namespace gc40
