// The gc40 program itself: started on a storage folder, it leaves the files a
// user expects there and keeps running, whatever the settings file held.

#include <gtest/gtest.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <thread>
#include <vector>

#include "support/settings_listing.h"
#include "support/temp_folder.h"

namespace gc40 {
namespace {

using namespace std::chrono_literals;
using testing::readBytes;
using testing::TempFolder;
using testing::writeBytes;

struct ProcessResult {
  int exitStatus = -1;  // raw wait status; -1 while running
  std::string output;   // stdout and stderr
};

class Gc40Process {
 public:
  Gc40Process(const std::vector<std::string>& arguments, const std::filesystem::path& outputFile)
      : outputFile_(outputFile) {
    pid_ = fork();
    if (pid_ == 0) {
      // Never the user's own ~/GC40.
      setenv("HOME", outputFile.parent_path().c_str(), 1);
      const int fd = ::open(outputFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
      dup2(fd, STDOUT_FILENO);
      dup2(fd, STDERR_FILENO);
      std::vector<char*> argv{const_cast<char*>(GC40_BINARY)};
      for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
      argv.push_back(nullptr);
      execv(GC40_BINARY, argv.data());
      _exit(127);
    }
  }
  ~Gc40Process() { stop(); }

  bool running() {
    if (pid_ <= 0) return false;
    const pid_t done = waitpid(pid_, &status_, WNOHANG);
    if (done == pid_) pid_ = -1;
    return pid_ > 0;
  }

  // Waits until `ready` holds or the program ends; gives up after 20 s.
  template <typename Ready>
  bool waitFor(Ready ready) {
    for (auto deadline = std::chrono::steady_clock::now() + 20s;
         std::chrono::steady_clock::now() < deadline; std::this_thread::sleep_for(20ms)) {
      if (ready()) return true;
      if (!running()) return false;
    }
    return false;
  }

  ProcessResult stop() {
    if (running()) {
      kill(pid_, SIGTERM);
      waitpid(pid_, &status_, 0);
      pid_ = -1;
    }
    return {status_, readBytes(outputFile_)};
  }

  ProcessResult finish() {
    if (pid_ > 0) waitpid(pid_, &status_, 0);
    pid_ = -1;
    return {status_, readBytes(outputFile_)};
  }

 private:
  std::filesystem::path outputFile_;
  pid_t pid_ = -1;
  int status_ = -1;
};

// Starts gc40 on `storage`, waits until it has written its port map and then
// for a moment more, and reports whether it was still running.
bool startsAndKeepsRunning(const std::filesystem::path& storage, ProcessResult& run) {
  Gc40Process gc40({"--storage", storage.string()}, storage.parent_path() / "output.txt");
  const bool started =
      gc40.waitFor([&] { return std::filesystem::exists(storage / "FLDINI" / "PORTS.INI"); });
  std::this_thread::sleep_for(1500ms);
  const bool alive = gc40.running();
  run = gc40.stop();
  return started && alive;
}

TEST(Startup, EmptyStorageFolderGetsTheDefaultFiles) {
  TempFolder folder;
  const auto storage = folder.path() / "GC40";
  ProcessResult run;
  ASSERT_TRUE(startsAndKeepsRunning(storage, run)) << run.output;
  EXPECT_EQ(readBytes(storage / "FLDINI" / "GC40.INI"), testing::defaultFileBytes());
  EXPECT_NE(readBytes(storage / "FLDINI" / "PORTS.INI").find("COM1:=/dev/ttyUSB0"),
            std::string::npos);
  EXPECT_TRUE(std::filesystem::is_directory(storage / "DATA40"));
  EXPECT_EQ(run.output.find("runtime error"), std::string::npos) << run.output;
}

TEST(Startup, DamagedSettingsFilesNeverStopTheLogger) {
  std::string noise(2048, '\0');
  for (std::size_t i = 0; i < noise.size(); ++i)
    noise[i] = static_cast<char>(i * 7919 % 251);
  const std::string outOfRange = testing::fileWithLines(
      {{6, "9"}, {15, "0"}, {16, "40"}, {38, "-3"}, {42, "7"}, {49, "nan"}, {33, "inf"}});
  struct Case {
    const char* name;
    std::string bytes;
    bool keptAsItWas;
  };
  for (const Case& c : {Case{"random bytes", noise, false},
                        Case{"1 MB without a line feed", std::string(1 << 20, '7'), false},
                        Case{"indexes out of range", outOfRange, true}}) {
    TempFolder folder;
    const auto storage = folder.path() / "GC40";
    writeBytes(storage / "FLDINI" / "GC40.INI", c.bytes);
    ProcessResult run;
    EXPECT_TRUE(startsAndKeepsRunning(storage, run)) << c.name << "\n" << run.output;
    EXPECT_EQ(readBytes(storage / "FLDINI" / "GC40.INI"),
              c.keptAsItWas ? c.bytes : testing::defaultFileBytes())
        << c.name;
    EXPECT_EQ(run.output.find("runtime error"), std::string::npos) << run.output;
  }
}

TEST(Startup, CommandLineAnswersWithoutAWindow) {
  TempFolder folder;
  Gc40Process version({"--version"}, folder.path() / "version.txt");
  ProcessResult run = version.finish();
  EXPECT_TRUE(WIFEXITED(run.exitStatus) && WEXITSTATUS(run.exitStatus) == 0);
  EXPECT_EQ(run.output, "gc40 2.11\n");

  Gc40Process help({"--help"}, folder.path() / "help.txt");
  run = help.finish();
  EXPECT_EQ(WEXITSTATUS(run.exitStatus), 0);
  EXPECT_NE(run.output.find("--port COMn=PATH"), std::string::npos);

  Gc40Process bad({"--port", "COM99=/dev/null"}, folder.path() / "bad.txt");
  run = bad.finish();
  EXPECT_EQ(WEXITSTATUS(run.exitStatus), 2);
  EXPECT_NE(run.output.find("COM99=/dev/null"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(folder.path() / "GC40"));
}

}  // namespace
}  // namespace gc40
