// The r40 program as a user runs it: what it prints and how it exits.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "datafile/data_records.h"
#include "support/child_process.h"
#include "support/temp_folder.h"

namespace gc40 {
namespace {

using testing::readBytes;
using testing::TempFolder;
using testing::writeBytes;

struct R40Result {
  int status = -1;
  std::string output;  // stdout, then stderr
};

R40Result runR40(const std::vector<std::string>& arguments, const TempFolder& folder) {
  const auto errors = folder.path() / "stderr.txt";
  std::filesystem::remove(errors);
  testing::ChildProcess r40(R40_BINARY, arguments, errors);
  std::string output = r40.readAll();
  const int status = r40.waitForExit(std::chrono::seconds(10)).value_or(-1);
  return {status, output + readBytes(errors)};
}

TEST(R40, DumpsAndChecksNamingOffsets) {
  TempFolder folder;
  const auto path = (folder.path() / "a.R40").string();
  std::string bytes;
  for (const DataRecord& record :
       {formatReadingRecord("T1123.4-05.6", 3000000000u), formatStationRecord(12.5, {}),
        formatTextRecord(u"say \"hi\"", 'C', 9)})
    bytes.append(record.begin(), record.end());
  for (const DataRecord& record : formatGpsRecords("$GPTXT,x", 4, '?', '"'))
    bytes.append(record.begin(), record.end());
  writeBytes(path, bytes);
  R40Result run = runR40({"dump", path}, folder);
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.output,
            "0 T record=\"T1123.4-05.6\" tick=4165470567\n"
            "24 S station=12.50 time=00:00:00.00\n"
            "48 C text=\"say \\\"hi\\\"\" tick=9\n"
            "72 ? sentence=\"$GPTXT,x\" tick=4\n");
  EXPECT_EQ(runR40({"check", path}, folder).status, 0);

  writeBytes(path, bytes.substr(0, 24) + "noise" + bytes.substr(24, 40));
  run = runR40({"check", path}, folder);
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.output.rfind("24 problem (5 bytes)", 0), 0u) << run.output;
  EXPECT_NE(run.output.find("\n53 problem (16 bytes): truncated record"), std::string::npos);
}

TEST(R40, MissingFileAndBadArgumentsExitTwo) {
  TempFolder folder;
  const std::string missing = (folder.path() / "none.R40").string();
  for (const auto& [arguments, said] :
       std::vector<std::pair<std::vector<std::string>, std::string>>{
           {{"check", missing}, missing},
           {{"dump", missing}, missing},
           {{}, "usage"},
           {{"dump"}, "usage"},
           {{"list", missing}, "usage"}}) {
    const R40Result run = runR40(arguments, folder);
    EXPECT_EQ(run.status, 2);
    EXPECT_NE(run.output.find(said), std::string::npos) << run.output;
  }
}

}  // namespace
}  // namespace gc40
