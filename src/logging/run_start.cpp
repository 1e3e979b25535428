#include "logging/run_start.h"

namespace gc40 {
namespace {

void mapPort(int index, const std::string& devicePath, PortMap& ports) {
  if (index >= 0 && static_cast<std::size_t>(index) < ports.paths.size())
    ports.paths[static_cast<std::size_t>(index)] = devicePath;
}

}  // namespace

bool portsConflict(const Settings& settings) {
  return settings.gpsEnabled == 1 && settings.instrumentPort == settings.gpsPort;
}

void mapSimulatedInstrument(const std::string& devicePath, const Settings& settings,
                            PortMap& ports) {
  mapPort(settings.instrumentPort, devicePath, ports);
}

void mapSimulatedGps(const std::string& devicePath, const Settings& settings, PortMap& ports) {
  if (settings.gpsPort != settings.instrumentPort) mapPort(settings.gpsPort, devicePath, ports);
}

void mapSimulatedPorts(LoggerContext& context) {
  if (!context.simulatedInstrumentPath.empty())
    mapSimulatedInstrument(context.simulatedInstrumentPath, context.settings, context.ports);
  if (!context.simulatedGpsPath.empty())
    mapSimulatedGps(context.simulatedGpsPath, context.settings, context.ports);
}

}  // namespace gc40
