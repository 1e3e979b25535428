#include "logging/run_start.h"

#include <gtest/gtest.h>

#include "app/uptime_guard.h"
#include "instrument/port_settings.h"

namespace gc40 {
namespace {

// With GPS off its port may be the instrument's: no conflict, and the
// simulator's GPS end must not take the instrument's place in the map.
TEST(RunStart, TheGpsPortMayBeTheInstrumentsOnlyWhileGpsIsOff) {
  PortMap ports = defaultPortMap();
  ports.paths[2] = "/dev/gps";
  struct Case {
    std::int32_t gpsEnabled, gpsPort;
    bool conflict;
    std::string name, devicePath;
  };
  for (const Case& c : {
           Case{1, 2, false, "COM3:", "/dev/gps"}, Case{0, 2, false, "COM3:", "/dev/gps"},
           Case{1, 0, true, "COM1:", "/dev/ttyUSB0"}, Case{0, 0, false, "COM1:", "/dev/ttyUSB0"},
           Case{1, 12, false, "COM13:", ""},  // no such port: opening it fails as usual
       }) {
    Settings settings;
    settings.gpsEnabled = c.gpsEnabled, settings.gpsPort = c.gpsPort;
    const SerialPortTarget gps = gpsPortTarget(settings, ports);
    EXPECT_EQ(std::tuple(portsConflict(settings), gps.name, gps.devicePath),
              std::tuple(c.conflict, c.name, c.devicePath))
        << c.gpsEnabled << " " << c.gpsPort;
  }
  Settings shared;
  shared.gpsPort = shared.instrumentPort;
  mapSimulatedInstrument("/dev/pts/1", shared, ports);
  mapSimulatedGps("/dev/pts/2", shared, ports);
  EXPECT_EQ(instrumentPortTarget(shared, ports).devicePath, "/dev/pts/1");
}

// The tick counter wraps after 49.7 days, and a machine up 50 days looks
// young again; 70 days wraps to past the limit.
TEST(RunStart, UptimeIsRefusedOnlyPastTwentyDays) {
  constexpr std::uint64_t kDay = 24 * 60 * 60 * 1000;
  EXPECT_EQ(kUptimeLimitMs, 20 * kDay);
  std::string refused;
  const std::uint64_t limit = kUptimeLimitMs;
  for (const std::uint64_t ms : {std::uint64_t{0}, limit - 1, limit, limit + 1, 49 * kDay,
                                 std::uint64_t{0xFFFF'FFFF}, 50 * kDay, 70 * kDay})
    refused += uptimeExceeded(static_cast<std::uint32_t>(ms)) ? 'Y' : 'n';
  EXPECT_EQ(refused, "nnnYYYnY");
}

}  // namespace
}  // namespace gc40
