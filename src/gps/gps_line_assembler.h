#pragma once
// Assembles the GPS receiver's bytes into lines: a "$" starts a sentence (and
// notes its arrival tick), a line feed ends the line (cutting the byte
// before it, normally the carriage return), and a line that runs past 200
// characters starts over. The Monitor GPS screen lists these lines as they are; the
// logging run judges them first (judgeGpsLine).

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace gc40 {

inline constexpr std::size_t kGpsLineCapacity = 201;

class GpsLineAssembler {
 public:
  // The line's text, up to its first NUL byte, and the arrival tick of its
  // last "$" (of an earlier line when it has none).
  using LineHandler = std::function<void(std::string_view text, std::uint32_t tick)>;

  // Bytes that arrived at `tick`; each finished line goes to onLine at once.
  void feed(std::string_view bytes, std::uint32_t tick, const LineHandler& onLine);
  // A fresh start: nothing buffered.
  void reset() { position_ = 0; }

 private:
  std::array<char, kGpsLineCapacity> buffer_{};
  std::size_t position_ = 0;
  std::uint32_t sentenceTick_ = 0;
};

struct GpsLine {
  std::string text;
  bool valid = false;      // `gpsSentenceValid`: the checksum test passed
  std::uint32_t tick = 0;  // arrival of its "$"
  bool operator==(const GpsLine&) const = default;
};

// The logging run's verdicts on one assembled line: a line that does not
// begin with "$" is delivered twice, once as such and once more through the
// checksum test, which it fails.
void judgeGpsLine(std::string_view text, std::uint32_t tick,
                  const std::function<void(const GpsLine&)>& onLine);

// The judged lines that `bytes` arriving at `tick` complete, in order: what
// one read of the port gives the logging run.
std::vector<GpsLine> judgeGpsChunk(GpsLineAssembler& assembler, std::string_view bytes,
                                   std::uint32_t tick);

}  // namespace gc40
