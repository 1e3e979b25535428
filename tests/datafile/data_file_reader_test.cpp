// Damaged files: each fault is reported where it lies, and the good records
// around it are still read.

#include "datafile/data_file_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "datafile/data_records.h"

namespace gc40 {
namespace {

// Records at 0, 24, .. 192; a GPS sentence of four records at 216; then 312, 336, 360.
std::string goodFile() {
  const LocalTime now{2026, 3, 15, 14, 5, 9, 123};
  Settings settings;
  std::vector<DataRecord> records = {formatIdentificationRecord(settings),
                                     formatFileNameRecord(settings, "031514A")};
  for (const DataRecord& record : formatLineBlock(settings, now)) records.push_back(record);
  records.push_back(formatTimeMark(now, 10));
  records.push_back(formatReadingRecord("T1123.4-05.6", 11));
  records.push_back(formatReadingRecord("T1123.5-05.6", 12));
  for (const DataRecord& record :
       formatGpsRecords("$GPGSA,A,3,04,05,,09,12,,,24,,,,,2.5,1.3,2.1", 13, '@', '#'))
    records.push_back(record);
  records.push_back(formatReadingRecord("T1123.6-05.6", 14));
  records.push_back(formatStationRecord(2.0, now));
  records.push_back(formatTextRecord(u"end", 'C', 15));
  std::string bytes;
  for (const DataRecord& record : records) bytes.append(record.begin(), record.end());
  return bytes;
}

// Every byte belongs to exactly one record or problem, in file order.
void expectEveryByteAccountedFor(const DataFileContents& contents, std::size_t size) {
  std::vector<std::pair<std::size_t, std::size_t>> spans;
  for (const FileRecord& record : contents.records)
    spans.emplace_back(record.offset, record.length);
  for (const FileProblem& problem : contents.problems) {
    spans.emplace_back(problem.offset, problem.length);
    EXPECT_FALSE(problem.what.empty());
  }
  std::sort(spans.begin(), spans.end());
  std::size_t next = 0;
  for (const auto& [offset, length] : spans) {
    ASSERT_EQ(offset, next);
    next += length;
  }
  EXPECT_EQ(next, size);
}

// With every byte accounted for, the problems and the number of records say
// that the records around each fault were read.
TEST(DataFileReader, FaultsAreReportedWhereTheyLieAndTheRestIsRead) {
  using Spans = std::vector<std::pair<std::size_t, std::size_t>>;
  const std::string good = goodFile();
  const auto changed = [&good](std::size_t at, char byte) {
    std::string bytes = good;
    bytes[at] = byte;
    return bytes;
  };
  struct Case {
    const char* fault;
    std::string bytes;
    Spans problems;
    std::size_t records;
  };
  const Case cases[] = {
      {"none", good, {}, 13},
      {"truncated tail", good.substr(0, 370), {{360, 10}}, 12},
      {"garbage", std::string(good).insert(192, "junk\x01junk"), {{192, 9}}, 13},
      {"garbage with a line feed", std::string(good).insert(192, "zz\nzz"), {{192, 5}}, 13},
      {"23-byte record", std::string(good).erase(170, 1), {{168, 23}}, 12},
      {"GPS without its \"!\"", std::string(good).erase(288, 24), {{216, 72}}, 12},
      {"GPS without its start",
       std::string(good).erase(216, 24),
       {{216, 24}, {240, 24}, {264, 24}},
       12},
      {"unknown letter", changed(312, 'Q'), {{312, 24}}, 12},
      {"tick not a number", changed(214, 'x'), {{192, 24}}, 12},
      {"station not a number", changed(341, '+'), {{336, 24}}, 12},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.fault);
    const DataFileContents contents = readDataFile(c.bytes);
    Spans problems;
    for (const FileProblem& problem : contents.problems)
      problems.emplace_back(problem.offset, problem.length);
    EXPECT_EQ(problems, c.problems);
    EXPECT_EQ(contents.records.size(), c.records);
    expectEveryByteAccountedFor(contents, c.bytes.size());
  }
}

TEST(DataFileReader, RandomDamageNeverLosesTrackOfAByte) {
  const std::string good = goodFile();
  std::mt19937 random(7);
  for (int round = 0; round < 2000; ++round) {
    std::string bytes = good;
    for (int change = 0; change < 1 + round % 4; ++change) {
      const std::size_t at = random() % bytes.size();
      const char byte = "\n TG@#!\"?x0-."[random() % 13];
      const unsigned kind = random() % 3;
      if (kind == 0) bytes[at] = byte;
      if (kind == 1) bytes.insert(at, 1, byte);
      if (kind == 2) bytes.erase(at, 1 + random() % 30);
    }
    expectEveryByteAccountedFor(readDataFile(bytes), bytes.size());
  }
}

}  // namespace
}  // namespace gc40
