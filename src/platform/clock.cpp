#include "platform/clock.h"

#include <chrono>
#include <ctime>

namespace gc40::platform {

std::uint32_t tickCount() {
#ifdef CLOCK_BOOTTIME
  timespec now{};
  if (clock_gettime(CLOCK_BOOTTIME, &now) == 0) {
    const auto ms = static_cast<std::uint64_t>(now.tv_sec) * 1000u +
                    static_cast<std::uint64_t>(now.tv_nsec) / 1000000u;
    return static_cast<std::uint32_t>(ms);
  }
#endif
  const auto since = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<std::uint32_t>(
      std::chrono::duration_cast<std::chrono::milliseconds>(since).count());
}

LocalTime localTimeNow() {
  const auto now = std::chrono::system_clock::now();
  const auto wholeSeconds = std::chrono::floor<std::chrono::seconds>(now);
  const std::time_t seconds = std::chrono::system_clock::to_time_t(wholeSeconds);
  const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(now - wholeSeconds);
  std::tm parts{};
#ifdef _WIN32
  localtime_s(&parts, &seconds);
#else
  localtime_r(&seconds, &parts);
#endif
  return LocalTime{parts.tm_year + 1900,
                   parts.tm_mon + 1,
                   parts.tm_mday,
                   parts.tm_hour,
                   parts.tm_min,
                   parts.tm_sec,
                   static_cast<int>(ms.count())};
}

}  // namespace gc40::platform
