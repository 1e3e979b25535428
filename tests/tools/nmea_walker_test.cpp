// The generated GPS receiver: sentences the logger takes, a fix that walks on.

#include "gc40-sim/nmea_walker.h"

#include <gtest/gtest.h>

#include <vector>

#include "base/number_text.h"
#include "gps/nmea.h"

namespace gc40 {
namespace {

using namespace std::chrono;

// GGA, GSA and RMC of each second, each checked for its checksum and CR LF.
std::vector<std::vector<std::string>> fixes(int count) {
  NmeaWalker walker = startNmeaWalker(sys_days(2026y / 11 / 21) + 23h + 59min + 59s);
  std::vector<std::vector<std::string>> result(count);
  for (auto& sentences : result) {
    const Chunk chunk = nextWalkerChunk(walker);
    EXPECT_EQ(chunk.gapAfter, 1s);
    for (std::size_t start = 0, end; (end = chunk.bytes.find("\r\n", start)) != std::string::npos;
         start = end + 2) {
      sentences.push_back(chunk.bytes.substr(start, end - start));
      EXPECT_TRUE(nmeaChecksumValid(sentences.back())) << sentences.back();
    }
    EXPECT_EQ(sentences.size(), 3u) << chunk.bytes;
  }
  return result;
}

std::string field(std::string_view sentence, int n) {
  return std::string(getField(sentence, n).value_or("(none)"));
}

TEST(NmeaWalker, EverySecondAValidFixThatWalksOnAtWalkingPace) {
  const auto all = fixes(11);
  const std::string &gga = all[0][0], &gsa = all[0][1], &rmc = all[0][2];
  EXPECT_EQ(field(gga, 1) + field(gga, 2) + ' ' + field(gga, 7) + ' ' + field(gga, 8),
            "$GPGGA235959.00 1 08");
  EXPECT_EQ(field(gsa, 1) + ' ' + field(gsa, 16), "$GPGSA 1.8");
  EXPECT_EQ(field(rmc, 1) + field(rmc, 2) + field(rmc, 3) + field(rmc, 10),
            "$GPRMC235959.00A211126");
  // Past midnight the time and the date go on.
  EXPECT_EQ(field(all[1][0], 2) + ' ' + field(all[1][2], 10), "000000.00 221126");
  // Ten seconds at 1.4 m/s, 30 degrees east of north: some 12 m north.
  const double minutesNorth = parseDecimalPrefix(field(all[10][0], 3).substr(2)) -
                              parseDecimalPrefix(field(gga, 3).substr(2));
  EXPECT_NEAR(minutesNorth * 1852, 12.1, 0.5);
  EXPECT_NE(field(all[10][0], 5), field(gga, 5));
}

}  // namespace
}  // namespace gc40
