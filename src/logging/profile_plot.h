#pragma once
// The live profile's arithmetic: where a value falls, when the picture
// scrolls, what each recorded reading draws, and the grey grid.

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "instrument/reading_decoder.h"
#include "settings/profile_setup.h"
#include "settings/settings.h"

namespace gc40 {

inline constexpr std::int32_t kProfileScrollPixels = 2;
inline constexpr Colorref kProfileGridColour = 0xC0C0C0;
inline constexpr int kMaxGridLines = 10;
inline constexpr int kPlottedTraces = 4;  // the GC40 fills traces 0..3 only

// 200 in portrait, 270 in landscape; the newest point stands at x = plot width.
std::int32_t profilePlotWidth(std::int32_t portraitScreen);

// The picture moves when a station has just advanced (or every reading is a
// station), and not before the first point has been drawn.
bool profileScrolls(bool profileStarted, std::int32_t readingsAtStation);

// One trace's mark at the newest column.
struct TraceStroke {
  int trace = 0;
  bool joined = false;     // a line from (plot width - 2, fromY); else a point
  std::int32_t fromY = 0;  // the trace's last y
  std::int32_t y = 0;

  bool operator==(const TraceStroke&) const = default;
};

struct ProfileState {
  bool profileStarted = false;
  std::array<std::int32_t, kTraceCount> lastY{};
};

struct ProfileStep {
  bool scroll = false;
  std::vector<TraceStroke> strokes;
};

// What a recorded reading does to the profile: scroll first or not, then a
// stroke for each trace in use that the reading holds a valid value for. A
// trace that does not continue starts with a point and continues from then on.
ProfileStep addReadingToProfile(ProfileState& state, const FiledValues& filed,
                                std::int32_t readingsAtStation, const ProfileTraces& traces,
                                const Settings& settings,
                                std::array<std::int32_t, kTraceCount>& traceContinues);

struct ProfileGrid {
  std::int32_t zeroY = 0;          // where it falls, inside the plot or not
  std::int32_t zeroLineWidth = 1;  // 2 when the scale spans zero
  std::vector<std::int32_t> lineYs;
};

// The zero line and up to ten grid lines of the scale that gridScale picks:
// the multiples of a round step, spaced evenly from the zero line outward,
// strictly inside the plot.
ProfileGrid profileGrid(const Settings& settings);

// 1, 2 or 5 times a power of ten, at least a tenth of the span; 0 when the
// span is not a positive finite number.
double gridStep(double span);

// "%.0f" of a scale's end.
std::string scaleLabel(float value);

// Each scale's labels are shown when one of its traces is in use, in the
// colour of the first such trace; with no trace in use at all, the grid's
// scale is labelled in black.
struct ScaleLabelStyle {
  bool shown = false;
  Colorref colour = 0;
};
struct ScaleLabelStyles {
  ScaleLabelStyle conductivity;
  ScaleLabelStyle inphase;
};
ScaleLabelStyles scaleLabelStyles(const ProfileTraces& traces, const Settings& settings);

}  // namespace gc40
