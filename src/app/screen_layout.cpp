#include "app/screen_layout.h"

#include <QPushButton>

namespace gc40 {

ScreenLayout::ScreenLayout(QWidget& screen, std::int32_t portraitScreen, int scale)
    : size_(layoutSize(portraitScreen == 1 ? Orientation::kPortrait : Orientation::kLandscape)),
      scale_(scale) {
  screen.setFixedSize(size_.width * scale_, size_.height * scale_);
}

void ScreenLayout::place(QWidget* widget, int left, int top, int width, int height) const {
  widget->setGeometry(left * scale_, top * scale_, width * scale_, height * scale_);
}

void ScreenLayout::placeInButtonRow(QWidget* button, int index, int places) const {
  const int width = (innerWidth() - (places - 1) * kScreenGap) / places;
  place(button, kScreenMargin + index * (width + kScreenGap), buttonRowTop(), width,
        kScreenButtonHeight);
}

QPushButton* makeScreenButton(QWidget* parent, int id, const char* label) {
  auto* button = new QPushButton(QString::fromLatin1(label), parent);
  button->setObjectName(QString::number(id));
  button->setFocusPolicy(Qt::NoFocus);
  return button;
}

}  // namespace gc40
