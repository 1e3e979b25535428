#include "ui/key_codes.h"

#include <QKeyEvent>

namespace gc40 {

// Shift+Tab is still Tab: no screen looks at modifiers.
int screenKeyCode(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
      return kKeyTab;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return kKeyReturn;
    case Qt::Key_PageUp:
      return kKeyPageUp;
    case Qt::Key_PageDown:
      return kKeyPageDown;
    case Qt::Key_End:
      return kKeyEnd;
    case Qt::Key_Home:
      return kKeyHome;
    case Qt::Key_Escape:
      return kKeyEscape;
    case Qt::Key_Backspace:
      return kKeyBackspace;
    case Qt::Key_Left:
      return kKeyLeft;
    case Qt::Key_Up:
      return kKeyUp;
    case Qt::Key_Right:
      return kKeyRight;
    case Qt::Key_Down:
      return kKeyDown;
    default:
      break;
  }
  const QString text = event.text();
  if (text.size() == 1 && text[0].unicode() < 128) return text[0].unicode();
  if (event.key() >= Qt::Key_A && event.key() <= Qt::Key_Z) return event.key();
  return -1;
}

}  // namespace gc40
