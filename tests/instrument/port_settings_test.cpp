#include "instrument/port_settings.h"

#include <gtest/gtest.h>

namespace gc40 {
namespace {

TEST(PortSettings, InstrumentLineIsFixedGpsLineFollowsTheSettings) {
  const SerialLineSettings instrument = instrumentLineSettings();
  EXPECT_TRUE(instrument.baudRate == 9600 && instrument.dataBits == 8 &&
              instrument.parity == SerialParity::kNone &&
              instrument.stopBits == SerialStopBits::kOne && !instrument.softwareFlowControl &&
              instrument.dataTerminalReady == true && instrument.requestToSend == false &&
              instrument.openAttempts == 1);

  Settings settings;
  settings.gpsBaudIndex = 5;
  settings.gpsParity = 2;
  settings.gpsDataBitsIndex = 0;
  settings.gpsStopBitsIndex = 1;
  SerialLineSettings gps = gpsLineSettings(settings);
  EXPECT_TRUE(gps.baudRate == 115200 && gps.parity == SerialParity::kOdd && gps.dataBits == 7 &&
              gps.stopBits == SerialStopBits::kTwo && gps.softwareFlowControl &&
              !gps.dataTerminalReady && !gps.requestToSend && gps.openAttempts == 10);
  // An index outside its list keeps the port's own value.
  settings.gpsBaudIndex = 6;
  settings.gpsParity = -1;
  settings.gpsDataBitsIndex = 2;
  settings.gpsStopBitsIndex = 1000;
  gps = gpsLineSettings(settings);
  EXPECT_FALSE(gps.baudRate || gps.parity || gps.dataBits || gps.stopBits);
}

TEST(PortSettings, PortNamesMapThroughThePortMapAndAttemptsStopAtTheLimit) {
  Settings settings;
  settings.gpsPort = 11;
  const PortMap ports = defaultPortMap();
  EXPECT_EQ(instrumentPortTarget(settings, ports).name, "COM1:");
  EXPECT_EQ(instrumentPortTarget(settings, ports).devicePath, "/dev/ttyUSB0");
  EXPECT_EQ(gpsPortTarget(settings, ports).devicePath, "/dev/ttyUSB11");
  settings.gpsPort = 12;
  EXPECT_EQ(gpsPortTarget(settings, ports).name, "COM13:");
  EXPECT_EQ(gpsPortTarget(settings, ports).devicePath, "");

  for (const auto& [attempts, succeedsOn, result, calls] :
       {std::tuple{10, 4, std::optional<int>(4), 4},
        {10, 0, std::nullopt, 10},
        {1, 2, std::nullopt, 1}}) {
    int made = 0;
    EXPECT_EQ(openWithAttempts(attempts, [&] { return ++made == succeedsOn; }), result);
    EXPECT_EQ(made, calls);
  }
}

}  // namespace
}  // namespace gc40
