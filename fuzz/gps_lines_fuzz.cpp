// The GPS receiver's bytes through the line assembler, in chunks and whole
// from one tick to the next (the same lines and ticks either way), then each
// line as the logging run handles it: judged, its fields taken apart and the
// status fields set.

#include <string>
#include <vector>

#include "fuzz_support.h"
#include "gps/gps_line_assembler.h"
#include "gps/gps_status.h"
#include "gps/nmea.h"

namespace gc40::fuzz {
namespace {

struct Line {
  std::string text;
  std::uint32_t tick = 0;
};

// Each field starts right after the separator that ends the one before, and
// the last runs to the end of the line. Only the first fields up to the PDOP:
// each look-up scans from the start of the line.
void checkFields(std::string_view text) {
  constexpr int kFieldsChecked = 17;
  FUZZ_CHECK(!getField(text, 0));
  const char* next = text.data();
  for (int n = 1; n <= kFieldsChecked; ++n) {
    const auto field = getField(text, n);
    if (!field) {
      FUZZ_CHECK(next == text.data() + text.size() + 1);  // past the last field's end
      return;
    }
    FUZZ_CHECK(field->data() == next && field->data() + field->size() <= text.data() + text.size());
    next = field->data() + field->size() + 1;
  }
}

bool oneOf(const std::optional<std::string>& text, std::initializer_list<std::string_view> texts) {
  for (const std::string_view allowed : texts) {
    if (*text == allowed) return true;
  }
  return false;
}

void checkShown(const GpsFieldsShown& shown, const GpsStatus& before, const GpsStatus& after) {
  const bool flipped = before.gpsActivityMark != after.gpsActivityMark;
  FUZZ_CHECK(flipped == shown.activity.has_value());
  FUZZ_CHECK(after.gpsActivityMark == '/' || after.gpsActivityMark == '\\');
  FUZZ_CHECK(after.gpsFixCount - before.gpsFixCount == (shown.fixCount ? 1 : 0));
  FUZZ_CHECK(!shown.fix || oneOf(shown.fix, {"NO FIX", "AGPS", "DGPS", "RTK", "CODE", ""}));
  FUZZ_CHECK(!shown.satellites || shown.satellites->size() >= 2);
  FUZZ_CHECK(!shown.pdop || oneOf(shown.pdop, {"??", "N/A"}) || shown.pdop->size() >= 4);
}

void handle(const Line& line, bool recording, GpsStatus& status) {
  FUZZ_CHECK(line.text.size() < kGpsLineCapacity);
  FUZZ_CHECK(line.text.find_first_of(std::string_view("\n\0", 2)) == std::string::npos);
  checkFields(line.text);
  const bool sentence = line.text.starts_with('$');
  int deliveries = 0;
  judgeGpsLine(line.text, line.tick, [&](const GpsLine& judged) {
    ++deliveries;
    FUZZ_CHECK(judged.text == line.text && judged.tick == line.tick);
    FUZZ_CHECK(sentence || deliveries == 2 || !judged.valid);
    const GpsStatus before = status;
    checkShown(onGpsSentence(status, judged.text, judged.valid, recording), before, status);
  });
  FUZZ_CHECK(deliveries == (sentence ? 1 : 2));
}

struct Chunk {
  std::string_view bytes;
  std::uint32_t tick = 0;
};

template <typename OnLine>
void assemble(const std::vector<Chunk>& chunks, OnLine onLine) {
  GpsLineAssembler assembler;
  const GpsLineAssembler::LineHandler handler = onLine;
  for (const Chunk& chunk : chunks) assembler.feed(chunk.bytes, chunk.tick, handler);
}

// Chunks are consecutive pieces of the input: those of one tick join into one.
std::vector<Chunk> joinedByTick(const std::vector<Chunk>& chunks) {
  std::vector<Chunk> joined;
  for (const Chunk& chunk : chunks) {
    if (joined.empty() || joined.back().tick != chunk.tick) {
      joined.push_back(chunk);
    } else {
      std::string_view& bytes = joined.back().bytes;
      bytes = std::string_view(bytes.data(), bytes.size() + chunk.bytes.size());
    }
  }
  return joined;
}

}  // namespace
}  // namespace gc40::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace gc40::fuzz;
  FuzzInput input(data, size);
  const bool recording = input.choice() & 1;
  std::vector<Chunk> chunks;
  std::uint32_t tick = 0;
  while (!input.empty()) {
    const std::uint8_t choice = input.choice();
    if (choice & 0x80) ++tick;
    const std::size_t length = ((choice & 0x3F) + 1u) * (choice & 0x40 ? 7 : 1);
    chunks.push_back({input.front(length), tick});
  }

  std::vector<Line> lines;
  assemble(joinedByTick(chunks), [&lines](std::string_view text, std::uint32_t tick) {
    lines.push_back({std::string(text), tick});
  });
  std::size_t count = 0;
  assemble(chunks, [&](std::string_view text, std::uint32_t tick) {
    FUZZ_CHECK(count < lines.size() && lines[count].text == text && lines[count].tick == tick);
    ++count;
  });
  FUZZ_CHECK(count == lines.size());
  gc40::GpsStatus status;
  for (const Line& line : lines) handle(line, recording, status);
  return 0;
}
