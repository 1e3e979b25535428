#include "platform/port_map.h"

#include <gtest/gtest.h>

#include <sstream>

#include "support/temp_folder.h"

namespace gc40 {
namespace {

TEST(PortMap, EditedFileIsReadAndEachBadLineNamed) {
  const ParsedPortMap parsed = parsePortMap(
      "# my tablet\r\nCOM1:=/dev/ttyS0\r\n\r\n  com12: = /dev/serial/by-id/usb-GPS if00  \r\n"
      "COM13:=/dev/ttyUSB3\nCOM3:=\n; old\nCOM2:/dev/ttyACM0\nCOM2=/dev/ttyACM0\nCOM2:=/dev/x");
  EXPECT_EQ(parsed.map.paths[0], "/dev/ttyS0");
  EXPECT_EQ(parsed.map.paths[11], "/dev/serial/by-id/usb-GPS if00");
  EXPECT_EQ(parsed.map.paths[1], "/dev/x");        // the later line wins
  EXPECT_EQ(parsed.map.paths[2], "/dev/ttyUSB2");  // the bad line leaves the default
  ASSERT_EQ(parsed.problems.size(), 3u);
  EXPECT_EQ(parsed.problems[0].lineNumber, 5);
  EXPECT_EQ(parsed.problems[0].line, "COM13:=/dev/ttyUSB3");
  EXPECT_EQ(parsed.problems[2].lineNumber, 8);
  EXPECT_EQ(parseComPortName("COM0:"), std::nullopt);
  EXPECT_EQ(parseComPortName("COM1x"), std::nullopt);
}

TEST(PortMap, FileIsCreatedOnFirstRunAndMalformedLinesReported) {
  testing::TempFolder folder;
  std::ostringstream warnings;
  EXPECT_EQ(loadPortMap(folder.path(), warnings).paths, defaultPortMap().paths);
  const std::string written = testing::readBytes(folder.path() / "PORTS.INI");
  EXPECT_NE(written.find("\nCOM12:=/dev/ttyUSB11\n"), std::string::npos);
  EXPECT_TRUE(parsePortMap(written).problems.empty());

  testing::writeBytes(folder.path() / "PORTS.INI", written + "COM5 /dev/ttyS4\nCOM6:=/dev/S5\n");
  EXPECT_EQ(loadPortMap(folder.path(), warnings).paths[5], "/dev/S5");
  EXPECT_NE(warnings.str().find((folder.path() / "PORTS.INI:15:").string()), std::string::npos)
      << warnings.str();
}

}  // namespace
}  // namespace gc40
