#pragma once

#include <QPushButton>
#include <QWidget>
#include <array>
#include <cstdint>
#include <functional>

#include "app/main_menu.h"
#include "app/start_up.h"

namespace gc40 {

// The main window titled "GC40": the title screen with the seven menu
// buttons. Keys and clicks go through the main menu's decisions; Exit closes
// the window here and the uptime guard stops Monitor/Log here, every other
// command is handed on through commandChosen to MainCommands.
class MainWindow : public QWidget {
  Q_OBJECT

 public:
  // What the window takes from the machine; tests give their own.
  struct Services {
    std::function<std::uint32_t()> tickCount;
    std::function<void(int exitCode)> endProgram;
  };
  static Services machineServices();

  explicit MainWindow(LoggerContext& context, Services services = machineServices(),
                      QWidget* parent = nullptr);

  LoggerContext& context() { return context_; }
  int scale() const { return scale_; }
  int focusedButton() const { return menu_.focusedButton; }
  // A Monitor/Log run sets this when it starts and clears it when it ends
  // normally; while set, the menu ignores keys but takes clicks.
  void setKeysActive(bool active) { menu_.keysActive = active ? 1 : 0; }
  // Another copy was started: show this one instead.
  void bringToFront();

 signals:
  // Every menu command but Exit, Monitor/Log only after the uptime guard.
  void commandChosen(gc40::MainCommand command);

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void applyShape();
  void createButtons();
  void onKey(int keyCode);
  QWidget* coveringScreen() const;  // Logging, Monitor GPS or View Files while shown
  void choose(MainCommand command);
  void showFocusRing();
  bool stopIfUptimeExceeded(std::uint32_t tickMs);

  LoggerContext& context_;
  Services services_;
  Orientation orientation_;
  int scale_ = 1;
  MainMenuState menu_;
  std::array<QPushButton*, kMainButtonCount> buttons_{};
  std::uint32_t startTick_ = 0;  // read when the window is made, judged at its first paint
  bool painted_ = false;
};

}  // namespace gc40
