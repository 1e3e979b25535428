#pragma once
// Why a serial device refused to open for permissions, and what the user
// can do about it. On Linux a serial device belongs to a group (dialout on
// Debian) whose members may use it; joining it takes effect at the next login.

#include <filesystem>
#include <optional>
#include <string>

namespace gc40 {

struct DeviceAccess {
  std::string group;               // the group that owns the device
  std::string user;                // who runs this program
  bool groupMayReadWrite = false;  // the device's mode lets its group read and write it
  bool userInGroup = false;        // the user is a member (by the group database)
  bool processInGroup = false;     // this login has the group already
};

// The device's group and the user's standing in it; nullopt when the device
// cannot be looked at, or when this process may read and write it after all.
std::optional<DeviceAccess> deviceAccess(const std::filesystem::path& device);

// What to tell the user who may not open `device`: which group to join and
// how, or that a fresh login is enough, or that the group itself has no access.
std::string deviceAccessAdvice(const std::filesystem::path& device, const DeviceAccess& access);

}  // namespace gc40
