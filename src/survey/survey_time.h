#pragma once
// Clock readings of a recorded file on one time line: milliseconds since
// 1970-01-01 of whatever clock they come from (local or UTC), so that ticks
// can be added across midnight and month ends.

#include <cstdint>
#include <optional>

#include "base/local_time.h"

namespace gc40 {

inline constexpr std::int64_t kMsPerDay = 86'400'000;

// Nullopt for a date that does not exist (31 April, month 13).
std::optional<std::int64_t> epochMs(int year, int month, int day, std::int64_t msOfDay);

LocalTime localTimeAt(std::int64_t epochMs);

// A clock that gives only the time of day, placed on the day (the day
// before, of, or after `estimate`) that brings it nearest to `estimate`.
std::int64_t nearestDay(std::int64_t msOfDay, std::int64_t estimate);

}  // namespace gc40
