#pragma once
// The checks that come before a Monitor/Log run touches a port.

#include <string>

#include "platform/logger_context.h"
#include "platform/port_map.h"
#include "settings/settings.h"

namespace gc40 {

inline constexpr char kSamePortAssignedText[] = "Same Port Assigned";

// The instrument and an enabled GPS receiver cannot share one port; with GPS
// disabled the GPS port number does not matter.
bool portsConflict(const Settings& settings);

// In a simulated run the instrument port, whichever the settings name, leads
// to the simulator. An index that names no port is left to fail as usual.
void mapSimulatedInstrument(const std::string& devicePath, const Settings& settings,
                            PortMap& ports);

// The same for the GPS port, whether or not GPS is on, except where it is the
// instrument port: with GPS on that pair is refused anyway, and with GPS off
// the instrument must still be found there.
void mapSimulatedGps(const std::string& devicePath, const Settings& settings, PortMap& ports);

// In a --simulate run the ports the settings name lead to the simulator;
// otherwise nothing changes.
void mapSimulatedPorts(LoggerContext& context);

}  // namespace gc40
