#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "gps/gps_line_assembler.h"
#include "gps/gps_status.h"
#include "gps/nmea.h"
#include "support/gps_printing.h"

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

TEST(GpsLines, FieldsAreFoundBetweenSeparators) {
  EXPECT_EQ(getField(kGga, 1), "$GPGGA");
  EXPECT_EQ(getField(kGga, 7), "1");
  EXPECT_EQ(getField(kGga, 8), "08");
  EXPECT_EQ(getField(kGga, 14), "");     // empty, but there
  EXPECT_EQ(getField(kGga, 15), "*47");  // the rest, tail and all
  EXPECT_EQ(getField(kGga, 16), std::nullopt);
  EXPECT_EQ(getField("abc", 1), "abc");
  EXPECT_EQ(getField("abc", 2), std::nullopt);
  EXPECT_EQ(getField("a;b", 2, ';'), "b");
  EXPECT_EQ(getField(kGga, 0), std::nullopt);
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
           Case{"$GPGSA,A,3,,,,,,,,,,,,,123.456", {.pdop = "123.5"}},
           Case{"$GPGGA,1,2,3,4,5,6,12345", {.activity = "/", .satellites = "12345", .fix = ""}},
           Case{"$GPGGA,1,2,3,4,5,2", {.activity = "\\", .satellites = " 0", .fix = "DGPS"}},
           Case{"$GPGGA,,,,,,0,x", {.activity = "/", .satellites = " 0", .fix = "NO FIX"}},
           Case{"$GPGGA,,,,,,5", {.activity = "\\", .satellites = " 0", .fix = ""}},
           Case{"$GPRMC,1,2", {}},
       }) {
    EXPECT_EQ(onGpsSentence(status, sentence, true, false), shown) << sentence;
  }
  EXPECT_EQ(onGpsSentence(status, "$GSA", true, false), (GpsFieldsShown{.pdop = "??"}));  // short
}

}  // namespace
}  // namespace gc40
