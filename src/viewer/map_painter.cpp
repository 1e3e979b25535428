#include "viewer/map_painter.h"

#include <QPainter>
#include <QPainterPath>
#include <array>

#include "map/map_texts.h"

namespace gc40 {
namespace {

constexpr int kFontPixels = 9;
constexpr int kCornerGap = 3;
constexpr int kBarWidth = 8;
constexpr int kBarTop = 14;  // below the unit
constexpr int kMarkerRadius = 5;
const QColor kPanel(255, 255, 255, 210);  // behind texts over the dots

QColor qColour(const MapColour& colour) { return QColor(colour.red, colour.green, colour.blue); }

QString latin(std::string_view text) {
  return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

const std::array<QColor, kColourSteps>& barColours() {
  static const std::array<QColor, kColourSteps> colours = [] {
    std::array<QColor, kColourSteps> made;
    for (int step = 0; step < kColourSteps; ++step)
      made[static_cast<std::size_t>(step)] = qColour(colourBar()[static_cast<std::size_t>(step)]);
    return made;
  }();
  return colours;
}

// Text on a pale panel, so that it reads over the dots.
void panelText(QPainter& painter, const QPoint& at, const QString& text, int scale) {
  const QFontMetrics metrics = painter.fontMetrics();
  const QRect box(at, QSize(metrics.horizontalAdvance(text) + 2 * scale, metrics.height()));
  painter.fillRect(box, kPanel);
  painter.setPen(Qt::black);
  painter.drawText(box, Qt::AlignCenter, text);
}

void drawDots(QPainter& painter, const MapDrawing& drawing, int dot, int scale) {
  const int half = dot / 2;
  const auto colourOf = [](const MapDot& d) {
    return d.colour < 0 ? qColour(kNoValueColour)
                        : barColours()[static_cast<std::size_t>(d.colour)];
  };
  for (std::size_t i = 0; i < drawing.selectedFrom; ++i) {
    const MapDot& d = drawing.dots[i];
    painter.fillRect(d.x - half, d.y - half, dot, dot, colourOf(d));
  }
  // The chosen line: a dark rim under its dots sets it apart from its neighbours.
  for (std::size_t i = drawing.selectedFrom; i < drawing.dots.size(); ++i) {
    const MapDot& d = drawing.dots[i];
    painter.fillRect(d.x - half - scale, d.y - half - scale, dot + 2 * scale, dot + 2 * scale,
                     Qt::black);
  }
  for (std::size_t i = drawing.selectedFrom; i < drawing.dots.size(); ++i) {
    const MapDot& d = drawing.dots[i];
    painter.fillRect(d.x - half, d.y - half, dot, dot, colourOf(d));
  }
}

void drawMarker(QPainter& painter, const MapPixel& at, int scale) {
  const QPointF centre(at.x, at.y);
  const double radius = kMarkerRadius * scale;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(Qt::white, 3.5 * scale));
  painter.drawEllipse(centre, radius, radius);
  painter.setPen(QPen(Qt::black, 1.5 * scale));
  painter.drawEllipse(centre, radius, radius);
  painter.restore();
}

void drawScaleBar(QPainter& painter, const QSize& dots, const MapPaint& paint) {
  const int s = paint.scale;
  const ScaleBar bar = scaleBar(paint.view.unitsPerPixel / s, dots.width() / 3, paint.map->placing,
                                paint.map->distanceUnits);
  const int left = kCornerGap * s, bottom = dots.height() - kCornerGap * s;
  const QString text = QString::fromStdString(bar.text);
  const int textHeight = painter.fontMetrics().height();
  painter.fillRect(
      QRect(left - s, bottom - textHeight - 4 * s, bar.pixels + 2 * s, textHeight + 4 * s + s),
      kPanel);
  painter.fillRect(QRect(left, bottom - s, bar.pixels, s), Qt::black);
  painter.fillRect(QRect(left, bottom - 3 * s, s, 3 * s), Qt::black);
  painter.fillRect(QRect(left + bar.pixels - s, bottom - 3 * s, s, 3 * s), Qt::black);
  painter.setPen(Qt::black);
  painter.drawText(
      QRect(left, bottom - textHeight - 3 * s, bar.pixels + textHeight * 4, textHeight),
      Qt::AlignLeft | Qt::AlignVCenter, text);
}

void drawNorth(QPainter& painter, const QSize& dots, int scale) {
  const int s = scale;
  const double x = dots.width() - 8.0 * s, top = kCornerGap * s;
  QPainterPath arrow;
  arrow.moveTo(x, top);
  arrow.lineTo(x + 4.0 * s, top + 8.0 * s);
  arrow.lineTo(x, top + 6.0 * s);
  arrow.lineTo(x - 4.0 * s, top + 8.0 * s);
  arrow.closeSubpath();
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(Qt::white, s));
  painter.setBrush(Qt::black);
  painter.drawPath(arrow);
  painter.restore();
  panelText(painter, QPoint(static_cast<int>(x) - 4 * s, static_cast<int>(top) + 9 * s), "N", s);
}

void drawColourBar(QPainter& painter, const QRect& strip, const MapPaint& paint) {
  const int s = paint.scale;
  const QFontMetrics metrics = painter.fontMetrics();
  painter.setPen(Qt::black);
  painter.drawText(QRect(strip.left(), strip.top(), strip.width(), kBarTop * s), Qt::AlignCenter,
                   latin(valueUnit(paint.scene.value)));
  const int top = strip.top() + kBarTop * s, bottom = strip.bottom() - kBarTop * s;
  const int left = strip.left() + 2 * s;
  const double step = static_cast<double>(bottom - top) / kColourSteps;
  for (int i = 0; i < kColourSteps; ++i) {
    const int y0 = bottom - static_cast<int>(std::lround((i + 1) * step));
    const int y1 = bottom - static_cast<int>(std::lround(i * step));
    painter.fillRect(QRect(left, y0, kBarWidth * s, y1 - y0), barColours()[std::size_t(i)]);
  }
  painter.setPen(QPen(Qt::black, s));
  painter.drawRect(QRect(left, top, kBarWidth * s, bottom - top));
  if (!paint.hasLimits) return;
  const ColourLimits& limits = paint.scene.limits;
  const int textLeft = left + (kBarWidth + 2) * s, textWidth = strip.right() - textLeft;
  const auto label = [&](float value, int y) {
    painter.drawText(QRect(textLeft, y - metrics.height() / 2, textWidth, metrics.height()),
                     Qt::AlignLeft | Qt::AlignVCenter,
                     QString::fromStdString(limitText(value, limits)));
  };
  label(limits.high, top);
  label((limits.low + limits.high) / 2, (top + bottom) / 2);
  label(limits.low, bottom);
}

}  // namespace

