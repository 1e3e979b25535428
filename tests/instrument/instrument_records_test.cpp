// Records framed from the instrument's byte stream and decoded into readings,
// and captured streams with the readings the logger must take from them (see
// data/README.md).

#include <gtest/gtest.h>

#include <bit>
#include <filesystem>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "capture_listings.h"
#include "harness/temp_folder.h"
#include "instrument/reading_decoder.h"
#include "instrument/record_framer.h"

namespace gc40 {
namespace {

using namespace std::literals;

// A record as the framer hands it over, the two 5-character values as one
// 10-character text; on the wire a CR follows.
std::string record(std::string_view values, char status = ' ') {
  return "T"s + status + std::string(values);
}
const std::string kExample = record("12.34-0.56") + '\r';
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
  const std::string none, statusCr = record("12.34-0.56", '\r') + '\r';
  const auto noise = [](int length) { return std::string(length, 'T') + kExample + kExample; };
  using Case = std::tuple<std::string, int, std::string>;  // stream, lines found, last record
  for (const auto& [stream, lines, last] :
       {Case{noise(0), 2, kExample}, Case{noise(168), 2, kExample}, Case{noise(169), 1, kExample},
        Case{noise(181), 1, kExample}, Case{"\n" + statusCr, 1, statusCr},
        Case{"\nabcdefghijk" + statusCr, 2, statusCr}, Case{"01234567890\r", 0, none},
        Case{"012345678901\r", 1, none}}) {
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
  for (char digit = '1'; digit <= '9'; ++digit) stream += record("0000"s + digit + "00000") + '\r';
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
      if (kind < 5) stream += record(junk(10), static_cast<char>(random())) + '\r';
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

constexpr float kInf = std::numeric_limits<float>::infinity();

Settings settingsFor(std::int32_t component, std::int32_t variant, std::int32_t surveyMode) {
  return {.instrumentVariant = variant,
          .surveyMode = modeFromIndex<SurveyMode>(surveyMode),
          .component = modeFromIndex<Component>(component)};
}

// Only the dipole the reading was taken in has valid slots, holding its
// values (compared as bits, so NaN too); every other word is 0.
void expectFiledUnder(const DecodedReading& r, const FiledValues& filed, Component component) {
  const auto bits = [](float value) { return std::bit_cast<std::uint32_t>(value); };
  const bool v = r.dipole == 'V', both = component == Component::kBoth;
  const bool inphase = both || component == Component::kInphase;
  const std::array<std::uint32_t, 8> expected = {
      v && both ? bits(r.conductivity) : 0,  v && both,
      !v && both ? bits(r.conductivity) : 0, !v && both,
      v && inphase ? bits(r.inphase) : 0,    v && inphase,
      !v && inphase ? bits(r.inphase) : 0,   !v && inphase};
  EXPECT_EQ((std::bit_cast<std::array<std::uint32_t, 8>>(filed)), expected);
}

// A component other than Both (0) or Inphase (1) leaves the values as read:
// five characters each, a NUL ending the text, missing bytes reading as NUL.
TEST(ReadingDecoder, StatusExamplesGiveTheirValues) {
  // Status, component, variant, survey mode, the value texts and the reading.
  using Case = std::tuple<unsigned char, std::int32_t, std::int32_t, std::int32_t, std::string_view,
                          DecodedReading>;
  // Divided by 3.35 in single precision, the inphase of 7.777 and 1.234 would round differently.
  const float shortBoth = static_cast<float>(-0.0025f * 1.234f / 3.35);
  const float shortInphase = static_cast<float>(7.777f / 3.35);
  // clang-format off
  for (const auto& [status, component, variant, mode, values, expected] : {
      Case{0x20, 0, 0, 0, "012.0-01.5", {-3.0f,  0.00375f, 'V', 1000, 'N', 0}},
      Case{0x24, 0, 1, 0, "7.7771.234", {7.777f * -0.025f, shortBoth, 'V', 100, 'N', 0}},
      Case{0x20, 1, 0, 0, "012.0-01.5", {12.0f,  -0.75f,   'V', 1000, 'N', 0}},  // inphase from a
      Case{0x20, 1, 1, 0, "7.7771.234", {7.777f, shortInphase, 'V', 1000, 'N', 0}},
      Case{0x21, 1, 1, 0, "012.0-01.5", {-0.03f, 0.00375f, 'V', 1000, 'N', 1}},
      Case{0x21, 2, 0, 0, "12.3412.34", {12.34f, 12.34f,   'V', 1000, 'N', 1}},
      Case{0x41, 2, 0, 0, "1\000999-9e99"sv, {1.0f, -kInf,   'H', 1000, 'M', 1}},
      Case{0x02, 2, 0, 0, "12",         {12.0f,  0.0f,     'H', 10,   'N', 0}}}) {
    // clang-format on
    FiledValues filed{9, 1, 9, 1, 9, 1, 9, 1};  // left from an earlier reading
    const Settings settings = settingsFor(component, variant, mode);
    const DecodedReading r = decodeInstrumentRecord(record(values, char(status)), settings, filed);
    const auto fields = [](const DecodedReading& d) {
      return std::tuple(d.conductivity, d.inphase, d.dipole, d.range, d.mark, d.channelFlag);
    };
    EXPECT_EQ(fields(r), fields(expected)) << "status " << int{status} << " " << component;
    expectFiledUnder(r, filed, settings.component);
  }
}

// Subtraction and masks agree on every byte but 128; the factor shows in the
// conductivity. Huge values and NaN go through every scaling path.
TEST(ReadingDecoder, EveryStatusByteAndSettingDecodesConsistently) {
  for (int status = 0; status < 256; ++status) {
    const bool is128 = status == 128;
    const int code = is128 ? 8 : status & 7;
    const float factor = code == 0 || code == 6 ? -0.25f : code == 4 ? -0.025f : -0.0025f;
    for (const std::string_view values : {"4.0004.000"sv, "9e99 nan  "sv, "nan  -9e99"sv}) {
      for (const Settings& settings :
           {settingsFor(0, 0, 1), settingsFor(0, 1, 2), settingsFor(1, 0, 2), settingsFor(1, 1, 1),
            settingsFor(2, 0, 0)}) {
        FiledValues filed;
        const DecodedReading r =
            decodeInstrumentRecord(record(values, char(status)), settings, filed);
        ASSERT_EQ(r.channelFlag, static_cast<std::uint32_t>(status & 1));
        ASSERT_EQ(r.mark,
                  (is128 || status & 64) && settings.surveyMode != SurveyMode::kManual ? 'M' : 'N');
        ASSERT_EQ(r.dipole, is128 || status & 32 ? 'V' : 'H');
        ASSERT_EQ(r.range, code == 2 ? 10 : code == 4 ? 100 : 1000) << status;
        if (settings.component == Component::kBoth && values[0] == '4') {
          ASSERT_EQ(r.conductivity, 4.0f * factor) << status;
        }
        expectFiledUnder(r, filed, settings.component);
        if (HasFailure()) return;
      }
    }
  }
}

// `r40 meter NAME.raw > NAME.raw.chk` writes a listing.
TEST(InstrumentCaptures, GiveTheirCheckedReadings) {
  int captures = 0;
  for (const auto& entry : std::filesystem::directory_iterator(GC40_CAPTURES_DIR)) {
    if (entry.path().extension() != ".raw") continue;
    ++captures;
    EXPECT_EQ(meterCaptureListing(testing::readBytes(entry.path())),
              testing::readBytes(entry.path().string() + ".chk"))
        << entry.path();
  }
  EXPECT_GE(captures, 2);
}

}  // namespace
}  // namespace gc40
