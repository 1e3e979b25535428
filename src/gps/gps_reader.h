#pragma once
// Feeds the GPS port's bytes to the line assembler on the UI thread and hands
// on each line with the logging run's verdict, the counterpart of
// InstrumentReader for the receiver. A line is handed on only while the port
// runs, so none arrives after the run has stopped it.

#include <QObject>
#include <QSerialPort>
#include <functional>
#include <memory>

#include "gps/gps_line_assembler.h"
#include "instrument/port_reader.h"

namespace gc40 {

class RawCapture;

class GpsReader : public QObject {
  Q_OBJECT

 public:
  using LineHandler = std::function<void(const GpsLine& line)>;

  // `capture`, when given, receives every byte read.
  GpsReader(std::unique_ptr<QSerialPort> port, LineHandler onLine, RawCapture* capture = nullptr,
            QObject* parent = nullptr);

  // Reader start: the assembler emptied, both queues purged.
  void start();
  // Closes the port; the line handler may call it (see stopAndRelease).
  void stop() { port_.stop(); }

 private:
  void judgeWhileRunning(std::string_view text, std::uint32_t tick);

  GpsLineAssembler assembler_;
  LineHandler onLine_;
  PortReader port_;
};

}  // namespace gc40
