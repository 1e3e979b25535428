#pragma once
// The Survey Setup dialog while it is open: what its controls show, the
// working values behind them, and the rules that act before OK. OK itself is
// acceptSurveySetup (settings/survey_setup.h) on `controls.values`; Cancel
// stores nothing beyond the dipole reset that a mode change made at once.

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "settings/settings.h"
#include "settings/survey_setup.h"

namespace gc40 {

struct SurveySetupControls {
  SurveySetupEntry values;    // texts of the edits and selections of the combos
  std::u16string rateLabel;   // label 601
  bool rateReadOnly = false;  // edit 621; read-only in Wheel mode
  // Label 609; nullopt keeps the layout's own text (it is first set by a
  // mode change).
  std::optional<std::u16string> incrementLabel;
  std::span<const std::string_view> dipoleItems;  // combo 623; "Both" in Manual only
};

// What the dialog remembers beside its controls: a mode change redisplays the
// rate or samples last typed for that mode, and each mode keeps its own
// station increment until OK stores the one shown.
struct SurveySetupWorking {
  SurveyMode modeShown = SurveyMode::kAuto;
  float readingsPerSecond = 5.0f;
  std::int32_t samples = 10;
  float stationIncrement = 1.0f;
  std::array<float, 3> modeIncrements{};  // Auto, Wheel, Manual
};

struct SurveySetupModel {
  SurveySetupControls controls;
  SurveySetupWorking working;
};

SurveySetupModel openSurveySetup(const Settings& settings);

// The mode combo (620) notified with `selection`. Leaving Manual with
// dipole "Both" stored resets the stored dipoleMode to Vertical at once, so
// Cancel keeps that reset. A selection outside the three modes is ignored.
void changeSurveyMode(SurveySetupModel& dialog, Settings& settings, std::int32_t selection);

// The rate / samples edit (621) changed to `text`.
void editRateOrSamples(SurveySetupModel& dialog, std::u16string text);

// The station increment edit (629) changed to `text`. An increment of 0 (or
// text that is no number) is rewritten at once as "1.000"; the caller puts
// `controls.values.stationIncrement` back into the edit when it differs.
void editStationIncrement(SurveySetupModel& dialog, std::u16string text);

}  // namespace gc40
