#include "instrument/port_settings.h"

#include <gtest/gtest.h>

#include <tuple>

namespace gc40 {
namespace {

// Each member as baud, data bits, parity, stop bits, XON/XOFF, DTR, RTS,
// attempts; an empty one (an index outside its list) keeps the port's value.
auto members(const SerialLineSettings& l) {
  return std::tuple(l.baudRate, l.dataBits, l.parity, l.stopBits, l.softwareFlowControl,
                    l.dataTerminalReady, l.requestToSend, l.openAttempts);
}

TEST(PortSettings, InstrumentLineIsFixedGpsLineFollowsTheSettings) {
  using P = SerialParity;
  using S = SerialStopBits;
  EXPECT_EQ(members(instrumentLineSettings()),
            members({9600, 8, P::kNone, S::kOne, false, true, false, 1}));
  Settings settings;
  settings.gpsBaudIndex = 5, settings.gpsParity = 2;
  settings.gpsDataBitsIndex = 0, settings.gpsStopBitsIndex = 1;
  EXPECT_EQ(members(gpsLineSettings(settings)),
            members({115200, 7, P::kOdd, S::kTwo, true, std::nullopt, std::nullopt, 10}));
  settings.gpsBaudIndex = 6, settings.gpsParity = -1;
  settings.gpsDataBitsIndex = 2, settings.gpsStopBitsIndex = 1000;
  EXPECT_EQ(members(gpsLineSettings(settings)),
            members({std::nullopt, std::nullopt, std::nullopt, std::nullopt, true, std::nullopt,
                     std::nullopt, 10}));
}

}  // namespace
}  // namespace gc40
