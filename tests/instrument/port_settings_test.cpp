// What each serial port is set to: the GPS receiver's framing from the
// operator's choices, the instrument cable's fixed 9600 8N1.

#include "instrument/port_settings.h"

#include <gtest/gtest.h>

#include <tuple>

namespace gc40 {
namespace {

using P = SerialParity;
using S = SerialStopBits;
// Speed, data bits, parity and stop bits; an empty one keeps the port's own.
using Framing = std::tuple<std::optional<std::int32_t>, std::optional<std::int32_t>,
                           std::optional<SerialParity>, std::optional<SerialStopBits>>;

Framing framing(const SerialLineSettings& line) {
  return {line.baudRate, line.dataBits, line.parity, line.stopBits};
}

TEST(PortSettings, GpsFramingFollowsTheChoicesAndTheInstrumentsIsFixed) {
  // Indexes into the dialog's lists of speeds, parities, data bits and stop bits.
  struct Case {
    std::int32_t baud, parity, dataBits, stopBits;
    Framing expected;
  };
  for (const Case& c : {
           Case{1, 0, 1, 0, {9600, 8, P::kNone, S::kOne}},  // the defaults
           Case{0, 1, 0, 1, {4800, 7, P::kEven, S::kTwo}},
           Case{5, 2, 0, 0, {115200, 7, P::kOdd, S::kOne}},
           Case{6, 3, 2, 2, {}},  // past each list: the port keeps its own
           Case{3, 2, -1, 1, {38400, std::nullopt, P::kOdd, S::kTwo}},  // only that one
       }) {
    Settings settings;
    settings.gpsBaudIndex = c.baud, settings.gpsParity = c.parity;
    settings.gpsDataBitsIndex = c.dataBits, settings.gpsStopBitsIndex = c.stopBits;
    const SerialLineSettings gps = gpsLineSettings(settings);
    EXPECT_EQ(framing(gps), c.expected) << c.baud << c.parity << c.dataBits << c.stopBits;
    EXPECT_EQ(std::tuple(gps.softwareFlowControl, gps.dataTerminalReady, gps.requestToSend,
                         gps.openAttempts),
              std::tuple(true, std::optional<bool>(), std::optional<bool>(), 10));
  }
  const SerialLineSettings instrument = instrumentLineSettings();
  EXPECT_EQ(framing(instrument), (Framing{9600, 8, P::kNone, S::kOne}));
  EXPECT_EQ(std::tuple(instrument.softwareFlowControl, instrument.dataTerminalReady,
                       instrument.requestToSend, instrument.openAttempts),
            std::tuple(false, true, false, 1));
}

}  // namespace
}  // namespace gc40
