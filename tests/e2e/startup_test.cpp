// The gc40 program itself: started on a storage folder, it leaves the files a
// user expects there and keeps running, whatever the settings file held.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <thread>
#include <vector>

#include "support/settings_listing.h"
#include "support/temp_folder.h"

namespace gc40 {
namespace {

using namespace std::chrono_literals;
using testing::readBytes;

// Runs gc40 with HOME and the output in `folder`; returns its pid.
pid_t startGc40(const std::vector<std::string>& arguments, const std::filesystem::path& folder) {
  const pid_t pid = fork();
  if (pid == 0) {
    setenv("HOME", folder.c_str(), 1);  // never the user's own ~/GC40
    const int output = ::open((folder / "output.txt").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    dup2(output, STDOUT_FILENO);
    dup2(output, STDERR_FILENO);
    std::vector<char*> argv{const_cast<char*>(GC40_BINARY)};
    for (const std::string& argument : arguments)
      argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    execv(GC40_BINARY, argv.data());
    _exit(127);
  }
  return pid;
}

// Starts gc40 on folder/GC40 and tells whether it was still running a moment
// after it had written its port map (its last file before the window).
bool startsAndKeepsRunning(const std::filesystem::path& folder) {
  const pid_t pid = startGc40({"--storage", (folder / "GC40").string()}, folder);
  const auto exited = [pid] { return waitpid(pid, nullptr, WNOHANG) == pid; };
  bool ready = false;
  for (int i = 0; i < 1000 && !(ready = std::filesystem::exists(folder / "GC40/FLDINI/PORTS.INI"));
       ++i) {
    if (exited()) return false;
    std::this_thread::sleep_for(20ms);
  }
  std::this_thread::sleep_for(1500ms);
  const bool running = !exited();
  if (running) kill(pid, SIGTERM), waitpid(pid, nullptr, 0);
  return ready && running;
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
    EXPECT_TRUE(startsAndKeepsRunning(folder.path())) << readBytes(folder.path() / "output.txt");
    EXPECT_EQ(readBytes(settingsFile), after);
    EXPECT_TRUE(std::filesystem::is_directory(folder.path() / "GC40" / "DATA40"));
    EXPECT_EQ(readBytes(folder.path() / "output.txt"), "");
  }
}

TEST(Startup, ASecondCopyOnTheSameFolderEndsWithMinusOne) {
  testing::TempFolder folder;
  const std::vector<std::string> arguments{"--storage", (folder.path() / "GC40").string()};
  const pid_t first = startGc40(arguments, folder.path());
  for (int i = 0; i < 1000 && !std::filesystem::exists(folder.path() / "GC40/.gc40.lock"); ++i)
    std::this_thread::sleep_for(20ms);
  const pid_t second = startGc40(arguments, folder.path() / "GC40");
  int status = 0;
  for (int i = 0; i < 500 && waitpid(second, &status, WNOHANG) != second; ++i)
    std::this_thread::sleep_for(20ms);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 255) << status;
  EXPECT_EQ(waitpid(first, nullptr, WNOHANG), 0);  // the first copy runs on
  kill(first, SIGTERM), waitpid(first, nullptr, 0);
  kill(second, SIGKILL), waitpid(second, nullptr, 0);
}

TEST(Startup, CommandLineAnswersWithoutAWindowOrFiles) {
  for (const auto& [argument, status, output] :
       {std::tuple{"--version", 0, "gc40 2.11\n"},
        {"--help", 0, "--port COMn=PATH"},
        {"--port=COM99=/dev/null", 2, "COM99=/dev/null"}}) {
    testing::TempFolder folder;
    int waitStatus = 0;
    waitpid(startGc40({argument}, folder.path()), &waitStatus, 0);
    EXPECT_TRUE(WIFEXITED(waitStatus) && WEXITSTATUS(waitStatus) == status) << argument;
    EXPECT_NE(readBytes(folder.path() / "output.txt").find(output), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "GC40"));
  }
}

}  // namespace
}  // namespace gc40
