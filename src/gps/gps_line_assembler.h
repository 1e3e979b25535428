#pragma once
// Assembles the GPS receiver's bytes into lines and judges each one, as the
// logger's GPS reader does: a "$" starts a sentence (and notes its arrival
// tick), a line feed ends the line (cutting the character before it, the
// carriage return), and a line that runs past 200 characters starts over.
// A line that does not begin with "$" is delivered twice: once as such and
// once more through the checksum test, which it fails.

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace gc40 {

inline constexpr std::size_t kGpsLineCapacity = 201;

struct GpsLine {
  std::string text;        // without CR and LF, up to its first NUL byte
  bool valid = false;      // `gpsSentenceValid`: the checksum test passed
  std::uint32_t tick = 0;  // arrival of the last "$"
  bool operator==(const GpsLine&) const = default;
};

class GpsLineAssembler {
 public:
  using LineHandler = std::function<void(const GpsLine&)>;

  // Bytes that arrived at `tick`; each finished line goes to onLine at once.
  void feed(std::string_view bytes, std::uint32_t tick, const LineHandler& onLine);
  // A fresh start: nothing buffered.
  void reset() { position_ = 0; }

 private:
  void endLine(const LineHandler& onLine);

  std::array<char, kGpsLineCapacity> buffer_{};
  std::size_t position_ = 0;
  std::uint32_t sentenceTick_ = 0;
};

}  // namespace gc40
