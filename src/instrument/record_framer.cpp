#include "instrument/record_framer.h"

namespace gc40 {
namespace {

// Record on the wire, found by looking back kRecordLength bytes from its CR
// (whatever came before it, a line feed or noise, does no harm):
//   byte 0      'T' (0x54), the record marker
//   byte 1      status byte (range, dipole, mark, channel; see reading_decoder.cpp)
//   bytes 2-6   first value, 5 ASCII characters (conductivity channel)
//   bytes 7-11  second value, 5 ASCII characters (inphase channel)
//   byte 12     CR (0x0D)
constexpr char kRecordMarker = 'T';
constexpr char kRecordEnd = '\r';

}  // namespace

void RecordFramer::start() {
  recordCount_ = 0;
  empty();
}

void RecordFramer::empty() {
  buffer_[0] = 0;
  index_ = -1;
}

// Counting wraps round like the 32-bit word it is instead of overflowing
// (undefined in C++) when good records keep coming after recordsPerReading
// was lowered below the count.
void RecordFramer::countLine() {
  recordCount_ = static_cast<std::int32_t>(static_cast<std::uint32_t>(recordCount_) + 1u);
}

void RecordFramer::feed(std::string_view bytes, std::uint32_t tick,
                        const RecordHandlers& handlers) {
  for (const char byte : bytes) {
    buffer_[++index_] = byte;
    if (index_ > kMaxIndex) {
      index_ = -1;  // garbage too long to hold a record; the bytes stay as they are
    } else if (byte == kRecordEnd && index_ >= kRecordLength) {
      frameLineEnd(tick, handlers);
    }
  }
}

void RecordFramer::frameLineEnd(std::uint32_t tick, const RecordHandlers& handlers) {
  const std::int32_t start = index_ - kRecordLength;
  if (buffer_[start] == kRecordMarker) {
    acceptRecord(start, tick, handlers);
    return;
  }
  // Not a record, yet it takes a place in the reading: a reading whose last
  // place falls here is dropped. The buffer is kept, so the next CR is again
  // tested kRecordLength bytes back, across this one.
  countLine();
  if (recordCount_ >= recordsPerReading_) recordCount_ = 0;
}

void RecordFramer::acceptRecord(std::int32_t start, std::uint32_t tick,
                                const RecordHandlers& handlers) {
  const std::string_view record(buffer_.data() + start, std::size_t{kRecordLength});
  countLine();
  if (handlers.onRecord) handlers.onRecord(record, tick);
  // Equality only: a count already past recordsPerReading waits for a
  // malformed line to wrap it.
  if (recordCount_ == recordsPerReading_) {
    recordCount_ = 0;
    if (handlers.onReading) handlers.onReading(record, tick);
  }
  empty();
}

}  // namespace gc40
