#include "app/survey_setup_model.h"

#include <gtest/gtest.h>

#include <tuple>

namespace gc40 {
namespace {

Settings surveyIn(std::int32_t mode) {
  Settings settings;
  settings.surveyMode = mode;
  settings.readingInterval = 0.25f;
  settings.samplesPerReading = 37;
  settings.stationIncrement = 0.75f;  // not yet any mode's own step
  return settings;
}

// Labels, edit 621 and the dipole list follow the stored mode; labels 601
// and 609 read differently on opening than after a mode change.
TEST(SurveySetupModel, OpeningShowsTheStoredModesFields) {
  using Case = std::tuple<int, const char16_t*, const char16_t*, bool, std::size_t>;
  for (const auto& [mode, label, rate, readOnly, dipoleItems] :
       {Case{0, u"Readings/s", u"4.00", false, 2},
        Case{1, u"Readings/s", u"Not Available", true, 2},
        Case{2, u"Sample/Rdg", u"37", false, 3}}) {
    const SurveySetupControls c = openSurveySetup(surveyIn(mode)).controls;
    EXPECT_EQ(std::tuple(c.values.mode, c.rateLabel, c.values.rateOrSamples, c.rateReadOnly,
                         c.dipoleItems.size(), c.incrementLabel.has_value()),
              std::tuple(mode, label, rate, readOnly, dipoleItems, false));
  }
}

// Each mode shows its own step and the rate or samples last typed for it;
// OK stores only the step shown, into the chosen mode. A zero step cannot
// stay in the edit.
TEST(SurveySetupModel, ModeChangesShowEachModesOwnValues) {
  Settings settings = surveyIn(0);
  SurveySetupDialog dialog = openSurveySetup(settings);
  const SurveySetupControls& c = dialog.controls;
  editRateOrSamples(dialog, u"-3");  // no rate below 1 per second
  changeSurveyMode(dialog, settings, 1);
  EXPECT_EQ(std::tuple(c.values.stationIncrement, *c.incrementLabel, c.values.rateOrSamples,
                       c.rateReadOnly),
            std::tuple(u"0.200", u"Wheel Inc.", u"Not Available", true));
  editStationIncrement(dialog, u"0");  // rewritten at once, remembered as 1
  EXPECT_EQ(std::tuple(c.values.stationIncrement, dialog.working.modeIncrements[1]),
            std::tuple(u"1.000", 1.0f));
  changeSurveyMode(dialog, settings, 2);
  EXPECT_EQ(std::tuple(c.rateLabel, c.values.rateOrSamples, c.values.stationIncrement),
            std::tuple(u"Samples/Rdg", u"37", u"2.000"));
  changeSurveyMode(dialog, settings, 0);
  EXPECT_EQ(std::tuple(c.values.rateOrSamples, c.values.stationIncrement, *c.incrementLabel),
            std::tuple(u"1.00", u"0.750", u"Stn Increment"));
  acceptSurveySetup(settings, c.values);
  EXPECT_EQ(std::tuple(settings.stationIncrement, settings.stationIncrementAuto,
                       settings.stationIncrementWheel, settings.stationIncrementManual),
            std::tuple(0.75f, 0.75f, 0.2f, 2.0f));
}

// Leaving Manual with "Both" stored resets the stored dipole at once, so a
// Cancel (storing nothing more) keeps it; other dipoles survive mode changes.
TEST(SurveySetupModel, LeavingManualResetsDipoleBothAtOnce) {
  using Case = std::tuple<int, int, int, int, std::size_t>;
  for (const auto& [from, dipole, to, stored, items] :
       {Case{2, 2, 0, 0, 2}, Case{2, 2, 1, 0, 2}, Case{2, 1, 0, 1, 2}, Case{0, 1, 2, 1, 3},
        Case{2, 2, 2, 2, 3}}) {
    Settings settings = surveyIn(from);
    settings.dipoleMode = dipole;
    SurveySetupDialog dialog = openSurveySetup(settings);
    changeSurveyMode(dialog, settings, to);
    EXPECT_EQ(std::tuple(settings.dipoleMode, dialog.controls.values.dipoleMode,
                         dialog.controls.dipoleItems.size()),
              std::tuple(stored, stored, items))
        << from << dipole << to;
  }
}

}  // namespace
}  // namespace gc40
