#include "app/main_window.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPainter>
#include <QPalette>
#include <QScreen>
#include <QTimer>

#include "app/title_screen_layout.h"
#include "app/title_screen_painter.h"
#include "app/uptime_guard.h"
#include "platform/clock.h"
#include "ui/key_codes.h"
#include "ui/screen_layout.h"
#include "ui/window_geometry.h"

namespace gc40 {

namespace {

constexpr int kFontPixels = 14;

QRect scaled(LayoutRect r, int scale) {
  return QRect(r.x * scale, r.y * scale, r.width * scale, r.height * scale);
}

}  // namespace

MainWindow::Services MainWindow::machineServices() {
  return {.tickCount = &platform::tickCount,
          .endProgram = [](int exitCode) { QCoreApplication::exit(exitCode); }};
}

MainWindow::MainWindow(LoggerContext& context, Services services, QWidget* parent)
    : QWidget(parent),
      context_(context),
      services_(std::move(services)),
      orientation_(context.orientation) {
  setWindowTitle(QStringLiteral("GC40"));
  setFocusPolicy(Qt::StrongFocus);
  QPalette background = palette();  // beyond the layout on a larger full screen
  background.setColor(QPalette::Window, QColor(0xC0, 0xC0, 0xC0));
  setPalette(background);
  setAutoFillBackground(true);
  const LayoutSize layout = layoutSize(orientation_);
  context_.settings.portraitScreen = layout.width <= layout.height ? 1 : 0;
  startTick_ = services_.tickCount();
  applyShape();
  QFont font = this->font();
  font.setPixelSize(kFontPixels * scale_);
  setFont(font);
  createButtons();
}

void MainWindow::applyShape() {
  const LayoutSize layout = layoutSize(orientation_);
  const QScreen* screen = QGuiApplication::primaryScreen();
  const QSize available = screen ? screen->availableGeometry().size() : QSize();
  const int scale =
      chooseWindowScale(available.width(), available.height(), layout, context_.windowScale);
  if (scale == 0) {
    // The screen is no larger than the layout: draw it at its own size.
    setWindowState(Qt::WindowFullScreen);
    return;
  }
  scale_ = scale;
  setWindowScale(*this, scale);
  setFixedSize(layout.width * scale, layout.height * scale);
}

void MainWindow::createButtons() {
  for (int i = 0; i < kMainButtonCount; ++i) {
    const std::string_view label = kMainButtonLabels[i];
    auto* button = new QPushButton(QString::fromUtf8(label.data(), qsizetype(label.size())), this);
    button->setObjectName(QString::number(kFirstMainButtonId + i));
    button->setGeometry(scaled(mainButtonRect(orientation_, i), scale_));
    // The window keeps the keyboard, so every key reaches the menu; the ring
    // is the default-button look, not Qt's focus.
    button->setFocusPolicy(Qt::NoFocus);
    button->setAutoDefault(false);
    const int id = kFirstMainButtonId + i;
    connect(button, &QPushButton::clicked, this, [this, id] {
      if (const auto command = commandForButtonId(id)) choose(*command);
    });
    buttons_[i] = button;
  }
  showFocusRing();
}

void MainWindow::bringToFront() {
  setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  raise();
  activateWindow();
}

bool MainWindow::event(QEvent* event) {
  // Taken here rather than in keyPressEvent so that Tab reaches the menu
  // instead of Qt's focus chain.
  if (event->type() == QEvent::KeyPress) {
    // A key that reaches the window while a screen covers it (one the screen
    // passed on, or one pressed before the focus is back from a dialog) must
    // not work the menu the operator cannot see.
    if (!coveringScreen()) onKey(screenKeyCode(*static_cast<QKeyEvent*>(event)));
    return true;
  }
  return QWidget::event(event);
}

QWidget* MainWindow::coveringScreen() const {
  for (QWidget* child : findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
    if (child->isVisible() && child->geometry() == rect()) return child;
  return nullptr;
}

void MainWindow::onKey(int keyCode) {
  const MainMenuStep step = mainMenuKey(menu_, keyCode);
  if (step.previousFocus != menu_.focusedButton) showFocusRing();
  if (step.command) choose(*step.command);
}

void MainWindow::showFocusRing() {
  for (int i = 0; i < kMainButtonCount; ++i) buttons_[i]->setDefault(i == menu_.focusedButton);
}

void MainWindow::choose(MainCommand command) {
  if (command == MainCommand::kExit) {
    close();
    return;
  }
  if (command == MainCommand::kMonitorLog && stopIfUptimeExceeded(services_.tickCount())) return;
  emit commandChosen(command);
}

bool MainWindow::stopIfUptimeExceeded(std::uint32_t tickMs) {
  if (!uptimeExceeded(tickMs)) return false;
  QString text = QString::fromStdString(uptimeStopText());
  text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));  // a label breaks lines at LF only
  QMessageBox::warning(
      this, QString::fromUtf8(kUptimeStopCaption.data(), kUptimeStopCaption.size()), text);
  hide();
  services_.endProgram(0);
  return true;
}

void MainWindow::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.scale(scale_, scale_);
  paintTitleScreen(painter, orientation_);
  if (painted_) return;
  painted_ = true;
  setFocus();
  // The box cannot open inside a paint; it follows at once.
  QTimer::singleShot(0, this, [this] { stopIfUptimeExceeded(startTick_); });
}

}  // namespace gc40
