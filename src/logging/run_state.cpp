#include "logging/run_state.h"

#include "settings/setting_choices.h"

namespace gc40 {

LoggingRunState startingRunState(const Settings& settings, std::int32_t readingsPerStation) {
  LoggingRunState state;
  state.keysActive = 1;
  state.surveyMode = effectiveSurveyMode(settings);
  state.averagingActive = state.surveyMode == SurveyMode::kManual &&
                          effectiveSamplesPerReading(settings.samplesPerReading) >= 2;
  state.readingsPerStation = readingsPerStation;
  state.beepInterval = readingsPerStation;
  return state;
}

}  // namespace gc40
