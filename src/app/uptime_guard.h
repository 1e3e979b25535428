#pragma once
// The tick counter that times every record wraps after 49.7 days and the
// clock may drift over long uptimes, so the logger refuses to run once the
// machine has been up for more than 20 days.

#include <cstdint>
#include <string>
#include <string_view>

namespace gc40 {

inline constexpr std::uint32_t kUptimeLimitMs = 1'728'000'000;  // 20 days
inline constexpr std::string_view kUptimeStopCaption = "PROGRAM STOP";

// True when `tickMs` (milliseconds since boot) is past the limit.
bool uptimeExceeded(std::uint32_t tickMs);

// The five lines of the stop box, joined by CR LF.
std::string uptimeStopText();

}  // namespace gc40
