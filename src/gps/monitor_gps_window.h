#pragma once
// The Monitor GPS screen ("MonitorGPSWnd"): covers the main window and lists
// every line the GPS receiver sends, so that the cable and the port settings
// can be checked, and sends a command line to the receiver. It can pause the
// list; "NO DATA" marks each 7 s without a line.

#include <QSerialPort>
#include <QTimer>
#include <QWidget>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "gps/gps_line_assembler.h"
#include "gps/gps_monitor.h"
#include "platform/clock.h"
#include "settings/settings.h"

class QLineEdit;
class QPushButton;

namespace gc40 {

class GpsLineList;
class PortReader;

inline constexpr int kGpsGoId = 440;
inline constexpr int kGpsPauseId = 441;
inline constexpr int kGpsSendId = 442;
inline constexpr int kGpsExitId = 443;

class MonitorGpsWindow : public QWidget {
  Q_OBJECT

 public:
  using TickSource = std::function<std::uint32_t()>;

  // A hidden screen over `mainWindow`, drawn at the main window's `scale`;
  // `tickCount` times the silence of the receiver.
  MonitorGpsWindow(const Settings& settings, QWidget* mainWindow, int scale,
                   TickSource tickCount = &platform::tickCount);

  // Lists what arrives on the GPS port, which the caller has opened, until Exit.
  void startReader(std::unique_ptr<QSerialPort> gpsPort);
  // Fills the main window and takes the keyboard.
  void showOverMainWindow();

 signals:
  // Exit hid the screen: the main menu takes the keys again.
  void closed();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void createControls();
  void placeControls();
  void addLine(std::string_view text);
  void checkSilence();
  void showPauseButton(bool pauseShown);
  PortReader* openReader();
  void purge(unsigned long waitMs = 0);
  void go();
  void pause();
  void send();
  void writeCommand(const std::string& bytes);
  void leave();

  const Settings& settings_;
  int scale_;
  TickSource tickCount_;
  GpsLineAssembler assembler_;
  NoDataWatch watch_;
  PortReader* reader_ = nullptr;
  bool paused_ = false;  // by "&Pause"; a port closed by a failure is not paused
  QTimer silenceTimer_;
  GpsLineList* list_ = nullptr;
  QLineEdit* command_ = nullptr;
  QPushButton* go_ = nullptr;
  QPushButton* pause_ = nullptr;
  QPushButton* send_ = nullptr;
  QPushButton* exit_ = nullptr;
};

}  // namespace gc40
