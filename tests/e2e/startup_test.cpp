// The gc40 program itself: started on a storage folder, it leaves the files a
// user expects there and keeps running, whatever the settings file held.

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <vector>

#include "support/child_process.h"
#include "support/settings_listing.h"
#include "support/temp_folder.h"

namespace gc40 {
namespace {

using namespace std::chrono_literals;
using testing::readBytes;

// gc40 with HOME, its temporary files and its standard error in `folder`,
// never the user's own.
std::unique_ptr<testing::ChildProcess> startGc40(const std::vector<std::string>& arguments,
                                                 const std::filesystem::path& folder) {
  setenv("HOME", folder.c_str(), 1);
  std::filesystem::create_directories(folder / "tmp");
  return std::make_unique<testing::ChildProcess>(
      GC40_BINARY, arguments, folder / "errors.txt",
      std::vector{"TMPDIR=" + (folder / "tmp").string()});
}

bool waitForPortMap(const std::filesystem::path& folder, testing::ChildProcess& gc40) {
  for (int i = 0; i < 1000; ++i) {
    if (std::filesystem::exists(folder / "GC40/FLDINI/PORTS.INI")) return true;
    if (gc40.waitForExit(20ms)) return false;
  }
  return false;
}

// Starts gc40 on folder/GC40 and tells whether it was still running a moment
// after it had written its port map (its last file before the window), with
// nothing said on either output.
bool startsAndKeepsRunning(const std::filesystem::path& folder) {
  const auto gc40 = startGc40({"--storage", (folder / "GC40").string()}, folder);
  if (!waitForPortMap(folder, *gc40) || gc40->waitForExit(1500ms)) return false;
  gc40->stop();
  return gc40->readAll(1s).empty() && readBytes(folder / "errors.txt").empty();
}

TEST(Startup, EmptyOrDamagedStorageStartsWithTheRightFiles) {
  std::string noise;
  for (int i = 0; i < 2048; ++i) noise += static_cast<char>(i * 7919 % 251);
  const std::string outOfRange = testing::fileWithLines(
      {{6, "9"}, {15, "0"}, {16, "40"}, {38, "-3"}, {42, "7"}, {49, "nan"}, {33, "inf"}});
  const std::string defaults = testing::defaultFileBytes();
  for (const auto& [before, after] : {std::pair{std::string(), defaults},
                                      {noise, defaults},
                                      {std::string(1 << 20, '7'), defaults},
                                      {outOfRange, outOfRange}}) {
    testing::TempFolder folder;
    const auto settingsFile = folder.path() / "GC40" / "FLDINI" / "GC40.INI";
    if (!before.empty()) testing::writeBytes(settingsFile, before);
    EXPECT_TRUE(startsAndKeepsRunning(folder.path())) << readBytes(folder.path() / "errors.txt");
    EXPECT_EQ(readBytes(settingsFile), after);
    EXPECT_TRUE(std::filesystem::is_directory(folder.path() / "GC40" / "DATA40"));
  }
}

// A second copy on the same storage leaves with -1 (and the first stays); a
// copy that died does not keep the next one out.
TEST(Startup, OneCopyPerStorageRoot) {
  testing::TempFolder folder;
  const std::vector<std::string> arguments{"--storage", (folder.path() / "GC40").string()};
  const auto first = startGc40(arguments, folder.path());
  ASSERT_TRUE(waitForPortMap(folder.path(), *first));
  EXPECT_EQ(startGc40(arguments, folder.path())->waitForExit(10s), 255);
  EXPECT_EQ(first->waitForExit(0ms), std::nullopt);
  first->signal(SIGKILL);
  first->waitForExit();
  EXPECT_TRUE(startsAndKeepsRunning(folder.path())) << readBytes(folder.path() / "errors.txt");
}

}  // namespace
}  // namespace gc40
