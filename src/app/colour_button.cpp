#include "app/colour_button.h"

#include <QPainter>

#include "settings/setting_choices.h"
#include "ui/colour.h"

namespace gc40 {

ColourButton::ColourButton(const Settings& settings, int trace, int scale, QWidget* parent)
    : QPushButton(parent), settings_(settings), trace_(trace), scale_(scale) {}

QSize ColourButton::sizeHint() const { return QSize(40 * scale_, 20 * scale_); }

void ColourButton::paintEvent(QPaintEvent*) {
  const auto index = static_cast<std::size_t>(trace_);
  QPainter painter(this);
  const QRect box = rect();
  painter.setPen(QPen(palette().color(QPalette::Dark), 3 * scale_));
  painter.setBrush(Qt::white);
  painter.drawRect(box.adjusted(1, 1, -2, -2));

  const bool pressed = isDown();
  const int inset = 2 * scale_;
  const QRect bevel = box.adjusted(inset, inset, -inset - 1, -inset - 1);
  const QColor shadow = palette().color(QPalette::Shadow);
  const QColor light = palette().color(QPalette::Light);
  painter.setPen(QPen(pressed ? shadow : light, scale_));
  const QPoint topLeft[] = {bevel.bottomLeft(), bevel.topLeft(), bevel.topRight()};
  painter.drawPolyline(topLeft, 3);
  painter.setPen(QPen(pressed ? light : shadow, scale_));
  const QPoint bottomRight[] = {bevel.bottomLeft(), bevel.bottomRight(), bevel.topRight()};
  painter.drawPolyline(bottomRight, 3);

  // A damaged thickness would paint the whole box; the profile draws 1..4.
  const int width = effectiveTraceThickness(settings_.traceThickness[index]) * scale_;
  painter.setPen(QPen(qColour(settings_.traceColour[index]), width, Qt::SolidLine, Qt::FlatCap));
  const int y = box.center().y();
  const int slant = pressed ? 4 * scale_ : 0;
  painter.drawLine(box.left() + 3 * scale_ + inset, y - slant, box.right() - 5 * scale_, y + slant);

  if (hasFocus()) {
    painter.setPen(QPen(palette().color(QPalette::WindowText), 1, Qt::DotLine));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(box.adjusted(3 * scale_, 3 * scale_, -4 * scale_, -4 * scale_));
  }
}

}  // namespace gc40
