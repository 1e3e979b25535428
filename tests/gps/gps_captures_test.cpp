// Real receivers' captures through the logger's GPS line handling: the same
// lines and verdicts however the bytes are split, the totals an independent
// reading of the same rules gives, and a few lines checked by hand.

#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "gps/gps_line_assembler.h"
#include "gps/gps_status.h"
#include "support/gps_printing.h"
#include "support/temp_folder.h"

namespace gc40 {
namespace {

struct Handled {
  GpsLine line;
  GpsFieldsShown shown;
  bool operator==(const Handled&) const = default;
};

// The capture fed in chunks of 1..maxChunk bytes (all at once for 0); chunk
// k arrives at tick k / 8, so a sentence split across chunks keeps its "$" tick.
std::vector<Handled> handle(std::string_view bytes, std::size_t maxChunk, unsigned seed = 1) {
  std::mt19937 random(seed);
  GpsLineAssembler assembler;
  GpsStatus status;
  std::vector<Handled> handled;
  for (std::size_t at = 0, k = 0; at < bytes.size(); ++k) {
    const std::size_t size = maxChunk == 0 ? bytes.size() : 1 + random() % maxChunk;
    const std::uint32_t tick = maxChunk == 0 ? 0 : static_cast<std::uint32_t>(k / 8);
    assembler.feed(bytes.substr(at, size), tick, [&](std::string_view text, std::uint32_t t) {
      judgeGpsLine(text, t, [&](const GpsLine& line) {
        handled.push_back({line, onGpsSentence(status, line.text, line.valid, true)});
      });
    });
    at += size;
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
    std::vector<Handled> whole = handle(bytes, 0);
    ASSERT_EQ(whole.size(), lines) << name;
    EXPECT_EQ(std::count_if(whole.begin(), whole.end(), [](auto& h) { return h.line.valid; }),
              std::ptrdiff_t(valid))
        << name;
    EXPECT_EQ(handle(bytes, 1).size(), lines);
    const std::vector<Handled> chunked = handle(bytes, 300, files++);
    for (std::size_t i = 0; i < whole.size() && !HasFailure(); ++i) {
      EXPECT_EQ(chunked[i].line.text, whole[i].line.text) << name << " line " << i;
      EXPECT_EQ(chunked[i].line.valid, whole[i].line.valid) << name << " line " << i;
      EXPECT_EQ(chunked[i].shown, whole[i].shown) << name << " line " << i;
    }
    int fixCount = 0;  // recorded throughout: every valid GGA counts
    for (const Handled& h : whole) fixCount += h.shown.fixCount.has_value();
    EXPECT_EQ(fixCount, fixes) << name;
  }
}

const Handled* find(const std::vector<Handled>& handled, std::string_view text) {
  for (const Handled& h : handled)
    if (h.line.text == text) return &h;
  return nullptr;
}

// Lines whose verdicts and values were worked out by hand from the files.
TEST(GpsCaptures, LinesCheckedByHand) {
  using S = GpsFieldsShown;
  const std::tuple<const char*, std::string, bool, GpsFieldsShown> lines[] = {
      {"garmin-10x.log",
       "$GPGGA,165010.000,4143.6057,N,08338.0788,W,6,00,50.0,203.8,M,-33.7,M,,0000*5D", true,
       S{.activity = "\\", .fixCount = "4    ", .satellites = " 0", .fix = ""}},
      {"garmin-10x.log", "$GPGSA,A,2,,,,,,,,,,,,,50.0,50.0,50.0*06", true, S{.pdop = "50.0"}},
      {"garmin-10x.log", "$GPGSA,A,1,,,,,,,,,,,,,,,*1E", true, S{.pdop = "0.0 "}},
      // A comment line ends in a bare line feed: its last letter goes too.
      {"garmin-10x.log", "# Some duplicative sentences with 2D fixes were removed her", false, S{}},
      {"gp-320fw-2019-04-07-coldboot.log",
       "$GPGGA,000343.03,4808.9993,N,01135.0798,E,1,04,01.4,00460.0,M,0046.2,M,,*56", true,
       S{.activity = "/", .fixCount = "1    ", .satellites = " 4", .fix = "AGPS"}},
      {"gp-320fw-2019-04-07-coldboot.log", "$GPGSA,A,3,20,,,,13,31,,04,,,,,02.7,01.4,02.3*05", true,
       S{.pdop = "2.7 "}},
      {"gp-320fw-2019-04-07-coldboot.log", "$GPRMC,000346.03,A,4808", false, S{}},  // NULs
      {"gp-320fw-2019-04-07-coldboot.log",
       "$GPRMC,235949.00,V,0000.0000,N,00000.0000,E,,,161206,,,N*44", true, S{}},
      {"gp-320fw-2019-04-07-coldboot.log", "$GPGSA,A,1,,,,,,,,,,,,,,,*1E*43", false,
       S{.pdop = "??"}},
      {"gp-320fw-2019-04-07-coldboot.log", "$PLCS,REV,PLN012054S07,070312,145743", false, S{}},
      {"iTrek.log", "$GPGSA,A,1,,,,*3", false, S{.pdop = "??"}},
  };
  for (const auto& [name, text, valid, shown] : lines) {
    const std::vector<Handled> handled = handle(capture(name), 0);
    const Handled* h = find(handled, text);
    ASSERT_NE(h, nullptr) << text;
    EXPECT_EQ(h->line.valid, valid) << text;
    EXPECT_EQ(h->shown, shown) << text;
  }
}

}  // namespace
}  // namespace gc40
