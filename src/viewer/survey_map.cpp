#include "viewer/survey_map.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <cmath>

namespace gc40 {
namespace {

// Layout pixels a press may wander and still be a tap.
constexpr double kTapSlop = 3.0;
// A notch of the wheel zooms by the square root of two.
constexpr double kWheelNotch = 120.0;
constexpr double kZoomPerNotch = 1.4142135623730951;

}  // namespace

SurveyMap::SurveyMap(int scale, QWidget* parent) : QWidget(parent), scale_(scale) {
  setObjectName(QStringLiteral("SurveyMapWnd"));
  setAttribute(Qt::WA_OpaquePaintEvent);
}

void SurveyMap::setLayoutSize(int width, int height) {
  width_ = width;
  height_ = height;
  setFixedSize(width * scale_, height * scale_);
  view_ = fitted();
}

PixelSize SurveyMap::dotsSize() const { return mapDotsSize(width_, height_); }

MapView SurveyMap::fitted() const {
  const std::optional<MapBounds> bounds = map_ ? mapBounds(*map_) : std::nullopt;
  return bounds ? fitView(*bounds, dotsSize(), kMapFitMargin) : MapView{};
}

void SurveyMap::showReadings(const MapReadings* map) {
  map_ = map;
  setView(fitted());
}

void SurveyMap::setScene(const MapScene& scene, bool hasLimits) {
  scene_ = scene;
  hasLimits_ = hasLimits;
  update();
}

void SurveyMap::moveView(MapMove move) { setView(movedView(view_, move, dotsSize(), fitted())); }

void SurveyMap::setView(const MapView& view) {
  view_ = view;
  update();
}

QPoint SurveyMap::pixelOf(std::uint32_t reading) const {
  const MapReading& placed = map_->readings.at(reading);
  const PixelSize dots = dotsSize();
  const MapPixel at = toPixel(scaledView(view_, scale_),
                              {dots.width * scale_, dots.height * scale_}, placed.x, placed.y);
  return {static_cast<int>(std::floor(at.x)), static_cast<int>(std::floor(at.y))};
}

void SurveyMap::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (!map_) {
    painter.fillRect(rect(), Qt::white);
    return;
  }
  painted_ = paintMap(
      painter, rect(),
      {.map = map_, .scene = scene_, .hasLimits = hasLimits_, .view = view_, .scale = scale_});
}

void SurveyMap::mousePressEvent(QMouseEvent* event) {
  pressedAt_ = event->position();
  draggedTo_ = event->position();
  dragging_ = false;
}

void SurveyMap::mouseMoveEvent(QMouseEvent* event) {
  if (!pressedAt_) return;
  const QPointF moved = event->position() - *pressedAt_;
  if (!dragging_ && std::hypot(moved.x(), moved.y()) < kTapSlop * scale_) return;
  dragging_ = true;
  const QPointF step = (event->position() - draggedTo_) / scale_;
  draggedTo_ = event->position();
  setView(draggedView(view_, step.x(), step.y()));
}

void SurveyMap::mouseReleaseEvent(QMouseEvent* event) {
  const bool tap = pressedAt_ && !dragging_;
  pressedAt_.reset();
  if (!tap || !map_) return;
  // The middle of the pixel tapped, as the dots stand in the middle of theirs.
  const MapPixel at{std::floor(event->position().x()) + 0.5,
                    std::floor(event->position().y()) + 0.5};
  const std::optional<std::uint32_t> reading =
      tappedReading(painted_.drawing, at, kMapTapRadius * scale_);
  if (reading && tapped_) tapped_(*reading);
}

void SurveyMap::wheelEvent(QWheelEvent* event) {
  const double notches = event->angleDelta().y() / kWheelNotch;
  if (notches == 0.0 || !map_) return;
  const QPointF at = event->position() / scale_;
  setView(
      zoomedView(view_, std::pow(kZoomPerNotch, notches), {at.x(), at.y()}, dotsSize(), fitted()));
}

}  // namespace gc40
