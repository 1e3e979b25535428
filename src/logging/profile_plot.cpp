#include "logging/profile_plot.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "base/number_text.h"

namespace gc40 {
namespace {

constexpr std::int32_t kPlotWidthLandscape = 270;
constexpr std::int32_t kPlotWidthPortrait = 200;
constexpr std::int32_t kInphaseGrid = 1;

struct Scale {
  float min;
  float max;
  float pixelsPerUnit;
};

Scale gridScaleOf(const Settings& settings) {
  if (settings.gridScale == kInphaseGrid) {
    return {settings.inphaseScaleMin, settings.inphaseScaleMax, settings.inphasePixelsPerUnit};
  }
  return {settings.conductivityScaleMin, settings.conductivityScaleMax,
          settings.conductivityPixelsPerUnit};
}

std::array<std::int32_t, kPlottedTraces> validFlags(const FiledValues& filed) {
  return {filed.verticalConductivityValid, filed.horizontalConductivityValid,
          filed.verticalInphaseValid, filed.horizontalInphaseValid};
}

// The first of two traces in use, or -1.
int firstInUse(const ProfileTraces& traces, int first) {
  if (traces.traceOn[first] == 1) return first;
  if (traces.traceOn[first + 1] == 1) return first + 1;
  return -1;
}

}  // namespace

std::int32_t profilePlotWidth(std::int32_t portraitScreen) {
  return portraitScreen == 1 ? kPlotWidthPortrait : kPlotWidthLandscape;
}

bool profileScrolls(bool profileStarted, std::int32_t readingsAtStation) {
  return profileStarted && readingsAtStation == 0;
}

ProfileStep addReadingToProfile(ProfileState& state, const FiledValues& filed,
                                std::int32_t readingsAtStation, const ProfileTraces& traces,
                                const Settings& settings,
                                std::array<std::int32_t, kTraceCount>& traceContinues) {
  ProfileStep step;
  step.scroll = profileScrolls(state.profileStarted, readingsAtStation);
  state.profileStarted = true;
  const auto ys = readingToPlotOffsets(filed, settings);
  const auto valid = validFlags(filed);
  for (int trace = 0; trace < kPlottedTraces; ++trace) {
    if (traces.traceOn[trace] != 1 || valid[trace] == 0) continue;
    const bool joined = traceContinues[trace] == 1;
    step.strokes.push_back({trace, joined, state.lastY[trace], ys[trace]});
    traceContinues[trace] = 1;
    state.lastY[trace] = ys[trace];
  }
  return step;
}

double gridStep(double span) {
  const double least = span / kMaxGridLines;
  if (!(least > 0) || !std::isfinite(least)) return 0;
  const double power = std::pow(10.0, std::floor(std::log10(least)));
  for (double factor : {1.0, 2.0, 5.0}) {
    // The tolerance keeps 50 from becoming 100 when log10 rounds down.
    if (least <= factor * power * (1 + 1e-9)) return factor * power;
  }
  return 10 * power;
}

ProfileGrid profileGrid(const Settings& settings) {
  const Scale scale = gridScaleOf(settings);
  ProfileGrid grid;
  grid.zeroY = plotOffset(scale.max, 0.0f, scale.pixelsPerUnit);
  grid.zeroLineWidth = scale.min < 0 && scale.max > 0 ? 2 : 1;
  const double step = gridStep(static_cast<double>(scale.max) - scale.min);
  if (!(step > 0) || !std::isfinite(step)) return grid;
  // A round step of at least a tenth of the span leaves at most eleven
  // multiples in it; the count guards against rounding anyway.
  const double first = std::ceil(scale.min / step);
  for (int i = 0; i <= kMaxGridLines + 1 && grid.lineYs.size() < kMaxGridLines; ++i) {
    const double k = first + i;
    if (k == 0) continue;  // the zero line
    const std::int32_t y = plotOffset(scale.max, narrowToFloat(k * step), scale.pixelsPerUnit);
    if (y > 0 && y < settings.plotHeight) grid.lineYs.push_back(y);
  }
  return grid;
}

std::string scaleLabel(float value) { return formatFixed(value, 0); }

ScaleLabelStyles scaleLabelStyles(const ProfileTraces& traces, const Settings& settings) {
  const int conductivity = firstInUse(traces, 0);
  const int inphase = firstInUse(traces, 2);
  ScaleLabelStyles styles;
  if (conductivity < 0 && inphase < 0) {
    (settings.gridScale == kInphaseGrid ? styles.inphase : styles.conductivity).shown = true;
    return styles;
  }
  if (conductivity >= 0) styles.conductivity = {true, settings.traceColour[conductivity]};
  if (inphase >= 0) styles.inphase = {true, settings.traceColour[inphase]};
  return styles;
}

namespace {

double squaredDistanceToSegment(double x, double y, double ax, double ay, double bx, double by) {
  const double dx = bx - ax, dy = by - ay;
  const double length = dx * dx + dy * dy;
  const double along =
      length > 0 ? std::clamp(((x - ax) * dx + (y - ay) * dy) / length, 0.0, 1.0) : 0.0;
  const double ex = x - (ax + along * dx), ey = y - (ay + along * dy);
  return ex * ex + ey * ey;
}

// Where a line from `from` that moves `rise` over `run` stands after `part`
// of the run, to the nearest whole pixel.
int roundedAlong(int from, int part, int run, int rise) {
  return from + int(std::floor(double(part) * rise / run + 0.5));
}

bool thinLineCovers(const StrokeShape& s, int x, int y) {
  const int dx = s.toX - s.fromX, dy = s.toY - s.fromY;
  if (std::abs(dy) >= std::abs(dx)) {
    if (y < std::min(s.fromY, s.toY) || y > std::max(s.fromY, s.toY)) return false;
    return x == (dy == 0 ? s.fromX : roundedAlong(s.fromX, y - s.fromY, dy, dx));
  }
  if (x < std::min(s.fromX, s.toX) || x > std::max(s.fromX, s.toX)) return false;
  return y == roundedAlong(s.fromY, x - s.fromX, dx, dy);
}

}  // namespace

bool strokeCovers(const StrokeShape& shape, int x, int y) {
  if (shape.width <= 1) return thinLineCovers(shape, x, y);
  const double radius = shape.width / 2.0;
  const double offset = shape.width % 2 != 0 ? 0.5 : 0.0;
  return squaredDistanceToSegment(x + 0.5, y + 0.5, shape.fromX + offset, shape.fromY + offset,
                                  shape.toX + offset, shape.toY + offset) < radius * radius;
}

}  // namespace gc40
