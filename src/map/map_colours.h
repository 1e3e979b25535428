#pragma once
// The map's colour bar: a value's colour is one of a few even steps from the
// lowest colour to the highest between two limits, taken either from the
// values themselves (the 2nd and 98th percentiles, so that a few wild
// readings do not wash out the rest) or from the profile's scales.

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "map/map_readings.h"
#include "settings/settings.h"

namespace gc40 {

struct MapColour {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
  bool operator==(const MapColour&) const = default;
};

inline constexpr int kColourSteps = 32;
// A reading without the chosen value still shows where it was taken.
inline constexpr MapColour kNoValueColour{185, 185, 185};

// Blue through cyan, green and yellow to red: the lowest step first.
const std::array<MapColour, kColourSteps>& colourBar();

struct ColourLimits {
  float low = 0.0f;
  float high = 1.0f;
  bool operator==(const ColourLimits&) const = default;
};

enum class LimitsFrom { kPercentiles, kProfileScales };

// The percentile of `values` between the ranks around it (as a spreadsheet's
// PERCENTILE); reorders them. `values` must not be empty.
float percentile(std::vector<float>& values, double percent);

// The 2nd and 98th percentiles of `value` over the placed readings that hold
// it; nullopt when none does.
std::optional<ColourLimits> percentileLimits(const MapReadings& map, std::size_t value);

// The profile's conductivity scale for values 0 and 1, its inphase scale for
// 2 and 3.
ColourLimits scaleLimits(const Settings& settings, std::size_t value);

// 0 .. kColourSteps - 1; values at or beyond a limit take its end of the
// bar. -1 for NaN, a reading without the value.
int colourStep(float value, const ColourLimits& limits);

}  // namespace gc40
