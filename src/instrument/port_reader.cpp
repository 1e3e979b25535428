#include "instrument/port_reader.h"

#include <algorithm>

#include "platform/clock.h"
#include "platform/log_categories.h"
#include "platform/raw_capture.h"

namespace gc40 {

PortReader::PortReader(std::unique_ptr<QSerialPort> port, BytesHandler onBytes, RawCapture* capture,
                       QObject* parent)
    : QObject(parent), port_(std::move(port)), onBytes_(std::move(onBytes)), capture_(capture) {
  connect(port_.get(), &QSerialPort::readyRead, this, &PortReader::readAvailable);
  connect(port_.get(), &QSerialPort::errorOccurred, this, &PortReader::handleError);
}

PortReader::~PortReader() { stop(); }

void PortReader::start() {
  port_->clear(QSerialPort::Output);
  port_->clear(QSerialPort::Input);
  running_ = port_->isOpen();
}

void PortReader::pause() { running_ = false; }

void PortReader::resume() { running_ = port_->isOpen(); }

void PortReader::stop() {
  running_ = false;
  if (!port_->isOpen()) return;
  port_->close();
  qCDebug(lcSerial, "closed %s", qUtf8Printable(port_->portName()));
}

bool PortReader::isOpen() const { return port_->isOpen(); }

void PortReader::readAvailable() {
  if (!running_) return;
  // Into a buffer kept from read to read: readAll() sets out a fresh 16 KiB
  // array each time, which cost more than the few bytes a record brings.
  chunk_.resize(static_cast<std::size_t>(std::max<qint64>(port_->bytesAvailable(), 0)));
  const qint64 got = port_->read(chunk_.data(), static_cast<qint64>(chunk_.size()));
  if (got <= 0) return;
  const std::string_view view(chunk_.data(), static_cast<std::size_t>(got));
  if (capture_) capture_->write(view);
  onBytes_(view, platform::tickCount());
}

void PortReader::handleError(QSerialPort::SerialPortError error) {
  if (error == QSerialPort::NoError) return;
  const QString reason = port_->errorString();
  qCDebug(lcSerial, "%s: %s", qUtf8Printable(port_->portName()), qUtf8Printable(reason));
  if (error != QSerialPort::ReadError && error != QSerialPort::ResourceError &&
      error != QSerialPort::WriteError) {
    return;
  }
  stop();
  emit portClosed(reason);
}

}  // namespace gc40
