#pragma once
// The View Files screen: covers the main window while it is shown; X or
// Escape returns to the menu. Its content comes with the file viewer.

#include <QWidget>

namespace gc40 {

class ViewFilesScreen : public QWidget {
  Q_OBJECT

 public:
  explicit ViewFilesScreen(QWidget* mainWindow);

  // Fills the main window and takes the keyboard.
  void showOverMainWindow();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace gc40
