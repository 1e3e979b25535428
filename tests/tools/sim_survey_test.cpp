// The simulated survey: the ground it reads, the grid it walks, and the two
// links it drives, run on a clock of the test's own.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>
#include <vector>

#include "base/number_text.h"
#include "gc40-sim/survey_links.h"
#include "gc40-sim/survey_walk.h"
#include "gc40-sim/synthetic_ground.h"
#include "gps/nmea.h"
#include "instrument/reading_decoder.h"

namespace gc40 {
namespace {

using namespace std::chrono;

// Default grid: ten lines of 100 m north, 2 m apart eastwards.
TEST(SyntheticGround, TargetsAndPipeStandOnTheBackgroundWhereTheGridPutsThem) {
  const SyntheticGround ground = groundForSurvey({});
  ASSERT_EQ(ground.targets.size(), 3u);
  std::string centres;
  for (const RoundTarget& target : ground.targets)
    centres += formatFixed(target.centre.east, 3) + ',' + formatFixed(target.centre.north, 3) + ' ';
  EXPECT_EQ(centres, "4.000,30.000 10.000,70.000 14.000,45.000 ");

  const auto near = [&](EastNorth point, double conductivity, double inphase) {
    const GroundValue value = groundValueAt(ground, point);
    EXPECT_NEAR(value.conductivity, conductivity, 1e-3) << point.east << ',' << point.north;
    EXPECT_NEAR(value.inphase, inphase, 1e-3) << point.east << ',' << point.north;
  };
  near({10, 70}, 65, 4.5);            // the strongest target's centre
  near({11.5, 70}, 47.2939, 2.9261);  // one width (1.5 m) off it
  near({50, 50}, 20, 0.5);            // well away from everything
  near({13.8296, 86.2941}, 55, 6.5);  // on the pipe, 5 m along from its middle
  near({13.8296 + 0.4 * std::cos(75 * std::numbers::pi / 180),
        86.2941 - 0.4 * std::sin(75 * std::numbers::pi / 180)},
       41.2286, 4.1392);  // one width (0.4 m) across it

  // Where a test of the export finds the targets: the second one's position
  // as an independent transverse Mercator about the origin gives it.
  const LatLon second = roundTargetPositions(ground)[1];
  EXPECT_NEAR(second.latitude, 45.3876498, 1e-7);
  EXPECT_NEAR(second.longitude, -75.6959523, 1e-7);
  EXPECT_NEAR(groundValueAt(ground, second).conductivity, 65, 1e-3);
}

// Rounded first, so that a hair below zero reads 0.00 and not -0.00.
std::string centimetres(double metres) {
  return formatFixed(std::round(metres * 100) / 100 + 0.0, 2);
}

// Four lines of 20 m, 2 m apart: a leg is a line and a half circle of pi metres.
TEST(SurveyWalk, LinesInAlternateDirectionsJoinedByHalfCircles) {
  SurveyOptions survey{.lines = 4, .lineLength = 20, .lineSpacing = 2, .speed = 1, .layback = 1.5};
  const double leg = 20 + std::numbers::pi;
  const auto pose = [&](double seconds) {
    const WalkPose p = antennaPose(survey, seconds);
    return centimetres(p.position.east) + ',' + centimetres(p.position.north) + " heading " +
           formatFixed(p.heading, 0) + " at " + formatFixed(p.speed, 1);
  };
  EXPECT_EQ(pose(-2), "0.00,-2.00 heading 0 at 1.0");  // coming up to the first line
  EXPECT_EQ(pose(5), "0.00,5.00 heading 0 at 1.0");
  EXPECT_EQ(pose(20 + std::numbers::pi / 2), "1.00,21.00 heading 90 at 1.0");  // the turn's apex
  EXPECT_EQ(pose(leg + 5), "2.00,15.00 heading 180 at 1.0");
  const EastNorth sensor = sensorPosition(survey, leg + 5);
  EXPECT_EQ(centimetres(sensor.east) + ',' + centimetres(sensor.north), "2.00,16.50");
  EXPECT_NEAR(walkDuration(survey), 80 + 3 * std::numbers::pi, 1e-9);
  EXPECT_EQ(pose(200), "6.00,0.00 heading 180 at 0.0");  // stopped at the last line's end

  survey.repeat = true;  // back over line 2 after line 3, turning south of the grid
  EXPECT_EQ(pose(3 * leg + 20 + std::numbers::pi / 2), "5.00,-1.00 heading 270 at 1.0");
  EXPECT_EQ(pose(4 * leg + 5), "4.00,5.00 heading 0 at 1.0");
  EXPECT_EQ(pose(6 * leg + 5), "0.00,5.00 heading 0 at 1.0");  // line 0 again
  survey.bearing = 90;  // lines east, the next ones to the south
  EXPECT_EQ(pose(leg + 5), "15.00,-2.00 heading 270 at 1.0");
}

struct Sent {
  double seconds;
  std::string bytes;
};

// Both links for `seconds`, each asked again once its last chunk's gap is over.
void runSurvey(const SurveyOptions& survey, double seconds, std::vector<Sent>& records,
               std::vector<Sent>& fixes) {
  nanoseconds now{0}, meterDue{0}, gpsDue{0};
  const auto utcStart = sys_days(2026y / 11 / 21) + 9h + 30min;
  SurveyLinks links = startSurveyLinks(survey, {.status = 36}, utcStart, [&] { return now; });
  while (true) {
    const bool meter = meterDue <= gpsDue;
    now = meter ? meterDue : gpsDue;
    if (now >= duration<double>(seconds)) return;
    const Chunk chunk = (meter ? links.meter : links.gps)().value();
    (meter ? records : fixes).push_back({duration<double>(now).count(), chunk.bytes});
    (meter ? meterDue : gpsDue) += chunk.gapAfter;
  }
}

struct Fix {
  double seconds;
  EastNorth position;
  std::string speed, course;
};

double degrees(std::string_view field, std::size_t degreeDigits, std::string_view hemisphere) {
  const double value = parseDecimalPrefix(field.substr(0, degreeDigits)) +
                       parseDecimalPrefix(field.substr(degreeDigits)) / 60;
  return hemisphere == "S" || hemisphere == "W" ? -value : value;
}

std::vector<Fix> readFixes(const std::vector<Sent>& sent, const LatLon& origin) {
  std::vector<Fix> fixes;
  for (const auto& [seconds, bytes] : sent) {
    Fix fix{.seconds = seconds, .position = {}, .speed = {}, .course = {}};
    for (std::size_t start = 0, end; (end = bytes.find("\r\n", start)) != std::string::npos;
         start = end + 2) {
      const std::string_view line = std::string_view(bytes).substr(start, end - start);
      EXPECT_TRUE(nmeaChecksumValid(line)) << line;
      const auto field = [&](int n) { return getField(line, n).value_or(""); };
      if (field(1) == "$GPGGA") {
        EXPECT_EQ(std::string(field(7)) + ',' + std::string(field(8)), "1,09");
        fix.position =
            toEastNorth(origin, {degrees(field(3), 2, field(4)), degrees(field(5), 3, field(6))});
      }
      if (field(1) == "$GPRMC") fix.speed = field(8), fix.course = field(9);
    }
    fixes.push_back(fix);
  }
  return fixes;
}

// The antenna between the fixes around `seconds`, as a logger interpolates it.
EastNorth antennaFrom(const std::vector<Fix>& fixes, double seconds) {
  std::size_t after = 1;
  while (fixes[after].seconds < seconds) ++after;
  const Fix &a = fixes[after - 1], &b = fixes[after];
  const double share = (seconds - a.seconds) / (b.seconds - a.seconds);
  return {a.position.east + share * (b.position.east - a.position.east),
          a.position.north + share * (b.position.north - a.position.north)};
}

// How far a reading lies outside what the ground holds within a few
// centimetres of `point`, the receiver's resolution, in each channel.
GroundValue outside(const SyntheticGround& ground, const EastNorth& point,
                    const DecodedReading& reading) {
  constexpr double kSlack = 0.03;
  GroundValue low = groundValueAt(ground, point), high = low;
  for (int i = 0; i < 16; ++i) {
    const double angle = i * std::numbers::pi / 8;
    const EastNorth near{point.east + kSlack * std::cos(angle),
                         point.north + kSlack * std::sin(angle)};
    const GroundValue value = groundValueAt(ground, near);
    low = {std::min(low.conductivity, value.conductivity), std::min(low.inphase, value.inphase)};
    high = {std::max(high.conductivity, value.conductivity), std::max(high.inphase, value.inphase)};
  }
  return {std::max({0.0, reading.conductivity - high.conductivity,
                    low.conductivity - reading.conductivity}),
          std::max({0.0, reading.inphase - high.inphase, low.inphase - reading.inphase})};
}

// The receiver traces the lines in alternate directions; a logger that puts
// each record at the fix of its time less the lag, moved back by the layback
// along the travel, reads there what the ground holds. The lines are long
// enough that the pipe lies well away from the turns, where the direction
// taken from the track around a record bends.
TEST(SurveyLinks, FixesTraceTheLinesAndRecordsCarryTheGroundBehindTheAntennaLagLate) {
  const SurveyOptions survey{.lines = 4,
                             .lineLength = 40,
                             .lineSpacing = 2,
                             .speed = 1,
                             .trueLag = milliseconds(600),
                             .layback = 1.5,
                             .fixesPerSecond = 10};
  const double duration = walkDuration(survey), leg = 40 + std::numbers::pi;
  std::vector<Sent> records, sentFixes;
  runSurvey(survey, duration + 2, records, sentFixes);
  const std::vector<Fix> fixes = readFixes(sentFixes, survey.origin);
  ASSERT_EQ(fixes.size(), static_cast<std::size_t>(std::ceil((duration + 2) * 10)));

  for (int line = 0; line < 4; ++line) {
    const Fix& middle = fixes[static_cast<std::size_t>(std::lround((line * leg + 20) * 10))];
    EXPECT_NEAR(middle.position.east, 2 * line, 0.02) << line;
    EXPECT_NEAR(middle.position.north, 20, 0.06) << line;
    EXPECT_EQ(middle.speed + ' ' + middle.course, line % 2 ? "1.94 180.0" : "1.94 0.0") << line;
  }
  const Fix& last = fixes.back();
  EXPECT_NEAR(last.position.east, 6, 0.02);
  EXPECT_NEAR(last.position.north, 0, 0.02);
  EXPECT_EQ(last.speed, "0.00");

  const SyntheticGround ground = groundForSurvey(survey);
  GroundValue worst;
  int overTargets = 0;
  for (const auto& [seconds, bytes] : records) {
    const double sensed = seconds - 0.6;
    if (sensed < 1 || sensed + 1 > duration) continue;
    // The way of travel from the chord of two seconds of track around: along
    // a line, or parallel to the tangent at its middle in a turn.
    const EastNorth at = antennaFrom(fixes, sensed), before = antennaFrom(fixes, sensed - 1),
                    after = antennaFrom(fixes, sensed + 1);
    const double east = after.east - before.east, north = after.north - before.north;
    const double length = std::hypot(east, north);
    const EastNorth sensor{at.east - 1.5 * east / length, at.north - 1.5 * north / length};
    FiledValues filed;
    const GroundValue off =
        outside(ground, sensor, decodeInstrumentRecord(bytes, Settings{}, filed));
    worst = {std::max(worst.conductivity, off.conductivity), std::max(worst.inphase, off.inphase)};
    overTargets += groundValueAt(ground, sensor).conductivity > 40;
  }
  EXPECT_GT(overTargets, 50);  // the check saw the peaks, not only the background
  // Half a step of the 100 range and of the inphase.
  EXPECT_LT(worst.conductivity, 0.0125);
  EXPECT_LT(worst.inphase, 0.00125);
}

}  // namespace
}  // namespace gc40
