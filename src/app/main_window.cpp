#include "app/main_window.h"

#include <QGuiApplication>
#include <QPalette>
#include <QScreen>

#include "app/window_geometry.h"

namespace gc40 {

MainWindow::MainWindow(LoggerContext& context, QWidget* parent)
    : QWidget(parent), context_(context) {
  setWindowTitle(QStringLiteral("GC40"));
  QPalette background = palette();
  background.setColor(QPalette::Window, QColor(0xC0, 0xC0, 0xC0));
  setPalette(background);
  setAutoFillBackground(true);
  applyShape();
}

void MainWindow::applyShape() {
  const LayoutSize layout = layoutSize(context_.options.orientation);
  const QScreen* screen = QGuiApplication::primaryScreen();
  const QSize available = screen ? screen->availableGeometry().size() : QSize();
  const int scale =
      chooseWindowScale(available.width(), available.height(), layout, context_.options.scale);
  if (scale == 0) {
    setWindowState(Qt::WindowFullScreen);
    return;
  }
  setFixedSize(layout.width * scale, layout.height * scale);
}

}  // namespace gc40
