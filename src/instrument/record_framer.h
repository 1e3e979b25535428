#pragma once
// Cuts the instrument's byte stream into records and counts them toward a
// reading. The framer takes bytes, never a port, so any split of the stream
// frames the same way and tests feed it literal bytes.

#include <array>
#include <cstdint>
#include <functional>
#include <string_view>

namespace gc40 {

inline constexpr std::int32_t kRecordLength = 12;

// State shared between the framer and the logging window (which decodes
// currentRecord, sets recordsPerReading, resets recordCounter, keeps staleTicks).
struct InstrumentLink {
  std::array<char, 16> currentRecord{};  // last good record: recordLength bytes then NUL
  std::int32_t recordLength = kRecordLength;
  std::int32_t recordCounter = 0;
  std::int32_t recordsPerReading = 1;
  std::uint32_t lastRecordTick = 0;
  std::int32_t staleTicks = 0;
  std::string_view record() const;  // the recordLength bytes of currentRecord
  bool operator==(const InstrumentLink&) const = default;
};

// The longest record length that still fits currentRecord with its NUL. A
// recordLength outside 0..kMaxRecordLength acts as the nearest end of that
// range, so a stray value can never read or write outside the buffers.
inline constexpr std::int32_t kMaxRecordLength = 15;
std::int32_t effectiveRecordLength(const InstrumentLink& link);

// The reader's frame buffer (200 bytes, write index -1..180) and its rules.
class RecordFramer {
 public:
  // Reader start: recordLength = 12, recordCounter = 0, buffer emptied.
  void start(InstrumentLink& link);
  // Frames bytes that arrived at `tick` (ms). For every reading completed,
  // calls onReading() synchronously, with link.currentRecord holding its record,
  // before framing the next byte; the handler may change link.recordsPerReading
  // and link.recordCounter (the logging window does so on pause).
  void feed(std::string_view bytes, std::uint32_t tick, InstrumentLink& link,
            const std::function<void()>& onReading);

 private:
  static constexpr std::int32_t kBufferSize = 200;
  static constexpr std::int32_t kMaxIndex = 180;  // no record is longer than this

  void empty();
  void frameLineEnd(std::uint32_t tick, InstrumentLink& link,
                    const std::function<void()>& onReading);
  void acceptRecord(std::int32_t start, std::uint32_t tick, InstrumentLink& link,
                    const std::function<void()>& onReading);

  std::array<char, kBufferSize> buffer_{};
  std::int32_t index_ = -1;  // last byte written; -1 when empty
};

}  // namespace gc40
