// The data file on disk: names, exclusive creation, the pause commit, and a
// file written through the record writers read back into the same values.

#include "datafile/data_file.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "datafile/data_file_naming.h"
#include "datafile/data_file_reader.h"
#include "datafile/record_writers.h"
#include "support/temp_folder.h"

namespace gc40 {
namespace {

using testing::readBytes;
using testing::TempFolder;
using testing::writeBytes;

constexpr LocalTime kNow{2026, 3, 15, 14, 5, 9, 123};

TEST(DataFileNaming, ProposalTakesTheFirstFreeLetterOfTheHour) {
  TempFolder folder;
  for (const char* taken : {"031514A.R40", "031514B.R40", "031514C.R40", "031513D.R40"})
    writeBytes(folder.path() / taken, "x");
  EXPECT_EQ(proposeDataFileName(folder.path(), kNow), "031514D");
  // A dangling link would make creation fail just as a file would.
  std::filesystem::create_symlink(folder.path() / "gone", folder.path() / "031514D.R40");
  EXPECT_EQ(proposeDataFileName(folder.path(), kNow), "031514E");
  for (char letter = 'E'; letter <= 'Z'; ++letter)
    writeBytes(folder.path() / (std::string("031514") + letter + ".R40"), "x");
  EXPECT_EQ(proposeDataFileName(folder.path(), kNow), "");
  EXPECT_EQ(proposeDataFileName(folder.path(), {2026, 12, 1, 0, 0, 0, 0}), "120100A");
}

TEST(DataFileNaming, BaseNameRunsFromTheLastSlashToTheFirstDot) {
  for (const auto& [chosen, base] : {std::pair{"/data/031514A.R40", "031514A"},
                                     {"/data/NOEXT", "NOEXT"},
                                     {"/survey.2026/line7", "line7"},
                                     {"/survey.2026/a.b.R40", "a"},
                                     {"plain.R40", "plain"},
                                     {"/data/caf\xc3\xa9.R40", "caf\xe9"},
                                     {"/data/\xe6\xb8\xac\xff.R40", "??"}}) {
    EXPECT_EQ(dataFileBaseName(chosen), base) << chosen;
  }
}

TEST(DataFile, NeverOverwritesAndAppendsAfterThePause) {
  TempFolder folder;
  const auto path = folder.path() / "031514A.R40";
  writeBytes(path, "old");
  std::string error;
  EXPECT_FALSE(DataFile::createNew(path, &error));
  EXPECT_FALSE(error.empty());
  EXPECT_EQ(readBytes(path), "old");

  std::filesystem::remove(path);
  auto file = DataFile::createNew(path);
  ASSERT_TRUE(file);
  EXPECT_EQ(file->baseName(), "031514A");
  const DataRecord first = formatTimeMark(kNow, 1);
  const DataRecord second = formatTimeMark(kNow, 2);
  EXPECT_TRUE(file->writeRecord(first) && file->reopenAtEnd() && file->writeRecord(second));
  EXPECT_EQ(readBytes(path),
            std::string(first.begin(), first.end()) + std::string(second.begin(), second.end()));
  std::filesystem::remove(path);  // gone during the pause: made again
  EXPECT_TRUE(file->reopenAtEnd() && file->writeRecord(second));
  EXPECT_EQ(readBytes(path), std::string(second.begin(), second.end()));
}

TEST(DataFile, EveryRecordKindReadsBackAsWritten) {
  const std::vector<std::pair<std::string, bool>> sentences = {
      {"$GPTXT,abc", true},
      {"$GPZDA,201530.00,04,07", false},
      {"$GPGSA,A,3,04,05,,09,12,,,24,,,,,2.5,1.3,2.1", true},
      {"$GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,*47", true},
      {"$GPGGA,123519.00,4807.0380,N,01131.0000,E,1,08,0.9,545.4,M,46.9,M,,*47", false},
      {"ABC", false}};
  Settings settings;
  settings.gpsEnabled = 1, settings.surveyMode = 1, settings.stationIncrement = 2.5f;
  settings.surveyLine = u"North 7", settings.startStation = 100.0, settings.lineDirection = 2;
  settings.currentStation = 123456789.5;
  TempFolder folder;
  auto file = DataFile::createNew(folder.path() / "031514A.R40");
  ASSERT_TRUE(file);
  bool written = writeNewFileHeader(*file, settings, kNow, 1000);
  written = writeReadingRecord(*file, "T1123.4-05.6", 2000) && written;
  written = writeStationRecord(*file, settings, kNow) && written;
  written = writeTextRecord(*file, u"rock outcrop!", 'C', 3000) && written;
  written = writeTextRecord(*file, u"$PAUSED", 'X', 4294967295u) && file->reopenAtEnd() && written;
  for (std::uint32_t tick = 5000; const auto& [sentence, valid] : sentences)
    written =
        writeGpsRecords(*file, sentence, tick++, valid ? '@' : '?', valid ? '#' : '"') && written;
  EXPECT_TRUE(written);

  std::vector<RecordValue> expected = {
      IdentificationRecord{"GC40STD W211GPS", 0, true, 0, 0, 1, 0, '2'},
      FileNameRecord{"031514A", "2.500"},
      LineRecord{"North 7"},
      LineStartRecord{100.0},
      LineAttributesRecord{'N', 2.5},
      DateTimeRecord{2026, 3, 15, {14, 5, 9, 0}},
      TimeMarkRecord{{14, 5, 9, 123}, 1000},
      ReadingRecord{"T1123.4-05.6", 2000},
      StationRecord{123456789.5, {14, 5, 9, 120}},
      TextRecord{'C', "rock outcro", 3000},
      TextRecord{'X', "$PAUSED", 4294967295u}};
  for (std::uint32_t tick = 5000; const auto& [sentence, valid] : sentences)
    expected.push_back(GpsSentenceRecord{sentence, valid, tick++});

  const std::string bytes = readBytes(folder.path() / "031514A.R40");
  const DataFileContents contents = readDataFile(bytes);
  EXPECT_TRUE(contents.problems.empty());
  std::vector<RecordValue> values;
  std::size_t nextOffset = 0;
  for (const FileRecord& record : contents.records) {
    EXPECT_EQ(record.offset, nextOffset);
    nextOffset += record.length;
    values.push_back(record.value);
  }
  EXPECT_EQ(nextOffset, bytes.size());
  ASSERT_EQ(values.size(), expected.size());
  for (std::size_t i = 0; i < values.size(); ++i) EXPECT_TRUE(values[i] == expected[i]) << i;
}

}  // namespace
}  // namespace gc40
