#include "logging/profile_view.h"

#include <QFontMetrics>
#include <QPainter>
#include <algorithm>
#include <cstring>

#include "platform/qt_text.h"
#include "settings/setting_choices.h"
#include "ui/colour.h"
#include "ui/window_geometry.h"

namespace gc40 {
namespace {

constexpr int kLabelFontPixels = 11;
constexpr int kAxisGap = 2;   // from the newest column to the axis
constexpr int kLabelGap = 2;  // from the axis to the labels
constexpr int kMaxPlotHeight = 4096;
// Values far off the scale are drawn where they fall, but within reach of the
// rasteriser's arithmetic; 2 px to the side this still looks vertical.
constexpr int kFarOff = 1 << 16;

int screenWidth(std::int32_t portraitScreen) { return layoutSize(portraitScreen == 1).width; }

}  // namespace

ProfileView::ProfileView(const Settings& settings, const ProfileTraces& traces, int scale,
                         QWidget* parent)
    : QWidget(parent), settings_(settings), traces_(traces), scale_(scale) {
  setObjectName(QStringLiteral("5"));
  QFont font = this->font();
  font.setPixelSize(kLabelFontPixels * scale_);
  setFont(font);
  restart();
}

void ProfileView::restart() {
  plotWidth_ = profilePlotWidth(settings_.portraitScreen);
  plotHeight_ = std::clamp(settings_.plotHeight, 1, kMaxPlotHeight);
  setFixedSize(screenWidth(settings_.portraitScreen) * scale_, (plotHeight_ + 1) * scale_);
  picture_ = QImage(plotWidth_ + kAxisGap, plotHeight_ + 1, QImage::Format_RGB32);
  picture_.fill(Qt::white);
  grid_ = profileGrid(settings_);
  const int right = plotWidth_ + kAxisGap;
  drawGreyLine(grid_.zeroY, grid_.zeroLineWidth, 0, right);
  for (int y : grid_.lineYs) drawGreyLine(y, 1, 0, right);
  state_ = ProfileState{};
  update();
}

void ProfileView::addReading(const FiledValues& filed, std::int32_t readingsAtStation,
                             std::array<std::int32_t, kTraceCount>& traceContinues) {
  const ProfileStep step =
      addReadingToProfile(state_, filed, readingsAtStation, traces_, settings_, traceContinues);
  if (step.scroll) scroll();
  for (const TraceStroke& stroke : step.strokes) drawStroke(stroke);
  update(0, 0, picture_.width() * scale_, picture_.height() * scale_);
}

// A grey horizontal line of `lineWidth` rows ending on row y, from column
// fromX to toX inclusive, in layout pixels.
void ProfileView::drawGreyLine(int y, int lineWidth, int fromX, int toX) {
  if (y < 0 || y - lineWidth + 1 > plotHeight_) return;  // off the picture
  QPainter painter(&picture_);
  painter.fillRect(QRect(fromX, y - lineWidth + 1, toX - fromX + 1, lineWidth),
                   qColour(kProfileGridColour));
}

// Two columns to the left; the newest three columns blank again but for the
// zero line and the grid.
void ProfileView::scroll() {
  constexpr int kBytesPerPixel = 4;  // RGB32
  const int shift = kProfileScrollPixels * kBytesPerPixel;
  const auto kept = static_cast<std::size_t>(plotWidth_ - 1) * kBytesPerPixel;
  for (int row = 0; row < picture_.height(); ++row) {
    uchar* line = picture_.scanLine(row);
    std::memmove(line, line + shift, kept);
  }
  {
    QPainter painter(&picture_);
    painter.fillRect(QRect(plotWidth_ - 1, 0, 3, plotHeight_ + 1), Qt::white);
  }
  drawGreyLine(grid_.zeroY, grid_.zeroLineWidth, plotWidth_ - 1, plotWidth_ + 1);
  for (int y : grid_.lineYs) drawGreyLine(y, 1, plotWidth_ - 1, plotWidth_ + 1);
}

void ProfileView::drawStroke(const TraceStroke& stroke) {
  const auto trace = static_cast<std::size_t>(stroke.trace);
  QPainter painter(&picture_);
  QPen pen(qColour(settings_.traceColour[trace]),
           effectiveTraceThickness(settings_.traceThickness[trace]));
  pen.setCapStyle(Qt::RoundCap);
  painter.setPen(pen);
  const auto drawable = [this](std::int32_t y) {
    return std::clamp(y, -kFarOff, plotHeight_ + kFarOff);
  };
  const QPoint newest(plotWidth_, drawable(stroke.y));
  if (stroke.joined) {
    painter.drawLine(QPoint(plotWidth_ - kProfileScrollPixels, drawable(stroke.fromY)), newest);
  } else {
    painter.drawPoint(newest);
  }
}

void ProfileView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), Qt::white);
  // Whole blocks per layout pixel: scaling never blurs a one-pixel trace.
  const QRect plot(0, 0, picture_.width() * scale_, picture_.height() * scale_);
  painter.drawImage(plot, picture_);
  painter.fillRect(QRect(plot.width(), 0, scale_, height()), Qt::black);  // the axis
  drawLabels(painter);
}

// Each labelled scale's maximum at the top and its minimum at the bottom;
// with both scales labelled the conductivity's come first, top and bottom.
void ProfileView::drawLabels(QPainter& painter) {
  const ScaleLabelStyles styles = scaleLabelStyles(traces_, settings_);
  const QFontMetrics metrics(font());
  const int lineHeight = metrics.height();
  const int x = (picture_.width() + 1 + kLabelGap) * scale_;
  const int bottom = plotHeight_ * scale_ - lineHeight - scale_;
  const int shown = int(styles.conductivity.shown) + int(styles.inphase.shown);
  int row = 0;
  const auto label = [&](const ScaleLabelStyle& style, float min, float max) {
    if (!style.shown) return;
    painter.setPen(qColour(style.colour));
    const int top = row * lineHeight;
    const int low = bottom - (shown - 1 - row) * lineHeight;
    painter.drawText(QRect(x, top, width() - x, lineHeight), Qt::AlignLeft, qText(scaleLabel(max)));
    painter.drawText(QRect(x, low, width() - x, lineHeight), Qt::AlignLeft, qText(scaleLabel(min)));
    ++row;
  };
  label(styles.conductivity, settings_.conductivityScaleMin, settings_.conductivityScaleMax);
  label(styles.inphase, settings_.inphaseScaleMin, settings_.inphaseScaleMax);
}

}  // namespace gc40
