#pragma once
// The map's words and numbers: the values' names, the colour bar's limits,
// the scale bar, the count of readings it cannot place, and the names of
// the pictures saved beside a data file.

#include <array>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "map/map_colours.h"
#include "map/map_readings.h"

namespace gc40 {

inline constexpr std::array<std::string_view, kMapValueCount> kMapValueNames = {"C/V", "C/H", "I/V",
                                                                                "I/H"};
inline constexpr std::string_view kNoPositionsText = "No positions";
inline constexpr std::string_view kGridText = "Grid: station across, line up";
// Where the colour bar's limits come from, in LimitsFrom order.
inline constexpr std::array<std::string_view, 2> kLimitsChoices = {"2-98 %", "Scales"};

// "mS/m" for conductivity, "ppt" for inphase.
std::string_view valueUnit(std::size_t value);

// "1 reading without position", "12 readings without position".
std::string withoutPositionText(std::size_t count);

// A limit as the bar labels it, with the decimals its span needs: none from
// 100 up, one from 10, else two.
std::string limitText(float value, const ColourLimits& limits);

// "Line 12  Stn 45.00"; either part left out when not given.
std::string mapPlaceText(const std::string* lineName, std::optional<double> station);

// The rows above a map picture: the file and the value, then the place and
// where the colours come from.
std::vector<std::string> mapPictureTitle(std::string_view fileName, std::size_t value,
                                         LimitsFrom limitsFrom, const std::string& place);

struct ScaleBar {
  double length = 0.0;  // in the map's units
  int pixels = 0;
  std::string text;  // "20 m", "1 km", "50 ft"
};

// The longest round length (1, 2 or 5 times a power of ten) no longer than
// `maxPixels`. Grids are in the file's distance units.
ScaleBar scaleBar(double unitsPerPixel, int maxPixels, MapPlacing placing,
                  std::int32_t distanceUnits);

// "031514A-map-CV", "031514A-line-12": letters, digits, '.', '-' and '_' of
// a line's name are kept, anything else becomes '_'.
std::string mapPictureStem(std::string_view fileBase, std::size_t value);
std::string profilePictureStem(std::string_view fileBase, std::string_view lineName);

// STEM.png in `folder`, or STEM-2.png, STEM-3.png, ... whichever `taken`
// says is free first, so an earlier picture is never overwritten.
std::filesystem::path freePicturePath(
    const std::filesystem::path& folder, const std::string& stem,
    const std::function<bool(const std::filesystem::path&)>& taken);

}  // namespace gc40
