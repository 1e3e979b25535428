#include "instrument/instrument_reader.h"

namespace gc40 {

InstrumentReader::InstrumentReader(std::unique_ptr<QSerialPort> port, RecordFramer& framer,
                                   RecordHandlers handlers, RawCapture* capture, QObject* parent)
    : QObject(parent),
      framer_(framer),
      handlers_{std::move(handlers.onRecord), whileRunning(std::move(handlers.onReading))},
      port_(
          std::move(port),
          [this](std::string_view bytes, std::uint32_t tick) {
            framer_.feed(bytes, tick, handlers_);
          },
          capture) {
  connect(&port_, &PortReader::portClosed, this, &InstrumentReader::portClosed);
}

// The reading handler may stop the run; the rest of this arrival then gives
// no reading, as the port it came from is closed.
RecordHandler InstrumentReader::whileRunning(RecordHandler onReading) {
  return [this, onReading = std::move(onReading)](std::string_view record, std::uint32_t tick) {
    if (port_.running() && onReading) onReading(record, tick);
  };
}

void InstrumentReader::start() {
  framer_.start();
  port_.start();
}

}  // namespace gc40
