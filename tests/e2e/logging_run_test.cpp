// Whole runs of the real gc40 against gc40-sim, driven by keys as an operator
// would; the data file each run leaves is read back record by record.

#include <gtest/gtest.h>
#include <sys/mount.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "base/number_text.h"
#include "datafile/data_file_reader.h"
#include "e2e/whole_run.h"
#include "harness/child_process.h"
#include "harness/temp_folder.h"
#include "support/file_shape.h"
#include "support/gps_printing.h"
#include "survey/survey_lines.h"

namespace gc40 {
namespace {

using namespace std::chrono_literals;
using testing::countRecords;
using testing::shapeOf;
namespace fs = std::filesystem;

constexpr int kCyclesPerReading = 2;  // Auto mode at the default 5 readings a second

// Each stretch of logging holds every second record of the simulator's
// count, none lost or doubled, with ticks that never go back.
void expectEveryReadingInOrder(const DataFileContents& contents, int atLeast) {
  std::optional<int> lastCount;
  std::uint32_t lastTick = 0;
  int readings = 0;
  for (const FileRecord& record : contents.records) {
    if (const auto* note = std::get_if<TextRecord>(&record.value)) {
      if (note->text == "$STARTED") lastCount.reset();
      continue;
    }
    const auto* reading = std::get_if<ReadingRecord>(&record.value);
    if (!reading) continue;
    ++readings;
    const int count = parseIntegerPrefix(reading->instrumentRecord.substr(2, 5));
    const int expected =
        lastCount ? *lastCount + kCyclesPerReading : count;  // any, first of a stretch
    EXPECT_EQ(count, expected) << "at " << record.offset;
    EXPECT_GE(reading->tick, lastTick) << "at " << record.offset;
    EXPECT_EQ(reading->instrumentRecord[0], 'T');
    lastCount = count;
    lastTick = reading->tick;
  }
  EXPECT_GE(readings, atLeast);
}

TEST_F(WholeRun, LinesStationsCommentsAndPausesAreRecordedInOrder) {
  shots = "logging_e2e_landscape";
  createFileAndGo();
  ASSERT_TRUE(waitForRecords(6));
  send("key Space");  // any key pauses by default
  ASSERT_TRUE(waitForRecords(1, "$PAUSED"));
  dialog("l", "New Line");  // the proposal as it stands
  dialog("c", "Enter Comment", "ROCK OUTCROP AT 12M");
  dialog("n", "New Station", "100");
  send("key g");
  ASSERT_TRUE(waitForRecords(16));
  shot(shots + "_logging");  // the profile has scrolled by now
  send("key Space");
  ASSERT_TRUE(waitForRecords(2, "$PAUSED"));
  send("key x");
  ASSERT_TRUE(waitFront("Confirm Exit", kLoggingScreen));
  send("click Yes");
  ASSERT_TRUE(waitFront("GC40"));
  // The file just recorded, in View Files: the keys come back to the screen
  // after the open dialog, and the second line's profile shows.
  send("key v");
  ASSERT_TRUE(waitFront("Open Data File", "ViewFilesWnd"));
  send("text E2E.R40");
  send("key Return");
  ASSERT_TRUE(waitFront("GC40", "ViewFilesWnd"));
  send("key Down");
  send("key Return");
  send("key Right");
  shot("view_files_e2e_landscape");
  send("key x");
  ASSERT_TRUE(waitFront("GC40"));
  send("key x");
  EXPECT_EQ(gc40->waitForExit(10s), 0);

  const DataFileContents contents = file();
  EXPECT_TRUE(contents.problems.empty());
  EXPECT_EQ(shapeOf(contents),
            "GHLBAZ*(X$STARTED)T(X$PAUSED)LBAZ*S*(CROCK OUTCRO)S*(X$STARTED)T(X$PAUSED)");
  expectEveryReadingInOrder(contents, 16);
  // The new line is the proposal (line 0 + 1, walked back North from where
  // the last one ended); the new station is the one typed.
  const auto& records = contents.records;
  const auto secondLine = std::find_if(records.begin() + 3, records.end(), [](auto& record) {
    return std::holds_alternative<LineRecord>(record.value);
  });
  ASSERT_GT(records.end() - secondLine, 8);
  EXPECT_EQ(std::get<LineRecord>(secondLine->value).name, "1.00");
  const auto& attributes = std::get<LineAttributesRecord>((secondLine + 2)->value);
  EXPECT_EQ(std::pair(attributes.direction, attributes.stationIncrement), std::pair('N', -1.0));
  EXPECT_EQ(std::get<StationRecord>((secondLine + 8)->value).station, 100.0);

  // Split by the viewer, the file puts every reading at the station the
  // logger recorded it at: up from 0, then down from 100.
  while (const auto line = gc40->readLine(2s)) noteRecorded(*line);
  std::vector<double> placed;
  const std::optional<SurveyFile> survey = splitSurveyLines(contents);
  for (const SurveyLine& line : survey->lines)
    placed.insert(placed.end(), line.readingStations.begin(), line.readingStations.end());
  EXPECT_EQ(placed, loggedStations);
  ASSERT_GE(loggedStations.size(), 16u);
  EXPECT_EQ(std::vector(loggedStations.begin(), loggedStations.begin() + 3),
            (std::vector<double>{0, 0, 1}));
  EXPECT_LT(loggedStations.back(), 100.0);
}

class GpsRun : public WholeRun {
 protected:
  GpsRun() {
    receiverCapture = std::string(GC40_NMEA_CAPTURES) + "/garmin-10x.log";
    shots = "logging_gps_e2e_portrait";
  }
};

// A run with a GPS receiver that ends when the simulator falls silent: five
// breaks, the end, the menu back, and the file intact. The recorded sentences
// are one unbroken stretch of the receiver's lines (comment lines twice,
// checksum failures marked), each before the first reading that came after
// it, none before the start.
TEST_F(GpsRun, SentencesAmongTheReadingsUntilASilentMeterEndsTheRun) {
  createFileAndGo();
  ASSERT_TRUE(waitForRecords(15));
  shot(shots + "_logging");
  sim->signal(SIGSTOP);  // the cable is pulled
  ASSERT_TRUE(waitFront("NO CONNECTION", kLoggingScreen));
  send("key Return");
  ASSERT_TRUE(waitFront("GC40"));
  send("key x");  // the menu has its keys back
  EXPECT_EQ(gc40->waitForExit(10s), 0);

  const DataFileContents contents = file();
  EXPECT_TRUE(contents.problems.empty());
  const std::string breaks =
      "(X$CONN BREAK)(X$CONN BREAK)(X$CONN BREAK)(X$CONN BREAK)(X$CONN BREAK)";
  // On a busy machine what the link already held may still be read after the
  // first break; apart from that, the breaks and the end follow the run.
  const std::string shape = shapeOf(contents), start = "GHLBAZ*(X$STARTED)T";
  ASSERT_EQ(shape.substr(0, start.size()), start) << shape;
  std::string end = shape.substr(start.size());
  std::erase(end, 'T');
  EXPECT_EQ(end, breaks + "(X$CONN END)") << shape;
  expectEveryReadingInOrder(contents, 15);
  std::string recorded, sent, loops;
  std::optional<std::uint32_t> pendingTick;  // of the last sentence not yet followed by a reading
  for (const FileRecord& record : contents.records) {
    if (const auto* gps = std::get_if<GpsSentenceRecord>(&record.value)) {
      recorded += (gps->valid ? "\n@" : "\n?") + gps->sentence;
      if (!pendingTick) pendingTick = gps->tick;
    } else if (const auto* reading = std::get_if<ReadingRecord>(&record.value)) {
      EXPECT_LE(pendingTick.value_or(0), reading->tick) << "at " << record.offset;
      pendingTick.reset();
    }
  }
  // The capture's lines with their verdicts, as the receiver sends them over
  // and over: the recorded ones are a stretch of those, a line feed apart.
  for (const GpsLine& line : judgedGpsLines(testing::readBytes(*receiverCapture)))
    sent += (line.valid ? "\n@" : "\n?") + line.text;
  while (loops.size() < recorded.size() + sent.size()) loops += sent;
  EXPECT_GT(recorded.size(), sent.size());  // the whole capture at least once
  EXPECT_NE(loops.find(recorded), std::string::npos) << "not one stretch of the capture";
  EXPECT_NE(recorded.find("\n?"), std::string::npos);
}

// Storage that fills while the meter sends flat out: a small tmpfs over the
// data folder where the test may mount one, else a limit on gc40's file sizes.
class FullStorageRun : public WholeRun {
 protected:
  FullStorageRun() {
    simOptions = {"--period", "1"};
    fs::create_directories(storage / "DATA40");
    mounted = mount("gc40-test", (storage / "DATA40").c_str(), "tmpfs", 0, "size=40k") == 0;
    if (!mounted) fileSizeLimit = 40 * 1024;
  }
  ~FullStorageRun() override {
    if (mounted) umount2((storage / "DATA40").c_str(), MNT_DETACH);
  }
  bool mounted = false;
};

// The file stops at its last whole reading, with every reading gc40 called
// recorded in it; the operator is told at once and readings go on showing.
TEST_F(FullStorageRun, AFullDeviceStopsTheRecordingAndLosesNothingRecorded) {
  createFileAndGo();
  const std::string reason = mounted ? "No space left on device" : "File too large";
  ASSERT_TRUE(waitForLine("write-failed " + dataFile.string() + ": " + reason));
  const auto failedAt = std::chrono::steady_clock::now();
  ASSERT_TRUE(waitFront("WARNING", kLoggingScreen));
  EXPECT_LT(std::chrono::steady_clock::now() - failedAt, 1s);
  const std::size_t recorded = loggedStations.size();
  const DataFileContents contents = file();  // no problem: no torn record either
  EXPECT_TRUE(contents.problems.empty());
  EXPECT_EQ(countRecords(contents), recorded);
  EXPECT_GT(recorded, 500u);

  send("key Return");  // the box
  ASSERT_TRUE(waitFront("GC40", kLoggingScreen));
  // The readings still change on the screen (only on the small file system:
  // a picture is larger than the size limit).
  std::this_thread::sleep_for(300ms);  // a few hundred readings apart
  const std::string first = testing::readBytes(shot("full_storage_monitor1"));
  std::this_thread::sleep_for(300ms);
  EXPECT_TRUE(!mounted || testing::readBytes(shot("full_storage_monitor2")) != first);
  EXPECT_EQ(loggedStations.size(), recorded);
  EXPECT_EQ(gc40->stop(), 0);
}

bool simulatorRunsFor(const fs::path& folder) {
  return std::any_of(fs::directory_iterator("/proc"), {}, [&](const fs::directory_entry& entry) {
    const std::string commandLine = testing::readBytes(entry.path() / "cmdline");
    return commandLine.starts_with(GC40_SIM_BINARY) &&
           commandLine.find(folder.string()) != std::string::npos;
  });
}

class OwnSimulatorRun : public WholeRun {
 protected:
  OwnSimulatorRun() { ownSimulator = true; }
};

// Stop signals end gc40 in order: logging is paused and the file closed, the
// simulator ended, nothing left in the temporary folder; in Stand By the
// file is closed without a note, as Exit does.
TEST_F(OwnSimulatorRun, StopSignalsCloseTheFileAndLeaveNothingBehind) {
  createFileAndGo();
  ASSERT_TRUE(waitForRecords(5));
  EXPECT_TRUE(simulatorRunsFor(temporaryFolder));
  gc40->signal(SIGTERM);
  EXPECT_EQ(gc40->waitForExit(2s), 0);
  EXPECT_TRUE(file().problems.empty());
  EXPECT_EQ(shapeOf(file()), "GHLBAZ*(X$STARTED)T(X$PAUSED)");
  EXPECT_FALSE(simulatorRunsFor(temporaryFolder));
  EXPECT_TRUE(fs::is_empty(temporaryFolder));

  startGc40({"--storage", storage.string(), "--simulate", "--control"});
  send("key l");
  ASSERT_TRUE(waitFront("GC40", kLoggingScreen));
  dialog("c", "Create Data File", "E2E2");
  gc40->signal(SIGINT);
  EXPECT_EQ(gc40->waitForExit(2s), 0);
  dataFile = storage / "DATA40" / "E2E2.R40";
  EXPECT_EQ(shapeOf(file()), "GHLBAZ*");
  EXPECT_FALSE(simulatorRunsFor(temporaryFolder));
  EXPECT_TRUE(fs::is_empty(temporaryFolder));
}

}  // namespace
}  // namespace gc40
