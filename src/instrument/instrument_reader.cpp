#include "instrument/instrument_reader.h"

#include <string_view>

#include "platform/clock.h"
#include "platform/raw_capture.h"

namespace gc40 {

InstrumentReader::InstrumentReader(std::unique_ptr<QSerialPort> port, InstrumentLink& link,
                                   std::function<void()> onReading, RawCapture* capture,
                                   QObject* parent)
    : QObject(parent),
      port_(std::move(port)),
      link_(link),
      onReading_(std::move(onReading)),
      capture_(capture) {
  connect(port_.get(), &QSerialPort::readyRead, this, &InstrumentReader::readAvailable);
  connect(port_.get(), &QSerialPort::errorOccurred, this, &InstrumentReader::handleError);
}

InstrumentReader::~InstrumentReader() { stop(); }

void InstrumentReader::start() {
  framer_.start(link_);
  port_->clear(QSerialPort::Output);
  port_->clear(QSerialPort::Input);
  running_ = port_->isOpen();
}

void InstrumentReader::stop() {
  running_ = false;
  if (port_->isOpen()) port_->close();
}

bool InstrumentReader::isOpen() const { return port_->isOpen(); }

void InstrumentReader::readAvailable() {
  if (!running_) return;
  const QByteArray bytes = port_->readAll();
  if (bytes.isEmpty()) return;
  const std::uint32_t tick = platform::tickCount();
  const std::string_view view(bytes.constData(), static_cast<std::size_t>(bytes.size()));
  if (capture_) capture_->write(view);
  // The handler may stop the run; the rest of this arrival is then dropped,
  // as the port it came from is closed.
  framer_.feed(view, tick, link_, [this] {
    if (running_) onReading_();
  });
}

// A closed pseudo-terminal or a pulled adapter reports a read error again and
// again until the port is closed, so close it at the first one.
void InstrumentReader::handleError(QSerialPort::SerialPortError error) {
  if (error != QSerialPort::ReadError && error != QSerialPort::ResourceError &&
      error != QSerialPort::WriteError) {
    return;
  }
  const QString reason = port_->errorString();
  stop();
  emit portClosed(reason);
}

}  // namespace gc40
