#pragma once
// A trace's colour button in Display Options: a white box with a bevel and a
// sample line in the trace's colour and pen width, slanted while pressed.

#include <QPushButton>

#include "settings/settings.h"

namespace gc40 {

class ColourButton : public QPushButton {
 public:
  // Reads the trace's colour and thickness from `settings` at every paint, so
  // a repaint shows a change at once.
  ColourButton(const Settings& settings, int trace, int scale, QWidget* parent);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const Settings& settings_;
  int trace_;
  int scale_;
};

}  // namespace gc40
