#pragma once
// Feeds the GPS port's bytes to the line assembler on the UI thread and hands
// on the lines each read completes, with the logging run's verdicts, the
// counterpart of InstrumentReader for the receiver. A receiver sends a fix's
// sentences together, so they are handed on together, to be recorded in one
// write. Lines are handed on only while the port runs, so none arrives after
// the run has stopped it.

#include <QObject>
#include <QSerialPort>
#include <functional>
#include <memory>
#include <span>

#include "gps/gps_line_assembler.h"
#include "instrument/port_reader.h"

namespace gc40 {

class RawCapture;

class GpsReader : public QObject {
  Q_OBJECT

 public:
  // Never called with no lines.
  using LinesHandler = std::function<void(std::span<const GpsLine> lines)>;

  // `capture`, when given, receives every byte read.
  GpsReader(std::unique_ptr<QSerialPort> port, LinesHandler onLines, RawCapture* capture = nullptr,
            QObject* parent = nullptr);

  // Reader start: the assembler emptied, both queues purged.
  void start();
  // Closes the port; the lines handler may call it (see stopAndRelease).
  void stop() { port_.stop(); }

 private:
  void handOnLines(std::string_view bytes, std::uint32_t tick);

  GpsLineAssembler assembler_;
  LinesHandler onLines_;
  PortReader port_;
};

}  // namespace gc40
