#include "datafile/data_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <random>
#include <span>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "datafile/data_file_naming.h"
#include "datafile/data_file_reader.h"
#include "datafile/data_records.h"
#include "datafile/record_writers.h"
#include "harness/child_process.h"
#include "harness/temp_folder.h"
#include "support/r40_run.h"

namespace gc40 {
namespace {

using testing::readBytes;
using testing::TempFolder;
using testing::writeBytes;

constexpr LocalTime kNow{2026, 3, 15, 14, 5, 9, 123};

std::string text(std::span<const DataRecord> records) {
  std::string all;
  for (const DataRecord& record : records) all.append(record.begin(), record.end());
  return all;
}
std::string text(const DataRecord& record) { return text({&record, 1}); }

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
  Settings wide;  // values too wide for their fields push the tail out
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

TEST(DataFileNaming, ProposalTakesTheFirstFreeLetterOfTheHour) {
  TempFolder folder;
  for (const char* taken : {"031514A.R40", "031514B.R40", "031514C.R40", "031513D.R40"})
    writeBytes(folder.path() / taken, "x");
  EXPECT_EQ(proposeDataFileName(folder.path(), kNow), "031514D");
  for (char letter = 'D'; letter <= 'Z'; ++letter)
    writeBytes(folder.path() / (std::string("031514") + letter + ".R40"), "x");
  EXPECT_EQ(proposeDataFileName(folder.path(), kNow), "");
}

TEST(DataFileNaming, BaseNameRunsFromTheLastSlashToTheFirstDot) {
  for (const auto& [chosen, base] : {std::pair{"/survey.2026/NOEXT", "NOEXT"},
                                     {"/survey.2026/a.b.R40", "a"},
                                     {"caf\xc3\xa9.R40", "caf\xe9"},
                                     {"/data/\xe6\xb8\xac\xff.R40", "??"}})
    EXPECT_EQ(dataFileBaseName(chosen), base) << chosen;
}

// (Appending after the pause is part of every file written below.)
TEST(DataFile, NeverOverwritesAFileOfTheSameName) {
  TempFolder folder;
  const auto path = folder.path() / "031514A.R40";
  writeBytes(path, "old");
  std::string error;
  EXPECT_FALSE(DataFile::createNew(path, &error));
  EXPECT_EQ(error, "File exists");
  EXPECT_EQ(readBytes(path), "old");
}

const std::vector<std::pair<std::string, bool>> kSentences = {
    {"$GPTXT,01,01,02,ABCDE", true},
    {"$GPZDA,201530.00,04,07", false},
    {"$GPGSA,A,3,04,05,,09,12,,,24,,,,,2.5,1.3,2.1", true},
    {"$GPGGA,123519.00,4807.0380,N,01131.0000,E,1,08,0.9,545.4,M,46.9,M,,*47", false},
    {"$GPRMC,123519.000,A,4807.038000,N,01131.000000,E,000.022,084.4,230394,003.1,W,A*1D", true}};

// Every kind of record: 24 bytes each from 0 to 192, the GPS sentences of 21,
// 22, 44, 70 and 82 characters at 216, 288, 360, 456 and 576, then "X" at 696
// and, after the pause, "C" at 720.
std::string writtenFile() {
  Settings settings;
  settings.gpsEnabled = 1, settings.surveyMode = SurveyMode::kWheel,
  settings.stationIncrement = 2.5f;
  settings.surveyLine = u"North 7", settings.startStation = 100.0, settings.lineDirection = 2;
  settings.currentStation = 123456789.5;
  TempFolder folder;
  auto file = DataFile::createNew(folder.path() / "031514A.R40").value();
  EXPECT_TRUE(writeNewFileHeader(file, settings, kNow, 1000) &&
              writeReadingRecord(file, "T1123.4-05.6", 2000) &&
              writeStationRecord(file, settings, kNow));
  for (std::uint32_t tick = 5000; const auto& [sentence, valid] : kSentences)
    EXPECT_TRUE(file.writeRecords(
        formatGpsRecords(sentence, tick++, valid ? '@' : '?', valid ? '#' : '"')));
  EXPECT_TRUE(writeTextRecord(file, u"$PAUSED", 'X', 4294967295u) && file.reopenAtEnd() &&
              writeTextRecord(file, u"rock outcrop!", 'C', 3000) &&
              writeReadingRecord(file, "21123.4-05.6", 3001));  // second at its station
  return readBytes(folder.path() / "031514A.R40");
}

TEST(DataFileReader, EveryRecordKindReadsBackAsWritten) {
  std::vector<RecordValue> expected = {
      IdentificationRecord{"GC40STD W211GPS", 0, true, 0, 0, 1, 0, '2'},
      FileNameRecord{"031514A", "2.500"},
      LineRecord{"North 7"},
      LineStartRecord{100.0},
      LineAttributesRecord{'N', 2.5},
      DateTimeRecord{2026, 3, 15, {14, 5, 9, 0}},
      TimeMarkRecord{{14, 5, 9, 123}, 1000},
      ReadingRecord{"T1123.4-05.6", 2000},
      StationRecord{123456789.5, {14, 5, 9, 120}}};
  for (std::uint32_t tick = 5000; const auto& [sentence, valid] : kSentences)
    expected.push_back(GpsSentenceRecord{sentence, valid, tick++});
  expected.push_back(TextRecord{'X', "$PAUSED", 4294967295u});
  expected.push_back(TextRecord{'C', "rock outcro", 3000});
  expected.push_back(ReadingRecord{"21123.4-05.6", 3001});

  const DataFileContents contents = readDataFile(writtenFile());
  EXPECT_TRUE(contents.problems.empty());
  ASSERT_EQ(contents.records.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i)
    EXPECT_TRUE(contents.records[i].value == expected[i]) << i;
}

using Spans = std::vector<std::pair<std::size_t, std::size_t>>;

// The problems' spans, once every byte is found in exactly one record or problem.
Spans problemSpans(const DataFileContents& contents, std::size_t size) {
  Spans spans, problems;
  for (const FileProblem& p : contents.problems) problems.emplace_back(p.offset, p.length);
  for (const FileRecord& r : contents.records) spans.emplace_back(r.offset, r.length);
  spans.insert(spans.end(), problems.begin(), problems.end());
  std::sort(spans.begin(), spans.end());
  std::size_t next = 0;
  for (const auto& [offset, length] : spans)
    EXPECT_EQ(offset, std::exchange(next, offset + length));
  EXPECT_EQ(next, size);
  return problems;
}

// Exact spans for each kind of fault, and random damage never loses a byte.
TEST(DataFileReader, FaultsAreReportedWhereTheyLieAndTheRestIsRead) {
  const std::string good = writtenFile();
  const std::tuple<const char*, std::string, Spans, std::size_t> cases[] = {
      {"garbage with a line feed", std::string(good).insert(192, "zz\nzz"), {{192, 5}}, 17},
      {"23-byte record", std::string(good).erase(170, 1), {{168, 23}}, 16},
      {"GPS without its \"!\"", std::string(good).erase(432, 24), {{360, 72}}, 16},
      {"GPS start lost", std::string(good).erase(360, 24), {{360, 24}, {384, 24}, {408, 24}}, 16},
      {"unknown letter", std::string(good).replace(168, 1, "Q"), {{168, 24}}, 16},
      {"tick not a number", std::string(good).replace(166, 1, "x"), {{144, 24}}, 16},
  };
  for (const auto& [fault, bytes, problems, records] : cases) {
    const DataFileContents contents = readDataFile(bytes);
    EXPECT_EQ(problemSpans(contents, bytes.size()), problems) << fault;
    EXPECT_EQ(contents.records.size(), records) << fault;
  }
  std::mt19937 random(7);
  for (int round = 0; round < 300 && !HasFailure(); ++round) {
    std::string bytes = good;  // each change replaces 0..29 bytes by one
    for (int change = 0; change <= round % 3; ++change)
      bytes.replace(random() % bytes.size(), random() % 30, 1, "\n TG@#!\"?x0-."[random() % 13]);
    problemSpans(readDataFile(bytes), bytes.size());
  }
}

// The r40 program as a user runs it: what it prints and how it exits. The
// capture listings are the GPS and instrument tests' .chk files.
TEST(R40, DumpsChecksListsCapturesAndExitsTwoOnAMissingFile) {
  TempFolder folder;
  const std::string path = folder.path() / "a.R40";
  const auto r40 = [&](const std::vector<std::string>& arguments) {
    const testing::R40Run run = testing::r40(folder, arguments);
    return std::pair(run.status, run.out + run.err);
  };
  const std::string bytes =
      text(std::vector{formatReadingRecord("T1123.4-05.6", 3000000000u),
                       formatStationRecord(12.5, {}), formatTextRecord(u"say \"hi\"", 'C', 9)}) +
      text(formatGpsRecords("$GPTXT,x", 4, '?', '"'));
  writeBytes(path, bytes);
  EXPECT_EQ(r40({"dump", path}),
            std::pair(0, std::string("0 T record=\"T1123.4-05.6\" tick=4165470567\n"
                                     "24 S station=12.50 time=00:00:00.00\n"
                                     "48 C text=\"say \\\"hi\\\"\" tick=9\n"
                                     "72 ? sentence=\"$GPTXT,x\" tick=4\n")));
  EXPECT_EQ(r40({"check", path}).first, 0);

  writeBytes(path, bytes.substr(0, 24) + "noise" + bytes.substr(24, 40));
  const auto [status, output] = r40({"check", path});
  EXPECT_EQ(status, 1);
  EXPECT_EQ(output.rfind("24 problem (5 bytes)", 0), 0u) << output;
  EXPECT_NE(output.find("\n53 problem (16 bytes): truncated record"), std::string::npos);

  const std::string capture = GC40_NMEA_CAPTURES "/iTrek.log";
  EXPECT_EQ(r40({"gps", capture}), std::pair(0, readBytes(capture + ".chk")));
  const std::string missing = folder.path() / "none.R40";
  const auto [missingStatus, said] = r40({"dump", missing});
  EXPECT_EQ(missingStatus, 2);
  EXPECT_NE(said.find(missing), std::string::npos) << said;
}

}  // namespace
}  // namespace gc40
