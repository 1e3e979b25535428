// Each record against bytes laid out by hand; wide values push the tail out.

#include "datafile/data_records.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdio>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace gc40 {
namespace {

std::string text(std::span<const DataRecord> records) {
  std::string all;
  for (const DataRecord& record : records) all.append(record.begin(), record.end());
  return all;
}
std::string text(const DataRecord& record) { return text({&record, 1}); }

constexpr LocalTime kNow{2026, 3, 15, 14, 5, 9, 123};

// Pairs of (formatted, expected).
std::vector<std::pair<std::string, std::string>> cases() {
  Settings all;  // every choice away from its default
  all.instrumentVariant = 1, all.gpsEnabled = 1, all.distanceUnits = 1;
  all.dipoleMode = DipoleMode::kBoth, all.surveyMode = SurveyMode::kManual;
  all.component = Component::kInphase, all.portraitScreen = 1, all.samplesPerReading = 250;
  Settings damaged;  // indexes outside their lists act as the defaults
  damaged.instrumentVariant = 7, damaged.gpsEnabled = -1, damaged.distanceUnits = 9;
  damaged.dipoleMode = modeFromIndex<DipoleMode>(3);
  damaged.surveyMode = modeFromIndex<SurveyMode>(-5);
  damaged.component = modeFromIndex<Component>(2);
  damaged.useStorageFolder = 0, damaged.lineDirection = 9;
  damaged.stationIncrement = NAN, damaged.startStation = -INFINITY;
  Settings line;
  line.surveyLine = u"LINE-123456", line.startStation = 123456789.5, line.lineDirection = 3;
  line.surveyMode = SurveyMode::kWheel, line.stationIncrement = -0.25f;
  Settings wide;
  wide.surveyLine = u"\u00e9\u03a9ab", wide.readingInterval = 1e20f;
  constexpr std::uint32_t kLateTick = 3000000000u;  // written as -1294967296, cut to 10
  return {
      {text(formatIdentificationRecord(Settings{})), "GC40STD W211GRD0000   2\n"},
      {text(formatIdentificationRecord(all)), "GC40SX  W211GPS1221   3\n"},
      {text(formatIdentificationRecord(damaged)), "GC40STD W211GRD0000    \n"},
      {text(formatFileNameRecord(Settings{}, "031514A")), "H 031514A    0.200     \n"},
      {text(formatFileNameRecord(line, "LONGBASENAME")), "H LONGBASEN -0.250     \n"},
      {text(formatFileNameRecord(all, "031514A")), "H 031514A      100     \n"},
      {text(formatFileNameRecord(wide, "031514A")), "H 031514A  1000000020  \n"},
      {text(formatLineBlock(line, kNow)),
       "LLINE-123              \n"
       "B123456789.50          \n"
       "AE           -0.250    \n"
       "Z15032026 14:05:09     \n"},
      {text(formatLineBlock(damaged, kNow)),
       "L0                     \n"
       "B       -inf           \n"
       "AS              nan    \n"
       "Z15032026 14:05:09     \n"},
      {text(formatLineBlock(wide, kNow)[0]), "L\xe9?ab                  \n"},
      {text(formatStationRecord(123456789.5, kNow)), "S123456789.50 14050912 \n"},
      {text(formatStationRecord(-3.0, {2026, 1, 2, 3, 4, 5, 9})), "S      -3.00 03040500  \n"},
      {text(formatTimeMark(kNow, 123456)), "*14:05:09.123    123456\n"},
      {text(formatTimeMark(kNow, kLateTick)), "*14:05:09.123-129496729\n"},
      {text(formatReadingRecord("T1123.4-05.6\r", 987654)), "T1123.4-05.6     987654\n"},
      {text(formatReadingRecord(std::string_view("T1123\0.4-05.6", 12), 1)),
       "T1123                 1\n"},
      {text(formatTextRecord(u"fifteen chars!!", 'C', 42)), "Cfifteen cha         42\n"},
      {text(formatTextRecord(u"nineteen characters", 'C', kLateTick)), "Cnineteen ch -129496729\n"},
      {text(formatGpsRecords("$GPTXT,abc", 5, '@', '#')),
       "@$GPTXT,abc            \n"
       "#$GPTXT,abc            \n"
       "!                     5\n"},
      {text(formatGpsRecords("$GPZDA,201530.00,04,07", 4294967295u, '?', '"')),
       "?$GPZDA,201530.00,04,07\n"
       "\"                      \n"
       "!                    -1\n"},
      {text(formatGpsRecords("$GPGSA,A,3,04,05,,09,12,,,24,,,,,2.5,1.3,2.1", 1000, '@', '#')),
       "@$GPGSA,A,3,04,05,,09,1\n"
       "#2,,,24,,,,,2.5,1.3,2.1\n"
       "#                      \n"
       "!                  1000\n"},
      {text(formatGpsRecords(
           "$GPGGA,123519.00,4807.0380,N,01131.0000,E,1,08,0.9,545.4,M,46.9,M,,*47", kLateTick, '@',
           '#')),
       "@$GPGGA,123519.00,4807.\n"
       "#0380,N,01131.0000,E,1,\n"
       "#08,0.9,545.4,M,46.9,M,\n"
       "#,*47                  \n"
       "!            -129496729\n"},
  };
}

TEST(DataRecords, EveryKindStandsAtItsPositionsInAnyLocale) {
  for (const auto& [formatted, expected] : cases()) EXPECT_EQ(formatted, expected);
  const std::string before = std::setlocale(LC_ALL, nullptr);
  ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr) << "test locale missing (LOCPATH)";
  char printed[32];
  std::snprintf(printed, sizeof printed, "%.2f", 12.5);
  EXPECT_STREQ(printed, "12,50");  // the locale really writes commas
  for (const auto& [formatted, expected] : cases()) EXPECT_EQ(formatted, expected) << "de_DE";
  std::setlocale(LC_ALL, before.c_str());
}

}  // namespace
}  // namespace gc40
