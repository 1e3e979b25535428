#pragma once
// What gc40 makes of bytes caught from a serial port, as text: the lines a
// GPS receiver sent with their verdicts and the status fields they set, and
// the readings taken from a meter's stream. r40 prints these listings, and
// the captures under tests/ are checked against them.

#include <string>
#include <string_view>
#include <vector>

#include "gps/gps_line_assembler.h"
#include "gps/gps_status.h"

namespace gc40 {

// On one line and unambiguous: a backslash, a quote and every byte outside
// printable ASCII (CRs, NULs, garbage) escaped as in C.
std::string escapedText(std::string_view text);

// The status fields set, as ` name="text"` each.
std::string fieldsText(const GpsFieldsShown& shown);

// A line as judged, and what the status line shows after it.
struct HandledGpsLine {
  std::string text;
  bool valid;
  GpsFieldsShown shown;
  bool operator==(const HandledGpsLine&) const = default;
};

// A receiver's bytes, in whatever pieces they come, handled as a recording
// logging run handles them.
class GpsCaptureReader {
 public:
  void feed(std::string_view bytes);
  const std::vector<HandledGpsLine>& lines() const { return lines_; }

 private:
  GpsLineAssembler assembler_;
  GpsStatus status_;
  std::vector<HandledGpsLine> lines_;
};

// A heading naming the capture, then per handled line its verdict, its text
// and the fields it sets.
std::string gpsCaptureListing(std::string_view captureName,
                              const std::vector<HandledGpsLine>& lines);

// The readings a meter's bytes give with one record per reading and with
// three (where a malformed line takes a place of its own), each with its
// decoded values under the default settings.
std::string meterCaptureListing(std::string_view capture);

}  // namespace gc40
