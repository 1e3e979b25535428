// A survey walked by gc40-sim and logged by gc40 with its GPS receiver: the
// meter's values lag the receiver's fixes and its sensor rides behind the
// antenna. Positioned with the lag the file itself gives, the buried targets'
// peaks land where the simulator buried them; positioned as recorded, they
// shift ahead of the walker, one way on one line and the other way back.

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <numbers>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/number_text.h"
#include "datafile/data_file_reader.h"
#include "e2e/whole_run.h"
#include "gc40-sim/local_plane.h"
#include "gc40-sim/sim_options.h"
#include "gc40-sim/survey_walk.h"
#include "gc40-sim/synthetic_ground.h"
#include "survey/lag_estimate.h"
#include "survey/reading_positions.h"
#include "survey/survey_lines.h"

namespace gc40 {
namespace {

using namespace std::chrono_literals;

// Five lines of 24 m, 2 m apart, at 2 m/s: a little over a minute of walking,
// and each target lies under a line of its own, the middle one walked the
// other way from the outer two.
const std::vector<std::string> kSurveyArguments = {
    "--survey", "--lines",    "5",   "--line-length", "24", "--line-spacing", "2", "--speed",
    "2",        "--true-lag", "600", "--layback",     "1.5"};

SurveyOptions surveyOptions() {
  std::vector<std::string_view> arguments(kSurveyArguments.begin(), kSurveyArguments.end());
  arguments.insert(arguments.end(), {"--link", "meter", "--gps-link", "receiver"});
  return std::get<SimOptions>(parseSimOptions(arguments)).survey;
}

// Metres along the first line's direction and to its right.
struct GridOffset {
  double along = 0;
  double across = 0;
};

GridOffset gridOffset(const SurveyOptions& survey, const EastNorth& from, const EastNorth& to) {
  const double bearing = survey.bearing * std::numbers::pi / 180;
  const double east = to.east - from.east, north = to.north - from.north;
  return {east * std::sin(bearing) + north * std::cos(bearing),
          east * std::cos(bearing) - north * std::sin(bearing)};
}

// Where a target shows on the line walked over it: the peak of conductivity
// among the readings within 4 m along that line, refined by a parabola
// through its neighbours; `travel` is +1 where the line was walked the first
// line's way, -1 back.
struct TargetPeak {
  double along = 0;  // metres from the target, along the first line's direction
  int travel = 0;
  std::size_t readings = 0;
};

std::optional<TargetPeak> peakOver(const SurveyOptions& survey, const EastNorth& target,
                                   const PositionedFile& file) {
  struct Sample {
    double along;
    double value;
  };
  std::vector<Sample> line;  // in the order walked
  for (const PositionedReading& reading : file.readings) {
    if (!reading.position || !reading.verticalConductivity) continue;
    const EastNorth at =
        toEastNorth(survey.origin, {reading.position->latitude, reading.position->longitude});
    const GridOffset offset = gridOffset(survey, target, at);
    // Half the line spacing picks the line over the target and no other.
    if (std::abs(offset.across) < survey.lineSpacing / 2 && std::abs(offset.along) < 4)
      line.push_back({offset.along, *reading.verticalConductivity});
  }
  if (line.size() < 3) return std::nullopt;
  const auto top = std::max_element(line.begin(), line.end(),
                                    [](auto& a, auto& b) { return a.value < b.value; });
  TargetPeak peak{top->along, line.back().along > line.front().along ? 1 : -1, line.size()};
  if (top != line.begin() && top + 1 != line.end()) {
    const Sample &before = *(top - 1), &after = *(top + 1);
    const double bend = before.value - 2 * top->value + after.value;
    if (bend < 0)
      peak.along += 0.5 * (before.value - after.value) / bend * (after.along - before.along) / 2;
  }
  return peak;
}

class SurveyRun : public WholeRun {
 protected:
  SurveyRun() {
    surveying = true;
    simOptions = kSurveyArguments;
  }
};

TEST_F(SurveyRun, TheEstimatedLagPutsEveryTargetWhereItIsAndNoCorrectionShiftsThemAlternately) {
  const SurveyOptions survey = surveyOptions();
  const auto walk = std::chrono::duration<double>(walkDuration(survey));
  createFileAndGo();
  // The walk began when gc40 opened the ports, before logging started; it
  // is over once this long has passed since, with the walker standing still.
  const auto end = std::chrono::steady_clock::now() + walk + 2s;
  while (std::chrono::steady_clock::now() < end)
    if (const auto line = gc40->readLine(500ms)) noteRecorded(*line);
  send("key Space");
  ASSERT_TRUE(waitForRecords(1, "$PAUSED"));
  send("key x");
  ASSERT_TRUE(waitFront("Confirm Exit", kLoggingScreen));
  send("click Yes");
  ASSERT_TRUE(waitFront("GC40"));
  send("key x");
  EXPECT_EQ(gc40->waitForExit(10s), 0);

  const DataFileContents contents = file();
  ASSERT_TRUE(contents.problems.empty());
  const SurveyFile lines = *splitSurveyLines(contents);
  PositionOptions options{.laybackM = survey.layback};
  const LagEstimate lag = estimateLag({{&contents, &lines}}, options);
  ASSERT_TRUE(lag.found) << lag.problem;
  const double trueLagMs = static_cast<double>(survey.trueLag.count());
  EXPECT_NEAR(lag.lagMs, trueLagMs, 60) << "give or take " << lag.uncertaintyMs;

  options.lagMs = lag.lagMs;
  const PositionedFile corrected = positionReadings(contents, lines, options);
  const PositionedFile uncorrected = positionReadings(contents, lines, {});
  // Uncorrected, a reading is put where the antenna was when it arrived,
  // while the sensor read the ground as far behind as the walker went in the
  // lag, and then the layback further.
  const double shift = survey.speed * trueLagMs / 1000 + survey.layback;
  std::vector<int> travels;
  const SyntheticGround ground = groundForSurvey(survey);
  for (const RoundTarget& target : ground.targets) {
    SCOPED_TRACE("target at " + std::to_string(target.centre.east) + " E, " +
                 std::to_string(target.centre.north) + " N");
    const std::optional<TargetPeak> right = peakOver(survey, target.centre, corrected);
    const std::optional<TargetPeak> raw = peakOver(survey, target.centre, uncorrected);
    ASSERT_TRUE(right && raw);
    EXPECT_GT(right->readings, 15u);  // 8 m of line, a reading every 0.4 m
    EXPECT_NEAR(right->along, 0, 0.5);
    EXPECT_NEAR(raw->along * raw->travel, shift, 0.3 * shift);
    // The figures of the run, in the test's XML report.
    const std::string name = "target_" + std::to_string(travels.size());
    RecordProperty(name + "_corrected_m", formatFixed(right->along, 2));
    RecordProperty(name + "_uncorrected_m", formatFixed(raw->along, 2));
    travels.push_back(raw->travel);
  }
  RecordProperty("lag_ms", std::to_string(lag.lagMs) + " +- " + formatFixed(lag.uncertaintyMs, 0));
  EXPECT_NE(std::count(travels.begin(), travels.end(), 1), 0);
  EXPECT_NE(std::count(travels.begin(), travels.end(), -1), 0);
}

}  // namespace
}  // namespace gc40
