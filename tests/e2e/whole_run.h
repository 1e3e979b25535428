#pragma once
// The fixture of whole runs: gc40 and gc40-sim on pseudo-terminals in a
// folder of the test's own, gc40 driven through --control as an operator
// drives it with keys, and the data file it writes read back.

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "base/number_text.h"
#include "datafile/data_file_reader.h"
#include "harness/child_process.h"
#include "harness/temp_folder.h"
#include "support/file_shape.h"
#include "support/settings_listing.h"

namespace gc40 {

inline const std::string kLoggingScreen = "LoggingWnd";

class WholeRun : public ::testing::Test {
 protected:
  void SetUp() override {
    // The first value of each record counts the simulator's records, so a
    // lost or doubled one shows; a survey's values come from its ground.
    std::vector<std::string> simArguments{"--link", meter.string()};
    if (!surveying) simArguments.insert(simArguments.end(), {"--pattern", "sequence"});
    simArguments.insert(simArguments.end(), simOptions.begin(), simOptions.end());
    std::vector<std::string> gc40Arguments{"--storage", storage.string(),         "--control",
                                           "--port",    "COM1=" + meter.string(), "--scale",
                                           "1"};
    if (ownSimulator) gc40Arguments = {"--storage", storage.string(), "--control", "--simulate"};
    if (receiverCapture)
      simArguments.insert(simArguments.end(),
                          {"--nmea", *receiverCapture, "--nmea-period", "5", "--loop"});
    if (receiverCapture || surveying) {
      simArguments.insert(simArguments.end(), {"--gps-link", receiver.string()});
      gc40Arguments.insert(gc40Arguments.end(),
                           {"--port", "COM2=" + receiver.string(), "--portrait"});
      testing::writeBytes(storage / "FLDINI" / "GC40.INI", testing::fileWithLine(36, "1"));
    }
    if (!ownSimulator) {
      sim = std::make_unique<testing::ChildProcess>(GC40_SIM_BINARY, simArguments,
                                                    folder.path() / "sim-errors.txt");
      ASSERT_EQ(sim->readLine(std::chrono::seconds(5)), "gc40-sim: ready " + meter.string());
      ASSERT_TRUE(!(receiverCapture || surveying) ||
                  sim->readLine(std::chrono::seconds(5)) == "gc40-sim: ready " + receiver.string());
    }
    setenv("HOME", folder.path().c_str(), 1);
    std::filesystem::create_directories(temporaryFolder);
    std::optional<testing::FileSizeLimit> limit;
    if (fileSizeLimit) limit.emplace(*fileSizeLimit);  // gc40 takes it along
    startGc40(gc40Arguments);
  }

  void startGc40(const std::vector<std::string>& arguments) {
    gc40 = std::make_unique<testing::ChildProcess>(
        GC40_BINARY, arguments, folder.path() / "errors.txt",
        std::vector{"TMPDIR=" + temporaryFolder.string()});
    ASSERT_TRUE(waitFront("GC40"));
  }

  bool waitFront(const std::string& title, const std::string& screen = "") {
    return waitForLine("front " + title + (screen.empty() ? "" : " / " + screen));
  }

  bool waitForLine(const std::string& wanted) {
    while (const auto line = gc40->readLine(std::chrono::seconds(10))) {
      if (*line == wanted) return true;
      noteRecorded(*line);
    }
    ADD_FAILURE() << "gc40 never said: " << wanted;
    return false;
  }

  // gc40 reports the station of each reading it writes ("recorded 12.5").
  void noteRecorded(const std::string& line) {
    if (line.starts_with("recorded ")) loggedStations.push_back(parseDecimalPrefix(line.substr(9)));
  }

  void send(const std::string& command) { ASSERT_TRUE(gc40->send(command + "\n")); }

  void dialog(const std::string& key, const std::string& title, const std::string& text = "") {
    send("key " + key);
    ASSERT_TRUE(waitFront(title, kLoggingScreen));
    if (!text.empty()) send("text " + text);
    send("key Return");
    ASSERT_TRUE(waitFront("GC40", kLoggingScreen));
  }

  std::string shot(const std::string& name) {
    const std::string path = GC40_TEST_OUTPUT_DIR "/" + name + ".png";
    send("shot " + path);
    EXPECT_TRUE(waitForLine("shot " + path));
    return path;
  }

  DataFileContents file() const { return readDataFile(testing::readBytes(dataFile)); }

  bool waitForRecords(std::size_t count, const std::string& text = "") {
    for (int i = 0; i < 500; ++i, std::this_thread::sleep_for(std::chrono::milliseconds(20)))
      if (testing::countRecords(file(), text) >= count) return true;
    ADD_FAILURE() << "the file never held " << count << " records " << text;
    return false;
  }

  void createFileAndGo() {
    send("key l");
    ASSERT_TRUE(waitFront("GC40", kLoggingScreen));
    if (!shots.empty()) shot(shots + "_monitor");
    dialog("c", "Create Data File", "E2E");
    if (!shots.empty()) shot(shots + "_standby");
    send("key g");
  }

  testing::TempFolder folder;
  std::filesystem::path storage = folder.path() / "GC40";
  std::filesystem::path temporaryFolder = folder.path() / "tmp";  // gc40's: what it leaves shows
  std::filesystem::path meter = folder.path() / "meter", receiver = folder.path() / "receiver";
  std::optional<std::string> receiverCapture;  // set before SetUp for a GPS run
  bool surveying = false;  // gc40-sim --survey (in simOptions) drives the meter and the receiver
  std::string shots;       // the run's screenshots, none when empty
  std::vector<std::string> simOptions;  // more for gc40-sim
  bool ownSimulator = false;            // gc40 --simulate instead of gc40-sim here
  std::optional<rlim_t> fileSizeLimit;  // on the files gc40 writes
  std::filesystem::path dataFile = folder.path() / "GC40" / "DATA40" / "E2E.R40";
  std::unique_ptr<testing::ChildProcess> sim, gc40;
  std::vector<double> loggedStations;
};

}  // namespace gc40
