#pragma once
// The serial adapters Qt finds on this machine. Pseudo-terminals are never
// among them, which is why every port is still chosen through the port map.

#include <vector>

#include "platform/serial_adapters.h"

namespace gc40 {

std::vector<SerialAdapter> findSerialAdapters();

}  // namespace gc40
