#include "app/view_files_screen.h"

#include <QKeyEvent>

namespace gc40 {

ViewFilesScreen::ViewFilesScreen(QWidget* mainWindow) : QWidget(mainWindow) {
  setObjectName(QStringLiteral("ViewFilesWnd"));
  setAutoFillBackground(true);
  setFocusPolicy(Qt::StrongFocus);
  hide();
}

void ViewFilesScreen::showOverMainWindow() {
  setGeometry(parentWidget()->rect());
  show();
  raise();
  setFocus();
}

void ViewFilesScreen::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_X) {
    hide();
    parentWidget()->setFocus();
    return;
  }
  QWidget::keyPressEvent(event);
}

}  // namespace gc40
