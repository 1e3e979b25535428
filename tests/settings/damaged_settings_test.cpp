// Settings files damaged or edited by hand: loading never crashes, and every
// value such a file can hold is used safely afterwards.

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "settings/setting_choices.h"
#include "settings/settings_file.h"
#include "support/settings_listing.h"
#include "support/temp_folder.h"

namespace gc40 {
namespace {

using namespace std::string_view_literals;

// What every use of the record relies on, whatever the file held.
void expectSafeToUse(const Settings& s) {
  for (const IndexSetting* setting : kIndexSettings) {
    ASSERT_LT(static_cast<std::size_t>(effectiveIndex(s, *setting)), setting->items.size());
  }
  EXPECT_GE(s.cyclesPerReading, 1);
  EXPECT_TRUE(s.readingsPerSecondWhole >= 1 && s.readingsPerSecondWhole <= 11);
  EXPECT_LE(s.surveyLine.size(), kSurveyLineMaxLength);
}

TEST(DamagedSettings, OutOfRangeAndNonFiniteValuesAreKeptButUsedSafely) {
  testing::TempFolder folder;
  // clang-format off
  testing::writeBytes(folder.path() / "GC40.INI", testing::fileWithLines({{4, "40"}, {5, "3"},
      {6, "9"}, {16, "40"}, {32, "nan"}, {34, "7"}, {35, "7"}, {37, "99999999999"}, {38, "-3"},
      {41, "2"}, {42, "7"}, {45, "0"}, {47, "-1e300"}, {49, "nan"}, {54, "-1e999"},
      {55, "-3.500000"}}));
  // clang-format on
  Settings s;
  ASSERT_EQ(loadOrSaveSettings(s, folder.path(), false).outcome,
            SettingsFileResult::Outcome::kLoaded);
  expectSafeToUse(s);
  const std::vector<std::string> lines = settingsFileLines(s);
  EXPECT_EQ(lines[3] + lines[48] + lines[54], "40\r\nnan\r\n-3.500000\r\n");  // kept as read
  EXPECT_EQ(s.stationIncrement, -3.5f);               // mode 7 has no step of its own
  EXPECT_EQ(effectiveText(s, kAudioSetting), "Yes");  // an index out of range shows the default
  EXPECT_EQ(effectiveTraceThickness(s.traceThickness[1]), 4);
  EXPECT_EQ(effectiveSamplesPerReading(s.samplesPerReading), 1);
  EXPECT_EQ(comPortName(s.gpsPort), "COM2147483648:");  // names no port, so opening it fails
  EXPECT_EQ(std::tuple(s.cyclesPerReading, s.readingsPerSecondWhole), std::tuple(1, 1));
  EXPECT_TRUE(std::isnan(s.conductivityPixelsPerUnit));
  EXPECT_TRUE(std::isinf(s.inphasePixelsPerUnit) && std::isinf(s.currentStation));
  EXPECT_EQ(s.stationIncrementWheel, -HUGE_VALF);  // beyond a float
}

TEST(DamagedSettings, RandomLinesAfterAValidTagLoadSafely) {
  std::mt19937 random(2026);
  const std::string_view alphabet = "0123456789-+.eEnaifNAIF \t\r\n\0\xff,xX"sv;
  for (int round = 0; round < 300 && !HasFailure(); ++round) {
    std::string bytes(random() % 2000, '\0');
    for (char& c : bytes) c = alphabet[random() % alphabet.size()];
    Settings settings;
    std::string_view rest = bytes;
    readSettings(rest, settings);
    expectSafeToUse(settings);
  }
}

}  // namespace
}  // namespace gc40
