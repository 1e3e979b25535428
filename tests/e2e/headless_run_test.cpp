// gc40 --headless, the whole program without a display: driven by keys on
// its standard input (a pipe here, a terminal under tmux), ended by a stop
// signal, and refused a port it may not use. The files it leaves are read
// back record by record.

#include <grp.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "datafile/data_file_reader.h"
#include "harness/child_process.h"
#include "harness/temp_folder.h"
#include "support/file_shape.h"

namespace gc40 {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;
using testing::countRecords;
using testing::readBytes;
using testing::shapeOf;

// The one data file in `folder`, empty when there is none (yet).
fs::path onlyDataFile(const fs::path& folder) {
  std::error_code ignored;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, ignored))
    if (entry.path().extension() == ".R40") return entry.path();
  return {};
}

DataFileContents contentsOf(const fs::path& file) { return readDataFile(readBytes(file)); }

bool waitForRecords(const fs::path& folder, std::size_t count, const std::string& text = "") {
  for (int i = 0; i < 500; ++i, std::this_thread::sleep_for(20ms)) {
    const fs::path file = onlyDataFile(folder);
    if (!file.empty() && countRecords(contentsOf(file), text) >= count) return true;
  }
  ADD_FAILURE() << "no file in " << folder << " held " << count << " records " << text;
  return false;
}

// The CPU time a process has had, user and system.
std::chrono::milliseconds cpuTimeOf(pid_t pid) {
  std::ifstream stat("/proc/" + std::to_string(pid) + "/stat");
  std::string field;
  long ticks = 0;
  for (int i = 1; i <= 15 && stat >> field; ++i)
    if (i == 14 || i == 15) ticks += std::stol(field);  // utime, stime
  return std::chrono::milliseconds(ticks * 1000 / sysconf(_SC_CLK_TCK));
}

std::string findProgram(const std::string& name) {
  const char* path = std::getenv("PATH");
  std::string folders = path ? path : "/usr/bin:/bin";
  for (std::size_t start = 0; start <= folders.size();) {
    const std::size_t end = std::min(folders.find(':', start), folders.size());
    const fs::path candidate = fs::path(folders.substr(start, end - start)) / name;
    if (access(candidate.c_str(), X_OK) == 0) return candidate;
    start = end + 1;
  }
  return {};
}

class HeadlessRun : public ::testing::Test {
 protected:
  void SetUp() override {
    setenv("HOME", folder.path().c_str(), 1);
    fs::create_directories(temporaryFolder);
  }

  void startGc40(const std::vector<std::string>& arguments, const std::string& binary = GC40_BINARY,
                 std::vector<std::string> environment = {}) {
    environment.push_back("TMPDIR=" + temporaryFolder.string());
    gc40 = std::make_unique<testing::ChildProcess>(binary, arguments, folder.path() / "errors.txt",
                                                   environment);
  }

  void startSimulator() {
    sim = std::make_unique<testing::ChildProcess>(
        GC40_SIM_BINARY,
        std::vector<std::string>{"--link", meter.string(), "--pattern", "sequence"},
        folder.path() / "sim-errors.txt");
    ASSERT_EQ(sim->readLine(5s), "gc40-sim: ready " + meter.string());
  }

  // The first status line from now on that starts with `state` and holds `text`.
  std::string waitForStatus(const std::string& state, const std::string& text = "") {
    while (const auto line = gc40->readLine(10s))
      if (line->starts_with(state) && line->find(text) != std::string::npos) return *line;
    ADD_FAILURE() << "gc40 never showed " << state << " with " << text
                  << "; it said: " << readBytes(folder.path() / "errors.txt");
    return {};
  }

  void send(const std::string& keys) { ASSERT_TRUE(gc40->send(keys)); }

  testing::TempFolder folder;
  fs::path storage = folder.path() / "GC40";
  fs::path dataFolder = storage / "DATA40";
  fs::path temporaryFolder = folder.path() / "tmp";  // gc40's: what it leaves shows
  fs::path meter = folder.path() / "meter";
  std::unique_ptr<testing::ChildProcess> sim, gc40;
};

