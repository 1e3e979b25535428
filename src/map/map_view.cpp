#include "map/map_view.h"

#include <algorithm>

namespace gc40 {
namespace {

constexpr double kSinglePointUnitsPerPixel = 0.1;
constexpr double kKeyZoom = 2.0;
constexpr double kPanShare = 4.0;  // an arrow key moves a quarter of the picture

}  // namespace

std::optional<MapBounds> mapBounds(const MapReadings& map) {
  if (map.readings.empty()) return std::nullopt;
  const MapReading& first = map.readings.front();
  MapBounds bounds{first.x, first.y, first.x, first.y};
  for (const MapReading& reading : map.readings) {
    bounds.left = std::min<double>(bounds.left, reading.x);
    bounds.right = std::max<double>(bounds.right, reading.x);
    bounds.bottom = std::min<double>(bounds.bottom, reading.y);
    bounds.top = std::max<double>(bounds.top, reading.y);
  }
  return bounds;
}

MapPixel toPixel(const MapView& view, PixelSize size, double x, double y) {
  return {size.width / 2.0 + (x - view.centreX) / view.unitsPerPixel,
          size.height / 2.0 - (y - view.centreY) / view.unitsPerPixel};
}

MapPixel toGround(const MapView& view, PixelSize size, MapPixel pixel) {
  return {view.centreX + (pixel.x - size.width / 2.0) * view.unitsPerPixel,
          view.centreY - (pixel.y - size.height / 2.0) * view.unitsPerPixel};
}

MapView scaledView(const MapView& view, double factor) {
  return {view.centreX, view.centreY, view.unitsPerPixel / factor};
}

MapView fitView(const MapBounds& bounds, PixelSize size, int margin) {
  const double width = std::max(1, size.width - 2 * margin);
  const double height = std::max(1, size.height - 2 * margin);
  const double spread =
      std::max((bounds.right - bounds.left) / width, (bounds.top - bounds.bottom) / height);
  return {(bounds.left + bounds.right) / 2, (bounds.bottom + bounds.top) / 2,
          spread > 0.0 ? spread : kSinglePointUnitsPerPixel};
}

MapView draggedView(const MapView& view, double dx, double dy) {
  return {view.centreX - dx * view.unitsPerPixel, view.centreY + dy * view.unitsPerPixel,
          view.unitsPerPixel};
}

MapView zoomedView(const MapView& view, double factor, MapPixel about, PixelSize size,
                   const MapView& fitted) {
  const double widest = std::max(fitted.unitsPerPixel * kWidestOfFit, kFinestUnitsPerPixel);
  const double units = std::clamp(view.unitsPerPixel / factor, kFinestUnitsPerPixel, widest);
  const MapPixel ground = toGround(view, size, about);
  return {ground.x - (about.x - size.width / 2.0) * units,
          ground.y + (about.y - size.height / 2.0) * units, units};
}

MapView movedView(const MapView& view, MapMove move, PixelSize size, const MapView& fitted) {
  const double across = size.width * view.unitsPerPixel / kPanShare;
  const double up = size.height * view.unitsPerPixel / kPanShare;
  const MapPixel middle{size.width / 2.0, size.height / 2.0};
  MapView moved = view;
  switch (move) {
    case MapMove::kLeft:
      moved.centreX -= across;
      break;
    case MapMove::kRight:
      moved.centreX += across;
      break;
    case MapMove::kUp:
      moved.centreY += up;
      break;
    case MapMove::kDown:
      moved.centreY -= up;
      break;
    case MapMove::kZoomIn:
      return zoomedView(view, kKeyZoom, middle, size, fitted);
    case MapMove::kZoomOut:
      return zoomedView(view, 1.0 / kKeyZoom, middle, size, fitted);
    case MapMove::kFit:
      return fitted;
  }
  return moved;
}

}  // namespace gc40
