// Records framed from the instrument's byte stream, and captured streams
// with the readings the logger must take from them (see data/README.md).

#include "instrument/record_framer.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "base/number_text.h"
#include "instrument/reading_decoder.h"
#include "support/temp_folder.h"

namespace gc40 {
namespace {

using namespace std::string_literals;

// A record as it comes on the wire; the framer hands it over without the CR.
std::string record(std::string_view values, char status = ' ') {
  return "T"s + status + std::string(values) + '\r';
}
const std::string kExample = record("12.34-0.56");
const std::string kMalformed = "xxxxxxxxxxxxx\r";

// Notes every record handed over as "record@tick", and each reading's record.
struct Feeder {
  explicit Feeder(std::int32_t recordsPerReading = 1) {
    framer.setRecordsPerReading(recordsPerReading);
    framer.start();
  }
  void feed(std::string_view bytes, std::uint32_t tick = 0) {
    const auto noteRecord = [this](std::string_view record, std::uint32_t at) {
      records.push_back(std::string(record) + "@" + std::to_string(at));
      onRecord();
    };
    const auto noteReading = [this](std::string_view record, std::uint32_t at) {
      readings.emplace_back(record);
      onReading(at);
    };
    framer.feed(bytes, tick, {noteRecord, noteReading});
  }
  RecordFramer framer;
  std::vector<std::string> records;
  std::vector<std::string> readings;
  std::function<void()> onRecord = [] {};
  std::function<void(std::uint32_t tick)> onReading = [](std::uint32_t) {};
};

// The count takes in the lines found, good or malformed. A CR with fewer than
// 12 bytes before it is an ordinary byte. The 182nd byte buffered overflows and
// is itself discarded, so a record whose CR would land beyond index 180 is lost.
TEST(RecordFramer, FindsRecordsLooking12BytesBackFromTheirCarriageReturn) {
  const std::string none, statusCr = record("12.34-0.56", '\r');
  const auto noise = [](int length) { return std::string(length, 'T') + kExample + kExample; };
  for (const auto& [stream, lines, last] : {std::tuple{noise(0), 2, kExample},
                                            {noise(168), 2, kExample},
                                            {noise(169), 1, kExample},
                                            {noise(181), 1, kExample},
                                            {"\n" + statusCr, 1, statusCr},
                                            {"\nabcdefghijk" + statusCr, 2, statusCr},
                                            {"01234567890\r"s, 0, none},
                                            {"012345678901\r"s, 1, none}}) {
    Feeder run(100);
    run.feed(stream, 77);
    EXPECT_EQ(run.framer.recordCount(), lines) << stream;
    EXPECT_EQ(run.records.empty() ? none : run.records.back(),
              last == none ? none : last.substr(0, 12) + "@77")
        << stream;
  }
}

TEST(RecordFramer, AReadingCarriesTheRecordThatCompletesIt) {
  std::string stream;
  for (char digit = '1'; digit <= '9'; ++digit) stream += record("0000"s + digit + "00000");
  Feeder run(5);
  run.onReading = [&run](std::uint32_t) {
    EXPECT_EQ(run.framer.recordCount(), 0);  // reset before the handler, which may set it
    run.framer.setRecordsPerReading(2);      // takes effect before the next byte
  };
  run.feed(stream);
  EXPECT_EQ(run.readings,
            (std::vector<std::string>{"T 0000500000", "T 0000700000", "T 0000900000"}));
  EXPECT_EQ(run.records.size(), 9u);  // each record is handed over, reading or not
}

// A malformed line takes a place in the reading and wraps the count without a
// reading once it reaches recordsPerReading; good records test for equality only.
TEST(RecordFramer, MalformedLinesWrapTheCountSilently) {
  Feeder run(3);
  run.feed(kExample + kExample + kMalformed);  // the reading's last place: lost
  EXPECT_EQ(run.framer.recordCount(), 0);
  run.feed(kExample + kExample);
  run.framer.setRecordsPerReading(1);  // lowered below the count
  run.feed(kExample + kExample);
  EXPECT_EQ(run.framer.recordCount(), 4);
  run.feed(kMalformed + kExample);
  EXPECT_EQ(run.framer.recordCount(), 0);
  EXPECT_EQ(run.readings.size(), 1u);  // the record after the wrap
}

// Good records, malformed lines, junk and line feeds at random, cut into
// chunks; chunk k arrives at tick k. The handlers change the count as the
// logging session may, and also in the middle of a reading.
TEST(RecordFramer, AnySplitOfTheStreamFramesTheSame) {
  for (const unsigned seed : {1u, 2u, 3u, 4u, 5u, 6u}) {
    std::mt19937 random(seed);
    const auto junk = [&random](std::size_t count) {
      std::string text;
      while (text.size() < count)
        text += static_cast<char>(random() % 3 ? 32 + random() % 95 : random());
      return text;
    };
    std::string stream;
    while (stream.size() < 4000) {
      const unsigned kind = random() % 8;
      if (kind < 5) stream += record(junk(10), static_cast<char>(random()));
      if (kind == 5) stream += junk(random() % 20) + '\r';
      if (kind == 6) stream += junk(random() % 200);
      if (kind == 7) stream += '\n';
    }
    Feeder runs[2];  // chunks fed whole, and byte by byte
    for (Feeder& run : runs) {
      run.onRecord = [&run] {
        if (run.records.size() % 7 == 0) run.framer.setRecordsPerReading(1);  // below the count
        if (run.records.size() % 11 == 0) run.framer.restartCount();
      };
      run.onReading = [&run](std::uint32_t tick) {
        run.readings.back() += "@" + std::to_string(tick);
        run.framer.setRecordsPerReading(1 + run.readings.size() % 4);
      };
    }
    for (std::uint32_t at = 0, k = 0; at < stream.size(); ++k) {
      const std::string_view chunk = std::string_view(stream).substr(at, random() % 40);
      runs[0].feed(chunk, k);
      for (const char& byte : chunk) runs[1].feed({&byte, 1}, k);
      at += chunk.size();
    }
    EXPECT_GT(runs[0].readings.size(), 15u) << seed;
    EXPECT_EQ(runs[0].readings, runs[1].readings) << seed;
    EXPECT_EQ(runs[0].records, runs[1].records) << seed;
    EXPECT_EQ(runs[0].framer.recordCount(), runs[1].framer.recordCount()) << seed;
  }
}

// The readings a capture gives with one record per reading, and with three,
// where a malformed line takes a place of its own: each record with printable
// ASCII as it is and anything else as \xHH, and its decoded values.
std::string readingsFrom(std::string_view capture) {
  std::string readings;
  for (const std::int32_t recordsPerReading : {1, 3}) {
    readings += "records per reading " + formatInteger(recordsPerReading) + ":\n";
    Feeder run(recordsPerReading);
    run.onReading = [&](std::uint32_t) {
      const std::string_view framed = run.readings.back();
      readings += '"';
      for (const unsigned char byte : framed) {
        char hex[5];
        std::snprintf(hex, sizeof hex, "\\x%02X", byte);
        readings += byte >= 0x20 && byte < 0x7F && byte != '\\' ? std::string(1, char(byte)) : hex;
      }
      FiledValues filed;
      const DecodedReading r = decodeInstrumentRecord(framed, Settings{}, filed);
      readings += "\" conductivity " + formatFixed(r.conductivity, 6) + " inphase " +
                  formatFixed(r.inphase, 6) + " dipole " + r.dipole + " range " +
                  formatInteger(r.range) + " mark " + r.mark + " channel " +
                  formatInteger(r.channelFlag) + "\n";
    };
    run.feed(capture);
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
