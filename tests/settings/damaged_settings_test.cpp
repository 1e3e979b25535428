// Settings files that were damaged or edited by hand: loading never crashes,
// and every value such a file can hold is used safely afterwards.

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
using Outcome = SettingsFileResult::Outcome;

Settings load(std::string_view bytes) {
  testing::TempFolder folder;
  testing::writeBytes(folder.path() / "GC40.INI", bytes);
  Settings settings;
  EXPECT_EQ(loadOrSaveSettings(settings, folder.path(), false).outcome, Outcome::kLoaded);
  return settings;
}

// What every use of the record relies on, whatever the file held.
void expectSafeToUse(const Settings& s) {
  for (const IndexSetting* setting : kIndexSettings) {
    ASSERT_LT(static_cast<std::size_t>(effectiveIndex(s, *setting)), setting->items.size());
  }
  EXPECT_GE(s.cyclesPerReading, 1);
  EXPECT_TRUE(s.readingsPerSecondWhole >= 1 && s.readingsPerSecondWhole <= 11);
  EXPECT_LE(s.surveyLine.size(), kSurveyLineMaxLength);
}

TEST(DamagedSettings, IndexesOutOfRangeAreKeptButActAsTheirDefaults) {
  // clang-format off
  const std::string file = testing::fileWithLines({{4, "40"}, {5, "3"}, {6, "9"}, {15, "0"},
      {16, "40"}, {36, "-1"}, {37, "12"}, {38, "-3"}, {41, "2"}, {42, "7"}, {45, "0"}, {53, "4"},
      {55, "-3.500000"}});
  // clang-format on
  const Settings s = load(file);
  EXPECT_EQ(settingsFileLines(s).back(), "-3.500000\r\n");  // written back as read
  EXPECT_EQ(s.stationIncrement, -3.5f);                     // mode 7 has no step of its own
  expectSafeToUse(s);
  EXPECT_EQ(effectiveText(s, kPauseKeySetting), "any key");
  EXPECT_EQ(effectiveText(s, kSurveyModeSetting), "Auto");
  EXPECT_EQ(effectiveText(s, kAudioSetting), "Yes");
  EXPECT_EQ(validIndex(s, kGpsBaudSetting), std::nullopt);  // the port keeps its own rate
  EXPECT_EQ(effectiveTraceThickness(s.traceThickness[1]), 4);
  EXPECT_EQ(effectiveSamplesPerReading(s.samplesPerReading), 1);
  EXPECT_EQ(comPortName(s.gpsPort), "COM13:");  // names no port, so opening it fails
  EXPECT_EQ(comPortName(INT32_MAX), "COM2147483648:");
}

// clang-format off
TEST(DamagedSettings, NonFiniteNumbersNeverReachAnIntegerUnchecked) {
  const Settings s = load(testing::fileWithLines({{32, "nan"}, {34, "7"}, {35, "7"},
      {45, "99999999999"}, {46, "inf"}, {47, "-1e300"}, {49, "nan"}, {54, "-1e999"}}));
  // clang-format on
  EXPECT_EQ(s.cyclesPerReading, 1);
  EXPECT_EQ(s.readingsPerSecondWhole, 1);
  EXPECT_TRUE(std::isnan(s.conductivityPixelsPerUnit));
  EXPECT_TRUE(std::isinf(s.inphasePixelsPerUnit));  // equal scale limits
  EXPECT_TRUE(std::isinf(s.currentStation));
  EXPECT_EQ(s.stationIncrementWheel, -HUGE_VALF);  // beyond a float
  EXPECT_EQ(effectiveSamplesPerReading(s.samplesPerReading), 100);
  EXPECT_EQ(settingsFileLines(s)[48], "nan\r\n");
}

TEST(DamagedSettings, RandomLinesAfterAValidTagLoadSafely) {
  std::mt19937 random(2026);
  const std::string_view alphabet = "0123456789-+.eEnaifNAIF \t\r\n\0\xff,xX"sv;
  for (int round = 0; round < 300 && !HasFailure(); ++round) {
    std::string bytes;
    for (int i = static_cast<int>(random() % 2000); i > 0; --i) {
      bytes += alphabet[random() % alphabet.size()];
    }
    Settings settings;
    std::string_view rest = bytes;
    readSettings(rest, settings);
    expectSafeToUse(settings);
  }
}

}  // namespace
}  // namespace gc40
