#pragma once
// The full-screen screens over the main window (Logging, Monitor GPS, View
// Files) are laid out in layout pixels, one per pixel of a field screen, and
// drawn at the main window's whole scale.

#include <cstdint>

#include "ui/window_geometry.h"

class QPushButton;
class QWidget;

namespace gc40 {

// The screens' margins, and their row of buttons along the bottom edge.
inline constexpr int kScreenMargin = 2;
inline constexpr int kScreenGap = 2;
inline constexpr int kScreenButtonHeight = 20;

class ScreenLayout {
 public:
  // Fixes `screen` to the layout size of its shape at `scale`.
  ScreenLayout(QWidget& screen, std::int32_t portraitScreen, int scale);

  LayoutSize size() const { return size_; }
  // Between the margins: the width, and the top of the button row.
  int innerWidth() const { return size_.width - 2 * kScreenMargin; }
  int buttonRowTop() const { return size_.height - kScreenMargin - kScreenButtonHeight; }
  void place(QWidget* widget, int left, int top, int width, int height) const;
  // Place `index` of `places` equal places in the button row.
  void placeInButtonRow(QWidget* button, int index, int places) const;

 private:
  LayoutSize size_;
  int scale_;
};

// The main window's whole scale, kept on the window so that the screens and
// dialogs over it are drawn at the same scale; 1 for any other window.
void setWindowScale(QWidget& window, int scale);
int windowScale(const QWidget* widget);

// A screen's button, named by its id. It never takes the keyboard focus, so
// the screen keeps every key (a focused button would take Space, Enter, "x").
QPushButton* makeScreenButton(QWidget* parent, int id, const char* label);

}  // namespace gc40
