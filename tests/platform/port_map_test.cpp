#include "platform/port_map.h"

#include <gtest/gtest.h>

#include <sstream>

#include "support/temp_folder.h"

namespace gc40 {
namespace {

TEST(PortMap, ParsesEditedFilesAndNamesEachBadLine) {
  const ParsedPortMap parsed = parsePortMap(
      "# my tablet\r\n"
      "COM1:=/dev/ttyS0\r\n"
      "\r\n"
      "  com12: = /dev/serial/by-id/usb-GPS Receiver-if00  \r\n"
      "COM13:=/dev/ttyUSB3\n"
      "COM3:=\n"
      "; old line\n"
      "COM2:/dev/ttyACM0\n"
      "COM2:=/dev/ttyACM0\n"
      "COM2:=/dev/ttyACM1");
  EXPECT_EQ(parsed.map.paths[0], "/dev/ttyS0");
  EXPECT_EQ(parsed.map.paths[11], "/dev/serial/by-id/usb-GPS Receiver-if00");
  EXPECT_EQ(parsed.map.paths[1], "/dev/ttyACM1");  // the later line wins
  EXPECT_EQ(parsed.map.paths[2], "/dev/ttyUSB2");  // untouched by the bad line
  ASSERT_EQ(parsed.problems.size(), 3u);
  EXPECT_EQ(parsed.problems[0].lineNumber, 5);
  EXPECT_EQ(parsed.problems[0].line, "COM13:=/dev/ttyUSB3");
  EXPECT_EQ(parsed.problems[1].lineNumber, 6);
  EXPECT_EQ(parsed.problems[2].lineNumber, 8);
}

TEST(PortMap, PortNamesAndCommandLineAssignments) {
  EXPECT_EQ(parseComPortName("COM1:"), 0);
  EXPECT_EQ(parseComPortName("com12"), 11);
  EXPECT_EQ(parseComPortName("COM0:"), std::nullopt);
  EXPECT_EQ(parseComPortName("COM13"), std::nullopt);
  EXPECT_EQ(parseComPortName("COM1x"), std::nullopt);
  EXPECT_EQ(parseComPortName("COM-1"), std::nullopt);
  EXPECT_EQ(parseComPortName("LPT1:"), std::nullopt);

  const auto assignment = parsePortAssignment("COM3=/tmp/sim/gc40");
  ASSERT_TRUE(assignment);
  EXPECT_EQ(assignment->index, 2);
  EXPECT_EQ(assignment->path, "/tmp/sim/gc40");
  EXPECT_FALSE(parsePortAssignment("COM3"));
  EXPECT_FALSE(parsePortAssignment("/dev/ttyUSB0"));

  EXPECT_EQ(devicePathFor(defaultPortMap(), 0), "/dev/ttyUSB0");
  EXPECT_EQ(devicePathFor(defaultPortMap(), 12), "");
  EXPECT_EQ(devicePathFor(defaultPortMap(), -1), "");
}

TEST(PortMap, FileIsCreatedOnFirstRunAndReadBackWithWarnings) {
  testing::TempFolder folder;
  std::ostringstream warnings;
  const PortMap first = loadPortMap(folder.path(), warnings);
  EXPECT_EQ(first.paths, defaultPortMap().paths);
  EXPECT_EQ(warnings.str(), "");
  const std::string written = testing::readBytes(folder.path() / "PORTS.INI");
  EXPECT_NE(written.find("\nCOM1:=/dev/ttyUSB0\n"), std::string::npos);
  EXPECT_NE(written.find("\nCOM12:=/dev/ttyUSB11\n"), std::string::npos);
  EXPECT_EQ(parsePortMap(written).problems.size(), 0u);

  testing::writeBytes(folder.path() / "PORTS.INI", written + "COM5 /dev/ttyS4\nCOM6:=/dev/ttyS5\n");
  const PortMap edited = loadPortMap(folder.path(), warnings);
  EXPECT_EQ(edited.paths[5], "/dev/ttyS5");
  EXPECT_EQ(edited.paths[4], "/dev/ttyUSB4");
  const std::string expected = (folder.path() / "PORTS.INI").string() + ":15:";
  EXPECT_NE(warnings.str().find(expected), std::string::npos) << warnings.str();
  EXPECT_NE(warnings.str().find("COM5 /dev/ttyS4"), std::string::npos);
}

}  // namespace
}  // namespace gc40
