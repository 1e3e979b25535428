#pragma once
// Hands a serial port's bytes, with the tick they arrived at, to whoever
// frames them, on the UI thread. Bytes that arrive while the handler runs
// wait in the port's buffer, so none is lost. A port that fails is closed at
// once: a closed pseudo-terminal or a pulled adapter would otherwise report
// errors in a tight loop.

#include <QObject>
#include <QSerialPort>
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace gc40 {

class RawCapture;

class PortReader : public QObject {
  Q_OBJECT

 public:
  using BytesHandler = std::function<void(std::string_view bytes, std::uint32_t tick)>;

  // `capture`, when given, receives every byte handed on.
  PortReader(std::unique_ptr<QSerialPort> port, BytesHandler onBytes, RawCapture* capture = nullptr,
             QObject* parent = nullptr);
  ~PortReader() override;

  // Purges both queues, then hands on what arrives.
  void start();
  // Stops handing bytes on; what arrives meanwhile waits for the next start,
  // which purges it.
  void pause();
  // Hands bytes on again without purging, so that a reply to what was just
  // written is kept.
  void resume();
  // Closes the port. The handler may call it; bytes already read are dropped.
  void stop();

  bool isOpen() const;
  bool running() const { return running_; }
  QSerialPort& port() { return *port_; }

 signals:
  // The port failed (cable pulled, other end gone) and has been closed.
  void portClosed(const QString& reason);

 private:
  void readAvailable();
  void handleError(QSerialPort::SerialPortError error);

  std::unique_ptr<QSerialPort> port_;
  BytesHandler onBytes_;
  RawCapture* capture_;
  std::vector<char> chunk_;
  bool running_ = false;
};

// Stops a reader and lets it go once control is back in the event loop: it
// may be inside its own handler now. Leaves `reader` null.
template <typename Reader>
void stopAndRelease(Reader*& reader) {
  if (!reader) return;
  reader->stop();
  reader->deleteLater();
  reader = nullptr;
}

}  // namespace gc40
