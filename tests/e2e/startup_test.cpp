// The gc40 program itself: started on a storage folder, it leaves the files a
// user expects there and keeps running, whatever the settings file held.

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <vector>

#include "harness/child_process.h"
#include "harness/temp_folder.h"
#include "support/settings_listing.h"

namespace gc40 {
namespace {

using namespace std::chrono_literals;
using testing::readBytes;

// gc40 with HOME, its temporary files and its standard error in `folder`,
// never the user's own; `environment` is added to the test's.
std::unique_ptr<testing::ChildProcess> startGc40(const std::vector<std::string>& arguments,
                                                 const std::filesystem::path& folder,
                                                 std::vector<std::string> environment = {}) {
  setenv("HOME", folder.c_str(), 1);
  std::filesystem::create_directories(folder / "tmp");
  environment.push_back("TMPDIR=" + (folder / "tmp").string());
  return std::make_unique<testing::ChildProcess>(GC40_BINARY, arguments, folder / "errors.txt",
                                                 environment);
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
bool startsAndKeepsRunning(const std::filesystem::path& folder,
                           std::vector<std::string> arguments = {},
                           const std::vector<std::string>& environment = {}) {
  arguments.insert(arguments.end(), {"--storage", (folder / "GC40").string()});
  const auto gc40 = startGc40(arguments, folder, environment);
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

// A Qt that went for this display would abort: what needs no window works
// without one, and Qt's own options reach Qt (-platform picks one that works).
TEST(Startup, AnswersWithoutADisplayAndHandsQtItsOptions) {
  testing::TempFolder folder;
  const std::vector<std::string> noDisplay{"QT_QPA_PLATFORM=xcb", "DISPLAY=", "WAYLAND_DISPLAY="};
  const std::string version = "gc40 " GC40_VERSION "\n";
  struct Run {
    std::vector<std::string> arguments;
    int exitCode;
    std::string output;
  };
  for (const auto& [arguments, exitCode, output] :
       {Run{{"--version"}, 0, version}, Run{{"-platform", "offscreen", "--version"}, 0, version},
        Run{{"--scale", "9"}, 2, ""}, Run{{"--list-ports"}, 0, "Port map ("}}) {
    const auto gc40 = startGc40(arguments, folder.path(), noDisplay);
    EXPECT_TRUE(gc40->readAll().starts_with(output)) << arguments.front();
    EXPECT_EQ(gc40->waitForExit(10s), exitCode) << arguments.front();
  }
  EXPECT_FALSE(std::filesystem::exists(folder.path() / "GC40"));  // --list-ports only reads
  EXPECT_TRUE(startsAndKeepsRunning(folder.path(), {"-platform", "offscreen"}, noDisplay))
      << readBytes(folder.path() / "errors.txt");
}

}  // namespace
}  // namespace gc40
