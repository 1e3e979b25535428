#include <gtest/gtest.h>

#include "app/display_options_model.h"
#include "app/gps_port_model.h"
#include "app/logger_setup_model.h"

namespace gc40 {
namespace {

template <std::size_t N>
std::array<std::int32_t, N> selections(const ComboBoxes<N>& boxes) {
  std::array<std::int32_t, N> selected{};
  for (std::size_t i = 0; i < N; ++i) selected[i] = boxes[i].selection;
  return selected;
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

// OK saves and ends with 0; "Monitor GPS Output" stores the same without
// saving and ends with 1, which opens the Monitor GPS window. A port outside
// the list selects nothing; a damaged baud index shows 9600.
TEST(GpsPortModel, OkSavesAndMonitorDoesNot) {
  Settings settings;
  settings.gpsPort = 12;
  settings.gpsBaudIndex = 6;
  EXPECT_EQ(selections(openGpsPortSetup(settings)), (std::array{0, -1, 1, 0, 1, 0}));
  constexpr std::array wanted{1, 3, 5, 2, 0, 1};
  GpsPortControls chosen = openGpsPortSetup(Settings{});
  for (std::size_t i = 0; i < wanted.size(); ++i) chosen[i].selection = wanted[i];
  for (const auto& [monitor, outcome] :
       {std::tuple(false, GpsPortOutcome{true, 0}), std::tuple(true, GpsPortOutcome{false, 1})}) {
    Settings stored;
    EXPECT_EQ(monitor ? monitorGpsOutput(stored, chosen) : acceptGpsPortSetup(stored, chosen),
              outcome);
    EXPECT_EQ(selections(openGpsPortSetup(stored)), wanted);
  }
}

Settings withDisplay() {
  Settings settings;
  settings.traceThickness = {1, 4, 0, 9, 3, 3, 3, 3};
  settings.traceVisible = {1, 0, 1, 0, 1, 1, 1, 1};
  settings.gridScale = 1;
  return settings;
}

// Thickness and colour act at once; Cancel restores them as opened, OK keeps
// them and stores visibility (slots 4..7 cleared) and the grid choice.
TEST(DisplayOptionsModel, LiveChangesAreKeptByOkAndUndoneByCancel) {
  Settings settings = withDisplay();
  DisplayOptionsDialog dialog = openDisplayOptions(settings);
  EXPECT_EQ(dialog.controls.thickness, (std::array<std::int32_t, 4>{0, 3, 0, 3}));
  selectTraceThickness(settings, 1, 2);
  storePickedColour(settings, 0, std::nullopt);  // picker cancelled: black
  storePickedColour(settings, 3, 0x123456);
  Settings cancelled = settings;
  cancelDisplayOptions(cancelled, dialog.backup);
  EXPECT_EQ(cancelled, withDisplay());

  dialog.controls.traceVisible = {true, true, false, false};
  dialog.controls.gridScale = 0;
  const ProfileTraces traces = acceptDisplayOptions(settings, dialog.controls);
  EXPECT_EQ(std::tuple(settings.traceThickness[1], settings.traceColour[0], settings.traceColour[3],
                       settings.gridScale),
            std::tuple(3, 0x000000u, 0x123456u, 0));
  EXPECT_EQ(settings.traceVisible, (std::array<std::int32_t, 8>{1, 1, 0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(traces.traceOn, (std::array<std::int32_t, 8>{1, 0, 0, 0, 0, 0, 0, 0}));
}

}  // namespace
}  // namespace gc40
