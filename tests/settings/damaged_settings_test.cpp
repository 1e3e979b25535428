// Settings files that were damaged or edited by hand: loading never crashes,
// and every value the file can hold is used safely afterwards.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "settings/setting_choices.h"
#include "settings/settings_file.h"
#include "support/settings_listing.h"
#include "support/temp_folder.h"

namespace gc40 {
namespace {

using namespace std::string_view_literals;
using Outcome = SettingsFileResult::Outcome;
using testing::defaultFileBytes;
using testing::fileWithLines;
using testing::readBytes;
using testing::TempFolder;
using testing::writeBytes;

Outcome loadBytes(const TempFolder& folder, std::string_view bytes, Settings& settings) {
  writeBytes(folder.path() / "GC40.INI", bytes);
  return loadOrSaveSettings(settings, folder.path(), false).outcome;
}

// What every use of the record relies on, whatever the file held.
void expectSafeToUse(const Settings& settings) {
  for (const IndexSetting* setting : kIndexSettings) {
    const std::int32_t index = effectiveIndex(settings, *setting);
    ASSERT_GE(index, 0);
    ASSERT_LT(static_cast<std::size_t>(index), setting->items.size());
    EXPECT_FALSE(effectiveText(settings, *setting).empty());
  }
  EXPECT_GE(settings.cyclesPerReading, 1);
  EXPECT_GE(settings.readingsPerSecondWhole, 1);
  EXPECT_LE(settings.readingsPerSecondWhole, 11);
  EXPECT_LE(settings.surveyLine.size(), kSurveyLineMaxLength);
  for (const std::int32_t thickness : settings.traceThickness) {
    EXPECT_GE(effectiveTraceThickness(thickness), 1);
    EXPECT_LE(effectiveTraceThickness(thickness), 4);
  }
  EXPECT_GE(effectiveSamplesPerReading(settings.samplesPerReading), 1);
}

TEST(DamagedSettings, RandomBytesAndAnEndlessFirstLineAreReplacedByDefaults) {
  std::mt19937 random(7);
  std::string noise(4096, '\0');
  for (char& byte : noise)
    byte = static_cast<char>(random());
  const std::string endless(1024 * 1024, 'C');

  for (const std::string* bytes : {static_cast<const std::string*>(&noise), &endless}) {
    TempFolder folder;
    Settings settings;
    EXPECT_EQ(loadBytes(folder, *bytes, settings), Outcome::kReplaced);
    EXPECT_EQ(writeSettings(settings), writeSettings(Settings{}));
    EXPECT_EQ(readBytes(folder.path() / "GC40.INI"), defaultFileBytes());
  }
}

TEST(DamagedSettings, IndexesOutOfRangeAreKeptButActAsTheirDefaults) {
  const std::string file =
      fileWithLines({{2, "5"},   {3, "-2"},  {4, "40"}, {5, "3"},         {6, "9"},   {15, "0"},
                     {16, "40"}, {17, "-7"}, {31, "2"}, {36, "-1"},       {37, "12"}, {38, "-3"},
                     {39, "2"},  {40, "3"},  {41, "2"}, {42, "7"},        {43, "2"},  {44, "3"},
                     {45, "0"},  {52, "2"},  {53, "4"}, {55, "-3.500000"}});
  TempFolder folder;
  Settings settings;
  ASSERT_EQ(loadBytes(folder, file, settings), Outcome::kLoaded);

  // The record holds what the file said...
  EXPECT_EQ(settings.pauseKey, 9);
  EXPECT_EQ(settings.gpsBaudIndex, -3);
  EXPECT_EQ(settings.traceThickness[0], 0);
  EXPECT_EQ(settings.traceThickness[1], 40);
  EXPECT_EQ(settings.surveyMode, 7);
  EXPECT_EQ(settings.surveyModeSetting, 7);
  // ...and with no per-mode step for mode 7, the last line's step stands.
  EXPECT_EQ(settings.stationIncrement, -3.5f);

  // Every use acts on a safe value.
  expectSafeToUse(settings);
  EXPECT_EQ(effectiveText(settings, kPauseKeySetting), "any key");
  EXPECT_EQ(effectiveText(settings, kSurveyModeSetting), "Auto");
  EXPECT_EQ(effectiveText(settings, kLineDirectionSetting), "South");
  EXPECT_EQ(effectiveText(settings, kAudioSetting), "Yes");
  EXPECT_EQ(effectiveIndex(settings, kGpsEnabledSetting), 0);
  EXPECT_EQ(validIndex(settings, kGpsBaudSetting), std::nullopt);  // the port keeps its rate
  EXPECT_EQ(validIndex(settings, kGpsStopBitsSetting), std::nullopt);
  EXPECT_EQ(effectiveTraceThickness(settings.traceThickness[0]), 1);
  EXPECT_EQ(effectiveTraceThickness(settings.traceThickness[1]), 4);
  EXPECT_EQ(effectiveSamplesPerReading(settings.samplesPerReading), 1);
  EXPECT_EQ(comPortName(settings.instrumentPort), "COM41:");
  EXPECT_EQ(comPortName(settings.gpsPort), "COM13:");  // names no port, so opening it fails
  EXPECT_EQ(comPortName(std::numeric_limits<std::int32_t>::max()), "COM2147483648:");

  // Saving writes the numbers back as they were read.
  EXPECT_EQ(settingsFileLines(settings), [&] {
    std::vector<std::string> lines;
    std::string_view rest = file;
    while (const auto line = readSettingsLine(rest))
      lines.push_back(std::string(*line) + "\r\n");
    return lines;
  }());
}

TEST(DamagedSettings, NonFiniteNumbersNeverReachAnIntegerUnchecked) {
  const std::string file = fileWithLines({{32, "nan"},
                                          {33, "nan"},
                                          {34, "7"},
                                          {35, "7"},
                                          {46, "inf"},
                                          {49, "nan"},
                                          {54, "-1e999"},
                                          {45, "99999999999"}});
  TempFolder folder;
  Settings settings;
  ASSERT_EQ(loadBytes(folder, file, settings), Outcome::kLoaded);
  EXPECT_TRUE(std::isnan(settings.readingInterval));
  EXPECT_EQ(settings.cyclesPerReading, 1);
  EXPECT_EQ(settings.readingsPerSecondWhole, 1);
  EXPECT_TRUE(std::isnan(settings.conductivityPixelsPerUnit));
  EXPECT_TRUE(std::isinf(settings.inphasePixelsPerUnit));  // equal scale limits
  EXPECT_EQ(settings.stationIncrement, std::numeric_limits<float>::infinity());
  EXPECT_EQ(settings.currentStation, -std::numeric_limits<double>::infinity());
  EXPECT_EQ(settings.samplesPerReading, std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(effectiveSamplesPerReading(settings.samplesPerReading), 100);
  expectSafeToUse(settings);

  // Huge and tiny intervals are as harmless as NaN.
  for (const float interval : {std::numeric_limits<float>::infinity(), -0.2f, 0.0f, 1e30f, 1e-30f,
                               -std::numeric_limits<float>::infinity()}) {
    settings.readingInterval = interval;
    computeSamplesPerReading(settings);
    expectSafeToUse(settings);
  }

  // What such a record writes, it reads back the same.
  ASSERT_EQ(loadOrSaveSettings(settings, folder.path(), true).outcome, Outcome::kSaved);
  Settings reloaded;
  ASSERT_EQ(loadOrSaveSettings(reloaded, folder.path(), false).outcome, Outcome::kLoaded);
  EXPECT_EQ(writeSettings(reloaded), writeSettings(settings));
}

TEST(DamagedSettings, RandomLinesAfterAValidTagLoadSafely) {
  std::mt19937 random(2026);
  const std::string_view alphabet = "0123456789-+.eEnaifNAIF \t\r\n\0\xff,xX"sv;
  for (int round = 0; round < 300; ++round) {
    std::string bytes = "CEVer2.11\r\n";
    const int length = static_cast<int>(random() % 2000);
    for (int i = 0; i < length; ++i)
      bytes += alphabet[random() % alphabet.size()];
    Settings settings;
    std::string_view rest = std::string_view(bytes).substr(11);
    readSettings(rest, settings);
    expectSafeToUse(settings);
    if (::testing::Test::HasFailure()) {
      ADD_FAILURE() << "round " << round;
      return;
    }
  }
}

}  // namespace
}  // namespace gc40
