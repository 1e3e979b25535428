#include "map/map_colours.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>

namespace gc40 {
namespace {

// Limits that meet leave no room for a bar: they are spread half a unit
// either way.
constexpr float kSpread = 0.5f;

ColourLimits ordered(float a, float b) {
  ColourLimits limits{std::min(a, b), std::max(a, b)};
  if (!(limits.high > limits.low)) limits = {limits.low - kSpread, limits.high + kSpread};
  return limits;
}

std::array<MapColour, kColourSteps> makeBar() {
  constexpr MapColour kStops[] = {
      {20, 40, 190}, {0, 170, 230}, {40, 180, 70}, {245, 220, 30}, {215, 30, 30}};
  constexpr int kSpans = static_cast<int>(std::size(kStops)) - 1;
  std::array<MapColour, kColourSteps> bar;
  for (int step = 0; step < kColourSteps; ++step) {
    const double at = static_cast<double>(step) * kSpans / (kColourSteps - 1);
    const int span = std::min(static_cast<int>(at), kSpans - 1);
    const double f = at - span;
    const auto mix = [f](std::uint8_t from, std::uint8_t to) {
      return static_cast<std::uint8_t>(std::lround(from + f * (to - from)));
    };
    const MapColour& a = kStops[span];
    const MapColour& b = kStops[span + 1];
    bar[static_cast<std::size_t>(step)] = {mix(a.red, b.red), mix(a.green, b.green),
                                           mix(a.blue, b.blue)};
  }
  return bar;
}

}  // namespace

const std::array<MapColour, kColourSteps>& colourBar() {
  static const std::array<MapColour, kColourSteps> bar = makeBar();
  return bar;
}

float percentile(std::vector<float>& values, double percent) {
  const double rank =
      std::clamp(percent, 0.0, 100.0) / 100.0 * static_cast<double>(values.size() - 1);
  const auto below = static_cast<std::ptrdiff_t>(rank);
  std::nth_element(values.begin(), values.begin() + below, values.end());
  const float low = values[static_cast<std::size_t>(below)];
  if (below + 1 >= std::ssize(values)) return low;
  const float high = *std::min_element(values.begin() + below + 1, values.end());
  return static_cast<float>(low + (rank - static_cast<double>(below)) * (high - low));
}

std::optional<ColourLimits> percentileLimits(const MapReadings& map, std::size_t value) {
  std::vector<float> values;
  values.reserve(map.readings.size());
  for (const MapReading& reading : map.readings)
    if (!std::isnan(reading.values[value])) values.push_back(reading.values[value]);
  if (values.empty()) return std::nullopt;
  const float low = percentile(values, 2.0);
  return ordered(low, percentile(values, 98.0));
}

ColourLimits scaleLimits(const Settings& settings, std::size_t value) {
  return value < 2 ? ordered(settings.conductivityScaleMin, settings.conductivityScaleMax)
                   : ordered(settings.inphaseScaleMin, settings.inphaseScaleMax);
}

int colourStep(float value, const ColourLimits& limits) {
  if (std::isnan(value)) return -1;
  const double share = (static_cast<double>(value) - limits.low) / (limits.high - limits.low);
  return static_cast<int>(std::clamp(std::floor(share * kColourSteps), 0.0, kColourSteps - 1.0));
}

}  // namespace gc40
