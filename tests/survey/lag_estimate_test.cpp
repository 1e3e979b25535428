#include "survey/lag_estimate.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "survey_bytes.h"

namespace gc40 {
namespace {

using testing::east;
using testing::gga;
using testing::north;
using testing::SurveyBytes;
using testing::verticalReading;

constexpr int kLines = 8;        // 1 m apart
constexpr int kWalkMs = 30'000;  // 30 m at 1 m/s
constexpr int kTurnMs = 4000;
constexpr int kLateMs = 600;

struct Metres {
  double east, north;
};

// Where the sensor is `t` ms into the survey: walking the lines, or turning
// over to the start of the next one. One-way surveys walk back south to it.
Metres walkedAt(int t, bool bothWays) {
  const int line = std::min(t / (kWalkMs + kTurnMs), kLines - 1);
  const int into = std::max(t, 0) - line * (kWalkMs + kTurnMs);
  const auto northward = [bothWays](int l) { return !bothWays || l % 2 == 0; };
  const double length = kWalkMs / 1000.0;
  if (into < kWalkMs) {
    const double along = into / 1000.0;
    return {double(line), northward(line) ? along : length - along};
  }
  const double turned = double(into - kWalkMs) / kTurnMs;
  const double from = northward(line) ? length : 0, to = northward(line + 1) ? 0 : length;
  return {line + turned, from + turned * (to - from)};
}

// A round anomaly of 12 mS/m over 10 mS/m ground, 3 m wide, amid the lines.
double groundAt(Metres at) {
  const double e = at.east - 3.5, n = at.north - 15.0;
  return 10.0 + 12.0 * std::exp(-(e * e + n * n) / 18.0);
}

std::string syntheticSurvey(bool bothWays) {
  SurveyBytes file({.gpsEnabled = 1});
  const std::uint32_t start = 50'000;
  for (int t = 0; t <= kLines * (kWalkMs + kTurnMs) - kTurnMs; ++t) {
    const int line = t / (kWalkMs + kTurnMs), into = t % (kWalkMs + kTurnMs);
    const LocalTime now{2026, 5, 4, 12, t / 60'000, t / 1000 % 60, t % 1000};
    const std::uint32_t tick = start + static_cast<std::uint32_t>(t);
    if (into == 0)
      file.line(std::u16string(1, u'1' + line), bothWays && line % 2 ? 1 : 2, now, tick);
    if (t % 1000 == 0) {
      const Metres at = walkedAt(t, bothWays);
      const std::string utc =
          "12" + formatZeroPadded(t / 60'000, 2) + formatZeroPadded(t / 1000 % 60, 2) + ".00";
      file.sentence(gga(utc, north(at.north), east(at.east)), tick);
    }
    if (into < kWalkMs && into % 91 == 0)
      file.reading(verticalReading(groundAt(walkedAt(t - kLateMs, bothWays))), tick);
  }
  return file.bytes();
}

LagEstimate estimate(const std::string& bytes, const PositionOptions& options = {},
                     const LagSearch& search = {}) {
  const DataFileContents contents = readDataFile(bytes);
  const SurveyFile survey = *splitSurveyLines(contents);
  return estimateLag({{&contents, &survey}}, options, search);
}

// Values 600 ms late smear the anomaly forward along each line, the other
// way on the next: the lag that lines them up again is found, a layback of
// the distance walked in that time accounts for it instead, and files that
// cannot tell are refused with the reason.
TEST(LagEstimate, FindsTheLagThatLinesUpOppositeLines) {
  const std::string survey = syntheticSurvey(true);
  const LagEstimate found = estimate(survey);
  ASSERT_TRUE(found.found) << found.problem;
  EXPECT_NEAR(found.lagMs, kLateMs, 60);
  EXPECT_GT(found.uncertaintyMs, 0.0);
  EXPECT_LT(found.uncertaintyMs, 300.0);
  ASSERT_EQ(found.curve.size(), 401u);
  EXPECT_EQ(found.curve.front().lagMs, -2000);
  EXPECT_GT(found.curve.front().misfit, 2 * found.curve[260].misfit);  // at 600 ms

  const LagEstimate laidBack = estimate(survey, {.laybackM = kLateMs / 1000.0}, {-500, 500, 10});
  ASSERT_TRUE(laidBack.found) << laidBack.problem;
  EXPECT_NEAR(laidBack.lagMs, 0, 60);

  const LagEstimate oneWay = estimate(syntheticSurvey(false));
  EXPECT_FALSE(oneWay.found);
  EXPECT_EQ(oneWay.problem, "lines walked one way only");
  SurveyBytes noGps({});
  noGps.line(u"1", 2, {2026, 5, 4, 12, 0, 0, 0}, 1000).reading(verticalReading(12), 1100);
  EXPECT_EQ(estimate(noGps.bytes()).problem, "no GPS fixes");
}

}  // namespace
}  // namespace gc40
