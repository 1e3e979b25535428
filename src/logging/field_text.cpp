#include "logging/field_text.h"

#include <QFontMetricsF>
#include <QGlyphRun>
#include <QList>
#include <QPointF>
#include <algorithm>

namespace gc40 {

FieldText::FieldText(const QFont& font) : font_(font), glyphs_(QRawFont::fromFont(font)) {
  const QFontMetricsF metrics(font);
  ascent_ = metrics.ascent();
  height_ = metrics.ascent() + metrics.descent();
}

// Printable ASCII, and no 'f', which starts the common ligatures (fi, fl,
// ff) that shaping would join.
bool FieldText::drawsDirectly(const QString& text) const {
  return glyphs_.isValid() && std::all_of(text.begin(), text.end(), [](QChar c) {
           return c.unicode() >= 0x20 && c.unicode() < 0x7f && c != u'f';
         });
}

void FieldText::draw(QPainter& painter, const QRect& rect, const QString& text) const {
  const QList<quint32> indexes =
      drawsDirectly(text) ? glyphs_.glyphIndexesForString(text) : QList<quint32>();
  // A glyph the font lacks (index 0) would need another font: shaping finds one.
  if (indexes.isEmpty() || indexes.contains(0u)) {
    painter.setFont(font_);
    painter.drawText(rect, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text);
    return;
  }
  const QList<QPointF> advances =
      glyphs_.advancesForGlyphIndexes(indexes, QRawFont::KernedAdvances);
  QList<QPointF> positions;
  positions.reserve(advances.size());
  qreal x = 0;
  for (const QPointF& advance : advances) {
    positions.append(QPointF(x, 0));
    x += advance.x();
  }
  QGlyphRun run;
  run.setRawFont(glyphs_);
  run.setGlyphIndexes(indexes);
  run.setPositions(positions);
  const qreal baseline = rect.y() + (rect.height() - height_) / 2 + ascent_;
  painter.drawGlyphRun(QPointF(rect.x(), baseline), run);
}

}  // namespace gc40
