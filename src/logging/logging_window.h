#pragma once
// The logging screen ("LoggingWnd"): covers the main window during a
// Monitor/Log run with the status display, the live profile and the button
// group of the state the run is in. It draws what the session tells it, runs
// the dialogs the session asks for, and hands the session every key, click,
// reading and timer tick; the session makes every decision.

#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QSerialPort>
#include <QWidget>
#include <array>
#include <memory>
#include <optional>
#include <vector>

#include "instrument/record_framer.h"
#include "logging/logging_links.h"
#include "logging/logging_session.h"
#include "logging/logging_view.h"
#include "platform/logger_context.h"

namespace gc40 {

class ProfileView;
class StatusPanel;

class LoggingWindow : public QWidget, private LoggingView {
  Q_OBJECT
 public:
  // A hidden screen over `mainWindow`, drawn at the main window's `scale`.
  // `clock` (the machine's when null) must outlive the window.
  LoggingWindow(LoggerContext& context, QWidget* mainWindow, int scale,
                LoggingClock* clock = nullptr);
  ~LoggingWindow() override;

  // The rest of a Monitor/Log start once the instrument port is open: the
  // run prepared in Monitor, the reader and the connection timer started, the
  // GPS port opened when GPS input is on, and the screen shown with the keys.
  void startRun(std::unique_ptr<QSerialPort> instrumentPort);

  const LoggingSession& session() const { return session_; }
  // The program is ending: a recording is paused and the run left without a
  // question, with no box shown.
  void shutDown();

 signals:
  // The run is over and the screen hidden: the main menu takes keys again.
  void runEnded();
  // A reading went into the data file at `station`.
  void readingRecorded(double station);
  // The data file could not be written, for the system's `reason`; recording
  // has stopped.
  void writeFailed(const QString& path, const QString& reason);
  // The Display Options button: the dialog is the main menu's, run by whoever
  // built this screen before this signal returns.
  void displayOptionsRequested();

 protected:
  bool event(QEvent* event) override;

 private:
  void createButtons();
  QPushButton* makeButton(int id, const char* label);
  void placeButtonRow(const std::vector<QPushButton*>& row, int width, int pitch);
  void repaintIfDue();
  auto keysBackAfterDialog();

  // LoggingView
  void showButtons(const ButtonGroupShown& buttons) override;
  void showStateText(std::string_view text) override;
  void showFileName(std::u16string_view text) override;
  void showLineAndStation(std::u16string_view line, std::string_view station) override;
  void showMessage(std::string_view text) override;
  void showReading(const ReadingShown& shown) override;
  void showGps(const GpsFieldsShown& shown) override;
  void redraw() override;
  void addToProfile(const FiledValues& filed, std::int32_t readingsAtStation,
                    TraceFlags& traceContinues) override;
  void restartProfile() override;
  void beep() override;
  std::optional<DataFile> runCreateFile() override;
  bool runNewLine() override;
  bool runNewStation() override;
  std::optional<std::u16string> runComment() override;
  bool runScale() override;
  void runDisplayOptions() override;
  std::optional<int> runPopupMenu() override;
  bool confirmExit() override;
  void showNoConnection() override;
  void closeDialogs() override;
  void showWriteFailure(const std::filesystem::path& path, std::string_view reason) override;
  void leave() override;

  LoggerContext& context_;
  int scale_;
  std::unique_ptr<LoggingClock> ownClock_;
  LoggingClock& clock_;
  RecordFramer framer_;
  LoggingSession session_;
  StatusPanel* status_ = nullptr;
  ProfileView* profile_ = nullptr;
  std::array<QPushButton*, 2> monitorButtons_{};
  std::array<QPushButton*, 6> standByButtons_{};
  std::array<QPushButton*, 8> pauseButtons_{};
  LoggingLinks links_;
  static constexpr std::uint32_t kRepaintGapMs = 250;  // at most four repaints a second
  std::uint32_t lastRepaintTick_ = 0;
  QPointer<QMessageBox> exitQuestion_;  // while "Exit?" is asked
  QString openFile_;                    // the data file's path while one is open, for the file log
  bool shuttingDown_ = false;
};

}  // namespace gc40
