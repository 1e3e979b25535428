#include "viewer/view_curve.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

#include "logging/profile_plot.h"
#include "platform/qt_text.h"
#include "settings/setting_choices.h"
#include "ui/colour.h"

namespace gc40 {
namespace {

constexpr int kFontPixels = 11;
constexpr int kRowHeight = 14;
constexpr int kAxisGap = 2;
constexpr int kLabelGap = 2;
constexpr Colorref kBarColour = 0x000000;

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
  traces_ = setupProfileTraces(settings_);
  first_ = 0;
  setBar(0);
}

void ViewCurve::moveBar(BarMove move) { setBar(movedBar(bar_, stations_.size(), move)); }

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
  drawGrid(painter);
  drawTraces(painter);
  drawBar(painter);
  painter.fillRect(QRect(plotWidth() + kAxisGap, 0, 1, plotHeight() + 1), Qt::black);  // the axis
  drawLabels(painter);
}

void ViewCurve::drawGrid(QPainter& painter) const {
  const ProfileGrid grid = profileGrid(settings_);
  const int right = plotWidth() + kAxisGap;
  const auto line = [&](std::int32_t y, int lineWidth) {
    if (y < 0 || y - lineWidth + 1 > plotHeight()) return;
    painter.fillRect(QRect(0, y - lineWidth + 1, right, lineWidth), qColour(kProfileGridColour));
  };
  line(grid.zeroY, grid.zeroLineWidth);
  for (std::int32_t y : grid.lineYs) line(y, 1);
}

void ViewCurve::drawTraces(QPainter& painter) const {
  painter.save();
  painter.setClipRect(QRect(0, 0, plotWidth() + 1, plotHeight() + 1));
  const auto x = [](int column) { return column * kViewColumnPixels; };
  for (const ViewStroke& stroke : lineStrokes(stations_, first_, columns(), traces_, settings_)) {
    const auto trace = static_cast<std::size_t>(stroke.trace);
    QPen pen(qColour(settings_.traceColour[trace]),
             effectiveTraceThickness(settings_.traceThickness[trace]));
    pen.setCapStyle(Qt::RoundCap);
    painter.setPen(pen);
    if (stroke.joined) {
      painter.drawLine(QPoint(x(stroke.fromColumn), stroke.fromY),
                       QPoint(x(stroke.column), stroke.y));
    } else {
      painter.drawPoint(QPoint(x(stroke.column), stroke.y));
    }
  }
  painter.restore();
}

void ViewCurve::drawBar(QPainter& painter) const {
  if (stations_.empty()) return;
  const int x = static_cast<int>(bar_ - first_) * kViewColumnPixels;
  painter.fillRect(QRect(x, 0, 1, plotHeight() + 1), qColour(kBarColour));
}

// Each labelled scale's maximum at the top and its minimum at the bottom, as
// on the logging screen.
void ViewCurve::drawLabels(QPainter& painter) const {
  const ScaleLabelStyles styles = scaleLabelStyles(traces_, settings_);
  const int x = plotWidth() + kAxisGap + 1 + kLabelGap;
  const int labelWidth = width_ - x;
  const int shown = int(styles.conductivity.shown) + int(styles.inphase.shown);
  int row = 0;
  const auto label = [&](const ScaleLabelStyle& style, float min, float max) {
    if (!style.shown) return;
    painter.setPen(qColour(style.colour));
    const int low = plotHeight() - (shown - row) * kRowHeight;
    painter.drawText(QRect(x, row * kRowHeight, labelWidth, kRowHeight), Qt::AlignLeft,
                     qText(scaleLabel(max)));
    painter.drawText(QRect(x, low, labelWidth, kRowHeight), Qt::AlignLeft, qText(scaleLabel(min)));
    ++row;
  };
  label(styles.conductivity, settings_.conductivityScaleMin, settings_.conductivityScaleMax);
  label(styles.inphase, settings_.inphaseScaleMin, settings_.inphaseScaleMax);
}

}  // namespace gc40
