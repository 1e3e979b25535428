#include "viewer/view_curve.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

#include "logging/profile_plot.h"
#include "viewer/profile_painter.h"

namespace gc40 {
namespace {

constexpr int kFontPixels = 11;

}  // namespace

ViewCurve::ViewCurve(int scale, QWidget* parent) : QWidget(parent), scale_(scale) {
  setObjectName(QStringLiteral("ViewCurveWnd"));
  setAttribute(Qt::WA_OpaquePaintEvent);
  QFont font = this->font();
  font.setPixelSize(kFontPixels);
  setFont(font);
}

void ViewCurve::setLayoutSize(int width, int height) {
  width_ = width;
  height_ = height;
  setFixedSize(width * scale_, height * scale_);
}

std::int32_t ViewCurve::plotHeight() const { return std::max(1, height_ - 1); }

int ViewCurve::plotWidth() const { return profilePlotWidth(settings_.portraitScreen); }

std::size_t ViewCurve::columns() const {
  return static_cast<std::size_t>(plotWidth() / kViewColumnPixels) + 1;
}

void ViewCurve::showLine(std::vector<StationEntry> stations, const Settings& settings) {
  stations_ = std::move(stations);
  settings_ = settings;
  first_ = 0;
  setBar(0);
}

void ViewCurve::moveBar(BarMove move) { setBar(movedBar(bar_, stations_.size(), move)); }

void ViewCurve::putBar(std::size_t bar) {
  if (bar < stations_.size()) setBar(bar);
}

void ViewCurve::setBar(std::size_t bar) {
  bar_ = bar;
  first_ = firstShownStation(first_, bar_, columns());
  update();
  if (barMoved_) barMoved_();
}

void ViewCurve::mousePressEvent(QMouseEvent* event) {
  const int column = static_cast<int>(event->position().x()) / scale_ / kViewColumnPixels;
  if (column < 0 || static_cast<std::size_t>(column) >= columns() || stations_.empty()) return;
  setBar(std::min(first_ + static_cast<std::size_t>(column), stations_.size() - 1));
}

void ViewCurve::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), Qt::white);
  painter.scale(scale_, scale_);
  paintProfile(painter, {.stations = &stations_,
                         .first = first_,
                         .columns = columns(),
                         .settings = settings_,
                         .plotWidth = plotWidth(),
                         .plotHeight = plotHeight(),
                         .width = width_,
                         .bar = stations_.empty() ? std::nullopt : std::optional(bar_)});
}

}  // namespace gc40
