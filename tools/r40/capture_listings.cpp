#include "capture_listings.h"

#include "base/number_text.h"
#include "instrument/reading_decoder.h"
#include "instrument/record_framer.h"

namespace gc40 {

std::string escapedText(std::string_view text) {
  constexpr std::string_view kHex = "0123456789ABCDEF";
  std::string out;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '\\' || c == '"') {
      out += {'\\', c};
    } else if (c == '\r') {
      out += "\\r";
    } else if (byte < 0x20 || byte > 0x7E) {
      out += {'\\', 'x', kHex[byte >> 4], kHex[byte & 0xF]};
    } else {
      out += c;
    }
  }
  return out;
}

std::string fieldsText(const GpsFieldsShown& shown) {
  std::string out;
  const auto field = [&out](std::string_view name, const std::optional<std::string>& text) {
    if (text) out.append(" ").append(name).append("=\"").append(escapedText(*text)).append("\"");
  };
  field("activity", shown.activity);
  field("fixCount", shown.fixCount);
  field("satellites", shown.satellites);
  field("fix", shown.fix);
  field("pdop", shown.pdop);
  return out;
}

void GpsCaptureReader::feed(std::string_view bytes) {
  assembler_.feed(bytes, 0, [this](std::string_view text, std::uint32_t tick) {
    judgeGpsLine(text, tick, [this](const GpsLine& line) {
      lines_.push_back(
          {line.text, line.valid, onGpsSentence(status_, line.text, line.valid, true)});
    });
  });
}

std::string gpsCaptureListing(std::string_view captureName,
                              const std::vector<HandledGpsLine>& lines) {
  std::string out = "# " + std::string(captureName) +
                    ": each line as assembled and judged (one without \"$\" twice),"
                    " and the status fields it sets while recording\n";
  for (const HandledGpsLine& line : lines) {
    out += (line.valid ? "valid   \"" : "invalid \"") + escapedText(line.text) + '"' +
           fieldsText(line.shown) + '\n';
  }
  return out;
}

namespace {

std::string readingLine(std::string_view framed) {
  FiledValues filed;
  const DecodedReading r = decodeInstrumentRecord(framed, Settings{}, filed);
  return '"' + escapedText(framed) + "\" conductivity " + formatFixed(r.conductivity, 6) +
         " inphase " + formatFixed(r.inphase, 6) + " dipole " + r.dipole + " range " +
         formatInteger(r.range) + " mark " + r.mark + " channel " + formatInteger(r.channelFlag) +
         "\n";
}

}  // namespace

std::string meterCaptureListing(std::string_view capture) {
  std::string out;
  for (const std::int32_t recordsPerReading : {1, 3}) {
    out += "records per reading " + formatInteger(recordsPerReading) + ":\n";
    RecordFramer framer;
    framer.setRecordsPerReading(recordsPerReading);
    framer.start();
    framer.feed(capture, 0, {.onReading = [&out](std::string_view record, std::uint32_t) {
                  out += readingLine(record);
                }});
  }
  return out;
}

}  // namespace gc40
