// Captured instrument streams and the readings the logger must take from
// them: the regression suite of the instrument link (see data/README.md).

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "base/number_text.h"
#include "instrument/reading_decoder.h"
#include "instrument/record_framer.h"
#include "support/temp_folder.h"

namespace gc40 {
namespace {

// Printable ASCII as it is, anything else as \xHH.
std::string escaped(std::string_view bytes) {
  std::string text;
  for (const unsigned char byte : bytes) {
    char hex[5];
    std::snprintf(hex, sizeof hex, "\\x%02X", byte);
    text += byte >= 0x20 && byte < 0x7F && byte != '\\' ? std::string(1, char(byte)) : hex;
  }
  return text;
}

std::string describe(std::string_view record, const DecodedReading& r) {
  return "\"" + escaped(record) + "\" conductivity " + formatFixed(r.conductivity, 6) +
         " inphase " + formatFixed(r.inphase, 6) + " dipole " + r.dipole + " range " +
         formatInteger(r.range) + " mark " + r.mark + " channel " + formatInteger(r.channelFlag) +
         "\n";
}

// With one record per reading, and with three, where a malformed line takes
// a place of its own.
std::string readingsFrom(std::string_view capture) {
  const Settings settings;
  std::string readings;
  for (const std::int32_t recordsPerReading : {1, 3}) {
    readings += "records per reading " + formatInteger(recordsPerReading) + ":\n";
    InstrumentLink link;
    link.recordsPerReading = recordsPerReading;
    RecordFramer framer;
    framer.start(link);
    framer.feed(capture, 0, link, [&] {
      FiledValues filed;
      readings += describe(link.record(), decodeInstrumentRecord(link.record(), settings, filed));
    });
  }
  return readings;
}

TEST(InstrumentCaptures, GiveTheirCheckedReadings) {
  const bool regenerate = std::getenv("GC40_REGENERATE_CHK") != nullptr;
  int captures = 0;
  for (const auto& entry : std::filesystem::directory_iterator(GC40_CAPTURES_DIR)) {
    if (entry.path().extension() != ".raw") continue;
    ++captures;
    const std::string readings = readingsFrom(testing::readBytes(entry.path()));
    const std::filesystem::path check = entry.path().string() + ".chk";
    if (regenerate) testing::writeBytes(check, readings);
    EXPECT_EQ(readings, testing::readBytes(check)) << entry.path();
  }
  EXPECT_GE(captures, 2);
}

}  // namespace
}  // namespace gc40
