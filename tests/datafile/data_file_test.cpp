// The data file on disk: names, exclusive creation and the pause commit.

#include "datafile/data_file.h"

#include <gtest/gtest.h>

#include <string>

#include "datafile/data_file_naming.h"
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
  for (char letter = 'E'; letter < 'Z'; ++letter)
    writeBytes(folder.path() / (std::string("031514") + letter + ".R40"), "x");
  EXPECT_EQ(proposeDataFileName(folder.path(), kNow), "031514Z");
  writeBytes(folder.path() / "031514Z.R40", "x");
  EXPECT_EQ(proposeDataFileName(folder.path(), kNow), "");
}

TEST(DataFileNaming, BaseNameRunsFromTheLastSlashToTheFirstDot) {
  for (const auto& [chosen, base] : {std::pair{"/survey.2026/NOEXT", "NOEXT"},
                                     {"/survey.2026/a.b.R40", "a"},
                                     {"caf\xc3\xa9.R40", "caf\xe9"},
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
  const DataRecord second = formatTimeMark(kNow, 2);
  EXPECT_TRUE(file->writeRecord(formatTimeMark(kNow, 1)) && file->reopenAtEnd() &&
              file->writeRecord(second));
  EXPECT_EQ(readBytes(path), "*14:05:09.123         1\n*14:05:09.123         2\n");
  std::filesystem::remove(path);  // gone during the pause: made again
  EXPECT_TRUE(file->reopenAtEnd() && file->writeRecord(second));
  EXPECT_EQ(readBytes(path), "*14:05:09.123         2\n");
}

}  // namespace
}  // namespace gc40
