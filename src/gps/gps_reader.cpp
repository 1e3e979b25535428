#include "gps/gps_reader.h"

#include <vector>

namespace gc40 {

GpsReader::GpsReader(std::unique_ptr<QSerialPort> port, LinesHandler onLines, RawCapture* capture,
                     QObject* parent)
    : QObject(parent),
      onLines_(std::move(onLines)),
      port_(
          std::move(port),
          [this](std::string_view bytes, std::uint32_t tick) { handOnLines(bytes, tick); },
          capture) {}

void GpsReader::start() {
  assembler_.reset();
  port_.start();
}

// The port reader calls this only while it runs, and judging the lines
// cannot stop it.
void GpsReader::handOnLines(std::string_view bytes, std::uint32_t tick) {
  const std::vector<GpsLine> lines = judgeGpsChunk(assembler_, bytes, tick);
  if (!lines.empty()) onLines_(lines);
}

}  // namespace gc40
