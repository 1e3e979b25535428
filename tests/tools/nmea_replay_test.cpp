// A capture played back: its exact bytes line by line, at its own pace or a fixed one.

#include "gc40-sim/nmea_replay.h"

#include <gtest/gtest.h>

#include <vector>

namespace gc40 {
namespace {

using namespace std::string_literals;
using std::chrono::milliseconds;

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

std::vector<Chunk> take(const NmeaReplayOptions& options, std::size_t limit = 100) {
  NmeaReplay replay = startNmeaReplay(kCapture, options);
  std::vector<Chunk> chunks;
  while (chunks.size() < limit) {
    std::optional<Chunk> chunk = nextNmeaChunk(replay);
    if (!chunk) break;
    chunks.push_back(std::move(*chunk));
  }
  return chunks;
}

TEST(NmeaReplay, SendsEachLineAsItIsAtTheCapturesOwnPace) {
  const std::vector<Chunk> chunks = take({});
  std::string bytes;
  std::vector<milliseconds::rep> gaps;
  for (std::size_t i = 0; i < chunks.size(); ++i) {
    const std::string& line = chunks[i].bytes;
    EXPECT_EQ(line.find('\n'), i + 1 < chunks.size() ? line.size() - 1 : std::string::npos) << i;
    bytes += line;
    gaps.push_back(chunks[i].gapAfter.count());
  }
  EXPECT_EQ(bytes, kCapture);
  // Same time: back to back; then +500 ms, +50 ms (at least 100), +9.35 s (at
  // most 2 s), and backwards over midnight (a second).
  EXPECT_EQ(gaps, (std::vector<milliseconds::rep>{0, 0, 0, 500, 100, 2000, 1000, 0, 0}));
}

TEST(NmeaReplay, FixedPeriodAndLoopStartAgainAfterTheLastPiece) {
  const std::vector<Chunk> chunks =
      take({.file = {}, .period = milliseconds(250), .loop = true}, 20);
  ASSERT_EQ(chunks.size(), 20u);
  EXPECT_EQ(chunks[8].bytes, "$GPGSA,A,3,04");
  for (std::size_t i = 0; i < chunks.size(); ++i) {
    EXPECT_EQ(chunks[i].bytes, chunks[i % 9].bytes) << i;
    EXPECT_EQ(chunks[i].gapAfter, milliseconds(250)) << i;
  }
  // At its own pace the start comes 23:59:50 after the end: at most 2 s.
  const std::vector<Chunk> ownPace = take({.file = {}, .period = std::nullopt, .loop = true}, 10);
  EXPECT_EQ(ownPace[8].gapAfter, milliseconds(0));
  EXPECT_EQ(ownPace[9].gapAfter, milliseconds(2000));
}

}  // namespace
}  // namespace gc40
