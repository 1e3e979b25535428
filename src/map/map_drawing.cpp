#include "map/map_drawing.h"

#include <algorithm>
#include <cmath>

namespace gc40 {
namespace {

// The pixels whose dot shows at least in part: a square of `dot` pixels
// reaches `dot / 2` up and left of its pixel and the rest down and right.
class PixelCells {
 public:
  PixelCells(const MapView& view, PixelSize size, int dot)
      : view_(view),
        size_(size),
        first_(dot / 2 - dot + 1),
        across_(size.width + dot - 1),
        down_(size.height + dot - 1),
        last_(static_cast<std::size_t>(std::max(across_, 0)) *
                  static_cast<std::size_t>(std::max(down_, 0)),
              kEmpty) {}

  // The cell of a reading, or -1 when its dot would not show.
  std::int32_t cellOf(const MapReading& reading, MapDot& dot) const {
    const MapPixel at = toPixel(view_, size_, reading.x, reading.y);
    const double column = std::floor(at.x) - first_, row = std::floor(at.y) - first_;
    if (!(column >= 0 && column < across_ && row >= 0 && row < down_)) return -1;
    dot.x = static_cast<std::int32_t>(column) + first_;
    dot.y = static_cast<std::int32_t>(row) + first_;
    return static_cast<std::int32_t>(row) * across_ + static_cast<std::int32_t>(column);
  }

  // Every reading of `readings` that passes `take`, last one per cell, in file order.
  template <typename Take>
  void keepLast(const MapReadings& map, std::size_t value, const ColourLimits& limits, Take take,
                MapDrawing& drawing) {
    std::fill(last_.begin(), last_.end(), kEmpty);
    cellOfReading_.assign(map.readings.size(), -1);
    for (std::size_t i = 0; i < map.readings.size(); ++i) {
      if (!take(map.readings[i])) continue;
      MapDot dot;
      const std::int32_t cell = cellOf(map.readings[i], dot);
      if (cell < 0) continue;
      cellOfReading_[i] = cell;
      last_[static_cast<std::size_t>(cell)] = static_cast<std::uint32_t>(i);
      ++drawing.readingsDrawn;
    }
    for (std::size_t i = 0; i < map.readings.size(); ++i) {
      const std::int32_t cell = cellOfReading_[i];
      if (cell < 0 || last_[static_cast<std::size_t>(cell)] != i) continue;
      MapDot& dot = drawing.dots.emplace_back();
      cellOf(map.readings[i], dot);
      dot.reading = static_cast<std::uint32_t>(i);
      dot.colour = colourStep(map.readings[i].values[value], limits);
    }
  }

 private:
  static constexpr std::uint32_t kEmpty = 0xFFFFFFFF;

  MapView view_;
  PixelSize size_;
  int first_;
  int across_;
  int down_;
  std::vector<std::uint32_t> last_;
  std::vector<std::int32_t> cellOfReading_;
};

}  // namespace

MapDrawing drawMap(const MapReadings& map, const MapScene& scene, const MapView& view,
                   PixelSize size, int dotPixels) {
  MapDrawing drawing;
  PixelCells cells(view, size, std::max(dotPixels, 1));
  const auto selected = [&scene](const MapReading& reading) {
    return scene.selectedLine && reading.line == *scene.selectedLine;
  };
  cells.keepLast(
      map, scene.value, scene.limits, [&](const MapReading& r) { return !selected(r); }, drawing);
  drawing.selectedFrom = drawing.dots.size();
  if (scene.selectedLine) cells.keepLast(map, scene.value, scene.limits, selected, drawing);

  if (scene.marker) {
    for (auto it = map.readings.rbegin(); it != map.readings.rend(); ++it) {
      if (it->line == scene.marker->line && it->station == scene.marker->station) {
        drawing.marker = toPixel(view, size, it->x, it->y);
        break;
      }
    }
  }
  return drawing;
}

std::optional<std::uint32_t> tappedReading(const MapDrawing& drawing, MapPixel tap, double radius) {
  std::optional<std::uint32_t> nearest;
  double best = radius * radius;
  for (const MapDot& dot : drawing.dots) {
    const double dx = dot.x + 0.5 - tap.x, dy = dot.y + 0.5 - tap.y;
    const double distance = dx * dx + dy * dy;
    if (distance <= best) {
      best = distance;
      nearest = dot.reading;
    }
  }
  return nearest;
}

}  // namespace gc40
