#pragma once
// What the live profile takes from the settings before a run: which traces it
// draws, how many readings make a station, and its pixels per unit.

#include <array>
#include <cstdint>

#include "settings/settings.h"

namespace gc40 {

// Trace order: 0 C/V, 1 C/H, 2 I/V, 3 I/H; slots 4..7 are never drawn.
struct ProfileTraces {
  std::array<std::int32_t, kTraceCount> traceOn{};  // 1: draw this trace
  std::int32_t readingsPerStation = 1;

  bool operator==(const ProfileTraces&) const = default;
};

// A trace is drawn when it is visible and the survey records it: Auto and
// Wheel draw the dipole in use; Manual draws conductivity only, and only with
// component "Both".
ProfileTraces setupProfileTraces(const Settings& settings);

}  // namespace gc40
