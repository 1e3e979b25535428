#pragma once
// The survey map drawn with QPainter, on the screen and in pictures alike:
// the dots of the placed readings with the chosen line outlined on top, the
// marked station, the scale bar, north, the count of readings without a
// place, and the colour bar with its limits beside the dots.

#include <QRect>
#include <QStringList>

#include "map/map_drawing.h"
#include "map/map_readings.h"
#include "map/map_view.h"

class QPainter;

namespace gc40 {

// Layout pixels.
inline constexpr int kMapColourStrip = 40;  // right of the dots: the colour bar and its limits
inline constexpr int kMapDotPixels = 2;
inline constexpr int kMapTapRadius = 6;
inline constexpr int kMapFitMargin = 6;

// The dots' part of a map `width` x `height`: all but the colour strip.
PixelSize mapDotsSize(int width, int height);

struct MapPaint {
  const MapReadings* map = nullptr;
  MapScene scene;
  bool hasLimits = false;  // false: no reading holds the value, the bar has no numbers
  MapView view;            // in layout pixels of the dots' part
  int scale = 1;           // device pixels per layout pixel
};

struct PaintedMap {
  MapDrawing drawing;  // in device pixels from the area's top left
  QStringList notes;   // the words over the dots: "No positions", the count, ...
};

// Draws into `area` (device pixels, the painter unscaled).
PaintedMap paintMap(QPainter& painter, const QRect& area, const MapPaint& paint);

}  // namespace gc40
