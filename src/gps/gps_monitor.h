#pragma once
// What the Monitor GPS screen decides without a window: its fixed texts, when
// a silent receiver earns a "NO DATA" line, and the bytes a command line goes
// out as.

#include <cstdint>
#include <string>
#include <string_view>

namespace gc40 {

inline constexpr std::string_view kGpsMonitorCommand = "$PASHS,NME,SAT,A,ON";
inline constexpr std::string_view kNoDataLine = "NO DATA";
inline constexpr std::uint32_t kNoDataAfterMs = 7000;

// The silence since the last line, on the wrapping tick counter.
class NoDataWatch {
 public:
  // A line came (or the reader started) at `tick`.
  void renew(std::uint32_t tick) { lastLine_ = tick; }
  // True when more than kNoDataAfterMs have passed since the last line; the
  // "NO DATA" line it stands for counts as a line, so the time is renewed.
  bool due(std::uint32_t tick);

 private:
  std::uint32_t lastLine_ = 0;
};

// A command line as the receiver takes it: 8-bit text ended by CR LF.
std::string gpsCommandBytes(std::u16string_view text);

}  // namespace gc40
