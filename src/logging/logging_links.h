#pragma once
// The ports of one Monitor/Log run and the clock that drives it: the meter's
// reader, the GPS receiver's, their raw captures with --raw-log, and the
// connection timer, all feeding one logging session. The logging screen and
// the terminal front end each run their session through one of these, so
// both are fed alike.

#include <QObject>
#include <QSerialPort>
#include <QString>
#include <QTimer>
#include <memory>
#include <optional>

#include "instrument/record_framer.h"
#include "logging/logging_session.h"
#include "logging/logging_view.h"
#include "platform/logger_context.h"
#include "platform/raw_capture.h"

namespace gc40 {

class InstrumentReader;
class GpsReader;

// The machine's tick counter and local time.
class MachineClock : public LoggingClock {
 public:
  std::uint32_t tickCount() override;
  LocalTime localTime() override;
};

class LoggingLinks : public QObject {
  Q_OBJECT
 public:
  // All four must outlive the links; `framer` is the session's.
  LoggingLinks(LoggerContext& context, LoggingSession& session, RecordFramer& framer,
               LoggingClock& clock, QObject* parent = nullptr);
  ~LoggingLinks() override;

  // The run prepared in Monitor with the instrument port open: the reader and
  // the connection timer started, and the GPS port opened when GPS input is
  // on. A GPS port that does not open leaves the run without GPS: the reason
  // ("COM2: (/dev/ttyUSB1): ...") is returned for the operator.
  std::optional<QString> start(std::unique_ptr<QSerialPort> instrumentPort);
  // Both ports closed and the timer stopped; nothing reaches the session after.
  void stop();
  bool gpsRunning() const { return gpsReader_ != nullptr; }

 signals:
  // After the session has handled a reading, and after each timer tick: a
  // screen repaints when it is due.
  void readingHandled();
  void timerTicked();

 private:
  RecordHandlers recordHandlers();
  void holdOffTimer(std::uint32_t tick);
  void startRawCaptures();

  LoggerContext& context_;
  LoggingSession& session_;
  RecordFramer& framer_;
  LoggingClock& clock_;
  QTimer connectionTimer_;
  std::uint32_t heldOffAt_ = 0;
  std::optional<RawCapture> capture_;
  std::optional<RawCapture> gpsCapture_;
  InstrumentReader* reader_ = nullptr;
  GpsReader* gpsReader_ = nullptr;
};

}  // namespace gc40
