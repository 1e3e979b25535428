#pragma once
// GPS lines and the fields they show, in print: readable test failures, and
// the .chk listings of the GPS captures that the tests compare against; and
// the lines a logging run makes of a receiver's bytes.

#include <ostream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "gps/gps_line_assembler.h"
#include "gps/gps_status.h"

namespace gc40 {

// On one line and unambiguous: a backslash, a quote and every byte outside
// printable ASCII (CRs, NULs, garbage) escaped as in C.
inline std::string escapedText(std::string_view text) {
  std::string out;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '\\' || c == '"') {
      out += {'\\', c};
    } else if (c == '\r') {
      out += "\\r";
    } else if (byte < 0x20 || byte > 0x7E) {
      out += {'\\', 'x', "0123456789ABCDEF"[byte >> 4], "0123456789ABCDEF"[byte & 0xF]};
    } else {
      out += c;
    }
  }
  return out;
}

inline void printFields(const GpsFieldsShown& shown, std::ostream& out) {
  const auto field = [&out](const char* name, const std::optional<std::string>& text) {
    if (text) out << ' ' << name << "=\"" << escapedText(*text) << '"';
  };
  field("activity", shown.activity);
  field("fixCount", shown.fixCount);
  field("satellites", shown.satellites);
  field("fix", shown.fix);
  field("pdop", shown.pdop);
}

inline void PrintTo(const GpsLine& line, std::ostream* out) {
  *out << (line.valid ? "valid " : "invalid ") << '"' << escapedText(line.text) << "\" @"
       << line.tick;
}

inline void PrintTo(const GpsFieldsShown& shown, std::ostream* out) {
  *out << '{';
  printFields(shown, *out);
  *out << " }";
}

inline std::vector<GpsLine> judgedGpsLines(std::string_view bytes, std::uint32_t tick = 0) {
  GpsLineAssembler assembler;
  std::vector<GpsLine> lines;
  assembler.feed(bytes, tick, [&](std::string_view text, std::uint32_t at) {
    judgeGpsLine(text, at, [&](const GpsLine& line) { lines.push_back(line); });
  });
  return lines;
}

// A line as judged, and what the status line shows after it.
struct HandledGpsLine {
  std::string text;
  bool valid;
  GpsFieldsShown shown;
  bool operator==(const HandledGpsLine&) const = default;
};

// A receiver's bytes, in whatever pieces they come, handled as a recording
// logging run handles them.
struct GpsCaptureReader {
  void feed(std::string_view bytes) {
    assembler.feed(bytes, 0, [this](std::string_view text, std::uint32_t tick) {
      judgeGpsLine(text, tick, [this](const GpsLine& line) {
        lines.push_back(
            {line.text, line.valid, onGpsSentence(status, line.text, line.valid, true)});
      });
    });
  }
  GpsLineAssembler assembler;
  GpsStatus status;
  std::vector<HandledGpsLine> lines;
};

// A capture's .chk file: a heading, then per handled line its verdict, its
// text and the fields it sets.
inline std::string gpsChkListing(std::string_view captureName,
                                 const std::vector<HandledGpsLine>& lines) {
  std::ostringstream out;
  out << "# " << captureName
      << ": each line as assembled and judged (one without \"$\" twice),"
         " and the status fields it sets while recording\n";
  for (const HandledGpsLine& line : lines) {
    out << (line.valid ? "valid   \"" : "invalid \"") << escapedText(line.text) << '"';
    printFields(line.shown, out);
    out << '\n';
  }
  return out.str();
}

}  // namespace gc40
