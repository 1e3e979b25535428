#pragma once
// The live profile's arithmetic: where a value falls, when the picture
// scrolls, what each recorded reading draws, and the grey grid.

#include <algorithm>
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

// A stroke's pixels. A thick one covers the pixels whose centre lies nearer
// than half the width to the segment, so both ends come out round; an odd
// width centres on the pixel given, an even one on its top-left corner, so a
// line is exactly `width` pixels across. A one-pixel line takes one pixel a
// row, or a column where it runs flatter than 45 degrees.
struct StrokeShape {
  int fromX = 0, fromY = 0, toX = 0, toY = 0;
  int width = 1;
};

// Inclusive pixel bounds.
struct PixelBox {
  int left = 0, top = 0, right = 0, bottom = 0;
};

bool strokeCovers(const StrokeShape& shape, int x, int y);

// Calls fill(y, fromX, toX) for each row of `clip` the stroke covers, with
// the inclusive run of columns it covers there (one run: the shape is convex).
template <typename Fill>
void forEachStrokeRun(const StrokeShape& shape, const PixelBox& clip, Fill fill) {
  const int reach = shape.width > 1 ? (shape.width + 1) / 2 : 0;
  const int left = std::max(clip.left, std::min(shape.fromX, shape.toX) - reach);
  const int right = std::min(clip.right, std::max(shape.fromX, shape.toX) + reach);
  const int top = std::max(clip.top, std::min(shape.fromY, shape.toY) - reach);
  const int bottom = std::min(clip.bottom, std::max(shape.fromY, shape.toY) + reach);
  for (int y = top; y <= bottom; ++y) {
    int from = left;
    while (from <= right && !strokeCovers(shape, from, y)) ++from;
    if (from > right) continue;
    int to = right;
    while (!strokeCovers(shape, to, y)) --to;
    fill(y, from, to);
  }
}

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
