// The r40 program as a user runs it: what it prints and how it exits.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "datafile/data_records.h"
#include "support/child_process.h"
#include "support/temp_folder.h"

namespace gc40 {
namespace {

TEST(R40, DumpsChecksNamingOffsetsAndExitsTwoOnAMissingFile) {
  testing::TempFolder folder;
  const std::string path = folder.path() / "a.R40", errors = folder.path() / "stderr.txt";
  // Its exit status and what it printed, standard output then error.
  const auto r40 = [&](const std::vector<std::string>& arguments) {
    testing::ChildProcess run(R40_BINARY, arguments, errors);
    const std::string output = run.readAll();
    const int status = run.waitForExit(std::chrono::seconds(10)).value_or(-1);
    return std::pair(status, output + testing::readBytes(errors));
  };
  std::string bytes;
  for (const DataRecord& record :
       {formatReadingRecord("T1123.4-05.6", 3000000000u), formatStationRecord(12.5, {}),
        formatTextRecord(u"say \"hi\"", 'C', 9)})
    bytes.append(record.begin(), record.end());
  for (const DataRecord& record : formatGpsRecords("$GPTXT,x", 4, '?', '"'))
    bytes.append(record.begin(), record.end());
  testing::writeBytes(path, bytes);
  EXPECT_EQ(r40({"dump", path}),
            std::pair(0, std::string("0 T record=\"T1123.4-05.6\" tick=4165470567\n"
                                     "24 S station=12.50 time=00:00:00.00\n"
                                     "48 C text=\"say \\\"hi\\\"\" tick=9\n"
                                     "72 ? sentence=\"$GPTXT,x\" tick=4\n")));
  EXPECT_EQ(r40({"check", path}).first, 0);

  testing::writeBytes(path, bytes.substr(0, 24) + "noise" + bytes.substr(24, 40));
  const auto [status, output] = r40({"check", path});
  EXPECT_EQ(status, 1);
  EXPECT_EQ(output.rfind("24 problem (5 bytes)", 0), 0u) << output;
  EXPECT_NE(output.find("\n53 problem (16 bytes): truncated record"), std::string::npos);

  const std::string missing = (folder.path() / "none.R40").string();
  for (const auto& [arguments, said] :
       {std::pair{std::vector<std::string>{"dump", missing}, missing}, {{"dump"}, "usage"}}) {
    const auto [exitStatus, printed] = r40(arguments);
    EXPECT_EQ(exitStatus, 2);
    EXPECT_NE(printed.find(said), std::string::npos) << printed;
  }
}

}  // namespace
}  // namespace gc40
