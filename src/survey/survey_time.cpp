#include "survey/survey_time.h"

#include <chrono>
#include <cstdlib>

namespace gc40 {
namespace {

// Floor division, so times before 1970 still fall on the right day.
std::int64_t floorDiv(std::int64_t value, std::int64_t divisor) {
  const std::int64_t quotient = value / divisor;
  return quotient * divisor > value ? quotient - 1 : quotient;
}

}  // namespace

std::optional<std::int64_t> epochMs(int year, int month, int day, std::int64_t msOfDay) {
  const std::chrono::year_month_day date{std::chrono::year(year),
                                         std::chrono::month(static_cast<unsigned>(month)),
                                         std::chrono::day(static_cast<unsigned>(day))};
  if (month < 1 || day < 1 || !date.ok()) return std::nullopt;
  const auto days = std::chrono::sys_days(date).time_since_epoch().count();
  return static_cast<std::int64_t>(days) * kMsPerDay + msOfDay;
}

LocalTime localTimeAt(std::int64_t epochMs) {
  const std::int64_t days = floorDiv(epochMs, kMsPerDay);
  std::int64_t ms = epochMs - days * kMsPerDay;
  const std::chrono::year_month_day date{
      std::chrono::sys_days(std::chrono::days(static_cast<std::chrono::days::rep>(days)))};
  LocalTime time;
  time.year = static_cast<int>(date.year());
  time.month = static_cast<int>(static_cast<unsigned>(date.month()));
  time.day = static_cast<int>(static_cast<unsigned>(date.day()));
  time.hour = static_cast<int>(ms / 3'600'000);
  ms %= 3'600'000;
  time.minute = static_cast<int>(ms / 60'000);
  ms %= 60'000;
  time.second = static_cast<int>(ms / 1000);
  time.millisecond = static_cast<int>(ms % 1000);
  return time;
}

std::int64_t nearestDay(std::int64_t msOfDay, std::int64_t estimate) {
  const std::int64_t sameDay = floorDiv(estimate, kMsPerDay) * kMsPerDay + msOfDay;
  std::int64_t best = sameDay;
  for (const std::int64_t candidate : {sameDay - kMsPerDay, sameDay + kMsPerDay})
    if (std::llabs(candidate - estimate) < std::llabs(best - estimate)) best = candidate;
  return best;
}

}  // namespace gc40
