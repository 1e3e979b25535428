#include "gps/gps_line_assembler.h"

#include "gps/nmea.h"

namespace gc40 {

void GpsLineAssembler::feed(std::string_view bytes, std::uint32_t tick, const LineHandler& onLine) {
  for (const char byte : bytes) {
    if (byte == '$') {
      sentenceTick_ = tick;
      buffer_[0] = '$';
      position_ = 1;
    } else if (byte == '\n') {
      // The byte before the line feed is cut whatever it is: the CR of CR LF,
      // one CR of CR CR LF (the checksum's hex reading stops at the other),
      // and the last character of a line ended by a bare LF, whose checksum
      // then fails. A NUL inside ends the text earlier, as in a C string.
      const std::string_view text(buffer_.data(), position_ > 0 ? position_ - 1 : 0);
      position_ = 0;
      onLine(text.substr(0, text.find('\0')), sentenceTick_);
    } else {
      if (position_ >= kGpsLineCapacity) position_ = 0;
      buffer_[position_++] = byte;
    }
  }
}

void judgeGpsLine(std::string_view text, std::uint32_t tick,
                  const std::function<void(const GpsLine&)>& onLine) {
  GpsLine line{std::string(text), false, tick};
  if (!text.starts_with('$')) onLine(line);
  line.valid = nmeaChecksumValid(text);
  onLine(line);
}

std::vector<GpsLine> judgeGpsChunk(GpsLineAssembler& assembler, std::string_view bytes,
                                   std::uint32_t tick) {
  std::vector<GpsLine> lines;
  assembler.feed(bytes, tick, [&](std::string_view text, std::uint32_t at) {
    judgeGpsLine(text, at, [&](const GpsLine& line) { lines.push_back(line); });
  });
  return lines;
}

}  // namespace gc40
