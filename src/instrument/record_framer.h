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

// A framed record (kRecordLength bytes, without its CR) and the tick (ms) its
// bytes arrived at. The record is only valid during the call.
using RecordHandler = std::function<void(std::string_view record, std::uint32_t tick)>;

// Either may be left empty.
struct RecordHandlers {
  RecordHandler onRecord{};   // every good record, whether or not it completes a reading
  RecordHandler onReading{};  // the record that completes a reading, after its onRecord
};

// The reader's frame buffer (200 bytes, write index -1..180) and its rules.
class RecordFramer {
 public:
  // Reader start: the count restarted, the buffer emptied.
  void start();
  // Every line framed, good or malformed, takes a place in a reading; the
  // record in its last place completes it. Both may be changed from inside a
  // handler and take effect before the next byte is framed.
  void setRecordsPerReading(std::int32_t count) { recordsPerReading_ = count; }
  void restartCount() { recordCount_ = 0; }
  std::int32_t recordsPerReading() const { return recordsPerReading_; }
  std::int32_t recordCount() const { return recordCount_; }

  // Frames bytes that arrived at `tick` (ms), calling the handlers
  // synchronously before framing the next byte.
  void feed(std::string_view bytes, std::uint32_t tick, const RecordHandlers& handlers);

 private:
  static constexpr std::int32_t kBufferSize = 200;
  static constexpr std::int32_t kMaxIndex = 180;  // no record is longer than this

  void empty();
  void countLine();
  void frameLineEnd(std::uint32_t tick, const RecordHandlers& handlers);
  void acceptRecord(std::int32_t start, std::uint32_t tick, const RecordHandlers& handlers);

  std::array<char, kBufferSize> buffer_{};
  std::int32_t index_ = -1;  // last byte written; -1 when empty
  std::int32_t recordCount_ = 0;
  std::int32_t recordsPerReading_ = 1;
};

}  // namespace gc40
