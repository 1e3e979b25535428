#include <gtest/gtest.h>

#include <climits>
#include <set>
#include <vector>

#include "base/number_text.h"
#include "gc40-sim/instrument_records.h"
#include "gc40-sim/nmea_replay.h"
#include "gc40-sim/nmea_walker.h"
#include "gc40-sim/sim_options.h"
#include "gps/nmea.h"
#include "harness/child_process.h"
#include "harness/temp_folder.h"
#include "instrument/reading_decoder.h"

namespace gc40 {
namespace {

using namespace std::chrono;
using namespace std::string_literals;

using Records = std::vector<std::string>;

Records take(const InstrumentOptions& options, int count) {
  InstrumentStream stream = startInstrumentStream(options);
  Records records;
  while (std::ssize(records) < count) records.push_back(nextInstrumentChunk(stream).value().bytes);
  return records;
}

TEST(InstrumentRecords, ValuesComeInFiveCharactersAndTheRampWraps) {
  std::string fields;
  for (const std::int64_t value : {0L, 42L, -120L, 100000L, -10000L, INT64_MAX, INT64_MIN})
    fields += formatValueField(value) + ' ';
  EXPECT_EQ(fields, "00000 00042 -0120 99999 -9999 99999 -9999 ");
  EXPECT_EQ(take({.pattern = ValuePattern::kRamp, .firstValue = "99998"}, 4),
            (Records{"T 9999800040\r", "T 9999900040\r", "T -999900040\r", "T -999800040\r"}));
}

// Presses, junk and line feeds leave every record readable; the gaps follow
// the period, the drop-outs and the count.
TEST(InstrumentRecords, NoiseLeavesEveryRecordReadableAndGapsFollowTheOptions) {
  const InstrumentOptions clean{.status = 33, .triggerEvery = 10, .triggerLength = 3};
  InstrumentOptions noisy = clean;
  noisy.junkEvery = 3, noisy.lineFeed = true, noisy.dropoutEvery = 4, noisy.count = 40;
  noisy.period = milliseconds(91), noisy.dropout = milliseconds(2500);
  const Records cleanRecords = take(clean, 40);
  InstrumentStream stream = startInstrumentStream(noisy);
  std::vector<Chunk> chunks;
  while (std::optional<Chunk> chunk = nextInstrumentChunk(stream)) chunks.push_back(*chunk);
  ASSERT_EQ(chunks.size(), 40u);
  const std::set<std::size_t> pressed{10, 11, 12, 20, 21, 22, 30, 31, 32};
  for (std::size_t i = 0; i < chunks.size(); ++i) {
    const std::string& noisyRecord = chunks[i].bytes;
    const std::size_t junk = noisyRecord.size() - 14;
    EXPECT_TRUE(i % 3 == 0 && i > 0 ? junk >= 1 && junk <= 8 : junk == 0) << i;
    EXPECT_EQ(noisyRecord.find('\r'), junk + 12) << i;  // never a CR in the junk
    EXPECT_EQ(noisyRecord.substr(junk), cleanRecords[i] + '\n') << i;
    EXPECT_EQ(static_cast<std::uint8_t>(cleanRecords[i][1]), pressed.contains(i) ? 97 : 33) << i;
    EXPECT_EQ(chunks[i].gapAfter.count(), i % 4 == 3 ? 2591 : 91) << i;
  }
}

// The values of a survey, read back by the logger's decoder within half a
// step of the range the status byte names; the inphase has a step of its own
// unless the channel flag is set.
TEST(InstrumentRecords, ValuesGivenInUnitsReadBackOnEveryRange) {
  const ValueTexts texts = valueTextsFor(36, 23.4, -1.234);
  EXPECT_EQ(texts.first + texts.second, "-093600494");
  for (const auto& [status, step] : std::vector<std::pair<std::uint8_t, double>>{
           {32, 0.25}, {33, 0.0025}, {34, 0.0025}, {36, 0.025}, {38, 0.25}, {128, 0.0025}}) {
    const ValueTexts sent = valueTextsFor(status, 7.3, -1.234);
    FiledValues filed;
    const DecodedReading reading = decodeInstrumentRecord(
        "T" + std::string(1, char(status)) + sent.first + sent.second, Settings{}, filed);
    EXPECT_NEAR(reading.conductivity, 7.3, step / 2 + 1e-6) << int(status);
    EXPECT_NEAR(reading.inphase, -1.234, (status % 2 ? step : 0.0025) / 2 + 1e-6) << int(status);
  }
}

// Bursts at 23:59:50.00, .50, .55, 59.90 and after midnight, among lines with
// no time, junk with a NUL and a last piece without a line feed.
const std::string kCapture =
    "$GPGSV,1,1,01,07,79,048,42*4B\r\n"
    "$GPGGA,235950.00,4916.45,N,12311.12,W,1,08,0.9,545.4,M,46.9,M,,*4C\r\n"
    "\0\x81junk,235951\r\n"s
    "$GPRMC,235950,A,4916.45,N,12311.12,W,000.5,054.7,191194,020.3,E*68\r\n"
    "$GNGGA,235950.50,4916.45,N,12311.12,W,1,08,0.9,545.4,M,46.9,M,,*4C\r\n"
    "$GPGLL,4916.45,N,12311.12,W,235950.55,A*2C\n"
    "$GPZDA,235959.90,20,11,2026,00,00*4E\n"
    "$GPGGA,000000.00,4916.45,N,12311.12,W,1,08,0.9,545.4,M,46.9,M,,*4C\n"
    "$GPGSA,A,3,04";

// The pieces sent (at most 20) as one string with a '|' after each, and the gaps.
std::pair<std::string, std::vector<milliseconds::rep>> replay(const NmeaReplayOptions& options) {
  NmeaReplay replay = startNmeaReplay(kCapture, options);
  std::pair<std::string, std::vector<milliseconds::rep>> sent;
  for (int i = 0; i < 20; ++i) {
    const std::optional<Chunk> chunk = nextNmeaChunk(replay);
    if (!chunk) break;
    sent.first += chunk->bytes + "|";
    sent.second.push_back(chunk->gapAfter.count());
  }
  return sent;
}

TEST(NmeaReplay, SendsEachLineAsItIsAtTheCapturesOwnPaceOrAFixedOne) {
  std::string pieces = kCapture;
  for (std::size_t at = 0; (at = pieces.find('\n', at)) != std::string::npos; at += 2)
    pieces.insert(at + 1, "|");
  const auto [once, gaps] = replay({});
  EXPECT_EQ(once, pieces + "|");
  // Same time: back to back; then +500 ms, +50 ms (at least 100), +9.35 s (at
  // most 2 s), and backwards over midnight (a second).
  EXPECT_EQ(gaps, (std::vector<milliseconds::rep>{0, 0, 0, 500, 100, 2000, 1000, 0, 0}));

  // Looping, the start comes again after the last piece.
  const auto [looped, fixedGaps] = replay({.file = {}, .period = milliseconds(250), .loop = true});
  const std::string round = pieces + "|";
  EXPECT_EQ(looped, (round + round + round).substr(0, looped.size()));
  EXPECT_EQ(fixedGaps, std::vector<milliseconds::rep>(20, 250));
}

// Each second a GGA, GSA and RMC with good checksums; the time and date go on
// past midnight, and the position moves at walking pace.
TEST(NmeaWalker, EverySecondAValidFixThatWalksOnAtWalkingPace) {
  NmeaWalker walker = startNmeaWalker(sys_days(2026y / 11 / 21) + 23h + 59min + 59s);
  std::vector<std::string> sentences;
  for (int second = 0; second < 11; ++second) {
    const Chunk chunk = nextWalkerChunk(walker);
    EXPECT_EQ(chunk.gapAfter, 1s);
    for (std::size_t start = 0, end; (end = chunk.bytes.find("\r\n", start)) != std::string::npos;
         start = end + 2) {
      sentences.push_back(chunk.bytes.substr(start, end - start));
      EXPECT_TRUE(nmeaChecksumValid(sentences.back())) << sentences.back();
    }
    ASSERT_EQ(sentences.size(), 3u * (second + 1)) << chunk.bytes;
  }
  const auto field = [&](int sentence, int n) {
    return std::string(getField(sentences[sentence], n).value_or("(none)"));
  };
  EXPECT_EQ(field(0, 1) + field(0, 2) + ' ' + field(0, 7) + ' ' + field(0, 8),
            "$GPGGA235959.00 1 08");
  EXPECT_EQ(field(1, 1) + ' ' + field(1, 16), "$GPGSA 1.8");
  EXPECT_EQ(field(2, 1) + field(2, 2) + field(2, 3) + field(2, 10), "$GPRMC235959.00A211126");
  EXPECT_EQ(field(3, 2) + ' ' + field(5, 10), "000000.00 221126");
  // Ten seconds at 1.4 m/s, 30 degrees east of north: some 12 m north.
  const double minutesNorth =
      parseDecimalPrefix(field(30, 3).substr(2)) - parseDecimalPrefix(field(0, 3).substr(2));
  EXPECT_NEAR(minutesNorth * 1852, 12.1, 0.5);
  EXPECT_NE(field(30, 5), field(0, 5));
}

using Arguments = std::vector<std::string_view>;

// A comma inside a value is the value's own.
TEST(SimOptions, ValuesAreTakenAsWrittenAndWrongCommandLinesRefusedWithTheReason) {
  const auto parsed = parseSimOptions(
      Arguments{"--link=/tmp/gc40", "--values", "12,50,-0.56", "--dropout-seconds=0.25"});
  ASSERT_TRUE(std::holds_alternative<SimOptions>(parsed));
  const InstrumentOptions& instrument = std::get<SimOptions>(parsed).instrument;
  EXPECT_EQ(instrument.firstValue + " " + instrument.secondValue, "12,50 -0.56");
  EXPECT_EQ(instrument.dropout.count(), 250);

  // A survey's shape; the meter on the 100 range unless a status is given.
  const Arguments survey{"--link",
                         "m",
                         "--gps-link",
                         "g",
                         "--survey",
                         "--lines=4",
                         "--line-length",
                         "25.5",
                         "--line-spacing",
                         "0.5",
                         "--speed",
                         "1.25",
                         "--bearing",
                         "33.3",
                         "--origin",
                         "-33.9,151.25",
                         "--repeat",
                         "--true-lag",
                         "-250",
                         "--layback",
                         "-0.75",
                         "--gps-rate",
                         "10"};
  const auto surveyed = parseSimOptions(survey);
  ASSERT_TRUE(std::holds_alternative<SimOptions>(surveyed));
  const SimOptions& options = std::get<SimOptions>(surveyed);
  const SurveyOptions& walk = options.survey;
  EXPECT_TRUE(options.surveying);
  EXPECT_EQ(
      std::tuple(walk.lines, walk.lineLength, walk.lineSpacing, walk.speed, walk.bearing,
                 walk.origin.latitude, walk.origin.longitude, walk.repeat, walk.trueLag.count(),
                 walk.layback, walk.fixesPerSecond, int(options.instrument.status)),
      std::tuple(4, 25.5, 0.5, 1.25, 33.3, -33.9, 151.25, true, -250L, -0.75, 10, 36));
  Arguments ownStatus = survey;
  ownStatus.insert(ownStatus.end(), {"--status", "33"});
  EXPECT_EQ(std::get<SimOptions>(parseSimOptions(ownStatus)).instrument.status, 33);
  EXPECT_EQ(std::get<SimOptions>(parseSimOptions(Arguments{"--link", "m"})).instrument.status, 32);

  for (const auto& [arguments, reason] : std::vector<std::pair<Arguments, std::string_view>>{
           {{}, "at least one of --link PATH and --gps-link PATH is required"},
           {{"--link", "x", "--gps-link", "x"}, "paths of their own"},
           {{"--gps-link", "g", "--loop"}, "--nmea-period and --loop go with --nmea"},
           {{"--link", "x", "--values", "-0120,0004\r"}, "exactly 5 printable"},
           {{"--link", "x", "--verbose"}, "unknown option '--verbose'"},
           {{"--link", "x", "--layback", "2"}, "--layback goes with --survey"},
           {{"--gps-link", "g", "--survey", "--nmea", "f"}, "no --nmea"},
           {{"--link", "x", "--survey", "--pattern", "ramp"}, "go without --survey"},
           {{"--link", "x", "--survey", "--repeat", "--lines", "1"}, "at least 2 lines"},
           {{"--link", "x", "--survey", "--speed", "1,5"}, "from 0.1 to 50, not '1,5'"},
           {{"--link", "x", "--survey", "--true-lag", "1.5"}, "from -10000 to 10000"},
           {{"--link", "x", "--survey", "--gps-rate", "20"}, "from 1 to 10, not '20'"},
           {{"--link", "x", "--survey", "--origin", "91,0"}, "--origin wants LAT,LON"}}) {
    const auto parsed = parseSimOptions(arguments);
    const auto* error = std::get_if<SimOptionsError>(&parsed);
    ASSERT_NE(error, nullptr) << reason;
    EXPECT_NE(error->message.find(reason), std::string::npos) << error->message;
  }
}

// As a process: a usage error exits 2, a link it cannot make 1.
TEST(Gc40Sim, RefusesWhatItCannotDoWithTheRightStatus) {
  testing::TempFolder folder;
  const std::string file = folder.path() / "notes.txt", errors = folder.path() / "errors.txt";
  testing::writeBytes(file, "in the link's place");
  for (const auto& [arguments, status, text] :
       {std::tuple{std::vector<std::string>{"--link", file, "--period", "fast"}, 2,
                   std::string("not 'fast'\n\nUsage: gc40-sim")},
        {{"--link", file}, 1, file + " exists and is not a symbolic link"}}) {
    testing::ChildProcess sim(GC40_SIM_BINARY, arguments, errors);
    EXPECT_EQ(sim.waitForExit(), status) << text;
    EXPECT_NE(testing::readBytes(errors).find(text), std::string::npos)
        << testing::readBytes(errors);
  }
}

}  // namespace
}  // namespace gc40
