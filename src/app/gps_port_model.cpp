#include "app/gps_port_model.h"

namespace gc40 {

GpsPortControls openGpsPortSetup(const Settings& settings) {
  return openComboBoxes(settings, kGpsPortCombos);
}

GpsPortOutcome acceptGpsPortSetup(Settings& settings, const GpsPortControls& controls) {
  storeComboBoxes(settings, kGpsPortCombos, controls);
  return {true, settings.gpsEnabled == 1 ? 1 : 0};
}

GpsPortOutcome monitorGpsOutput(Settings& settings, const GpsPortControls& controls) {
  storeComboBoxes(settings, kGpsPortCombos, controls);
  return {false, 1};
}

}  // namespace gc40
