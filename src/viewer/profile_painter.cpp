#include "viewer/profile_painter.h"

#include <QPainter>

#include "logging/profile_plot.h"
#include "settings/profile_setup.h"
#include "settings/setting_choices.h"
#include "ui/colour.h"

namespace gc40 {
namespace {

constexpr int kRowHeight = 14;
constexpr int kAxisGap = 2;
constexpr int kLabelGap = 2;
constexpr Colorref kBarColour = 0x000000;

int axisX(const ProfilePaint& paint) { return paint.plotWidth + kAxisGap; }

void drawGrid(QPainter& painter, const ProfilePaint& paint) {
  const ProfileGrid grid = profileGrid(paint.settings);
  const int right = axisX(paint);
  const auto line = [&](std::int32_t y, int lineWidth) {
    if (y < 0 || y - lineWidth + 1 > paint.plotHeight) return;
    painter.fillRect(QRect(0, y - lineWidth + 1, right, lineWidth), qColour(kProfileGridColour));
  };
  line(grid.zeroY, grid.zeroLineWidth);
  for (std::int32_t y : grid.lineYs) line(y, 1);
}

void drawTraces(QPainter& painter, const ProfilePaint& paint, const ProfileTraces& traces) {
  painter.save();
  painter.setClipRect(QRect(0, 0, paint.plotWidth + 1, paint.plotHeight + 1));
  const auto x = [&paint](int column) { return column * paint.columnWidth; };
  for (const ViewStroke& stroke :
       lineStrokes(*paint.stations, paint.first, paint.columns, traces, paint.settings)) {
    const auto trace = static_cast<std::size_t>(stroke.trace);
    QPen pen(qColour(paint.settings.traceColour[trace]),
             effectiveTraceThickness(paint.settings.traceThickness[trace]));
    pen.setCapStyle(Qt::RoundCap);
    painter.setPen(pen);
    if (stroke.joined) {
      painter.drawLine(QPointF(x(stroke.fromColumn), stroke.fromY),
                       QPointF(x(stroke.column), stroke.y));
    } else {
      painter.drawPoint(QPointF(x(stroke.column), stroke.y));
    }
  }
  painter.restore();
}

// Each labelled scale's maximum at the top and its minimum at the bottom, as
// on the logging screen.
void drawLabels(QPainter& painter, const ProfilePaint& paint, const ProfileTraces& traces) {
  const ScaleLabelStyles styles = scaleLabelStyles(traces, paint.settings);
  const int x = axisX(paint) + 1 + kLabelGap;
  const int labelWidth = paint.width - x;
  const int shown = int(styles.conductivity.shown) + int(styles.inphase.shown);
  int row = 0;
  const auto label = [&](const ScaleLabelStyle& style, float min, float max) {
    if (!style.shown) return;
    painter.setPen(qColour(style.colour));
    const int low = paint.plotHeight - (shown - row) * kRowHeight;
    painter.drawText(QRect(x, row * kRowHeight, labelWidth, kRowHeight), Qt::AlignLeft,
                     QString::fromStdString(scaleLabel(max)));
    painter.drawText(QRect(x, low, labelWidth, kRowHeight), Qt::AlignLeft,
                     QString::fromStdString(scaleLabel(min)));
    ++row;
  };
  label(styles.conductivity, paint.settings.conductivityScaleMin,
        paint.settings.conductivityScaleMax);
  label(styles.inphase, paint.settings.inphaseScaleMin, paint.settings.inphaseScaleMax);
}

}  // namespace

void paintProfile(QPainter& painter, const ProfilePaint& paint) {
  const ProfileTraces traces = setupProfileTraces(paint.settings);
  drawGrid(painter, paint);
  drawTraces(painter, paint, traces);
  if (paint.bar && !paint.stations->empty() && *paint.bar >= paint.first) {
    const double x = static_cast<double>(*paint.bar - paint.first) * paint.columnWidth;
    painter.fillRect(QRectF(x, 0, 1, paint.plotHeight + 1), qColour(kBarColour));
  }
  painter.fillRect(QRect(axisX(paint), 0, 1, paint.plotHeight + 1), Qt::black);  // the axis
  drawLabels(painter, paint, traces);
}

}  // namespace gc40
