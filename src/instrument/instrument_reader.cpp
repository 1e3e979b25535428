#include "instrument/instrument_reader.h"

namespace gc40 {

InstrumentReader::InstrumentReader(std::unique_ptr<QSerialPort> port, InstrumentLink& link,
                                   std::function<void()> onReading, RawCapture* capture,
                                   QObject* parent)
    : QObject(parent),
      link_(link),
      onReading_(std::move(onReading)),
      port_(
          std::move(port),
          [this](std::string_view bytes, std::uint32_t tick) {
            // The handler may stop the run; the rest of this arrival is then
            // dropped, as the port it came from is closed.
            framer_.feed(bytes, tick, link_, [this] {
              if (port_.running()) onReading_();
            });
          },
          capture) {
  connect(&port_, &PortReader::portClosed, this, &InstrumentReader::portClosed);
}

void InstrumentReader::start() {
  framer_.start(link_);
  port_.start();
}

}  // namespace gc40
