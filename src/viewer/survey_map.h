#pragma once
// The View Files map ("SurveyMapWnd"): every placed reading of the open file
// as a dot in the colour of the chosen value, the chosen line on top, the
// profile bar's station marked. The window's keys move the view (movedView);
// here the wheel zooms about the pointer, a drag pans, and a tap on a dot
// reports its reading.

#include <QWidget>
#include <functional>
#include <optional>

#include "map/map_drawing.h"
#include "map/map_readings.h"
#include "map/map_view.h"
#include "viewer/map_painter.h"

namespace gc40 {

class SurveyMap : public QWidget {
 public:
  // `scale` is the main window's whole factor; sizes below are layout pixels.
  SurveyMap(int scale, QWidget* parent = nullptr);

  void setLayoutSize(int width, int height);
  // Shows `map` (kept by the caller) fitted whole.
  void showReadings(const MapReadings* map);
  // What to draw: the value and its limits, the chosen line, the marker.
  void setScene(const MapScene& scene, bool hasLimits);
  const MapScene& scene() const { return scene_; }
  bool hasLimits() const { return hasLimits_; }

  void moveView(MapMove move);
  const MapView& view() const { return view_; }
  // The dots' part, where the view applies.
  PixelSize dotsSize() const;

  // Called with the reading of a tapped dot.
  void onTapped(std::function<void(std::uint32_t reading)> handler) {
    tapped_ = std::move(handler);
  }
  // The last picture's dots, in the widget's own pixels (for the tests).
  const MapDrawing& drawing() const { return painted_.drawing; }
  const QStringList& notes() const { return painted_.notes; }
  QPoint pixelOf(std::uint32_t reading) const;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  MapView fitted() const;
  void setView(const MapView& view);

  int scale_;
  int width_ = 320;
  int height_ = 200;
  const MapReadings* map_ = nullptr;
  MapScene scene_;
  bool hasLimits_ = false;
  MapView view_;
  PaintedMap painted_;
  std::optional<QPointF> pressedAt_;
  QPointF draggedTo_;
  bool dragging_ = false;
  std::function<void(std::uint32_t)> tapped_;
};

}  // namespace gc40
