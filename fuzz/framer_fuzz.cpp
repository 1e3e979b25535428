// The record framer fed the stream in chunks, with the records-per-reading
// count changed and restarted between chunks and from inside the handlers as
// the logging session does. The same stream fed whole between those changes
// must frame the same records and readings at the same ticks, and every
// record must be 12 bytes of the stream, starting with 'T', before a CR.

#include <string>
#include <vector>

#include "fuzz_support.h"
#include "instrument/record_framer.h"

namespace gc40::fuzz {
namespace {

// Bytes that arrive together, and what the session changes before them.
struct Chunk {
  std::string_view bytes;
  bool restart = false;
  std::int32_t recordsPerReading = 0;  // 0: left as it is
  bool changes() const { return restart || recordsPerReading != 0; }
};

// What the handlers change themselves, decided by the record they are given.
struct HandlerChanges {
  bool readingSetsCount = false;   // a reading sets the count from its last byte
  bool oddStatusRestarts = false;  // a record with an odd status byte restarts the count
};

struct Framed {
  bool reading = false;
  std::string record;
  std::uint32_t tick = 0;
  bool operator==(const Framed&) const = default;
};

std::vector<Chunk> chunksOf(FuzzInput& input) {
  std::vector<Chunk> chunks;
  while (!input.empty()) {
    const std::uint8_t size = input.choice();
    Chunk chunk;
    if (size & 0x80) {
      const std::uint8_t change = input.choice();
      chunk.restart = change & 1;
      // -1 and -2 stand for a damaged settings file's averaging count.
      chunk.recordsPerReading = static_cast<std::int32_t>(change >> 1) % 12 - 1;
      if (chunk.recordsPerReading == 0) chunk.recordsPerReading = -2;
    }
    std::size_t length = (size & 0x3F) + 1u;
    if (size & 0x40) length *= 13;
    chunk.bytes = input.front(length);
    chunks.push_back(chunk);
  }
  return chunks;
}

class FramingRun {
 public:
  explicit FramingRun(const HandlerChanges& changes) : changes_(changes) { framer_.start(); }
  FramingRun(const FramingRun&) = delete;  // the handlers hold `this`
  FramingRun& operator=(const FramingRun&) = delete;

  void feed(const Chunk& chunk, std::uint32_t tick) {
    if (chunk.restart) framer_.restartCount();
    if (chunk.recordsPerReading != 0) framer_.setRecordsPerReading(chunk.recordsPerReading);
    framer_.feed(chunk.bytes, tick, handlers_);
  }

  const std::vector<Framed>& framed() const { return framed_; }
  std::int32_t recordCount() const { return framer_.recordCount(); }

 private:
  void onRecord(std::string_view record, std::uint32_t tick) {
    FUZZ_CHECK(record.size() == 12 && record[0] == 'T');
    framed_.push_back({false, std::string(record), tick});
    if (changes_.oddStatusRestarts && (record[1] & 1)) framer_.restartCount();
  }

  void onReading(std::string_view record, std::uint32_t tick) {
    FUZZ_CHECK(!framed_.empty() && !framed_.back().reading && framed_.back().record == record);
    framed_.push_back({true, std::string(record), tick});
    if (changes_.readingSetsCount) framer_.setRecordsPerReading(1 + (record[11] & 3));
  }

  HandlerChanges changes_;
  RecordFramer framer_;
  std::vector<Framed> framed_;
  RecordHandlers handlers_{
      .onRecord = [this](std::string_view record, std::uint32_t tick) { onRecord(record, tick); },
      .onReading = [this](std::string_view record,
                          std::uint32_t tick) { onReading(record, tick); }};
};

// The records, in order, each found in the stream before a CR after the last.
void checkRecordsInStream(const std::vector<Framed>& framed, std::string_view stream) {
  std::size_t from = 0;
  for (const Framed& one : framed) {
    if (one.reading) continue;
    const std::size_t at = stream.find(one.record + '\r', from);
    FUZZ_CHECK(at != std::string_view::npos);
    from = at + 1;
  }
}

}  // namespace
}  // namespace gc40::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace gc40::fuzz;
  FuzzInput input(data, size);
  const std::uint8_t handlerChoice = input.choice();
  const HandlerChanges changes{(handlerChoice & 1) != 0, (handlerChoice & 2) != 0};
  const std::vector<Chunk> chunks = chunksOf(input);

  // Chunks are consecutive pieces of the input, so the bytes from one change
  // to the next are one view. The tick counts the changes: both runs give
  // each byte the same tick.
  const auto* start = reinterpret_cast<const char*>(data);
  FramingRun chunked(changes);
  FramingRun whole(changes);
  Chunk sinceChange{std::string_view(start, 0)};
  std::uint32_t tick = 0;
  for (const Chunk& chunk : chunks) {
    if (chunk.changes()) {
      whole.feed(sinceChange, tick++);
      sinceChange = chunk;
    } else {
      sinceChange.bytes =
          std::string_view(sinceChange.bytes.data(),
                           chunk.bytes.data() + chunk.bytes.size() - sinceChange.bytes.data());
    }
    chunked.feed(chunk, tick);
  }
  whole.feed(sinceChange, tick);
  const std::string_view stream(start, sinceChange.bytes.data() + sinceChange.bytes.size() - start);
  FUZZ_CHECK(chunked.framed() == whole.framed());
  FUZZ_CHECK(chunked.recordCount() == whole.recordCount());
  checkRecordsInStream(chunked.framed(), stream);
  return 0;
}
