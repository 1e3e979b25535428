#include "settings/profile_setup.h"

namespace gc40 {

ProfileTraces setupProfileTraces(const Settings& settings) {
  ProfileTraces traces;
  const auto& visible = settings.traceVisible;
  const bool both = settings.component == 0;
  const std::int32_t dipole = settings.dipoleMode;
  auto on = [&](int trace, bool drawn) { traces.traceOn[trace] = visible[trace] == 1 && drawn; };
  if (settings.surveyMode == SurveyMode::kManual) {
    // Manual may record both dipoles ("Both" is offered there only).
    on(0, both && dipole != 1);
    on(1, both && dipole != 0);
  } else {
    on(0, both && dipole == 0);
    on(1, both && dipole == 1);
    on(2, dipole == 0);
    on(3, dipole == 1);
  }
  return traces;
}

}  // namespace gc40
