#include "ui/screen_layout.h"

#include <QPushButton>
#include <QVariant>

namespace gc40 {

ScreenLayout::ScreenLayout(QWidget& screen, std::int32_t portraitScreen, int scale)
    : size_(layoutSize(portraitScreen == 1)), scale_(scale) {
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

namespace {
constexpr char kScaleProperty[] = "gc40WindowScale";
}  // namespace

void setWindowScale(QWidget& window, int scale) { window.setProperty(kScaleProperty, scale); }

int windowScale(const QWidget* widget) {
  const QVariant scale = widget ? widget->window()->property(kScaleProperty) : QVariant();
  return scale.isValid() ? scale.toInt() : 1;
}

QPushButton* makeScreenButton(QWidget* parent, int id, const char* label) {
  auto* button = new QPushButton(QString::fromLatin1(label), parent);
  button->setObjectName(QString::number(id));
  button->setFocusPolicy(Qt::NoFocus);
  return button;
}

}  // namespace gc40
