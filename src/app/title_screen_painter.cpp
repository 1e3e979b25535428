#include "app/title_screen_painter.h"

#include <QFont>
#include <QLinearGradient>
#include <QPainterPath>
#include <QPolygon>
#include <cmath>

#include "app/title_screen_layout.h"
#include "app/version.h"

namespace gc40 {

namespace {

const QColor kLightGrey(0xC0, 0xC0, 0xC0);
const QColor kNavy(0x1C, 0x2E, 0x5A);
const QColor kEarth(0x7A, 0x55, 0x30);
const QColor kTrace(0x1E, 0x7A, 0x3C);

QRect toQRect(LayoutRect r) { return QRect(r.x, r.y, r.width, r.height); }

QFont pixelFont(int pixels, bool bold) {
  QFont font;
  font.setPixelSize(pixels);
  font.setBold(bold);
  return font;
}

// A dark strip with a field of induction loops: the instrument's coils seen
// edge-on, one above the other.
void drawSideArt(QPainter& painter, LayoutRect area) {
  const QRect strip = toQRect(area);
  QLinearGradient shade(strip.topLeft(), strip.topRight());
  shade.setColorAt(0, kNavy.darker(140));
  shade.setColorAt(1, kNavy.lighter(130));
  painter.fillRect(strip, shade);
  painter.setPen(QPen(QColor(0x9F, 0xC8, 0xF0), 1));
  painter.setBrush(Qt::NoBrush);
  const int loopWidth = area.width - 12;
  for (int y = area.y + 12; y + 14 < area.y + area.height; y += 22)
    painter.drawEllipse(QRect(area.x + 6, y, loopWidth, 10));
}

// The program's name on a navy plate.
void drawTitleArt(QPainter& painter, LayoutPoint at, Orientation orientation) {
  const bool portrait = orientation == Orientation::kPortrait;
  const QRect plate(at.x, at.y, portrait ? 160 : 120, portrait ? 40 : 58);
  painter.setPen(Qt::NoPen);
  painter.setBrush(kNavy);
  painter.drawRoundedRect(plate, 6, 6);
  painter.setPen(Qt::white);
  painter.setFont(pixelFont(portrait ? 26 : 30, true));
  const QRect nameBox = portrait ? plate : plate.adjusted(0, 2, 0, -18);
  painter.drawText(nameBox, Qt::AlignCenter, QStringLiteral("GC40"));
  if (!portrait) {
    painter.setFont(pixelFont(10, false));
    painter.drawText(plate.adjusted(0, 38, 0, -2), Qt::AlignCenter,
                     QStringLiteral("Conductivity Logger"));
  }
}

// A survey profile over layered ground.
void drawBottomArt(QPainter& painter, LayoutPoint at, Orientation orientation) {
  const bool portrait = orientation == Orientation::kPortrait;
  const int width = portrait ? 160 : 120;
  const int height = portrait ? 16 : 36;
  const int ground = at.y + height * 2 / 3;
  painter.fillRect(QRect(at.x, ground, width, at.y + height - ground), kEarth);
  painter.fillRect(QRect(at.x, ground, width, 2), kEarth.lighter(140));
  QPolygon profile;
  for (int x = 0; x <= width; x += 4) {
    const double wave = std::sin(x / 9.0) * 0.5 + std::sin(x / 23.0) * 0.5;
    profile << QPoint(at.x + x,
                      at.y + (ground - at.y) / 2 + static_cast<int>(wave * (ground - at.y) / 2.5));
  }
  painter.setPen(QPen(kTrace, 2));
  painter.drawPolyline(profile);
}

// The frame through the centres of the four corner circles.
void drawFrame(QPainter& painter, const TitleScreenLayout& layout, Orientation orientation) {
  constexpr int kHalf = kCornerCircleSize / 2;
  QPolygon corners;
  for (const LayoutPoint& c : layout.cornerCircles) corners << QPoint(c.x + kHalf, c.y + kHalf);
  painter.setPen(QPen(Qt::darkGray, 1));
  painter.setBrush(Qt::NoBrush);
  if (orientation == Orientation::kPortrait) {
    // top-left, top-right, bottom-left, bottom-right: round the rectangle
    painter.drawPolygon(QPolygon{corners[0], corners[1], corners[3], corners[2]});
  } else {
    // open on the left above the bottom-left circle, where the title stands
    painter.drawPolyline(QPolygon{corners[0], corners[1], corners[3], corners[2],
                                  QPoint(corners[2].x(), corners[2].y() - 36)});
  }
  painter.setPen(QPen(kNavy, 1));
  painter.setBrush(Qt::white);
  for (const LayoutPoint& c : layout.cornerCircles)
    painter.drawEllipse(QRect(c.x, c.y, kCornerCircleSize, kCornerCircleSize));
}

}  // namespace

void paintTitleScreen(QPainter& painter, Orientation orientation) {
  const TitleScreenLayout layout = titleScreenLayout(orientation);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillRect(toQRect(layout.greyArea), kLightGrey);
  drawFrame(painter, layout, orientation);
  painter.setPen(Qt::black);
  painter.setFont(pixelFont(14, false));
  const QString version =
      QStringLiteral("Version ") + QString::fromUtf8(kGc40Version.data(), kGc40Version.size());
  painter.drawText(QRect(layout.versionText.x, layout.versionText.y, 100, 16),
                   Qt::AlignLeft | Qt::AlignTop, version);
  drawSideArt(painter, layout.sideArt);
  drawTitleArt(painter, layout.titleArt, orientation);
  drawBottomArt(painter, layout.bottomArt, orientation);
}

}  // namespace gc40
