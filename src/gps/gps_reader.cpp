#include "gps/gps_reader.h"

namespace gc40 {

GpsReader::GpsReader(std::unique_ptr<QSerialPort> port, LineHandler onLine, RawCapture* capture,
                     QObject* parent)
    : QObject(parent),
      onLine_(std::move(onLine)),
      port_(
          std::move(port),
          [this](std::string_view bytes, std::uint32_t tick) {
            assembler_.feed(bytes, tick, [this](std::string_view text, std::uint32_t at) {
              judgeWhileRunning(text, at);
            });
          },
          capture) {}

void GpsReader::start() {
  assembler_.reset();
  port_.start();
}

void GpsReader::judgeWhileRunning(std::string_view text, std::uint32_t tick) {
  judgeGpsLine(text, tick, [this](const GpsLine& line) {
    if (port_.running()) onLine_(line);
  });
}

}  // namespace gc40
