#include "map/map_texts.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"

namespace gc40 {
namespace {

constexpr double kMetresPerKilometre = 1000.0;

// Lengths print without trailing zeros: 0.5, 2, 20.
std::string shortNumber(double value) {
  return value >= 1.0 ? formatFixed(value, 0)
                      : formatFixed(value, static_cast<int>(std::ceil(-std::log10(value))));
}

std::string fileNamePart(std::string_view text) {
  std::string part;
  for (const char c : text) {
    const bool kept = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
                      c == '.' || c == '-' || c == '_';
    part += kept ? c : '_';
  }
  return part;
}

}  // namespace

std::string_view valueUnit(std::size_t value) { return value < 2 ? "mS/m" : "ppt"; }

std::string withoutPositionText(std::size_t count) {
  return formatInteger(static_cast<std::int64_t>(count)) +
         (count == 1 ? " reading without position" : " readings without position");
}

std::string limitText(float value, const ColourLimits& limits) {
  const double span = static_cast<double>(limits.high) - limits.low;
  const int decimals = span >= 100.0 ? 0 : span >= 10.0 ? 1 : 2;
  // Rounded first, so that a hair below zero reads 0.0 and not -0.0.
  const double power = std::pow(10.0, decimals);
  return formatFixed(std::round(value * power) / power + 0.0, decimals);
}

std::string mapPlaceText(const std::string* lineName, std::optional<double> station) {
  std::string text = lineName ? "Line " + *lineName : "";
  if (station) text += (text.empty() ? "" : "  ") + ("Stn " + formatFixed(*station, 2));
  return text;
}

std::vector<std::string> mapPictureTitle(std::string_view fileName, std::size_t value,
                                         LimitsFrom limitsFrom, const std::string& place) {
  const std::string colours =
      limitsFrom == LimitsFrom::kPercentiles ? "colours 2-98 %" : "colours from the scales";
  return {std::string(fileName) + "   " + std::string(kMapValueNames[value]) + " (" +
              std::string(valueUnit(value)) + ")",
          place.empty() ? colours : place + "   " + colours};
}

ScaleBar scaleBar(double unitsPerPixel, int maxPixels, MapPlacing placing,
                  std::int32_t distanceUnits) {
  const double longest = unitsPerPixel * std::max(maxPixels, 1);
  const double power = std::pow(10.0, std::floor(std::log10(longest)));
  double length = power;
  for (const double factor : {2.0, 5.0, 10.0})
    if (factor * power <= longest * (1.0 + 1e-9)) length = factor * power;
  ScaleBar bar{length, static_cast<int>(std::lround(length / unitsPerPixel)), ""};
  const bool feet = placing == MapPlacing::kGrid && distanceUnits == 1;
  if (feet)
    bar.text = shortNumber(length) + " ft";
  else if (length >= kMetresPerKilometre)
    bar.text = shortNumber(length / kMetresPerKilometre) + " km";
  else
    bar.text = shortNumber(length) + " m";
  return bar;
}

std::string mapPictureStem(std::string_view fileBase, std::size_t value) {
  std::string name(kMapValueNames[value]);
  std::erase(name, '/');
  return fileNamePart(fileBase) + "-map-" + name;
}

std::string profilePictureStem(std::string_view fileBase, std::string_view lineName) {
  return fileNamePart(fileBase) + "-line-" + fileNamePart(lineName);
}

std::filesystem::path freePicturePath(
    const std::filesystem::path& folder, const std::string& stem,
    const std::function<bool(const std::filesystem::path&)>& taken) {
  std::filesystem::path path = folder / (stem + ".png");
  for (int number = 2; taken(path); ++number)
    path = folder / (stem + "-" + formatInteger(number) + ".png");
  return path;
}

}  // namespace gc40
