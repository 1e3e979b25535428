// A survey walked by gc40-sim and logged by gc40 with its GPS receiver: the
// meter's values lag the receiver's fixes and its sensor rides behind the
// antenna. Exported by r40 with the lag r40 finds in the file itself, the
// buried targets' peaks land where the simulator buried them; exported as
// recorded, they shift ahead of the walker, one way on the lines walked out
// and the other way on those walked back.

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <numbers>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "base/number_text.h"
#include "e2e/whole_run.h"
#include "gc40-sim/local_plane.h"
#include "gc40-sim/sim_options.h"
#include "gc40-sim/survey_walk.h"
#include "gc40-sim/synthetic_ground.h"
#include "harness/child_process.h"
#include "harness/csv_fields.h"
#include "harness/temp_folder.h"
#include "support/r40_run.h"

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

// A reading as the export placed it, in the order of the file.
struct PlacedReading {
  EastNorth at;  // on the simulator's plane
  double conductivity = 0;
};

std::vector<PlacedReading> exportedReadings(const std::filesystem::path& csv,
                                            const LatLon& origin) {
  std::vector<PlacedReading> readings;
  std::istringstream text(testing::readBytes(csv));
  std::string line;
  std::getline(text, line);
  const std::vector<std::string> header = csvFields(line);
  const auto column = [&](const char* name) {
    return std::find(header.begin(), header.end(), name) - header.begin();
  };
  const auto latitude = column("latitude"), longitude = column("longitude"),
             conductivity = column("cond_v");
  EXPECT_LT(std::max({latitude, longitude, conductivity}), std::ssize(header)) << csv;
  while (std::getline(text, line)) {
    const std::vector<std::string> row = csvFields(line);
    if (std::ssize(row) != std::ssize(header)) {
      ADD_FAILURE() << csv << ": " << line;
      continue;
    }
    if (row[latitude].empty() || row[conductivity].empty()) continue;  // no position, no value
    readings.push_back({toEastNorth(origin, {std::stod(row[latitude]), std::stod(row[longitude])}),
                        std::stod(row[conductivity])});
  }
  return readings;
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
                                   const std::vector<PlacedReading>& readings) {
  struct Sample {
    double along;
    double value;
  };
  std::vector<Sample> line;  // in the order walked
  for (const PlacedReading& reading : readings) {
    const GridOffset offset = gridOffset(survey, target, reading.at);
    // Half the line spacing picks the line over the target and no other.
    if (std::abs(offset.across) < survey.lineSpacing / 2 && std::abs(offset.along) < 4)
      line.push_back({offset.along, reading.conductivity});
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

  ASSERT_TRUE(file().problems.empty());

  // The recorded survey stays in the build folder, where
  // scripts/survey_picture.sh draws it.
  std::filesystem::copy_file(dataFile, GC40_TEST_OUTPUT_DIR "/survey.R40",
                             std::filesystem::copy_options::overwrite_existing);
  const std::string layback = formatFixed(survey.layback, 1);
  const testing::R40Run lag =
      testing::r40(folder, {"lag", dataFile.string(), "--layback", layback});
  ASSERT_EQ(lag.status, 0) << lag.err;
  int lagMs = 0, uncertaintyMs = 0;
  ASSERT_EQ(std::sscanf(lag.out.c_str(), "lag: %d ms +/- %d ms", &lagMs, &uncertaintyMs), 2)
      << lag.out;
  const double trueLagMs = static_cast<double>(survey.trueLag.count());
  EXPECT_NEAR(lagMs, trueLagMs, 60) << "give or take " << uncertaintyMs;
  RecordProperty("lag_ms", std::to_string(lagMs) + " +/- " + std::to_string(uncertaintyMs));
  const std::filesystem::path asRecorded = folder.path() / "as_recorded.csv",
                              corrected = folder.path() / "corrected.csv";
  const testing::R40Run plain =
      testing::r40(folder, {"export", dataFile.string(), "-o", asRecorded.string()});
  ASSERT_EQ(plain.status, 0) << plain.err;
  const testing::R40Run fixed =
      testing::r40(folder, {"export", dataFile.string(), "-o", corrected.string(), "--lag",
                            std::to_string(lagMs), "--layback", layback});
  ASSERT_EQ(fixed.status, 0) << fixed.err;

  // As recorded, a reading stands where the antenna was when it arrived,
  // while the sensor read the ground as far behind as the walker went in the
  // lag, and then the layback further.
  const double shift = survey.speed * trueLagMs / 1000 + survey.layback;
  const std::vector<PlacedReading> right = exportedReadings(corrected, survey.origin),
                                   raw = exportedReadings(asRecorded, survey.origin);
  std::vector<int> travels;
  const SyntheticGround ground = groundForSurvey(survey);
  for (const RoundTarget& target : ground.targets) {
    SCOPED_TRACE("target at " + std::to_string(target.centre.east) + " E, " +
                 std::to_string(target.centre.north) + " N");
    const std::optional<TargetPeak> fixed = peakOver(survey, target.centre, right),
                                    shifted = peakOver(survey, target.centre, raw);
    ASSERT_TRUE(fixed && shifted);
    EXPECT_GT(fixed->readings, 15u);  // 8 m of line, a reading every 0.4 m
    EXPECT_NEAR(fixed->along, 0, 0.5);
    EXPECT_NEAR(shifted->along * shifted->travel, shift, 0.3 * shift);
    // The figures of the run, in the test's XML report.
    const std::string name = "target_" + std::to_string(travels.size());
    RecordProperty(name + "_corrected_m", formatFixed(fixed->along, 2));
    RecordProperty(name + "_as_recorded_m", formatFixed(shifted->along, 2));
    travels.push_back(shifted->travel);
  }
  EXPECT_NE(std::count(travels.begin(), travels.end(), 1), 0);
  EXPECT_NE(std::count(travels.begin(), travels.end(), -1), 0);
}

}  // namespace
}  // namespace gc40
