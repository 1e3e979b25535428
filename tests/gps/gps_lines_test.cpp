// The logger's GPS line handling: lines cut, judged and stamped, the fields
// shown from them, and real receivers' captures giving the same lines and
// verdicts however their bytes are split, with a few lines checked by hand.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "gps/gps_line_assembler.h"
#include "gps/gps_status.h"
#include "gps/nmea.h"
#include "support/gps_printing.h"
#include "support/temp_folder.h"

namespace gc40 {
namespace {

using namespace std::string_literals;

const std::string kGga = "$GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,*47";

std::vector<GpsLine> judged(std::string_view bytes, std::uint32_t tick = 0) {
  GpsLineAssembler assembler;
  std::vector<GpsLine> lines;
  assembler.feed(bytes, tick, [&](std::string_view text, std::uint32_t at) {
    judgeGpsLine(text, at, [&](const GpsLine& line) { lines.push_back(line); });
  });
  return lines;
}

TEST(GpsLines, EachLineIsCutJudgedAndStampedWithItsDollar) {
  const std::string longest = "$GPTXT,01,01,02," + std::string(181, 'x') + "*35";
  ASSERT_EQ(longest.size(), 200u);
  using L = GpsLine;
  const std::vector<std::pair<std::string, std::vector<GpsLine>>> cases = {
      {kGga + "\r\n", {L{kGga, true, 7}}},
      {"$GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,*46\r\n",
       {L{kGga.substr(0, 64) + "6", false, 7}}},
      {"ABC\r\n", {L{"ABC", false, 0}, L{"ABC", false, 0}}},  // twice; no "$" of its own
      {"\r\n", {L{"", false, 0}, L{"", false, 0}}},
      {"$GPTXT,ok*67\r\r\n", {L{"$GPTXT,ok*67\r", true, 7}}},      // the hex stops at the CR
      {"$GPTXT,ok*67\n", {L{"$GPTXT,ok*6", false, 7}}},            // no CR: the digit goes
      {"$GPRMC,1*56\0\0\0   \r\n"s, {L{"$GPRMC,1*56", true, 7}}},  // a NUL ends the text
      {"junk$$GPTXT,ok*67\r\n", {L{"$GPTXT,ok*67", true, 7}}},     // every "$" starts afresh
      {"$GPTXT,ok*  0x67\r\n", {L{"$GPTXT,ok*  0x67", true, 7}}},  // read as strtoul reads
      {"$GPTXT,ok*67*68\r\n", {L{"$GPTXT,ok*67*68", false, 7}}},   // the last "*" counts
      {"$GPTXT,ok\r\n", {L{"$GPTXT,ok", false, 7}}},
      {longest + "\r\n", {L{longest, true, 7}}},
      // Past 200 characters the line starts over: the 49 after are a line of their own.
      {"$" + std::string(249, 'A') + "\r\n",
       {L{std::string(49, 'A'), false, 7}, L{std::string(49, 'A'), false, 7}}},
  };
  for (const auto& [bytes, expected] : cases) EXPECT_EQ(judged(bytes, 7), expected) << bytes;

  GpsLineAssembler assembler;  // the tick is the "$"'s, not the line feed's
  std::vector<std::uint32_t> ticks;
  const auto note = [&](std::string_view, std::uint32_t tick) { ticks.push_back(tick); };
  assembler.feed("$GPTXT,", 10, note);
  assembler.feed("ok*67\r\nrest\r", 20, note);
  assembler.feed("\n$A\r\n", 30, note);
  EXPECT_EQ(ticks, (std::vector<std::uint32_t>{10, 10, 30}));
}

// Field 1 is the sentence name, the last runs to the end of the line.
TEST(GpsLines, FieldsAreFoundBetweenSeparators) {
  std::string fields;
  for (int n = 0; n <= 16; ++n) fields += std::string(getField(kGga, n).value_or("(none)")) + "|";
  EXPECT_EQ(fields,
            "(none)|$GPGGA|123519|4807.038|N|01131.000|E|1|08|0.9|545.4|M|46.9|M||*47|(none)|");
  EXPECT_EQ(getField("abc", 1), "abc");
  EXPECT_EQ(getField("abc", 2), std::nullopt);
  EXPECT_EQ(getField("a;b", 2, ';'), "b");
  EXPECT_EQ(nmeaChecksumTail("$GPTXT,ok"), "*67");
}

TEST(GpsStatus, GgaAndGsaFillTheFieldsAndBadOnesShowQuestionMarks) {
  GpsStatus status;
  const GpsFieldsShown gga = onGpsSentence(status, kGga, true, false);
  EXPECT_EQ(gga, (GpsFieldsShown{.activity = "/", .satellites = " 8", .fix = "AGPS"}));
  EXPECT_EQ(onGpsSentence(status, kGga, true, true).fixCount, "1    ");
  EXPECT_EQ(status.gpsActivityMark, '\\');
  EXPECT_EQ(onGpsSentence(status, kGga, false, true),
            (GpsFieldsShown{.satellites = "??", .fix = ""}));
  EXPECT_EQ(status.gpsFixCount, 1);

  using Case = std::pair<std::string, GpsFieldsShown>;
  for (const auto& [sentence, shown] : {
           Case{"$GPGSA,A,3,04,05,,09,12,,,24,,,,,2.5,1.3,2.1*39", {.pdop = "2.5 "}},
           Case{"$GPGSA,A,1,,,,,,,,,,,,,,,*1E", {.pdop = "0.0 "}},
           Case{"$GPGSA,A,1,,,,*32", {.pdop = "N/A"}},
           Case{"$GPGGA,1,2,3,4,5,2", {.activity = "/", .satellites = " 0", .fix = "DGPS"}},
           Case{"$GPGGA,,,,,,0,x", {.activity = "\\", .satellites = " 0", .fix = "NO FIX"}},
           Case{"$GPRMC,1,2", {}},
       }) {
    EXPECT_EQ(onGpsSentence(status, sentence, true, false), shown) << sentence;
  }
  EXPECT_EQ(onGpsSentence(status, "$GSA", true, false), (GpsFieldsShown{.pdop = "??"}));  // short
}

// A line as judged, and what the status line shows after it.
struct Handled {
  std::string text;
  bool valid;
  GpsFieldsShown shown;
  bool operator==(const Handled&) const = default;
};

// The capture fed in chunks of 1..maxChunk bytes (all at once for 0).
std::vector<Handled> handle(std::string_view bytes, std::size_t maxChunk, unsigned seed = 1) {
  std::mt19937 random(seed);
  GpsLineAssembler assembler;
  GpsStatus status;
  std::vector<Handled> handled;
  for (std::size_t at = 0, size; at < bytes.size(); at += size) {
    size = maxChunk == 0 ? bytes.size() : 1 + random() % maxChunk;
    assembler.feed(bytes.substr(at, size), 0, [&](std::string_view text, std::uint32_t tick) {
      judgeGpsLine(text, tick, [&](const GpsLine& line) {
        handled.push_back(
            {line.text, line.valid, onGpsSentence(status, line.text, line.valid, true)});
      });
    });
  }
  return handled;
}

std::string capture(const char* name) {
  return testing::readBytes(std::filesystem::path(GC40_NMEA_CAPTURES) / name);
}

TEST(GpsCaptures, AnySplitGivesTheSameLinesAndVerdicts) {
  // Lines handed on, valid ones, valid GGA. Files with bare line feeds lose
  // each line's last checksum digit to the carriage-return cut, and every
  // "$" starts a line afresh ("$$", two sentences on one line).
  const std::tuple<const char*, std::size_t, std::size_t, int> totals[] = {
      {"GPSmap-76S.log", 151, 151, 12},
      {"beidou-bd.log", 81, 79, 10},
      {"et-332.log", 175, 0, 0},
      {"firefly-II.log", 69, 46, 0},
      {"garmin-10x.log", 88, 84, 14},
      {"gp-320fw-2019-04-07-coldboot.log", 136, 91, 10},
      {"gpsdf.log", 4503, 1455, 51},
      {"hp58534a.log", 13, 0, 0},
      {"iTrek.log", 105, 1, 0},
      {"mtk-3301.log", 70, 0, 0},
      {"myguide-3100.log", 100, 100, 13},
      {"nmea-rtk.log", 244, 244, 122},
      {"quectel-l76k-nmea.log", 2280, 0, 0},
      {"skytraq-PX1172RH_DS.log", 201, 195, 9},
      {"skytraq-dgps.log", 1024, 0, 0},
      {"st-teseo-liv4f.log", 330, 0, 0},
      {"telit-he910.log", 1558, 0, 0},
      {"telit-pls83-w.log", 225, 225, 20},
      {"ublox-8.log", 1009, 1008, 72},
      {"unicore-um621.log", 882, 882, 20},
  };
  std::size_t files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(GC40_NMEA_CAPTURES))
    files += entry.path().extension() == ".log";
  EXPECT_EQ(files, std::size(totals));
  for (const auto& [name, lines, valid, fixes] : totals) {
    const std::string bytes = capture(name);
    const std::vector<Handled> whole = handle(bytes, 0);
    ASSERT_EQ(whole.size(), lines) << name;
    const auto count = [&](auto is) { return std::count_if(whole.begin(), whole.end(), is); };
    EXPECT_EQ(count([](auto& h) { return h.valid; }), std::ptrdiff_t(valid)) << name;
    // Recorded throughout: every valid GGA counts.
    EXPECT_EQ(count([](auto& h) { return h.shown.fixCount.has_value(); }), fixes) << name;
    for (const std::size_t maxChunk : {1, 300}) {
      const std::vector<Handled> chunked = handle(bytes, maxChunk, files++);
      const auto differ = std::mismatch(whole.begin(), whole.end(), chunked.begin(), chunked.end());
      EXPECT_TRUE(differ.first == whole.end() && differ.second == chunked.end())
          << name << " in chunks of up to " << maxChunk << ", line "
          << differ.first - whole.begin();
    }
  }
}

// Lines whose verdicts and values were worked out by hand from the files.
TEST(GpsCaptures, LinesCheckedByHand) {
  using S = GpsFieldsShown;
  const std::tuple<const char*, std::string, bool, GpsFieldsShown> lines[] = {
      {"garmin-10x.log",
       "$GPGGA,165010.000,4143.6057,N,08338.0788,W,6,00,50.0,203.8,M,-33.7,M,,0000*5D", true,
       S{.activity = "\\", .fixCount = "4    ", .satellites = " 0", .fix = ""}},
      {"garmin-10x.log", "$GPGSA,A,1,,,,,,,,,,,,,,,*1E", true, S{.pdop = "0.0 "}},
      // A comment line ends in a bare line feed: its last letter goes too.
      {"garmin-10x.log", "# Some duplicative sentences with 2D fixes were removed her", false, S{}},
      {"gp-320fw-2019-04-07-coldboot.log",
       "$GPGGA,000343.03,4808.9993,N,01135.0798,E,1,04,01.4,00460.0,M,0046.2,M,,*56", true,
       S{.activity = "/", .fixCount = "1    ", .satellites = " 4", .fix = "AGPS"}},
      {"gp-320fw-2019-04-07-coldboot.log", "$GPGSA,A,3,20,,,,13,31,,04,,,,,02.7,01.4,02.3*05", true,
       S{.pdop = "2.7 "}},
      {"gp-320fw-2019-04-07-coldboot.log", "$GPRMC,000346.03,A,4808", false, S{}},  // NULs
      {"gp-320fw-2019-04-07-coldboot.log", "$GPGSA,A,1,,,,,,,,,,,,,,,*1E*43", false,
       S{.pdop = "??"}},
      {"gp-320fw-2019-04-07-coldboot.log", "$PLCS,REV,PLN012054S07,070312,145743", false, S{}},
      {"iTrek.log", "$GPGSA,A,1,,,,*3", false, S{.pdop = "??"}},
  };
  for (const auto& [name, text, valid, shown] : lines) {
    const std::vector<Handled> handled = handle(capture(name), 0);
    const auto h =
        std::find_if(handled.begin(), handled.end(), [&](auto& h) { return h.text == text; });
    ASSERT_NE(h, handled.end()) << text;
    EXPECT_EQ(std::pair(h->valid, h->shown), std::pair(valid, shown)) << text;
  }
}

}  // namespace
}  // namespace gc40
