#pragma once
// What one picture of the map draws, in its pixels: a dot per pixel, the
// chosen line on top, the marker on the profile bar's station, and which
// dot a tap lands on.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "map/map_colours.h"
#include "map/map_readings.h"
#include "map/map_view.h"

namespace gc40 {

struct MapDot {
  std::int32_t x = 0;  // the pixel the reading falls in
  std::int32_t y = 0;
  std::uint32_t reading = 0;  // into MapReadings::readings
  int colour = -1;            // the colour step; -1 without the chosen value
  bool operator==(const MapDot&) const = default;
};

struct MapStation {
  std::uint32_t line = 0;
  std::uint32_t station = 0;  // into the line's stations
  bool operator==(const MapStation&) const = default;
};

struct MapScene {
  std::size_t value = 0;  // trace order: C/V, C/H, I/V, I/H
  ColourLimits limits;
  std::optional<std::uint32_t> selectedLine;
  std::optional<MapStation> marker;
};

// An eight-hour file holds a third of a million readings, far more than a
// small screen has pixels. Each pixel keeps the last reading in file order
// that falls in it; drawing those dots in file order, each a square of
// `dotPixels` around its pixel, paints exactly what drawing every reading
// in file order would. The selected line's dots come after all the others,
// so it lies on top.
struct MapDrawing {
  std::vector<MapDot> dots;
  std::size_t selectedFrom = 0;    // dots from here on are the selected line's
  std::size_t readingsDrawn = 0;   // readings whose dot shows in the picture
  std::optional<MapPixel> marker;  // the marked station's last reading, wherever it lies
};

MapDrawing drawMap(const MapReadings& map, const MapScene& scene, const MapView& view,
                   PixelSize size, int dotPixels);

// The reading of the dot nearest to `tap` within `radius` pixels, the one
// drawn last among dots as near; nullopt when no dot is that close.
std::optional<std::uint32_t> tappedReading(const MapDrawing& drawing, MapPixel tap, double radius);

}  // namespace gc40
