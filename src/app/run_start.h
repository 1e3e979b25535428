#pragma once
// The checks that come before a Monitor/Log run touches a port.

#include "settings/settings.h"

namespace gc40 {

inline constexpr char kSamePortAssignedText[] = "Same Port Assigned";

// The instrument and an enabled GPS receiver cannot share one port; with GPS
// disabled the GPS port number does not matter.
bool portsConflict(const Settings& settings);

}  // namespace gc40
