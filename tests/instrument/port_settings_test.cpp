#include "instrument/port_settings.h"

#include <gtest/gtest.h>

namespace gc40 {
namespace {

TEST(PortSettings, InstrumentLineIsFixedAndOpenedOnce) {
  const SerialLineSettings line = instrumentLineSettings();
  EXPECT_EQ(line.baudRate, 9600);
  EXPECT_EQ(line.dataBits, 8);
  EXPECT_EQ(line.parity, SerialParity::kNone);
  EXPECT_EQ(line.stopBits, SerialStopBits::kOne);
  EXPECT_FALSE(line.softwareFlowControl);
  EXPECT_EQ(line.dataTerminalReady, true);
  EXPECT_EQ(line.requestToSend, false);
  EXPECT_EQ(line.openAttempts, 1);
}

TEST(PortSettings, GpsLineFollowsTheSettingsAndKeepsThePortsValueForUnknownIndexes) {
  Settings settings;
  settings.gpsBaudIndex = 5;
  settings.gpsParity = 2;
  settings.gpsDataBitsIndex = 0;
  settings.gpsStopBitsIndex = 1;
  SerialLineSettings line = gpsLineSettings(settings);
  EXPECT_EQ(line.baudRate, 115200);
  EXPECT_EQ(line.parity, SerialParity::kOdd);
  EXPECT_EQ(line.dataBits, 7);
  EXPECT_EQ(line.stopBits, SerialStopBits::kTwo);
  EXPECT_TRUE(line.softwareFlowControl);
  EXPECT_FALSE(line.dataTerminalReady.has_value());
  EXPECT_FALSE(line.requestToSend.has_value());
  EXPECT_EQ(line.openAttempts, 10);

  settings.gpsBaudIndex = 6;
  settings.gpsParity = -1;
  settings.gpsDataBitsIndex = 2;
  settings.gpsStopBitsIndex = 1000;
  line = gpsLineSettings(settings);
  EXPECT_FALSE(line.baudRate || line.parity || line.dataBits || line.stopBits);
}

TEST(PortSettings, PortNamesMapThroughThePortMap) {
  Settings settings;
  settings.instrumentPort = 0;
  settings.gpsPort = 11;
  const PortMap ports = defaultPortMap();
  EXPECT_EQ(instrumentPortTarget(settings, ports).name, "COM1:");
  EXPECT_EQ(instrumentPortTarget(settings, ports).devicePath, "/dev/ttyUSB0");
  EXPECT_EQ(gpsPortTarget(settings, ports).name, "COM12:");
  EXPECT_EQ(gpsPortTarget(settings, ports).devicePath, "/dev/ttyUSB11");
  settings.gpsPort = 12;
  EXPECT_EQ(gpsPortTarget(settings, ports).name, "COM13:");
  EXPECT_EQ(gpsPortTarget(settings, ports).devicePath, "");
}

TEST(PortSettings, AttemptsStopAtTheFirstSuccessAndGiveUpAfterTheLimit) {
  int calls = 0;
  EXPECT_EQ(openWithAttempts(10, [&] { return ++calls == 4; }), 4);
  EXPECT_EQ(calls, 4);
  calls = 0;
  EXPECT_EQ(openWithAttempts(10, [&] { return ++calls > 100; }), std::nullopt);
  EXPECT_EQ(calls, 10);
  calls = 0;
  EXPECT_EQ(openWithAttempts(1, [&] { return ++calls == 2; }), std::nullopt);
  EXPECT_EQ(calls, 1);
}

}  // namespace
}  // namespace gc40
