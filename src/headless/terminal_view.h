#pragma once
// The logging screen without a window: a second view over the same logging
// session, on a terminal. Keys from standard input go to the session as the
// screen's keys do; what the session shows becomes one status line; its
// dialogs become questions on the terminal, asked while readings go on
// being recorded, as a modal dialog lets them. Uses Qt's core and serial
// port modules only, so no display is needed.

#include <QEventLoop>
#include <QObject>
#include <QPointer>
#include <QSerialPort>
#include <QTimer>
#include <deque>
#include <memory>
#include <optional>

#include "headless/terminal.h"
#include "headless/terminal_keys.h"
#include "headless/terminal_prompt.h"
#include "headless/terminal_status.h"
#include "instrument/record_framer.h"
#include "logging/logging_links.h"
#include "logging/logging_session.h"
#include "logging/logging_view.h"
#include "platform/logger_context.h"

namespace gc40 {

// How a headless run ended, as the program's exit code.
inline constexpr int kRunEndedByOperator = 0;
inline constexpr int kRunEndedWithoutMeter = 3;

class TerminalView : public QObject, private LoggingView {
  Q_OBJECT
 public:
  // `clock` (the machine's when null) must outlive the view.
  TerminalView(LoggerContext& context, Terminal& terminal, LoggingClock* clock = nullptr);
  ~TerminalView() override;

  // The run once the instrument port is open. With `autoStart` a file is
  // created under its proposed name and logging starts at once, as Create
  // File and Go would with nobody at the keys.
  void startRun(std::unique_ptr<QSerialPort> instrumentPort, bool autoStart);
  // The program is ending: a recording is paused and the run left without a
  // question.
  void shutDown();

  const LoggingSession& session() const { return session_; }

 signals:
  // The run is over and its file closed.
  void runEnded(int exitCode);

 private:
  void takeBytes(const QByteArray& bytes);
  void takeKeys();
  void refreshStatus();
  // Asks `prompt` while the loop runs on; false when it was cancelled or the
  // run ended meanwhile.
  bool ask(TerminalPrompt prompt, std::string* answer = nullptr);
  std::optional<DataFile> createFile(const std::string& name);

  // LoggingView
  void showButtons(const ButtonGroupShown& buttons) override;
  void showStateText(std::string_view text) override;
  void showFileName(std::u16string_view text) override;
  void showLineAndStation(std::u16string_view line, std::string_view station) override;
  void showMessage(std::string_view text) override;
  void showReading(const ReadingShown& shown) override;
  void showGps(const GpsFieldsShown& shown) override;
  void redraw() override;
  void addToProfile(const FiledValues&, std::int32_t, TraceFlags& traceContinues) override;
  void restartProfile() override {}
  void beep() override;
  std::optional<DataFile> runCreateFile() override;
  bool runNewLine() override;
  bool runNewStation() override;
  std::optional<std::u16string> runComment() override;
  bool runScale() override { return false; }
  void runDisplayOptions() override {}
  std::optional<int> runPopupMenu() override { return std::nullopt; }
  bool confirmExit() override;
  void showNoConnection() override;
  void closeDialogs() override;
  void showWriteFailure(const std::filesystem::path& path, std::string_view reason) override;
  void leave() override;

  LoggerContext& context_;
  Terminal& terminal_;
  std::unique_ptr<LoggingClock> ownClock_;
  LoggingClock& clock_;
  RecordFramer framer_;
  LoggingSession session_;
  LoggingLinks links_;
  TerminalStatus status_;
  QTimer statusTimer_;
  std::deque<TerminalKey> keys_;  // typed, not yet handled
  std::optional<TerminalPrompt> prompt_;
  QPointer<QEventLoop> promptLoop_;
  bool creatingWithoutAsking_ = false;  // --auto-start's Create File
  bool meterLost_ = false;
};

}  // namespace gc40
