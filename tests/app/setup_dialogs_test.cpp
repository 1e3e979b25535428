// The rules of the four setup dialogs before and at OK, grouped by dialog.

#include <gtest/gtest.h>

#include <tuple>

#include "app/display_options_model.h"
#include "app/logger_setup_model.h"
#include "app/survey_setup_model.h"

namespace gc40 {
namespace {

Settings surveyIn(SurveyMode mode, DipoleMode dipole = DipoleMode::kVertical) {
  Settings settings;
  settings.surveyMode = mode;
  settings.dipoleMode = dipole;
  settings.readingInterval = 0.25f;
  settings.samplesPerReading = 37;
  settings.stationIncrement = 0.75f;  // not yet any mode's own step
  return settings;
}

// Each mode shows its own step and the rate or samples last typed for it;
// OK stores only the step shown, into the chosen mode. A zero step cannot
// stay in the edit.
TEST(SurveySetupModel, ModeChangesShowEachModesOwnValues) {
  Settings settings = surveyIn(SurveyMode::kAuto);
  SurveySetupModel dialog = openSurveySetup(settings);
  const SurveySetupControls& c = dialog.controls;
  editRateOrSamples(dialog, u"-3");  // no rate below 1 per second
  changeSurveyMode(dialog, settings, 1);
  EXPECT_EQ(std::tuple(c.values.stationIncrement, *c.incrementLabel, c.values.rateOrSamples),
            std::tuple(u"0.200", u"Wheel Inc.", u"Not Available"));
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
  using Case = std::tuple<int, int, int, int, std::size_t>;  // modes and dipoles as list indexes
  for (const auto& [from, dipole, to, stored, items] :
       {Case{2, 2, 0, 0, 2}, Case{2, 1, 0, 1, 2}, Case{0, 1, 2, 1, 3}, Case{2, 2, 2, 2, 3}}) {
    Settings settings =
        surveyIn(modeFromIndex<SurveyMode>(from), modeFromIndex<DipoleMode>(dipole));
    SurveySetupModel dialog = openSurveySetup(settings);
    changeSurveyMode(dialog, settings, to);
    EXPECT_EQ(std::tuple(modeIndex(settings.dipoleMode), dialog.controls.values.dipoleMode,
                         dialog.controls.dipoleItems.size()),
              std::tuple(stored, stored, items))
        << from << dipole << to;
  }
}

Settings accepted(std::int32_t mode, std::u16string rate, std::u16string line = u"10") {
  Settings settings;
  acceptSurveySetup(settings, {mode, std::move(rate), 1, 1, std::move(line), u"-2.5", 1, 3,
                               u"1250.125", u"-0.250"});
  return settings;
}

// Auto takes readings per second into the interval and its timing, Manual
// clamps its samples; each leaves the other's value, and Wheel leaves both.
TEST(SurveySetup, RateOrSamplesAreTakenByTheirModeOnly) {
  using Case = std::tuple<int, const char16_t*, float, int, int, int>;
  for (const auto& [mode, text, interval, cycles, perSecond, samples] :
       {Case{0, u"0", 1.0f, 11, 1, 10}, Case{0, u"", 1.0f, 11, 1, 10},
        Case{0, u"20", 0.05f, 1, 11, 10}, Case{0, u"5.00", 0.2f, 2, 5, 10},
        Case{0, u"-2", -0.5f, 1, 1, 10}, Case{2, u"0", 0.2f, 2, 5, 1},
        Case{2, u"250", 0.2f, 2, 5, 100}, Case{2, u"37.9", 0.2f, 2, 5, 37},
        Case{2, u"1e20", 0.2f, 2, 5, 100}, Case{2, u"nan", 0.2f, 2, 5, 1},
        Case{1, u"Not Available", 0.2f, 2, 5, 10}}) {
    const Settings s = accepted(mode, text);
    EXPECT_EQ(std::tuple(s.readingInterval, s.cyclesPerReading, s.readingsPerSecondWhole,
                         s.samplesPerReading),
              std::tuple(interval, cycles, perSecond, samples))
        << mode;
  }
}

TEST(SurveySetup, StoresTheSurveyAndTheChosenModesOwnStep) {
  const Settings s = accepted(1, u"", u"A1-North-\u00c9ast-0123456789abc");
  EXPECT_EQ(s.surveyLine, u"A1-North-\u00c9ast-012345678");  // 23 characters
  EXPECT_EQ(std::tuple(s.surveyModeSetting, s.surveyLineValue, s.lineIncrement, s.lineSequence,
                       s.lineDirection, s.currentStation),
            std::tuple(SurveyMode::kWheel, 0.0f, -2.5f, 1, 3, 1250.125));
  EXPECT_EQ(std::tuple(s.stationIncrement, s.stationIncrementAuto, s.stationIncrementWheel,
                       s.stationIncrementManual),
            std::tuple(-0.25f, 1.0f, -0.25f, 2.0f));
  EXPECT_EQ(accepted(0, u"1", u"12.5").surveyLineValue, 12.5f);
}

// Portrait offers "any key" only: a landscape choice selects nothing there
// and OK stores -1. A damaged index shows the field's default.
TEST(LoggerSetupModel, PauseKeyListFollowsTheScreen) {
  using Case = std::tuple<int, int, std::size_t, int>;
  for (const auto& [portrait, stored, items, selected] :
       {Case{0, 3, 4, 3}, Case{1, 0, 1, 0}, Case{1, 2, 1, -1}, Case{0, 9, 4, 0},
        Case{1, -5, 1, 0}}) {
    Settings settings;
    settings.portraitScreen = portrait;
    settings.pauseKey = stored;
    const LoggerSetupControls controls = openLoggerSetup(settings);
    EXPECT_EQ(std::tuple(controls[kPauseKeyCombo].items.size(), controls[kPauseKeyCombo].selection),
              std::tuple(items, selected))
        << portrait << stored;
    acceptLoggerSetup(settings, controls);
    EXPECT_EQ(settings.pauseKey, selected);
  }
}

// Thickness and colour act at once; Cancel restores them as opened, OK keeps
// them and stores visibility (slots 4..7 cleared) and the grid choice.
TEST(DisplayOptionsModel, LiveChangesAreKeptByOkAndUndoneByCancel) {
  Settings opened;
  opened.traceThickness = {1, 4, 0, 9, 3, 3, 3, 3};
  opened.traceVisible = {1, 0, 1, 0, 1, 1, 1, 1};
  opened.gridScale = 1;
  Settings settings = opened;
  DisplayOptionsModel dialog = openDisplayOptions(settings);
  EXPECT_EQ(dialog.controls.thickness, (std::array<std::int32_t, 4>{0, 3, 0, 3}));
  selectTraceThickness(settings, 1, 2);
  storePickedColour(settings, 0, std::nullopt);  // picker cancelled: black
  storePickedColour(settings, 3, 0x123456);
  Settings cancelled = settings;
  cancelDisplayOptions(cancelled, dialog.backup);
  EXPECT_EQ(cancelled, opened);

  dialog.controls.traceVisible = {true, true, false, false};
  dialog.controls.gridScale = 0;
  const ProfileTraces traces = acceptDisplayOptions(settings, dialog.controls);
  EXPECT_EQ(std::tuple(settings.traceThickness[1], settings.traceColour[0], settings.traceColour[3],
                       settings.gridScale),
            std::tuple(3, 0x000000u, 0x123456u, 0));
  EXPECT_EQ(settings.traceVisible, (std::array<std::int32_t, 8>{1, 1, 0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(traces.traceOn, (std::array<std::int32_t, 8>{1, 0, 0, 0, 0, 0, 0, 0}));
}

// Flags of C/V, C/H, I/V, I/H and the four unused slots, with every trace
// visible. Wheel draws as Auto; Manual draws conductivity only.
TEST(ProfileSetup, TracesFollowModeComponentAndDipole) {
  using Case = std::tuple<int, int, const char*, const char*>;
  for (const auto& [component, dipole, timed, manual] :
       {Case{0, 0, "10100000", "10000000"}, Case{0, 1, "01010000", "01000000"},
        Case{0, 2, "00000000", "11000000"}, Case{1, 0, "00100000", "00000000"},
        Case{1, 1, "00010000", "00000000"}, Case{1, 2, "00000000", "00000000"}}) {
    for (SurveyMode mode : {SurveyMode::kAuto, SurveyMode::kWheel, SurveyMode::kManual}) {
      Settings settings = surveyIn(mode, modeFromIndex<DipoleMode>(dipole));
      settings.component = modeFromIndex<Component>(component);
      const ProfileTraces traces = setupProfileTraces(settings);
      std::string on;
      for (std::int32_t flag : traces.traceOn) on += static_cast<char>('0' + flag);
      using Flags = std::pair<std::string, int>;
      EXPECT_EQ(Flags(on, traces.readingsPerStation),
                Flags(mode == SurveyMode::kManual ? manual : timed, 1))
          << modeIndex(mode) << component << dipole;
    }
  }
}

}  // namespace
}  // namespace gc40