// A cart switched on: the simulator of --simulate read, a file under the
// proposed name recorded from the start, with nobody at the keys (standard
// input ends at once, which must not cost CPU); a shutdown pauses, closes
// the file and leaves nothing behind.
TEST_F(HeadlessRun, AutoStartRecordsUntilAStopSignalClosesTheFile) {
  startGc40({"--headless", "--auto-start", "--simulate", "--storage", storage.string()});
  gc40->closeInput();
  const std::string status = waitForStatus("Logging");
  EXPECT_NE(status.find("File:"), std::string::npos) << status;
  EXPECT_NE(status.find(" recorded"), std::string::npos) << status;
  ASSERT_TRUE(waitForRecords(dataFolder, 5));
  const std::size_t readingsBefore = countRecords(contentsOf(onlyDataFile(dataFolder)));
  const auto before = cpuTimeOf(gc40->pid());
  std::this_thread::sleep_for(2s);
  EXPECT_LT(cpuTimeOf(gc40->pid()) - before, 200ms);  // a tenth of a core at most

  gc40->signal(SIGTERM);
  EXPECT_EQ(gc40->waitForExit(3s), 0);
  const DataFileContents contents = contentsOf(onlyDataFile(dataFolder));
  EXPECT_TRUE(contents.problems.empty());
  EXPECT_EQ(shapeOf(contents), "GHLBAZ*(X$STARTED)T(X$PAUSED)");
  EXPECT_GT(countRecords(contents), readingsBefore);  // still recording after the end of input
  EXPECT_TRUE(fs::is_empty(temporaryFolder));         // the simulator's folder went with it
}

// The screen's run from the whole-program test, typed into a pipe, keys
// typed ahead of the questions included: the same records in the same order.
TEST_F(HeadlessRun, KeysOnStandardInputWorkTheLoggingScreensRules) {
  startSimulator();
  startGc40({"--headless", "--storage", storage.string(), "--port", "COM1=" + meter.string()});
  waitForStatus("Monitor");
  send(
      "C\x15"
      "E2E\rG");  // the proposed name cleared, another typed, then Go
  ASSERT_TRUE(waitForRecords(dataFolder, 6));
  send(" ");
  ASSERT_TRUE(waitForRecords(dataFolder, 1, "$PAUSED"));
  send("Ly");  // the new line as proposed
  send("CROCK OUTCROP AT 12M\r");
  send("N100\r");
  send("G");
  ASSERT_TRUE(waitForRecords(dataFolder, 16));
  send(" ");
  ASSERT_TRUE(waitForRecords(dataFolder, 2, "$PAUSED"));
  waitForStatus("Stand By", "File:E2E  Line:1.00  Stn:");
  send("X\r");  // Exit, and Return for Yes
  EXPECT_EQ(gc40->waitForExit(3s), 0);

  const DataFileContents contents = contentsOf(dataFolder / "E2E.R40");
  EXPECT_TRUE(contents.problems.empty());
  EXPECT_EQ(shapeOf(contents),
            "GHLBAZ*(X$STARTED)T(X$PAUSED)LBAZ*S*(CROCK OUTCRO)S*(X$STARTED)T(X$PAUSED)");
  const std::string events = readBytes(folder.path() / "errors.txt");
  EXPECT_NE(events.find("Created " + (dataFolder / "E2E.R40").string()), std::string::npos)
      << events;
}

// Dropped to a user outside the device's group, gc40 names the group to join.
TEST_F(HeadlessRun, APortWithoutAccessNamesTheGroupToJoin) {
  const std::string setpriv = findProgram("setpriv");
  const group* dialout = getgrnam("dialout");
  if (geteuid() != 0 || setpriv.empty() || !dialout)
    GTEST_SKIP() << "needs root, setpriv and a dialout group to play another user";
  const fs::path device = folder.path() / "ttyUSB9";
  testing::writeBytes(device, "");
  ASSERT_EQ(chown(device.c_str(), 0, dialout->gr_gid), 0);
  ASSERT_EQ(chmod(device.c_str(), 0660), 0);
  fs::create_directories(storage);
  fs::permissions(storage, fs::perms::all);
  fs::permissions(temporaryFolder, fs::perms::all);
  // Under the sanitizers the leak check would read its suppressions from the
  // checkout, which the other user may not be let into; the other runs check leaks.
  startGc40({"--reuid=65534", "--regid=65534", "--clear-groups", GC40_BINARY, "--headless",
             "--storage", storage.string(), "--port", "COM1=" + device.string()},
            setpriv, {"LSAN_OPTIONS=detect_leaks=0"});
  EXPECT_EQ(gc40->waitForExit(10s), 1);
  const std::string errors = readBytes(folder.path() / "errors.txt");
  EXPECT_NE(errors.find("Cannot open GC40 port: COM1: (" + device.string()), std::string::npos)
      << errors;
  EXPECT_NE(errors.find("belongs to the group dialout"), std::string::npos) << errors;
  EXPECT_NE(errors.find("sudo usermod -aG dialout "), std::string::npos) << errors;
}

