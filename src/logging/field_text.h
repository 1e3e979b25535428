#pragma once
// Short field texts drawn from the font's glyphs directly. Laying each one
// out through QTextLayout (itemising, shaping, line breaking) cost more than
// the rest of a repaint; a plain ASCII text without ligatures comes out the
// same either way, and any other text still takes the ordinary way.

#include <QFont>
#include <QPainter>
#include <QRawFont>
#include <QRect>
#include <QString>

namespace gc40 {

class FieldText {
 public:
  explicit FieldText(const QFont& font);

  // `text` left-aligned and vertically centred in `rect` on one line, as
  // QPainter::drawText(rect, AlignLeft | AlignVCenter | TextSingleLine) draws
  // it with the same font, but not clipped: the caller clips.
  void draw(QPainter& painter, const QRect& rect, const QString& text) const;

 private:
  bool drawsDirectly(const QString& text) const;

  QFont font_;
  QRawFont glyphs_;
  qreal ascent_ = 0;
  qreal height_ = 0;
};

}  // namespace gc40
