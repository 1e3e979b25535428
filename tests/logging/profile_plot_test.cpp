#include "logging/profile_plot.h"

#include <gtest/gtest.h>

#include <limits>
#include <tuple>
#include <vector>

namespace gc40 {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

Settings scales(float conductivityMin, float conductivityMax, std::int32_t plotHeight,
                std::int32_t gridScale = 0) {
  Settings settings;
  settings.conductivityScaleMin = conductivityMin;
  settings.conductivityScaleMax = conductivityMax;
  settings.plotHeight = plotHeight;
  settings.gridScale = gridScale;
  recomputeScaleFactors(settings);
  return settings;
}

// Zero line and grid per scale; any scale gives at most ten lines, all
// strictly inside the plot.
TEST(ProfilePlot, GridFollowsTheChosenScale) {
  struct Case {
    Settings settings;
    std::int32_t zeroY, zeroLineWidth;
    std::size_t lineCount;
    std::vector<std::int32_t> lines;  // checked when not empty
  };
  const Case cases[] = {
      {scales(0, 500, 250), 250, 1, 9, {225, 200, 175, 150, 125, 100, 75, 50, 25}},
      {scales(0, 500, 100, 1), 50, 2, 8, {90, 80, 70, 60, 40, 30, 20, 10}},  // inphase -25..25
      {scales(100, 500, 200), 250, 1, 7, {175, 150, 125, 100, 75, 50, 25}},  // zero below it
      {scales(-500, -100, 200), -50, 1, 7, {}},                              // zero above it
      {scales(0, 0.0625f, 128), 128, 1, 6, {}},                              // step 0.01
      {scales(-0x1p100f, 0x1p100f, 128), 64, 2, 4, {}},                      // step 5e29
      {scales(-7, 13, 180), 117, 2, 9, {}},  // step 2 from zero: -6 .. 12 without 0
  };
  for (const Case& c : cases) {
    const ProfileGrid grid = profileGrid(c.settings);
    SCOPED_TRACE(c.settings.conductivityScaleMin);
    EXPECT_EQ(std::tuple(grid.zeroY, grid.zeroLineWidth, grid.lineYs.size()),
              std::tuple(c.zeroY, c.zeroLineWidth, c.lineCount));
    if (!c.lines.empty()) {
      EXPECT_EQ(grid.lineYs, c.lines);
    }
    for (std::int32_t y : grid.lineYs) EXPECT_TRUE(y > 0 && y < c.settings.plotHeight) << y;
  }
  // No span, or no number: no grid, and nothing undefined on the way.
  for (const Settings& settings : {scales(50, 50, 180), scales(kNan, 10, 180)})
    EXPECT_TRUE(profileGrid(settings).lineYs.empty());
}

// Three readings make a station: only the third, which completes a station
// of a started profile, scrolls. A trace starts with a point and then joins;
// traces not in use, or not valid in the reading, are left alone. (Rows come
// from plotOffset.)
TEST(ProfilePlot, ReadingsScrollOnStationsAndJoinTheirTraces) {
  const Settings settings = scales(0, 500, 180);
  ProfileTraces traces;
  traces.traceOn = {1, 0, 1, 1, 1, 1, 1, 1};
  FiledValues filed{.verticalConductivity = 250,
                    .verticalConductivityValid = 1,
                    .horizontalConductivity = 100,
                    .horizontalConductivityValid = 1,
                    .verticalInphase = 0,
                    .verticalInphaseValid = 0};
  std::array<std::int32_t, kTraceCount> continues{};
  ProfileState state;
  std::vector<bool> scrolls;
  std::vector<std::vector<TraceStroke>> strokes;
  for (std::int32_t readingsAtStation : {1, 2, 0, 1}) {
    ProfileStep step =
        addReadingToProfile(state, filed, readingsAtStation, traces, settings, continues);
    scrolls.push_back(step.scroll);
    strokes.push_back(step.strokes);
    filed.verticalConductivity -= 50;
  }
  EXPECT_EQ(scrolls, (std::vector<bool>{false, false, true, false}));
  EXPECT_EQ(strokes[0], (std::vector<TraceStroke>{{0, false, 0, 90}}));
  EXPECT_EQ(strokes[1], (std::vector<TraceStroke>{{0, true, 90, 108}}));
  EXPECT_EQ(strokes[3], (std::vector<TraceStroke>{{0, true, 126, 144}}));
  EXPECT_EQ(continues, (std::array<std::int32_t, kTraceCount>{1, 0, 0, 0, 0, 0, 0, 0}));
  // Every reading a station: nothing to move before the first point.
  ProfileState fresh;
  EXPECT_FALSE(addReadingToProfile(fresh, filed, 0, traces, settings, continues).scroll);
  EXPECT_TRUE(addReadingToProfile(fresh, filed, 0, traces, settings, continues).scroll);
}

}  // namespace
}  // namespace gc40