// On a terminal: keys one by one without echo, the status line rewritten in
// place, and the terminal's modes as they were once gc40 has gone.
TEST_F(HeadlessRun, OnATerminalTheStatusLineStaysInPlace) {
  const std::string tmux = findProgram("tmux");
  if (tmux.empty()) GTEST_SKIP() << "tmux is not installed";
  const fs::path socket = folder.path() / "tmux.socket";
  const auto run = [&](std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"-S", socket.string(), "-f", "/dev/null"});
    testing::ChildProcess client(tmux, arguments, folder.path() / "tmux-errors.txt",
                                 {"TMPDIR=" + temporaryFolder.string()});
    std::string output = client.readAll(5s);
    client.waitForExit(5s);
    return output;
  };
  const fs::path after = folder.path() / "after.txt";
  run({"new-session", "-d", "-x", "200", "-y", "10",
       std::string(GC40_BINARY) + " --headless --simulate --storage " + storage.string() +
           "; echo exit=$? > " + after.string() + "; stty -a >> " + after.string()});
  const std::string server = run({"display-message", "-p", "#{pid}"});
  const auto screen = [&] { return run({"capture-pane", "-p"}); };
  const auto waitForScreen = [&](const std::string& text) {
    for (int i = 0; i < 100; ++i, std::this_thread::sleep_for(100ms))
      if (screen().find(text) != std::string::npos) return true;
    ADD_FAILURE() << "never on the terminal: " << text << "\n" << screen();
    return false;
  };

  ASSERT_TRUE(waitForScreen("Monitor   Line:"));
  EXPECT_NE(screen().find("Keys: C Create File, X Exit"), std::string::npos);
  run({"send-keys", "C"});
  ASSERT_TRUE(waitForScreen("Create File: "));
  run({"send-keys", "Enter"});
  run({"send-keys", "G"});
  ASSERT_TRUE(waitForRecords(dataFolder, 5));
  run({"send-keys", "Space"});
  ASSERT_TRUE(waitForRecords(dataFolder, 1, "$PAUSED"));
  ASSERT_TRUE(waitForScreen("Stand By  File:"));
  // One status line, rewritten in place: no earlier one is left standing.
  const std::string shown = screen();
  std::size_t statusLines = 0;
  for (std::size_t at = 0; (at = shown.find(" recorded", at)) != std::string::npos; ++at)
    ++statusLines;
  EXPECT_EQ(statusLines, 1u) << shown;
  run({"send-keys", "X"});
  ASSERT_TRUE(waitForScreen("Exit Logging? [Y/n]"));
  run({"send-keys", "y"});
  for (int i = 0; i < 100 && !fs::exists(after); ++i) std::this_thread::sleep_for(100ms);
  std::this_thread::sleep_for(200ms);  // stty's lines follow
  run({"kill-server"});
  for (int i = 0; i < 100 && fs::exists("/proc/" + server.substr(0, server.find('\n'))); ++i)
    std::this_thread::sleep_for(50ms);

  const std::string afterwards = readBytes(after);
  EXPECT_TRUE(afterwards.starts_with("exit=0\n")) << afterwards;
  EXPECT_NE(afterwards.find(" icanon"), std::string::npos) << afterwards;
  EXPECT_NE(afterwards.find(" echo "), std::string::npos) << afterwards;
  const DataFileContents contents = contentsOf(onlyDataFile(dataFolder));
  EXPECT_EQ(shapeOf(contents), "GHLBAZ*(X$STARTED)T(X$PAUSED)");
  EXPECT_TRUE(fs::is_empty(temporaryFolder));
}

}  // namespace
}  // namespace gc40
