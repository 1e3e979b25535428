#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "gps/gps_line_assembler.h"
#include "gps/gps_status.h"
#include "gps/nmea.h"
#include "harness/temp_folder.h"
#include "support/gps_printing.h"

namespace gc40 {
namespace {

using namespace std::string_literals;

const std::string kGga = "$GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,*47";

TEST(GpsLines, EachLineIsCutJudgedAndStampedWithItsDollar) {
  const std::string longest = "$GPTXT,01,01,02," + std::string(181, 'x') + "*35";
  ASSERT_EQ(longest.size(), 200u);
  using L = GpsLine;
  const std::vector<std::pair<std::string, std::vector<GpsLine>>> cases = {
      {kGga + "\r\n", {L{kGga, true, 7}}},
      {kGga.substr(0, 64) + "6\r\n", {L{kGga.substr(0, 64) + "6", false, 7}}},  // checksum off
      {"ABC\r\n", {L{"ABC", false, 0}, L{"ABC", false, 0}}},       // twice; no "$" of its own
      {"$GPTXT,ok*67\r\r\n", {L{"$GPTXT,ok*67\r", true, 7}}},      // the hex stops at the CR
      {"$GPTXT,ok*67\n", {L{"$GPTXT,ok*6", false, 7}}},            // a bare LF cuts the 7
      {"\n", {L{"", false, 0}, L{"", false, 0}}},                  // nothing before it to cut
      {"$GPRMC,1*56\0\0\0   \r\n"s, {L{"$GPRMC,1*56", true, 7}}},  // a NUL ends the text
      {"junk$$GPTXT,ok*67\r\n", {L{"$GPTXT,ok*67", true, 7}}},     // every "$" starts afresh
      {"$GPTXT,ok*67*68\r\n", {L{"$GPTXT,ok*67*68", false, 7}}},   // the last "*" counts
      {longest + "\r\n", {L{longest, true, 7}}},
      // Past 200 characters the line starts over: the 49 after are a line of their own.
      {"$" + std::string(249, 'A') + "\r\n",
       {L{std::string(49, 'A'), false, 7}, L{std::string(49, 'A'), false, 7}}},
  };
  for (const auto& [bytes, expected] : cases)
    EXPECT_EQ(judgedGpsLines(bytes, 7), expected) << bytes;

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
  EXPECT_EQ(onGpsSentence(status, kGga, true, false),
            (GpsFieldsShown{.activity = "/", .satellites = " 8", .fix = "AGPS"}));
  EXPECT_EQ(onGpsSentence(status, kGga, true, true).fixCount, "1    ");
  EXPECT_EQ(status.gpsActivityMark, '\\');
  EXPECT_EQ(onGpsSentence(status, kGga, false, true),
            (GpsFieldsShown{.satellites = "??", .fix = ""}));
  EXPECT_EQ(status.gpsFixCount, 1);

  using Case = std::pair<std::string, GpsFieldsShown>;
  for (const auto& [sentence, shown] :
       {Case{"$GPGSA,A,3,04,05,,09,12,,,24,,,,,2.5,1.3,2.1*39", {.pdop = "2.5 "}},
        Case{"$GPGSA,A,1,,,,,,,,,,,,,,,*1E", {.pdop = "0.0 "}},
        Case{"$GPGSA,A,1,,,,*32", {.pdop = "N/A"}},
        Case{"$GPGGA,1,2,3,4,5,2", {.activity = "/", .satellites = " 0", .fix = "DGPS"}},
        Case{"$GPGGA,,,,,,0,x", {.activity = "\\", .satellites = " 0", .fix = "NO FIX"}},
        Case{"$GPRMC,1,2", {}}})
    EXPECT_EQ(onGpsSentence(status, sentence, true, false), shown) << sentence;
  EXPECT_EQ(onGpsSentence(status, "$GSA", true, false), (GpsFieldsShown{.pdop = "??"}));  // short
}

// The capture fed in chunks of 1..maxChunk bytes (all at once for 0).
std::vector<HandledGpsLine> handle(std::string_view bytes, std::size_t maxChunk,
                                   unsigned seed = 1) {
  std::mt19937 random(seed);
  GpsCaptureReader reader;
  for (std::size_t at = 0, size; at < bytes.size(); at += size) {
    size = maxChunk == 0 ? bytes.size() : 1 + random() % maxChunk;
    reader.feed(bytes.substr(at, size));
  }
  return reader.lines();
}

std::vector<std::filesystem::path> captures() {
  std::vector<std::filesystem::path> paths;
  for (const auto& entry : std::filesystem::directory_iterator(GC40_NMEA_CAPTURES))
    if (entry.path().extension() == ".log") paths.push_back(entry.path());
  return paths;
}

// The first line where `actual` departs from `expected`, not whole files.
::testing::AssertionResult sameListing(const std::string& name, const std::string& expected,
                                       const std::string& actual) {
  std::istringstream expectedLines(expected), actualLines(actual);
  std::string wanted, got;
  for (int n = 1;; ++n) {
    const bool hasWanted = bool(std::getline(expectedLines, wanted));
    const bool hasGot = bool(std::getline(actualLines, got));
    if (!hasWanted && !hasGot) return ::testing::AssertionSuccess();
    if (hasWanted != hasGot || wanted != got)
      return ::testing::AssertionFailure()
             << name << " line " << n << ":\n  expected " << (hasWanted ? wanted : "(end)")
             << "\n  got      " << (hasGot ? got : "(end)");
  }
}

// Every capture gives the lines, verdicts and shown fields its .chk file
// lists, fed whole, byte by byte or in random chunks. After a change meant
// to alter them, `r40 gps NAME.log > NAME.log.chk` rewrites a file.
TEST(GpsCaptures, EachGivesItsChkListingHoweverItsBytesAreSplit) {
  for (const std::filesystem::path& path : captures()) {
    const std::string name = path.filename().string();
    const std::string bytes = testing::readBytes(path);
    const std::string whole = gpsCaptureListing(name, handle(bytes, 0));
    EXPECT_TRUE(sameListing(name + ".chk", testing::readBytes(path.string() + ".chk"), whole));
    for (const std::size_t maxChunk : {1, 300})
      EXPECT_TRUE(
          sameListing(name + " in chunks of up to " + std::to_string(maxChunk), whole,
                      gpsCaptureListing(name, handle(bytes, maxChunk, unsigned(bytes.size())))));
  }
}

// Lines whose verdicts and shown fields were worked out by hand from the files
// (the fix count runs over each file's valid GGA).
TEST(GpsCaptures, LinesCheckedByHand) {
  using S = GpsFieldsShown;
  const std::tuple<const char*, std::string, bool, GpsFieldsShown> lines[] = {
      // CR LF; fix 6 is none of the five; a comment line without "$" or CR.
      {"garmin-10x.log",
       "$GPGGA,165010.000,4143.6057,N,08338.0788,W,6,00,50.0,203.8,M,-33.7,M,,0000*5D", true,
       S{.activity = "\\", .fixCount = "4    ", .satellites = " 0", .fix = ""}},
      {"garmin-10x.log", "$GPGSA,A,2,,,,,,,,,,,,,50.0,50.0,50.0*06", true, S{.pdop = "50.0"}},
      {"garmin-10x.log", "# Some duplicative sentences with 2D fixes were removed her", false, S{}},
      {"garmin-10x.log", "$GPGGA,165019.000,,,,,0,00,,,M,0.0,M,,0000*5C", true,
       S{.activity = "/", .fixCount = "5    ", .satellites = " 0", .fix = "NO FIX"}},
      // Bare line feeds: the checksum's last digit is cut, so GGA and GSA
      // show question marks; a "*00" still matches.
      {"iTrek.log", "$GPGSA,A,1,,,,*3", false, S{.pdop = "??"}},
      {"iTrek.log", "$GPGGA,045851.000,3519.9046,N,13640.2631,E,1,04,2.2,80.4,M,,,,0000*3", false,
       S{.satellites = "??", .fix = ""}},
      {"iTrek.log", "$GPRMC,045902.000,A,3519.9034,N,13640.2633,E,0.13,137.85,270705,,*0", true,
       S{}},
      // Every GGA's checksum is off by 0x02 (56 sent as 54); the ZDA is right.
      {"firefly-II.log", "$GPGGA,005947.00,3715.6616,N,12157.6709,W,,11,0.8,86.0,M,-30.1,M,,*54",
       false, S{.satellites = "??", .fix = ""}},
      {"firefly-II.log", "$GPZDA,005947.00,08,07,2010,+00,00*4E", true, S{}},
      // Cold-boot garbage: NULs cut an RMC, a second "*" spoils a GSA.
      {"gp-320fw-2019-04-07-coldboot.log",
       "$GPGGA,000343.03,4808.9993,N,01135.0798,E,1,04,01.4,00460.0,M,0046.2,M,,*56", true,
       S{.activity = "/", .fixCount = "1    ", .satellites = " 4", .fix = "AGPS"}},
      {"gp-320fw-2019-04-07-coldboot.log", "$GPRMC,000346.03,A,4808", false, S{}},
      {"gp-320fw-2019-04-07-coldboot.log", "$GPGSA,A,1,,,,,,,,,,,,,,,*1E*43", false,
       S{.pdop = "??"}},
  };
  for (const auto& [name, text, valid, shown] : lines) {
    const auto handled =
        handle(testing::readBytes(std::filesystem::path(GC40_NMEA_CAPTURES) / name), 0);
    EXPECT_TRUE(std::ranges::find(handled, HandledGpsLine{text, valid, shown}) != handled.end())
        << text;
  }
}

}  // namespace
}  // namespace gc40
