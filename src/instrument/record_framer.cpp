#include "instrument/record_framer.h"

#include <algorithm>

namespace gc40 {
namespace {

// Record on the wire, found by looking back recordLength bytes from its CR
// (whatever came before it, a line feed or noise, does no harm):
//   byte 0      'T' (0x54), the record marker
//   byte 1      status byte (range, dipole, mark, channel; see reading_decoder.cpp)
//   bytes 2-6   first value, 5 ASCII characters (conductivity channel)
//   bytes 7-11  second value, 5 ASCII characters (inphase channel)
//   byte 12     CR (0x0D)
constexpr char kRecordMarker = 'T';
constexpr char kRecordEnd = '\r';

// Counting wraps round like the 32-bit word it is instead of overflowing
// (undefined in C++) when good records keep coming after recordsPerReading
// was lowered below the count.
void countRecord(InstrumentLink& link) {
  link.recordCounter =
      static_cast<std::int32_t>(static_cast<std::uint32_t>(link.recordCounter) + 1u);
}

}  // namespace

std::int32_t effectiveRecordLength(const InstrumentLink& link) {
  return std::clamp(link.recordLength, 0, kMaxRecordLength);
}

std::string_view InstrumentLink::record() const {
  return {currentRecord.data(), static_cast<std::size_t>(effectiveRecordLength(*this))};
}

void RecordFramer::start(InstrumentLink& link) {
  link.recordLength = kRecordLength;
  link.recordCounter = 0;
  empty();
}

void RecordFramer::empty() {
  buffer_[0] = 0;
  index_ = -1;
}

void RecordFramer::feed(std::string_view bytes, std::uint32_t tick, InstrumentLink& link,
                        const std::function<void()>& onReading) {
  for (const char byte : bytes) {
    buffer_[++index_] = byte;
    if (index_ > kMaxIndex) {
      index_ = -1;  // garbage too long to hold a record; the bytes stay as they are
    } else if (byte == kRecordEnd && index_ >= effectiveRecordLength(link)) {
      frameLineEnd(tick, link, onReading);
    }
  }
}

void RecordFramer::frameLineEnd(std::uint32_t tick, InstrumentLink& link,
                                const std::function<void()>& onReading) {
  const std::int32_t start = index_ - effectiveRecordLength(link);
  if (buffer_[start] == kRecordMarker) {
    acceptRecord(start, tick, link, onReading);
    return;
  }
  // Not a record, yet it takes a place in the reading: a reading whose last
  // place falls here is dropped. The buffer is kept, so the next CR is again
  // tested recordLength bytes back, across this one.
  countRecord(link);
  if (link.recordCounter >= link.recordsPerReading) link.recordCounter = 0;
}

void RecordFramer::acceptRecord(std::int32_t start, std::uint32_t tick, InstrumentLink& link,
                                const std::function<void()>& onReading) {
  link.lastRecordTick = tick;
  countRecord(link);
  buffer_[index_] = 0;  // the CR becomes the record's terminating NUL
  std::copy(buffer_.begin() + start, buffer_.begin() + index_ + 1, link.currentRecord.begin());
  link.staleTicks = 0;
  // Equality only: a counter already past recordsPerReading waits for a
  // malformed line to wrap it.
  if (link.recordCounter == link.recordsPerReading) {
    link.recordCounter = 0;
    if (onReading) onReading();
  }
  empty();
}

}  // namespace gc40
