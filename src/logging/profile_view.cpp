#include "logging/profile_view.h"

#include <QFontMetrics>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>

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
  // paintEvent covers every pixel it is asked for, so the window's background need not be drawn.
  setAttribute(Qt::WA_OpaquePaintEvent);
  restart();
}

void ProfileView::restart() {
  plotWidth_ = profilePlotWidth(settings_.portraitScreen);
  plotHeight_ = std::clamp(settings_.plotHeight, 1, kMaxPlotHeight);
  setFixedSize(screenWidth(settings_.portraitScreen) * scale_, (plotHeight_ + 1) * scale_);
  ring_ = QImage(plotWidth_ + kAxisGap, plotHeight_ + 1, QImage::Format_RGB32);
  ring_.fill(Qt::white);
  origin_ = 0;
  grid_ = profileGrid(settings_);
  const int right = plotWidth_ + kAxisGap;
  drawGreyLine(grid_.zeroY, grid_.zeroLineWidth, 0, right);
  for (int y : grid_.lineYs) drawGreyLine(y, 1, 0, right);
  state_ = ProfileState{};
  pending_ = QRect();
  update();
}

void ProfileView::addReading(const FiledValues& filed, std::int32_t readingsAtStation,
                             std::array<std::int32_t, kTraceCount>& traceContinues) {
  const ProfileStep step =
      addReadingToProfile(state_, filed, readingsAtStation, traces_, settings_, traceContinues);
  if (step.scroll) scroll();
  for (const TraceStroke& stroke : step.strokes) pending_ |= drawStroke(stroke);
}

QImage ProfileView::picture() const {
  QImage picture(ring_.size(), ring_.format());
  QPainter painter(&picture);
  inPieces(picture.rect(), [&](const QRect& area, int shift) {
    painter.drawImage(area.topLeft(), ring_, area.translated(shift, 0));
  });
  return picture;
}

// Calls draw(part, shift) for each part of `area` (picture columns) that lies
// in one stretch of the ring, where ring column = picture column + shift.
template <typename Draw>
void ProfileView::inPieces(const QRect& area, Draw draw) const {
  const int width = ring_.width();
  const QRect inside = area & ring_.rect();
  const QRect beforeSeam = inside & QRect(0, 0, width - origin_, ring_.height());
  const QRect afterSeam = inside & QRect(width - origin_, 0, origin_, ring_.height());
  if (!beforeSeam.isEmpty()) draw(beforeSeam, origin_);
  if (!afterSeam.isEmpty()) draw(afterSeam, origin_ - width);
}

// Drawn at once rather than posted for later: a posted repaint wakes the
// program once more.
void ProfileView::showPending() {
  if (!pending_.isEmpty()) repaint(onScreen(pending_));
  pending_ = QRect();
}

// `area` of the picture (layout pixels) in widget pixels.
QRect ProfileView::onScreen(const QRect& area) const {
  const QRect inside = area & ring_.rect();
  return QRect(inside.topLeft() * scale_, inside.size() * scale_);
}

// A grey horizontal line of `lineWidth` rows ending on row y, from column
// fromX to toX inclusive, in layout pixels.
void ProfileView::drawGreyLine(int y, int lineWidth, int fromX, int toX) {
  fillPicture(QRect(fromX, y - lineWidth + 1, toX - fromX + 1, lineWidth),
              qColour(kProfileGridColour).rgb());
}

// Straight into the pixels: a painter per grid line costs more than the line.
void ProfileView::fillPicture(const QRect& area, QRgb colour) {
  inPieces(area, [&](const QRect& part, int shift) {
    for (int y = part.top(); y <= part.bottom(); ++y)
      fillRun(y, part.left(), part.right(), shift, colour);
  });
}

// Columns fromX..toX of row y (picture pixels) in `colour`, the ring's
// columns being the picture's plus `shift`.
void ProfileView::fillRun(int y, int fromX, int toX, int shift, QRgb colour) {
  auto* line = reinterpret_cast<QRgb*>(ring_.scanLine(y)) + shift;
  std::fill(line + fromX, line + toX + 1, colour);
}

// Two columns to the left; the newest three columns blank again but for the
// zero line and the grid.
void ProfileView::scroll() {
  origin_ = (origin_ + kProfileScrollPixels) % ring_.width();
  const QRect newest(plotWidth_ - 1, 0, 3, plotHeight_ + 1);
  fillPicture(newest, qRgb(255, 255, 255));
  drawGreyLine(grid_.zeroY, grid_.zeroLineWidth, plotWidth_ - 1, plotWidth_ + 1);
  for (int y : grid_.lineYs) drawGreyLine(y, 1, plotWidth_ - 1, plotWidth_ + 1);
  // The whole plot is drawn again, which costs no more than moving the
  // screen's pixels would.
  pending_ = ring_.rect();
}

// Draws one stroke, straight into the pixels as the grid is (a painter for
// each reading cost more than the rest of its way from port to screen), and
// returns the part of the picture it may have touched.
QRect ProfileView::drawStroke(const TraceStroke& stroke) {
  const auto trace = static_cast<std::size_t>(stroke.trace);
  const QRgb colour = qColour(settings_.traceColour[trace]).rgb();
  const int width = effectiveTraceThickness(settings_.traceThickness[trace]);
  const auto drawable = [this](std::int32_t y) {
    return std::clamp(y, -kFarOff, plotHeight_ + kFarOff);
  };
  const QPoint newest(plotWidth_, drawable(stroke.y));
  const QPoint from =
      stroke.joined ? QPoint(plotWidth_ - kProfileScrollPixels, drawable(stroke.fromY)) : newest;
  const StrokeShape shape{from.x(), from.y(), newest.x(), newest.y(), width};
  const QRect touched = QRect(from, newest).normalized().adjusted(-width, -width, width, width);
  // Each stretch of the ring gets the stroke clipped to its own columns, so
  // nothing past the picture's right edge comes round to its left.
  inPieces(touched, [&](const QRect& part, int shift) {
    const PixelBox clip{part.left(), part.top(), part.right(), part.bottom()};
    forEachStrokeRun(shape, clip,
                     [&](int y, int fromX, int toX) { fillRun(y, fromX, toX, shift, colour); });
  });
  return touched;
}

// The picture is enlarged where asked only: whole blocks of scale by scale
// pixels (no smoothing, so scaling never blurs a one-pixel trace).
void ProfileView::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  for (const QRect& asked : event->region()) {
    const QRect from(asked.topLeft() / scale_, asked.bottomRight() / scale_);
    inPieces(from, [&](const QRect& part, int shift) {
      painter.drawImage(onScreen(part), ring_, part.translated(shift, 0));
    });
  }
  const QRect plot = onScreen(ring_.rect());
  const QRect besidePlot(plot.width(), 0, width() - plot.width(), height());
  // A new reading repaints the plot alone; the labels' texts need no new layout then.
  if (!event->region().intersects(besidePlot)) return;
  painter.fillRect(besidePlot, Qt::white);
  painter.fillRect(QRect(plot.width(), 0, scale_, height()), Qt::black);  // the axis
  drawLabels(painter);
}

// Each labelled scale's maximum at the top and its minimum at the bottom;
// with both scales labelled the conductivity's come first, top and bottom.
void ProfileView::drawLabels(QPainter& painter) {
  const ScaleLabelStyles styles = scaleLabelStyles(traces_, settings_);
  const QFontMetrics metrics(font());
  const int lineHeight = metrics.height();
  const int x = (ring_.width() + 1 + kLabelGap) * scale_;
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
