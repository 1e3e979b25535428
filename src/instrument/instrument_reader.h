#pragma once
// Feeds the instrument port's bytes to the record framer on the UI thread.
// Each complete reading is handled at once, before the next bytes are framed.

#include <QObject>
#include <QSerialPort>
#include <memory>

#include "instrument/port_reader.h"
#include "instrument/record_framer.h"

namespace gc40 {

class RawCapture;

class InstrumentReader : public QObject {
  Q_OBJECT

 public:
  // `framer` is shared with whoever sets the records per reading; it must
  // outlive the reader. `capture`, when given, receives every byte read.
  InstrumentReader(std::unique_ptr<QSerialPort> port, RecordFramer& framer, RecordHandlers handlers,
                   RawCapture* capture = nullptr, QObject* parent = nullptr);

  // Reader start: framer emptied, its count restarted, both queues purged.
  void start();
  // Closes the port; no reading is handled after this, even from bytes
  // already read. The reading handler may call it, but must not delete the
  // reader (use deleteLater): the framer is still working on the bytes.
  void stop() { port_.stop(); }
  bool isOpen() const { return port_.isOpen(); }

 signals:
  // The port failed (cable pulled, other end gone) and has been closed.
  void portClosed(const QString& reason);

 private:
  RecordHandler whileRunning(RecordHandler onReading);

  RecordFramer& framer_;
  RecordHandlers handlers_;
  PortReader port_;
};

}  // namespace gc40
