#pragma once
// The machine's battery charge, read from the kernel's power supply list.

#include <filesystem>
#include <optional>

namespace gc40::platform {

// Percent charge of the first battery that powers the machine (a wireless
// mouse's or a phone's battery does not count); none without such a battery.
std::optional<int> batteryPercent(
    const std::filesystem::path& supplies = "/sys/class/power_supply");

}  // namespace gc40::platform
