#include "survey/reading_positions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "support/recorded_file.h"
#include "survey_bytes.h"

namespace gc40 {
namespace {

using testing::east;
using testing::gga;
using testing::instrumentRecord;
using testing::kLatitude;
using testing::kMetresPerDegree;
using testing::north;
using testing::rmc;
using testing::SurveyBytes;
using testing::verticalReading;

// Ticks counted from the moment the counter wraps: -2000 is 2^32 - 2000.
constexpr std::uint32_t fromWrap(int ms) { return static_cast<std::uint32_t>(ms); }

// The step from one position to another, in metres east and north.
std::pair<double, double> metresBetween(const GeoPosition& from, const GeoPosition& to) {
  return {(to.longitude - from.longitude) * kMetresPerDegree *
              std::cos(kLatitude * std::numbers::pi / 180),
          (to.latitude - from.latitude) * kMetresPerDegree};
}

Settings gpsSettings() { return {.gpsEnabled = 1}; }

PositionedFile positioned(const std::string& bytes, const PositionOptions& options = {}) {
  const DataFileContents contents = readDataFile(bytes);
  EXPECT_TRUE(contents.problems.empty());
  return positionReadings(contents, *splitSurveyLines(contents), options);
}

// A walk 10 m north, 10 m east, then a three-second gap: readings between
// fixes are interpolated, the sensor rides behind and to the right of the
// antenna whichever way the walk turns, and readings outside the fixes or in
// the gap say why they have no position.
TEST(ReadingPositions, InterpolatedBetweenFixesAndMovedWithTheTravel) {
  const LocalTime now{2026, 5, 4, 12, 0, 0, 0};
  SurveyBytes file(gpsSettings());
  file.line(u"1", 2, now, 9000).reading(verticalReading(20), 9800);
  file.sentence(gga("120000.00", north(0), east(0), 1, "80.0"), 10000)
      .reading(verticalReading(20), 10200);
  file.sentence(gga("120000.50", 10.0, 10.0), 10500, false)  // checksum wrong
      .sentence(gga("120000.50", 10.0, 10.0, 0), 10500)      // no fix
      .reading(verticalReading(20), 10500);
  file.sentence(gga("120001.00", north(10), east(0), 1, "82.0"), 11000)
      .sentence(rmc("120001.00", "040526", north(10), east(0), "19.4", "0.0"), 11020)
      .reading(verticalReading(20), 11500);
  file.sentence(gga("120002.00", north(10), east(10)), 12000).reading(verticalReading(20), 13000);
  file.sentence(gga("120005.00", north(10), east(20)), 15000).reading(verticalReading(20), 15500);

  const PositionedFile plain = positioned(file.bytes());
  ASSERT_TRUE(plain.hasFixes);
  ASSERT_EQ(plain.readings.size(), 6u);
  using R = NoPositionReason;
  std::vector<R> reasons;
  for (const PositionedReading& reading : plain.readings) reasons.push_back(reading.noPosition);
  EXPECT_EQ(reasons, (std::vector{R::kBeforeFirstFix, R::kPositioned, R::kPositioned,
                                  R::kPositioned, R::kGapTooLong, R::kAfterLastFix}));
  EXPECT_STREQ(noPositionText(reasons[4]), "gap too long");

  const GeoPosition& half = *plain.readings[2].position;
  EXPECT_NEAR(half.latitude, north(5), 1e-7);
  EXPECT_NEAR(half.longitude, east(0), 1e-7);
  EXPECT_DOUBLE_EQ(*half.altitude, 81.0);
  EXPECT_EQ(std::tuple(half.fixQuality, half.satellites, *half.hdop, half.fixAgeMs),
            std::tuple(1, 8, 0.9, 500u));
  EXPECT_FALSE(half.speedKnots);
  const GeoPosition& turned = *plain.readings[3].position;
  EXPECT_EQ(std::tuple(*turned.speedKnots, *turned.courseDegrees), std::tuple(19.4, 0.0));

  // The meter 300 ms ahead of the GPS: the reading at 10200 was taken where
  // the antenna was at 10500, and the one before the first fix now has one.
  const PositionedFile ahead = positioned(file.bytes(), {.lagMs = -300});
  EXPECT_NEAR(ahead.readings[1].position->latitude, half.latitude, 1e-9);
  EXPECT_EQ(ahead.readings[0].noPosition, R::kPositioned);

  const PositionedFile offset = positioned(file.bytes(), {.laybackM = 2.0, .crossTrackM = 1.0});
  const auto [northEast, northNorth] = metresBetween(half, *offset.readings[2].position);
  EXPECT_NEAR(northEast, 1.0, 0.01);  // walking north, right is east
  EXPECT_NEAR(northNorth, -2.0, 0.01);
  const auto [eastEast, eastNorth] = metresBetween(turned, *offset.readings[3].position);
  EXPECT_NEAR(eastEast, -2.0, 0.01);  // walking east, right is south
  EXPECT_NEAR(eastNorth, -1.0, 0.01);
}

// The tick counter wraps past 2^32 two seconds before midnight: clock times,
// the receiver's UTC (its date from an RMC sent before midnight) and the
// interpolation between fixes all run on across both.
TEST(ReadingPositions, ClockAndReceiverTimesRunOnAcrossMidnightAndTickWrap) {
  const std::uint32_t before = fromWrap(-2000);
  SurveyBytes file(gpsSettings());
  file.line(u"1", 2, {2025, 12, 31, 23, 59, 58, 0}, before)
      .timeMark({2025, 12, 31, 23, 59, 58, 500}, before);
  file.sentence(rmc("235959.00", "311225", north(0), east(0), "1.9", "0.0"), fromWrap(-1500))
      .sentence(gga("235959.00", north(0), east(0)), fromWrap(-1500))
      .reading(verticalReading(20), fromWrap(-1000))
      .sentence(gga("000000.00", north(1), east(0)), fromWrap(-500))
      .reading(verticalReading(20), 296)
      .sentence(gga("000001.00", north(2), east(0)), 500)
      .timeMark({2026, 1, 1, 0, 0, 1, 100}, 500)  // the clock set 100 ms on
      .reading(verticalReading(20), 1500);

  const PositionedFile result = positioned(file.bytes());
  ASSERT_EQ(result.readings.size(), 3u);
  const auto text = [](const std::optional<LocalTime>& t) {
    if (!t) return std::string("none");
    return std::to_string(t->year) + '-' + std::to_string(t->month) + '-' + std::to_string(t->day) +
           ' ' + std::to_string(t->hour) + ':' + std::to_string(t->minute) + ':' +
           std::to_string(t->second) + '.' + std::to_string(t->millisecond);
  };
  EXPECT_EQ(text(result.readings[0].localTime), "2025-12-31 23:59:59.500");
  EXPECT_EQ(text(result.readings[1].localTime), "2026-1-1 0:0:0.796");
  EXPECT_EQ(text(result.readings[2].localTime), "2026-1-1 0:0:2.100");
  EXPECT_EQ(text(result.readings[0].utc), "2025-12-31 23:59:59.500");
  EXPECT_EQ(text(result.readings[1].utc), "2026-1-1 0:0:0.796");
  EXPECT_EQ(result.readings[1].tick, 296u);
  EXPECT_NEAR(result.readings[1].position->latitude, north(1.796), 1e-7);
}

// A file without a usable fix (a wrong checksum, a GGA without a fix) keeps
// every reading, repeats included, on its line and station as the split
// placed it, with its values decoded for its dipole, and gives grid
// coordinates: the station and the line's name where that is a number.
TEST(ReadingPositions, WithoutFixesReadingsGetGridCoordinates) {
  const LocalTime now{2026, 5, 4, 12, 0, 0, 0};
  const std::string vertical = verticalReading(12.5);
  const std::string repeat = "2" + vertical.substr(1);
  const std::string horizontal = instrumentRecord(0x10, "-80.0000.0");
  SurveyBytes file(gpsSettings());
  file.line(u"10", 2, now, 1000).reading(vertical, 1100).reading(repeat, 1200);
  file.sentence(gga("120000.00", north(0), east(0)), 1250, false)
      .sentence(gga("120000.00", north(0), east(0), 0), 1260);
  file.line(u"11.5", 1, now, 1300).reading(horizontal, 1400);
  file.line(u"L3", 2, now, 1500).reading(vertical, 1600);

  const DataFileContents contents = readDataFile(file.bytes());
  const SurveyFile survey = *splitSurveyLines(contents);
  const PositionedFile result = positionReadings(contents, survey, {});
  EXPECT_FALSE(result.hasFixes);
  ASSERT_EQ(result.readings.size(), 4u);
  for (std::size_t i = 0; i < result.readings.size(); ++i) {
    const PositionedReading& reading = result.readings[i];
    EXPECT_EQ(reading.readingNumber, i + 1);
    EXPECT_EQ(reading.noPosition, NoPositionReason::kNoFixes);
    EXPECT_FALSE(reading.position);
    EXPECT_EQ(reading.gridX, reading.station);
  }
  const auto& r = result.readings;
  EXPECT_EQ(std::vector({r[0].station, r[1].station}), survey.lines[0].readingStations);
  EXPECT_EQ(r[2].station, survey.lines[1].readingStations.at(0));
  EXPECT_EQ(std::tuple(r[1].lineIndex, r[1].lineName, r[1].direction, r[1].gridY),
            std::tuple(0u, std::string("10"), 'N', std::optional(10.0)));
  EXPECT_EQ(std::tuple(r[2].lineIndex, r[2].direction, r[2].gridY),
            std::tuple(1u, 'S', std::optional(11.5)));
  EXPECT_EQ(std::tuple(r[3].lineName, r[3].gridY),
            std::tuple(std::string("L3"), std::optional<double>()));
  EXPECT_EQ(std::tuple(r[0].dipole, *r[0].verticalConductivity, r[0].horizontalConductivity),
            std::tuple('V', 12.5f, std::optional<float>()));
  EXPECT_EQ(std::tuple(r[2].dipole, *r[2].horizontalConductivity, r[2].verticalConductivity),
            std::tuple('H', 20.0f, std::optional<float>()));
  EXPECT_EQ(r[2].range, 1000);
  EXPECT_EQ(r[3].localTime->hour, 12);
  EXPECT_FALSE(r[3].utc);
}

}  // namespace
}  // namespace gc40
