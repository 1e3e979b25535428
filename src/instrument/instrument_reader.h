#pragma once
// Feeds the instrument port's bytes to the record framer on the UI thread.
// Each complete reading is handled at once, before the next bytes are framed.

#include <QObject>
#include <QSerialPort>
#include <functional>
#include <memory>

#include "instrument/port_reader.h"
#include "instrument/record_framer.h"

namespace gc40 {

class RawCapture;

class InstrumentReader : public QObject {
  Q_OBJECT

 public:
  // `link` is the state the logging window shares with the framer; it must
  // outlive the reader. `capture`, when given, receives every byte read.
  InstrumentReader(std::unique_ptr<QSerialPort> port, InstrumentLink& link,
                   std::function<void()> onReading, RawCapture* capture = nullptr,
                   QObject* parent = nullptr);

  // Reader start: framer emptied, recordCounter 0, both queues purged.
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
  InstrumentLink& link_;
  std::function<void()> onReading_;
  RecordFramer framer_;
  PortReader port_;
};

}  // namespace gc40
