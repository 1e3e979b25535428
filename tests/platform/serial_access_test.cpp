// What a user who may not open a serial device is told.

#include "platform/serial_access.h"

#include <gtest/gtest.h>

namespace gc40 {
namespace {

TEST(SerialAccess, TheAdviceNamesTheGroupAndWhatToDo) {
  DeviceAccess access{.group = "dialout", .user = "ana", .groupMayReadWrite = true};
  const std::string join = deviceAccessAdvice("/dev/ttyUSB0", access);
  EXPECT_NE(join.find("group dialout"), std::string::npos) << join;
  EXPECT_NE(join.find("sudo usermod -aG dialout ana"), std::string::npos) << join;

  access.userInGroup = true;  // joined, but this login is older
  const std::string relogin = deviceAccessAdvice("/dev/ttyUSB0", access);
  EXPECT_NE(relogin.find("log out and in again"), std::string::npos) << relogin;
  EXPECT_EQ(relogin.find("usermod"), std::string::npos) << relogin;

  // Joining would not help: the group itself has no access.
  for (const auto& [mayReadWrite, inGroup] : {std::pair{false, false}, {true, true}}) {
    access.groupMayReadWrite = mayReadWrite, access.processInGroup = inGroup;
    const std::string rule = deviceAccessAdvice("/dev/ttyS3", access);
    EXPECT_NE(rule.find("udev rule"), std::string::npos) << rule;
    EXPECT_EQ(rule.find("usermod"), std::string::npos) << rule;
  }
}

}  // namespace
}  // namespace gc40
