// The r40 program as a user runs it: what it prints and how it exits.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "datafile/data_records.h"
#include "support/temp_folder.h"

namespace gc40 {
namespace {

using testing::readBytes;
using testing::TempFolder;
using testing::writeBytes;

struct R40Result {
  int status = -1;
  std::string output;  // stdout and stderr together
};

R40Result runR40(std::vector<std::string> arguments, const TempFolder& folder) {
  const auto outputPath = folder.path() / "output.txt";
  const pid_t pid = fork();
  if (pid == 0) {
    const int output = ::open(outputPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    dup2(output, STDOUT_FILENO);
    dup2(output, STDERR_FILENO);
    std::vector<char*> argv{const_cast<char*>(R40_BINARY)};
    for (std::string& argument : arguments) argv.push_back(argument.data());
    argv.push_back(nullptr);
    execv(R40_BINARY, argv.data());
    _exit(127);
  }
  int waitStatus = 0;
  waitpid(pid, &waitStatus, 0);
  return {WIFEXITED(waitStatus) ? WEXITSTATUS(waitStatus) : -1, readBytes(outputPath)};
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
