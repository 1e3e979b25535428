#include "settings/profile_setup.h"

namespace gc40 {

ProfileTraces setupProfileTraces(const Settings& settings) {
  ProfileTraces traces;
  const auto& visible = settings.traceVisible;
  const bool both = settings.component == Component::kBoth;
  const bool vertical = settings.dipoleMode == DipoleMode::kVertical;
  const bool horizontal = settings.dipoleMode == DipoleMode::kHorizontal;
  auto on = [&](int trace, bool drawn) { traces.traceOn[trace] = visible[trace] == 1 && drawn; };
  if (settings.surveyMode == SurveyMode::kManual) {
    // Manual may record both dipoles ("Both" is offered there only).
    on(0, both && !horizontal);
    on(1, both && !vertical);
  } else {
    on(0, both && vertical);
    on(1, both && horizontal);
    on(2, vertical);
    on(3, horizontal);
  }
  return traces;
}

}  // namespace gc40
