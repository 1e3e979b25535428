#include "logging/logging_links.h"

#include "gps/gps_reader.h"
#include "instrument/instrument_reader.h"
#include "instrument/port_reader.h"
#include "instrument/serial_ports.h"
#include "platform/clock.h"
#include "platform/log_categories.h"

namespace gc40 {

std::uint32_t MachineClock::tickCount() { return platform::tickCount(); }
LocalTime MachineClock::localTime() { return platform::localTimeNow(); }

LoggingLinks::LoggingLinks(LoggerContext& context, LoggingSession& session, RecordFramer& framer,
                           LoggingClock& clock, QObject* parent)
    : QObject(parent), context_(context), session_(session), framer_(framer), clock_(clock) {
  connect(&connectionTimer_, &QTimer::timeout, this, [this] {
    session_.onTimerTick();
    emit timerTicked();
  });
}

LoggingLinks::~LoggingLinks() { stop(); }

// With --raw-log every byte of both ports is kept, so a problem seen in the
// field can be replayed.
void LoggingLinks::startRawCaptures() {
  if (!context_.rawLogFolder) return;
  const LocalTime now = clock_.localTime();
  for (auto [role, capture] : {std::pair{"instrument", &capture_}, {"gps", &gpsCapture_}}) {
    std::string error;
    if (auto opened = RawCapture::open(*context_.rawLogFolder, role, now, &error))
      capture->emplace(std::move(*opened));
    else
      qCWarning(lcSerial, "no raw capture: %s", error.c_str());
  }
}

std::optional<QString> LoggingLinks::start(std::unique_ptr<QSerialPort> instrumentPort) {
  startRawCaptures();
  session_.prepareRun(context_.profileTraces);
  reader_ = new InstrumentReader(std::move(instrumentPort), framer_, recordHandlers(),
                                 capture_ ? &*capture_ : nullptr, this);
  reader_->start();
  connectionTimer_.start(static_cast<int>(kConnectionTimeoutMs));
  if (context_.settings.gpsEnabled != 1) return std::nullopt;
  SerialPortOpening opening = openGpsPort(context_.settings, context_.ports);
  if (!opening.port) return opening.failure;
  gpsReader_ = new GpsReader(
      std::move(opening.port),
      [this](std::span<const GpsLine> lines) { session_.onGpsLines(lines); },
      gpsCapture_ ? &*gpsCapture_ : nullptr, this);
  gpsReader_->start();
  return std::nullopt;
}

// Every good record keeps the connection watch quiet; only the record that
// completes a reading is shown and recorded. The wait for the storage device
// comes after the reading is on file and on its way to the screen.
RecordHandlers LoggingLinks::recordHandlers() {
  return {.onRecord =
              [this](std::string_view, std::uint32_t tick) {
                session_.onRecordArrived(tick);
                holdOffTimer(tick);
              },
          .onReading =
              [this](std::string_view record, std::uint32_t tick) {
                session_.onReading(record, tick);
                session_.syncIfDue();
                emit readingHandled();
              }};
}

// While the meter's records flow the timer has nothing to watch: a record
// puts its tick a whole period off, so that it wakes the program only once
// the meter falls quiet. Its other duties, the sync and the last repaint,
// ride on the readings meanwhile. Restarting a timer is not free, so a
// record does it only when the last restart is two-thirds of a period old.
void LoggingLinks::holdOffTimer(std::uint32_t tick) {
  if (!connectionTimer_.isActive() || tick - heldOffAt_ < kConnectionTimeoutMs * 2 / 3) return;
  connectionTimer_.start();
  heldOffAt_ = tick;
}

void LoggingLinks::stop() {
  connectionTimer_.stop();
  stopAndRelease(reader_);
  stopAndRelease(gpsReader_);
  capture_.reset();
  gpsCapture_.reset();
}

}  // namespace gc40
