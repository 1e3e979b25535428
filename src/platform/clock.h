#pragma once
// The machine's clocks. Core code never reads them itself: callers pass ticks
// and times in, so tests can give any moment.

#include <cstdint>

#include "base/local_time.h"

namespace gc40::platform {

// Milliseconds since boot (suspend included), wrapping at 2^32: the data
// files' tick fields hold 32 bits.
std::uint32_t tickCount();

// The local time now, with milliseconds.
LocalTime localTimeNow();

}  // namespace gc40::platform
