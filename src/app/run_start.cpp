#include "app/run_start.h"

namespace gc40 {

bool portsConflict(const Settings& settings) {
  return settings.gpsEnabled == 1 && settings.instrumentPort == settings.gpsPort;
}

void mapSimulatedInstrument(const std::string& devicePath, const Settings& settings,
                            PortMap& ports) {
  const auto index = static_cast<std::size_t>(settings.instrumentPort);
  if (settings.instrumentPort >= 0 && index < ports.paths.size()) ports.paths[index] = devicePath;
}

}  // namespace gc40
