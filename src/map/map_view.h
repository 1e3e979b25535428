#pragma once
// Which piece of ground the map shows: the point at the middle of the
// picture and the ground one pixel spans, north (or the grid's y) up. Fit,
// pan and zoom are arithmetic on that, in the picture's pixels.

#include <optional>

#include "map/map_readings.h"

namespace gc40 {

struct MapBounds {
  double left = 0.0;
  double bottom = 0.0;
  double right = 0.0;
  double top = 0.0;
};

// Around every placed reading; nullopt when there is none.
std::optional<MapBounds> mapBounds(const MapReadings& map);

struct PixelSize {
  int width = 0;
  int height = 0;
};

// Pixels from the picture's top left corner, y down.
struct MapPixel {
  double x = 0.0;
  double y = 0.0;
};

struct MapView {
  double centreX = 0.0;  // metres (grid units) at the middle of the picture
  double centreY = 0.0;
  double unitsPerPixel = 1.0;
  bool operator==(const MapView&) const = default;
};

// The limits of zooming: 5 mm a pixel at most, and out to eight times the
// whole survey.
inline constexpr double kFinestUnitsPerPixel = 0.005;
inline constexpr double kWidestOfFit = 8.0;

MapPixel toPixel(const MapView& view, PixelSize size, double x, double y);
// The ground under a pixel, as x and y.
MapPixel toGround(const MapView& view, PixelSize size, MapPixel pixel);

// The same piece of ground on a picture `factor` times as many pixels across.
MapView scaledView(const MapView& view, double factor);

// Everything inside `bounds` with `margin` pixels to spare on every side; a
// survey that is a single point is shown at ten pixels to the unit.
MapView fitView(const MapBounds& bounds, PixelSize size, int margin);

// Dragged: the ground moves with the finger by (dx, dy) pixels.
MapView draggedView(const MapView& view, double dx, double dy);

// `factor` above 1 zooms in, below 1 out, keeping the ground under `about`
// where it is, within the limits above (`fitted` is the whole survey's view).
MapView zoomedView(const MapView& view, double factor, MapPixel about, PixelSize size,
                   const MapView& fitted);

// The keys: the arrows look a quarter of the picture further that way, + and
// - zoom by two about the middle, Home fits the whole survey.
enum class MapMove { kLeft, kRight, kUp, kDown, kZoomIn, kZoomOut, kFit };
MapView movedView(const MapView& view, MapMove move, PixelSize size, const MapView& fitted);

}  // namespace gc40
