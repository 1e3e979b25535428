#include "settings/settings_file.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>

#include "support/settings_listing.h"
#include "support/temp_folder.h"

namespace gc40 {
namespace {

using Outcome = SettingsFileResult::Outcome;
using testing::defaultFileBytes;
using testing::fileWithLine;
using testing::kDefaultLines;
using testing::readBytes;
using testing::TempFolder;
using testing::writeBytes;

Settings loadFrom(const TempFolder& folder, std::string_view bytes,
                  Outcome expected = Outcome::kLoaded) {
  writeBytes(folder.path() / "GC40.INI", bytes);
  Settings settings;
  EXPECT_EQ(loadOrSaveSettings(settings, folder.path(), false).outcome, expected);
  return settings;
}

TEST(SettingsFile, MissingFileIsCreatedWithTheDefaultListing) {
  ASSERT_EQ(std::size(kDefaultLines), 55u);
  TempFolder folder;
  const auto settingsFolder = folder.path() / "FLDINI";
  Settings settings;
  EXPECT_EQ(loadOrSaveSettings(settings, settingsFolder, false).outcome, Outcome::kCreated);
  EXPECT_EQ(readBytes(settingsFolder / "GC40.INI"), defaultFileBytes());
  EXPECT_EQ(settings.cyclesPerReading, 2);
  EXPECT_EQ(settings.surveyLine, u"0");

  // Loading that file again changes nothing, in the record or in the file.
  Settings reloaded;
  reloaded.surveyLine = u"other";
  EXPECT_EQ(loadOrSaveSettings(reloaded, settingsFolder, false).outcome, Outcome::kLoaded);
  EXPECT_EQ(reloaded.surveyLine, u"0");
  EXPECT_EQ(writeSettings(reloaded), writeSettings(Settings{}));
}

TEST(SettingsFile, EverySavedFieldSurvivesSaveAndLoad) {
  Settings saved;
  saved.instrumentVariant = 1;
  saved.distanceUnits = 1;
  saved.instrumentPort = 11;
  saved.audioEnabled = 0;
  saved.pauseKey = 3;
  saved.traceVisible = {0, 1, 0, 1, 1, 0, 1, 0};
  saved.traceThickness = {1, 3, 4, 2, 4, 3, 2, 1};
  saved.traceColour = {0x123456, 0xFFFFFF, 0, 0x0000FF, 0xFEDCBA, 0x80000001, 7, 0xFFFFFFFF};
  saved.gridScale = 1;
  saved.conductivityScaleMin = -120.25f;
  saved.conductivityScaleMax = 8999.5f;
  saved.inphaseScaleMin = -3.125f;
  saved.inphaseScaleMax = 0.0625f;
  saved.gpsEnabled = 1;
  saved.gpsPort = 7;
  saved.gpsBaudIndex = 5;
  saved.gpsDataBitsIndex = 0;
  saved.gpsParity = 2;
  saved.gpsStopBitsIndex = 1;
  saved.surveyMode = 2;
  saved.component = 1;
  saved.dipoleMode = 2;
  saved.samplesPerReading = 100;
  saved.stationIncrementAuto = -0.75f;
  saved.stationIncrementWheel = 0.001f;
  saved.stationIncrementManual = -12.5f;
  saved.stationIncrement = saved.stationIncrementManual;
  saved.readingInterval = 0.05f;
  saved.surveyLine = u"L\u00e9gende-\u20ac\u00d6st_12345678901";  // 24 characters
  ASSERT_EQ(saved.surveyLine.size(), 24u);
  saved.lineIncrement = -2.5f;
  saved.lineSequence = 1;
  saved.lineDirection = 3;
  saved.startStation = -1234567.125;

  TempFolder folder;
  ASSERT_EQ(loadOrSaveSettings(saved, folder.path(), true).outcome, Outcome::kSaved);
  Settings loaded;
  ASSERT_EQ(loadOrSaveSettings(loaded, folder.path(), false).outcome, Outcome::kLoaded);

  EXPECT_EQ(writeSettings(loaded), writeSettings(saved));
  EXPECT_EQ(loaded.traceColour, saved.traceColour);
  EXPECT_EQ(loaded.surveyLine, saved.surveyLine);
  EXPECT_EQ(loaded.readingInterval, 0.05f);
  EXPECT_EQ(loaded.stationIncrementWheel, 0.001f);
  EXPECT_EQ(loaded.startStation, -1234567.125);
  // Derived on load.
  EXPECT_EQ(loaded.surveyModeSetting, 2);
  EXPECT_EQ(loaded.stationIncrement, -12.5f);
  EXPECT_EQ(loaded.currentStation, -1234567.125);
  EXPECT_EQ(loaded.cyclesPerReading, 1);
  EXPECT_EQ(loaded.readingsPerSecondWhole, 11);
  EXPECT_FLOAT_EQ(loaded.conductivityPixelsPerUnit, 180.0f / 9119.75f);
  EXPECT_FLOAT_EQ(loaded.inphasePixelsPerUnit, 180.0f / 3.1875f);

  const std::string bytes = readBytes(folder.path() / "GC40.INI");
  EXPECT_NE(bytes.find("\r\n-2147483647\r\n7\r\n-1\r\n"), std::string::npos);
  EXPECT_NE(bytes.find("\r\nL\xe9gende-\x80\xd6st_12345678901\r\n"), std::string::npos);
}

TEST(SettingsFile, AnotherVersionIsReplacedByTheCurrentValues) {
  TempFolder folder;
  std::string old = fileWithLine(1, "CEVer2.10");
  old.replace(old.find("500.000000"), 10, "123.000000");
  const Settings settings = loadFrom(folder, old, Outcome::kReplaced);
  EXPECT_EQ(settings.conductivityScaleMax, 500.0f);
  EXPECT_EQ(readBytes(folder.path() / "GC40.INI"), defaultFileBytes());

  // A tag ended by a bare line feed loses its last character and no longer matches.
  loadFrom(folder, fileWithLine(1, "CEVer2.11", "\n"), Outcome::kReplaced);
  EXPECT_EQ(readBytes(folder.path() / "GC40.INI"), defaultFileBytes());
}

TEST(SettingsFile, LineEndedByALineFeedAloneLosesItsLastCharacter) {
  TempFolder folder;
  EXPECT_EQ(loadFrom(folder, fileWithLine(45, "12", "\n")).samplesPerReading, 1);
  EXPECT_EQ(loadFrom(folder, fileWithLine(50, "A7", "\n")).surveyLine, u"A");
  EXPECT_EQ(loadFrom(folder, fileWithLine(45, "", "\n")).samplesPerReading, 0);
}

TEST(SettingsFile, TruncatedFileKeepsTheFieldsWhoseLinesAreMissing) {
  const std::string full = fileWithLine(33, "250.000000");
  // Cut in the middle of line 47 (the Wheel step "0.200000" becomes "0.2").
  const std::size_t cut = full.find("0.200000\r\n2.000000") + 3;
  TempFolder folder;
  Settings settings;
  settings.stationIncrementWheel = 9.0f;
  settings.startStation = 5.0;
  settings.currentStation = 77.0;
  writeBytes(folder.path() / "GC40.INI", full.substr(0, cut));
  ASSERT_EQ(loadOrSaveSettings(settings, folder.path(), false).outcome, Outcome::kLoaded);
  EXPECT_EQ(settings.conductivityScaleMax, 250.0f);
  EXPECT_FLOAT_EQ(settings.conductivityPixelsPerUnit, 180.0f / 250.0f);
  EXPECT_EQ(settings.stationIncrementAuto, 1.0f);
  EXPECT_EQ(settings.stationIncrementWheel, 9.0f);  // its line was cut off
  EXPECT_EQ(settings.startStation, 5.0);
  EXPECT_EQ(settings.currentStation, 5.0);  // the load still ends the way it always does
  // The file is left as it was: loading never rewrites a file of this version.
  EXPECT_EQ(readBytes(folder.path() / "GC40.INI"), full.substr(0, cut));
}

TEST(SettingsFile, WheelModeSavesOnlyTheSignOfTheStep) {
  Settings wheel;
  wheel.surveyMode = 1;
  wheel.stationIncrement = -0.5f;
  EXPECT_EQ(writeSettings(wheel).back(), "-1.000000\r\n");
  wheel.stationIncrement = 0.0f;
  EXPECT_EQ(writeSettings(wheel).back(), "1.000000\r\n");
  wheel.stationIncrement = -0.5f;

  TempFolder folder;
  ASSERT_EQ(loadOrSaveSettings(wheel, folder.path(), true).outcome, Outcome::kSaved);
  Settings loaded;
  ASSERT_EQ(loadOrSaveSettings(loaded, folder.path(), false).outcome, Outcome::kLoaded);
  EXPECT_EQ(loaded.surveyMode, 1);
  EXPECT_EQ(loaded.stationIncrement, loaded.stationIncrementWheel);
  EXPECT_EQ(loaded.stationIncrement, 0.2f);

  Settings manual;
  manual.surveyMode = 2;
  manual.stationIncrement = -0.5f;
  EXPECT_EQ(writeSettings(manual).back(), "-0.500000\r\n");
}

TEST(SettingsFile, CommaDecimalLocaleChangesNothing) {
  const std::string before = std::setlocale(LC_ALL, nullptr);
  ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr)
      << "the de_DE.UTF-8 test locale is missing (LOCPATH)";
  char printed[32];
  std::snprintf(printed, sizeof printed, "%f", 500.0);
  EXPECT_STREQ(printed, "500,000000");  // the locale really writes commas

  TempFolder folder;
  Settings settings;
  const Outcome created = loadOrSaveSettings(settings, folder.path(), false).outcome;
  Settings loaded;
  loaded.readingInterval = 3.0f;
  const Outcome reread = loadOrSaveSettings(loaded, folder.path(), false).outcome;
  std::setlocale(LC_ALL, before.c_str());

  EXPECT_EQ(created, Outcome::kCreated);
  EXPECT_EQ(reread, Outcome::kLoaded);
  EXPECT_EQ(readBytes(folder.path() / "GC40.INI"), defaultFileBytes());
  EXPECT_EQ(loaded.readingInterval, 0.2f);
}

}  // namespace
}  // namespace gc40