PixelSize mapDotsSize(int width, int height) { return {width - kMapColourStrip, height}; }

PaintedMap paintMap(QPainter& painter, const QRect& area, const MapPaint& paint) {
  const int s = paint.scale;
  const PixelSize layoutDots = mapDotsSize(area.width() / s, area.height() / s);
  const QSize dots(layoutDots.width * s, area.height());
  painter.save();
  QFont font = painter.font();
  font.setPixelSize(kFontPixels * s);
  painter.setFont(font);
  painter.fillRect(area, Qt::white);
  painter.translate(area.topLeft());

  painter.save();
  painter.setClipRect(QRect(QPoint(0, 0), dots));
  PaintedMap painted;
  const MapDrawing& drawing = painted.drawing =
      drawMap(*paint.map, paint.scene, scaledView(paint.view, s), {dots.width(), dots.height()},
              kMapDotPixels * s);
  drawDots(painter, drawing, kMapDotPixels * s, s);
  if (drawing.marker) drawMarker(painter, *drawing.marker, s);
  if (paint.map->readings.empty()) {
    QFont large = font;
    large.setPixelSize(12 * s);
    painter.setFont(large);
    painter.setPen(Qt::black);
    painted.notes << latin(kNoPositionsText);
    painter.drawText(QRect(QPoint(0, 0), dots), Qt::AlignCenter, painted.notes.back());
    painter.setFont(font);
  } else {
    drawScaleBar(painter, dots, paint);
  }
  QStringList corner;
  if (paint.map->placing == MapPlacing::kGrid) corner << latin(kGridText);
  if (paint.map->withoutPosition > 0)
    corner << QString::fromStdString(withoutPositionText(paint.map->withoutPosition));
  for (int row = 0; row < corner.size(); ++row)
    panelText(painter, QPoint(kCornerGap * s, (kCornerGap + row * (kFontPixels + 3)) * s),
              corner[row], s);
  painted.notes << corner;
  if (paint.map->placing == MapPlacing::kPositions && !paint.map->readings.empty())
    drawNorth(painter, dots, s);
  painter.restore();

  painter.fillRect(QRect(dots.width(), 0, s, dots.height()), Qt::gray);
  drawColourBar(painter, QRect(dots.width() + s, 0, area.width() - dots.width() - s, dots.height()),
                paint);
  painter.restore();
  return painted;
}

}  // namespace gc40
