#include "platform/battery.h"

#include <gtest/gtest.h>

#include "support/temp_folder.h"

namespace gc40 {
namespace {

void supply(const std::filesystem::path& folder, const char* name, const char* type,
            const char* capacity, const char* scope = nullptr) {
  testing::writeBytes(folder / name / "type", type);
  if (capacity) testing::writeBytes(folder / name / "capacity", capacity);
  if (scope) testing::writeBytes(folder / name / "scope", scope);
}

// The machine's first battery counts; mains, a peripheral's battery and a
// battery that reports no charge do not.
TEST(Battery, FirstMachineBatteryGivesThePercent) {
  testing::TempFolder folder;
  EXPECT_EQ(platform::batteryPercent(folder.path() / "missing"), std::nullopt);
  supply(folder.path(), "AC", "Mains\n", nullptr);
  supply(folder.path(), "hidpp_battery_0", "Battery\n", "40\n", "Device\n");
  EXPECT_EQ(platform::batteryPercent(folder.path()), std::nullopt);
  supply(folder.path(), "BAT2", "Battery\n", "57\n");
  supply(folder.path(), "BAT0", "Battery\n", nullptr);
  EXPECT_EQ(platform::batteryPercent(folder.path()), 57);
  supply(folder.path(), "BAT1", "Battery\n", "100\n", "System\n");
  EXPECT_EQ(platform::batteryPercent(folder.path()), 100);
}

}  // namespace
}  // namespace gc40
