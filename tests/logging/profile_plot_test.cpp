#include "logging/profile_plot.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace gc40 {
namespace {

// Three readings make a station: only the third, which completes a station
// of a started profile, scrolls. A trace starts with a point and then joins;
// traces not in use, or not valid in the reading, are left alone. (Rows come
// from plotOffset.)
TEST(ProfilePlot, ReadingsScrollOnStationsAndJoinTheirTraces) {
  const Settings settings;  // 0..500 over 180 rows
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

// A scale with no span, or a limit that is no number (a damaged settings
// file), draws no grid and does nothing undefined on the way.
TEST(ProfilePlot, NoGridWithoutASpan) {
  for (const float min : {500.0f, std::numeric_limits<float>::quiet_NaN()}) {
    Settings settings{.conductivityScaleMin = min};
    recomputeScaleFactors(settings);
    EXPECT_TRUE(profileGrid(settings).lineYs.empty()) << min;
  }
}

}  // namespace
}  // namespace gc40
