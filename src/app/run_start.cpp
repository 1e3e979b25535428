#include "app/run_start.h"

namespace gc40 {

bool portsConflict(const Settings& settings) {
  return settings.gpsEnabled == 1 && settings.instrumentPort == settings.gpsPort;
}

}  // namespace gc40
