#include "ui/colour.h"

namespace gc40 {

QColor qColour(Colorref colour) {
  return QColor(static_cast<int>(colour & 0xFF), static_cast<int>((colour >> 8) & 0xFF),
                static_cast<int>((colour >> 16) & 0xFF));
}

Colorref colorref(const QColor& colour) {
  return static_cast<Colorref>(colour.red()) | static_cast<Colorref>(colour.green()) << 8 |
         static_cast<Colorref>(colour.blue()) << 16;
}

}  // namespace gc40
