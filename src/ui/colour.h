#pragma once
// The settings keep colours as 0x00BBGGRR words, the screens draw with QColor.

#include <QColor>

#include "settings/settings.h"

namespace gc40 {

QColor qColour(Colorref colour);
Colorref colorref(const QColor& colour);

}  // namespace gc40
