#include "platform/clock.h"

#include <gtest/gtest.h>

#include <chrono>
#include <ctime>
#include <thread>

namespace gc40 {
namespace {

TEST(Clock, TicksCountMillisecondsAndLocalTimeIsNow) {
  const std::uint32_t before = platform::tickCount();
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  const std::uint32_t elapsed = platform::tickCount() - before;  // wraps like the handheld's
  EXPECT_GE(elapsed, 99u);
  EXPECT_LT(elapsed, 10000u);

  const std::time_t now = std::time(nullptr);
  std::tm expected{};
  localtime_r(&now, &expected);
  const LocalTime local = platform::localTimeNow();
  EXPECT_EQ(local.year, expected.tm_year + 1900);
  EXPECT_EQ(local.day, expected.tm_mday);
  EXPECT_TRUE(local.millisecond >= 0 && local.millisecond < 1000);
}

}  // namespace
}  // namespace gc40
