#include "settings/settings_file.h"

#include <gtest/gtest.h>

#include <array>
#include <clocale>
#include <cstdio>
#include <tuple>

#include "support/settings_listing.h"
#include "support/temp_folder.h"

namespace gc40 {
namespace {

using Outcome = SettingsFileResult::Outcome;
using testing::defaultFileBytes;
using testing::fileWithLine;
using testing::readBytes;
using testing::TempFolder;

Settings loadBytes(const TempFolder& folder, std::string_view bytes, Outcome expected) {
  testing::writeBytes(folder.path() / "GC40.INI", bytes);
  Settings settings;
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

TEST(SettingsFile, EveryFieldIsReadFromItsLineAndWrittenBackTheSame) {
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
      std::tuple(0, 2, 1, 2, 1, 2, 100, 1, 3));
  EXPECT_EQ(s.traceThickness, (std::array{1, 3, 4, 2, 4, 3, 2, 1}));
  EXPECT_EQ(s.traceColour[5], 0x80000001u);
  EXPECT_EQ(std::tuple(s.conductivityScaleMin, s.inphaseScaleMax, s.stationIncrementWheel,
                       s.readingInterval, s.lineIncrement, s.stationIncrement),
            std::tuple(-120.25f, 0.0625f, 0.001f, 0.05f, -2.5f, -12.5f));
  EXPECT_EQ(s.surveyLine, u"L\u00e9gende-\u20ac\u00d6st_12345678901");
  EXPECT_EQ(s.currentStation, -1234567.125);
  EXPECT_EQ(s.cyclesPerReading, 1);
  EXPECT_FLOAT_EQ(s.inphasePixelsPerUnit, 180.0f / 3.1875f);
  EXPECT_EQ(loadOrSaveSettings(s, folder.path(), true).outcome, Outcome::kSaved);
  EXPECT_EQ(readBytes(folder.path() / "GC40.INI"), file);
}

TEST(SettingsFile, OldVersionsAreReplacedAndOddLinesReadAsTheHandheldDid) {
  TempFolder folder;
  loadBytes(folder, fileWithLine(1, "CEVer2.10") + "junk", Outcome::kReplaced);
  EXPECT_EQ(readBytes(folder.path() / "GC40.INI"), defaultFileBytes());
  // A bare line feed drops the line's last character: the tag no longer matches...
  loadBytes(folder, fileWithLine(1, "CEVer2.11", "\n"), Outcome::kReplaced);
  // ...and "12" reads as 1.
  EXPECT_EQ(loadBytes(folder, fileWithLine(45, "12", "\n"), Outcome::kLoaded).samplesPerReading, 1);
  EXPECT_EQ(loadBytes(folder, fileWithLine(50, "", "\n"), Outcome::kLoaded).surveyLine, u"");

  // A file cut inside line 47 keeps the fields from there on.
  const std::string full = fileWithLine(33, "250.000000");
  const std::string cut = full.substr(0, full.find("0.200000\r\n2.000000") + 3);
  testing::writeBytes(folder.path() / "GC40.INI", cut);
  Settings settings;
  settings.stationIncrementWheel = 9.0f;
  settings.startStation = 5.0;
  ASSERT_EQ(loadOrSaveSettings(settings, folder.path(), false).outcome, Outcome::kLoaded);
  EXPECT_FLOAT_EQ(settings.conductivityPixelsPerUnit, 180.0f / 250.0f);
  EXPECT_EQ(settings.stationIncrementWheel, 9.0f);
  EXPECT_EQ(settings.currentStation, 5.0);
  EXPECT_EQ(readBytes(folder.path() / "GC40.INI"), cut);  // loading never rewrites it
}

TEST(SettingsFile, WheelModeSavesOnlyTheSignOfTheStep) {
  Settings wheel;
  wheel.surveyMode = 1;
  wheel.stationIncrement = 0.0f;
  EXPECT_EQ(settingsFileLines(wheel).back(), "1.000000\r\n");
  wheel.stationIncrement = -0.5f;
  EXPECT_EQ(settingsFileLines(wheel).back(), "-1.000000\r\n");
  TempFolder folder;
  ASSERT_EQ(loadOrSaveSettings(wheel, folder.path(), true).outcome, Outcome::kSaved);
  const Settings loaded =
      loadBytes(folder, readBytes(folder.path() / "GC40.INI"), Outcome::kLoaded);
  EXPECT_EQ(loaded.stationIncrement, 0.2f);  // the Wheel step, not the sign
  wheel.surveyMode = 2;
  EXPECT_EQ(settingsFileLines(wheel).back(), "-0.500000\r\n");
}

TEST(SettingsFile, CommaDecimalLocaleChangesNothing) {
  const std::string before = std::setlocale(LC_ALL, nullptr);
  ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr) << "test locale missing (LOCPATH)";
  char printed[32];
  std::snprintf(printed, sizeof printed, "%f", 500.0);
  TempFolder folder;
  Settings created;
  const Outcome outcome = loadOrSaveSettings(created, folder.path(), false).outcome;
  Settings loaded;
  loaded.readingInterval = 3.0f;
  loadOrSaveSettings(loaded, folder.path(), false);
  std::setlocale(LC_ALL, before.c_str());

  EXPECT_STREQ(printed, "500,000000");  // the locale really writes commas
  EXPECT_EQ(outcome, Outcome::kCreated);
  EXPECT_EQ(readBytes(folder.path() / "GC40.INI"), defaultFileBytes());
  EXPECT_EQ(loaded.readingInterval, 0.2f);
}

}  // namespace
}  // namespace gc40
