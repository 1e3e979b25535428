#include "platform/port_map.h"

#include <gtest/gtest.h>

#include <sstream>

#include "support/temp_folder.h"

namespace gc40 {
namespace {

// Comments, blank lines, spaces and either case are allowed and the later line
// wins; each bad line is named and leaves its port at the default.
TEST(PortMap, EditedFileIsReadAndEachBadLineNamed) {
  const ParsedPortMap parsed = parsePortMap(
      "# my tablet\r\nCOM1:=/dev/ttyS0\r\n\r\n  com12: = /dev/serial/by-id/usb-GPS if00  \r\n"
      "COM13:=/dev/ttyUSB3\nCOM3:=\n; old\nCOM2:/dev/ttyACM0\nCOM2=/dev/ttyACM0\nCOM2:=/dev/x");
  const auto& paths = parsed.map.paths;
  EXPECT_EQ(std::tuple(paths[0], paths[11], paths[1], paths[2]),
            std::tuple("/dev/ttyS0", "/dev/serial/by-id/usb-GPS if00", "/dev/x", "/dev/ttyUSB2"));
  ASSERT_EQ(parsed.problems.size(), 3u);
  EXPECT_EQ(std::tuple(parsed.problems[0].lineNumber, parsed.problems[0].line,
                       parsed.problems[2].lineNumber),
            std::tuple(5, "COM13:=/dev/ttyUSB3", 8));
  EXPECT_EQ(std::pair(parseComPortName("COM0:"), parseComPortName("COM1x")),
            std::pair(std::optional<int>(), std::optional<int>()));
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
