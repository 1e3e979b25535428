#include "settings/settings_file.h"

#include <gtest/gtest.h>

#include <array>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <tuple>

#include "harness/temp_folder.h"
#include "settings/setting_choices.h"
#include "support/settings_listing.h"

namespace gc40 {
namespace {

using Outcome = SettingsFileResult::Outcome;
using namespace testing;

Settings loadBytes(const TempFolder& folder, std::string_view bytes, Outcome expected,
                   Settings settings = {}) {
  writeBytes(folder.path() / "GC40.INI", bytes);
  EXPECT_EQ(loadOrSaveSettings(settings, folder.path(), false).outcome, expected);
  return settings;
}

// Every value differs from its default: negatives, fractions, colours above
// 0x7FFFFFFF (written negative), a 24-character name outside ASCII.
// clang-format off
constexpr const char* kNonDefaultLines[] = {
    "CEVer2.11", "1", "1", "11", "0", "3", "0", "1", "0", "1", "1", "0", "1", "0", "1", "3",
    "4", "2", "4", "3", "2", "1", "1193046", "16777215", "0", "255", "16702650", "-2147483647",
    "7", "-1", "1", "-120.250000", "8999.500000", "-3.125000", "0.062500", "1", "7", "5", "0",
    "2", "1", "2", "1", "2", "100", "-0.750000", "0.001000", "-12.500000", "0.050000",
    "L\xe9gende-\x80\xd6st_12345678901", "-2.500000", "1", "3", "-1234567.125000", "-12.500000"};
// clang-format on

TEST(SettingsFile, EveryFieldIsReadFromItsLineAndWrittenBackTheSameInACommaLocale) {
  const std::string before = std::setlocale(LC_ALL, nullptr);
  std::setlocale(LC_ALL, "de_DE.UTF-8");
  char printed[32];
  std::snprintf(printed, sizeof printed, "%f", 500.0);
  ASSERT_STREQ(printed, "500,000000") << "test locale missing (LOCPATH)";
  std::string file;
  for (const char* line : kNonDefaultLines) file += std::string(line) + "\r\n";
  TempFolder folder;
  Settings s = loadBytes(folder, file, Outcome::kLoaded);
  EXPECT_EQ(std::tuple(s.instrumentVariant, s.distanceUnits, s.instrumentPort, s.audioEnabled,
                       s.pauseKey, s.gridScale, s.gpsEnabled, s.gpsPort, s.gpsBaudIndex),
            std::tuple(1, 1, 11, 0, 3, 1, 1, 7, 5));
  EXPECT_EQ(
      std::tuple(s.gpsDataBitsIndex, s.gpsParity, s.gpsStopBitsIndex, s.surveyMode, s.component,
                 s.dipoleMode, s.samplesPerReading, s.lineSequence, s.lineDirection),
      std::tuple(0, 2, 1, SurveyMode::kManual, Component::kInphase, DipoleMode::kBoth, 100, 1, 3));
  EXPECT_EQ(s.traceThickness, (std::array{1, 3, 4, 2, 4, 3, 2, 1}));
  EXPECT_EQ(s.traceColour[5], 0x80000001u);
  EXPECT_EQ(std::tuple(s.conductivityScaleMin, s.inphaseScaleMax, s.stationIncrementWheel,
                       s.readingInterval, s.lineIncrement, s.stationIncrement),
            std::tuple(-120.25f, 0.0625f, 0.001f, 0.05f, -2.5f, -12.5f));
  EXPECT_EQ(s.surveyLine, u"L\u00e9gende-\u20ac\u00d6st_12345678901");
  EXPECT_EQ(s.currentStation, -1234567.125);
  EXPECT_EQ(loadOrSaveSettings(s, folder.path(), true).outcome, Outcome::kSaved);
  EXPECT_EQ(readBytes(folder.path() / "GC40.INI"), file);
  std::setlocale(LC_ALL, before.c_str());
}

TEST(SettingsFile, MissingOrOldFilesGetTheDefaultsAndOddLinesReadSafely) {
  TempFolder folder;
  Settings created;
  EXPECT_EQ(loadOrSaveSettings(created, folder.path(), false).outcome, Outcome::kCreated);
  EXPECT_EQ(readBytes(folder.path() / "GC40.INI"), defaultFileBytes());
  loadBytes(folder, fileWithLine(1, "CEVer2.10") + "junk", Outcome::kReplaced);
  EXPECT_EQ(readBytes(folder.path() / "GC40.INI"), defaultFileBytes());
  // A bare line feed drops the line's last character: the tag no longer matches, "12" reads as 1.
  loadBytes(folder, fileWithLine(1, "CEVer2.11", "\n"), Outcome::kReplaced);
  EXPECT_EQ(loadBytes(folder, fileWithLine(45, "12", "\n"), Outcome::kLoaded).samplesPerReading, 1);
  EXPECT_EQ(loadBytes(folder, fileWithLine(50, "", "\n"), Outcome::kLoaded).surveyLine, u"");

  // A file cut inside line 47 keeps the fields from there on and is never rewritten.
  const std::string full = fileWithLine(33, "250.000000");
  const std::string cut = full.substr(0, full.find("0.200000\r\n2.000000") + 3);
  const Settings before{.startStation = 5.0, .stationIncrementWheel = 9.0f};
  const Settings s = loadBytes(folder, cut, Outcome::kLoaded, before);
  EXPECT_EQ(std::tuple(s.conductivityPixelsPerUnit, s.stationIncrementWheel, s.currentStation),
            std::tuple(180.0f / 250.0f, 9.0f, 5.0));
  EXPECT_EQ(readBytes(folder.path() / "GC40.INI"), cut);
}

TEST(SettingsFile, WheelModeSavesOnlyTheSignOfTheStep) {
  Settings s{.surveyMode = SurveyMode::kWheel};
  for (const auto& [step, line] : {std::pair{0.0f, "1.000000\r\n"}, {-0.5f, "-1.000000\r\n"}}) {
    s.stationIncrement = step;
    EXPECT_EQ(settingsFileLines(s).back(), line);
  }
  TempFolder folder;  // loaded, the step is the Wheel step, not the sign
  const std::string file = fileWithLines({{42, "1"}, {55, "-1.000000"}});
  EXPECT_EQ(loadBytes(folder, file, Outcome::kLoaded).stationIncrement, 0.2f);
}

TEST(DamagedSettings, OutOfRangeAndNonFiniteValuesAreKeptButUsedSafely) {
  TempFolder folder;
  // clang-format off
  const Settings s = loadBytes(folder, fileWithLines({{4, "40"}, {5, "3"}, {6, "9"}, {16, "40"},
      {32, "nan"}, {34, "7"}, {35, "7"}, {37, "99999999999"}, {38, "-3"}, {41, "2"}, {42, "7"},
      {45, "0"}, {47, "-1e300"}, {49, "nan"}, {54, "-1e999"}, {55, "-3.500000"}}), Outcome::kLoaded);
  // clang-format on
  for (const IndexSetting* setting : kIndexSettings)  // every use of the record relies on these
    ASSERT_LT(static_cast<std::size_t>(effectiveIndex(s, *setting)), setting->items.size());
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

}  // namespace
}  // namespace gc40
