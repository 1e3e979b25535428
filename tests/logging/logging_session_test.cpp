// The logging run driven as the window drives it, with a fake screen that
// notes what it is told, and the data file read back.

#include "logging/logging_session.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <variant>
#include <vector>

#include "base/number_text.h"
#include "base/text_codec.h"
#include "datafile/data_file_reader.h"
#include "datafile/record_writers.h"
#include "gps/gps_line_assembler.h"
#include "harness/temp_folder.h"
#include "logging/command_keys.h"

namespace gc40 {
namespace {

using Lines = std::vector<std::string>;

struct FakeClock : LoggingClock {
  std::uint32_t tick = 50'000;
  std::uint32_t tickCount() override { return tick; }
  LocalTime localTime() override { return {2026, 3, 15, 14, 5, 9, 123}; }
};

// Notes every call as a short line; the dialogs answer as the test says.
struct FakeView : LoggingView {
  FakeView(Settings& settings, FakeClock& clock) : settings(settings), clock(clock) {}

  void showButtons(const ButtonGroupShown& b) override {
    note(b.group == ButtonGroup::kPause     ? "pause button " + formatInteger(b.pauseButton)
         : b.group == ButtonGroup::kStandBy ? "stand by buttons"
                                            : "monitor buttons");
  }
  void showStateText(std::string_view text) override { note("state " + std::string(text)); }
  void showFileName(std::u16string_view text) override { note(wideToWindows1252(text)); }
  void showLineAndStation(std::u16string_view, std::string_view) override {}
  void showMessage(std::string_view text) override { note("message " + std::string(text)); }
  void showReading(const ReadingShown& shown) override { readings.push_back(shown); }
  void showGps(const GpsFieldsShown& g) override {
    note("gps " + g.fixCount.value_or("-") + "|" + g.satellites.value_or("-") + "|" +
         g.fix.value_or("-") + "|" + g.pdop.value_or("-"));
  }
  void redraw() override {}
  void addToProfile(const FiledValues&, std::int32_t, TraceFlags& traceContinues) override {
    traceContinues[0] = 1;
  }
  void restartProfile() override {}
  void beep() override { note("beep"); }
  std::optional<DataFile> runCreateFile() override {
    if (fileName.empty()) return std::nullopt;
    auto file = DataFile::createNew(folder.path() / fileName);
    if (file) writeNewFileHeader(*file, settings, clock.localTime(), clock.tick);
    if (file) file->setSyncHook([this] { syncs.push_back(clock.tick); });
    return file;
  }
  bool runNewLine() override { return newLine(); }
  bool runNewStation() override { return true; }
  std::optional<std::u16string> runComment() override {
    whileDialogUp();
    return u"too late";  // typed as the run ended: never written
  }
  bool runScale() override { return true; }
  void runDisplayOptions() override {}
  std::optional<int> runPopupMenu() override { return std::nullopt; }
  bool confirmExit() override { return yesToExit; }
  void showNoConnection() override { note("no connection"); }
  void closeDialogs() override { note("close dialogs"); }
  void showWriteFailure(const std::filesystem::path& path, std::string_view reason) override {
    note("write failed " + path.filename().string() + ": " + std::string(reason));
  }
  void leave() override { note("leave"); }

  void note(std::string line) { calls.push_back(std::move(line)); }
  bool called(std::string_view line) const { return std::ranges::find(calls, line) != calls.end(); }

  Settings& settings;
  FakeClock& clock;
  testing::TempFolder folder;
  Lines calls;
  std::vector<ReadingShown> readings;
  std::vector<std::uint32_t> syncs;        // the clock's tick at each sync of the data file
  std::string fileName = "RUN123456.R40";  // empty: Create File is cancelled
  std::function<bool()> newLine = [] { return false; };
  bool yesToExit = true;
  std::function<void()> whileDialogUp = [] {};
};

// Status bytes: 0x20 vertical, range 1000; 0x40 is the trigger.
constexpr char kReleased = 0x20;
constexpr char kPressed = 0x60;
const std::string kGga = "$GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,*47";
const std::string kGsa = "$GPGSA,A,3,04,05,,09,12,,,24,,,,,2.5,1.3,2.1*39";

struct LoggingRun : ::testing::Test {
  void start() { session.prepareRun(ProfileTraces{}); }
  void keys(std::string_view typed) {
    for (const char key : typed) session.onKey(key);
  }
  void startLogging() {
    start();
    keys("CG");  // Create File, Go
  }
  void staleTicks(int count) {
    for (int i = 0; i < count; ++i) {
      clock.tick += kConnectionTimeoutMs + 1;
      session.onTimerTick();
    }
  }
  std::string fileBytes() const { return testing::readBytes(view.folder.path() / view.fileName); }
  void reading(char status, std::string_view first = "012.0", std::string_view second = "-01.5") {
    const std::string record = "T" + std::string(1, status) + std::string(first).append(second);
    clock.tick += 100;
    session.onRecordArrived(clock.tick);
    session.onReading(record, clock.tick);
  }
  // The records after the new file's header: a reading's 12 bytes, a note or
  // comment as its letter and text, anything else as its letter.
  Lines recordsAfterHeader() const {
    Lines shortened;
    const std::string bytes = fileBytes();
    for (const FileRecord& record : readDataFile(bytes).records) {
      if (record.offset < 7 * dataRecordLength) continue;
      if (auto* reading = std::get_if<ReadingRecord>(&record.value))
        shortened.push_back(reading->instrumentRecord);
      else if (auto* text = std::get_if<TextRecord>(&record.value))
        shortened.push_back(text->typeLetter + text->text);
      else if (auto* gps = std::get_if<GpsSentenceRecord>(&record.value))
        shortened.push_back((gps->valid ? "@" : "?") + gps->sentence + "!" +
                            formatInteger(gps->tick));
      else
        shortened.push_back(bytes.substr(record.offset, 1));
    }
    return shortened;
  }

  // One read of the GPS port, as the reader hands it on.
  void gpsBytes(std::string_view bytes, std::uint32_t tick) {
    session.onGpsLines(judgeGpsChunk(gpsAssembler, bytes, tick));
  }

  Settings settings;
  RecordFramer framer;
  GpsLineAssembler gpsAssembler;
  FakeClock clock;
  FakeView view{settings, clock};
  LoggingSession session{settings, framer, view, clock};
};

TEST_F(LoggingRun, WalksFromMonitorToLoggingAndBackWithItsNotes) {
  settings.cyclesPerReading = 3;
  settings.pauseKey = 1;
  start();
  view.fileName.clear();
  session.onKey(kKeyReturn);  // Create File, cancelled
  EXPECT_EQ(session.state().loggingState, LoggingState::kMonitor);
  view.fileName = "RUN123456.R40";
  session.onButton(460);
  EXPECT_EQ(session.state().loggingState, LoggingState::kStandBy);
  EXPECT_TRUE(view.called("File:RUN12345"));
  reading(kReleased);  // shown, not recorded

  session.onKey(kKeyReturn);  // Go
  EXPECT_EQ(session.state().loggingState, LoggingState::kLogging);
  EXPECT_TRUE(view.called("pause button 1") && view.called("beep"));
  EXPECT_EQ(framer.recordsPerReading(), 3);
  reading(kReleased, "100.0", "-02.0");
  session.onKey('x');  // not the pause key
  reading(kReleased, "200.0", "-03.0");
  session.onButton(465);  // any button pauses
  EXPECT_EQ(session.state().loggingState, LoggingState::kStandBy);
  EXPECT_EQ(framer.recordsPerReading(), 1);
  reading(kReleased);

  view.yesToExit = false;
  EXPECT_FALSE(session.exitLogging(false));
  EXPECT_TRUE(session.running());
  view.yesToExit = true;
  session.onKey('X');
  EXPECT_FALSE(session.running());
  EXPECT_EQ(recordsAfterHeader(), (Lines{"X$STARTED", "T 100.0-02.0", "T 200.0-03.0", "X$PAUSED"}));

  view.calls.clear();  // a new run: Monitor leaves without a question
  view.yesToExit = false;
  start();
  session.onKey('u');
  EXPECT_EQ(view.calls, (Lines{"state Monitor", "monitor buttons", "leave"}));
}

// Held over several readings the trigger records one; released and pressed
// again it records the next. Before logging it only shows.
TEST_F(LoggingRun, ManualTriggerRecordsOneReadingPerPress) {
  settings.surveyMode = SurveyMode::kManual;
  settings.samplesPerReading = 1;
  start();
  reading(kPressed);
  EXPECT_EQ(view.readings.back().triggerIndicator, 'M');
  keys("cg");
  EXPECT_TRUE(view.called("pause button 4"));
  for (const char status : {kReleased, kPressed, kPressed, '\xE0', kReleased, kPressed})
    reading(status, "0" + formatInteger(view.readings.size()) + "0.0");
  EXPECT_EQ(recordsAfterHeader(), (Lines{"X$STARTED", "T`020.0-01.5", "T`060.0-01.5"}));
}

TEST_F(LoggingRun, ManualAverageOfThreeSamplesIsRecordedAsOneReading) {
  settings.surveyMode = SurveyMode::kManual;
  settings.samplesPerReading = 3;
  startLogging();
  reading(kPressed, "010.0", "-01.5");
  reading(kReleased, "020.0", "-02.5");  // the trigger is not needed once an average runs
  reading(kReleased, "031.0", "-03.5");
  reading(kReleased, "040.0", "-04.5");
  EXPECT_TRUE(view.called("message Sample 1   of 3  "));
  EXPECT_TRUE(view.called("message Sample 3   of 3  "));
  ASSERT_TRUE(view.readings[2].recorded);
  EXPECT_FLOAT_EQ(view.readings[2].reading.conductivity, 61.0f / 3 * -0.25f);
  EXPECT_EQ(recordsAfterHeader(), (Lines{"X$STARTED", "T +0020-0002"}));
}

TEST_F(LoggingRun, NewLineStartsTheStationsAgainAndTheFirstGroupStays) {
  settings.stationIncrement = 2.5f;
  view.newLine = [this] {
    settings.currentStation = 10.0;
    return true;
  };
  start();
  keys("CLG");
  std::vector<double> carried;
  for (int i = 0; i < 4; ++i) {
    carried.push_back(settings.currentStation);
    reading(kReleased);
  }
  EXPECT_EQ(carried, (std::vector<double>{10.0, 10.0, 12.5, 15.0}));
  EXPECT_EQ(view.readings.back().station, "17.50      ");
  const Lines records = recordsAfterHeader();
  EXPECT_EQ(Lines(records.begin(), records.begin() + 8),
            (Lines{"L", "B", "A", "Z", "*", "S", "*", "X$STARTED"}));
}

// Sentences are shown in every state but written, among the readings in the
// order they arrived, only while logging; a line without "$" is written twice
// and carries the tick of the last "$".
// While a dialog holds the display back they are still written, and neither
// shown nor counted.
TEST_F(LoggingRun, GpsSentencesAreWrittenOnlyWhileLoggingInArrivalOrder) {
  const std::string badGga = kGga.substr(0, kGga.size() - 1) + "6";
  start();
  gpsBytes(kGga + "\r\n", 1);  // Monitor: shown, not counted
  keys("CG");
  gpsBytes(kGga + "\r\n" + kGsa + "\r\n", 2);
  reading(kReleased);
  gpsBytes("ABC\r\n" + badGga + "\r\n", 3);
  session.setGpsDisplaySuppressed(true);
  gpsBytes(kGga + "\r\n", 4);
  session.setGpsDisplaySuppressed(false);
  session.onKey(' ');  // pause
  gpsBytes(kGga + "\r\n", 5);
  Lines shown;
  std::copy_if(view.calls.begin(), view.calls.end(), std::back_inserter(shown),
               [](const std::string& call) { return call.starts_with("gps "); });
  EXPECT_EQ(shown, (Lines{"gps -| 8|AGPS|-", "gps 1    | 8|AGPS|-", "gps -|-|-|2.5 ", "gps -|-|-|-",
                          "gps -|-|-|-", "gps -|??||-", "gps -| 8|AGPS|-"}));
  EXPECT_EQ(recordsAfterHeader(),
            (Lines{"X$STARTED", "@" + kGga + "!2", "@" + kGsa + "!2", "T 012.0-01.5", "?ABC!2",
                   "?ABC!2", "?" + badGga + "!3", "@" + kGga + "!4", "X$PAUSED"}));
}

// Stale ticks while the comment dialog is up: five breaks, the end, and the
// run closed under the dialog without a question.
TEST_F(LoggingRun, LostConnectionEndsTheRunThroughAnOpenDialog) {
  const std::uint32_t started = clock.tick;
  startLogging();
  view.yesToExit = false;
  view.whileDialogUp = [this, started] {
    clock.tick = started + kConnectionTimeoutMs;
    session.onTimerTick();  // not yet stale
    staleTicks(8);
  };
  session.onButton(460);  // pause
  session.onKey('c');
  EXPECT_EQ(recordsAfterHeader(),
            (Lines{"X$STARTED", "X$PAUSED", "X$CONN BREAK", "X$CONN BREAK", "X$CONN BREAK",
                   "X$CONN BREAK", "X$CONN BREAK", "X$CONN END"}));
  const auto end = std::find(view.calls.begin(), view.calls.end(), "no connection");
  EXPECT_EQ(Lines(end, view.calls.end()), (Lines{"no connection", "close dialogs", "leave"}));
  EXPECT_EQ(std::count(view.calls.begin(), view.calls.end(), "message Please Wait..."), 5);
  EXPECT_FALSE(session.running());
  const std::string bytes = fileBytes();
  EXPECT_EQ(bytes.substr(bytes.size() - 24, 12), "X$CONN END  ");
}

// Any good record, not only one that completes a reading, keeps the watch
// quiet, and one arriving after breaks starts the count toward the end afresh.
TEST_F(LoggingRun, EveryRecordRestartsTheConnectionWatch) {
  startLogging();
  for (int i = 0; i < 10; ++i) {
    session.onRecordArrived(clock.tick);
    clock.tick += kConnectionTimeoutMs;
    session.onTimerTick();
  }
  staleTicks(5);
  session.onRecordArrived(clock.tick);
  staleTicks(5);
  EXPECT_TRUE(session.running());
  staleTicks(1);
  EXPECT_FALSE(session.running());
  Lines expected{"X$STARTED"};
  expected.insert(expected.end(), 10, "X$CONN BREAK");
  expected.push_back("X$CONN END");
  EXPECT_EQ(recordsAfterHeader(), expected);
}

// A device that fills up in the middle of one read's GPS sentences: they
// went in one write, so none of them stays in the file, not even the GGA that
// had room. Recording stops there with the reason and the fix is not counted;
// from then on readings are shown but not taken for recorded, until a new
// file is created, which holds nothing of the failed read.
TEST_F(LoggingRun, AFullDeviceStopsTheRecordingAtItsLastWholeRecord) {
  constexpr std::size_t kHeaderAndStart = 8 * dataRecordLength;
  constexpr std::size_t kGgaRecords = 5 * dataRecordLength;  // four and the "!"
  {
    testing::FileSizeLimit limit(kHeaderAndStart + 2 * dataRecordLength + kGgaRecords + 50);
    startLogging();
    for (int i = 0; i < 2; ++i) reading(kReleased);
    gpsBytes(kGga + "\r\n" + kGsa + "\r\n", 1);  // the GSA's third record is cut short
    reading(kReleased);
    EXPECT_EQ(session.state().loggingState, LoggingState::kMonitor);
    session.onKey(' ');  // Monitor has no pause
  }
  std::vector<bool> recorded;
  for (const ReadingShown& shown : view.readings) recorded.push_back(shown.recorded);
  EXPECT_EQ(recorded, (std::vector<bool>{true, true, false}));
  const auto failed = std::find(view.calls.rbegin(), view.calls.rend(), "state Monitor").base();
  EXPECT_EQ(Lines(failed, view.calls.end()),
            (Lines{"", "monitor buttons", "write failed RUN123456.R40: File too large",
                   "gps -| 8|AGPS|-", "gps -|-|-|2.5 "}));
  EXPECT_EQ(recordsAfterHeader(), (Lines{"X$STARTED", "T 012.0-01.5", "T 012.0-01.5"}));
  EXPECT_EQ(std::filesystem::file_size(view.folder.path() / view.fileName),
            kHeaderAndStart + 2 * dataRecordLength);

  view.fileName = "RUN2.R40";  // room again: a new file records
  keys("CG");
  reading(kReleased);
  gpsBytes(kGga + "\r\n", 2);
  EXPECT_TRUE(view.readings.back().recorded);
  EXPECT_EQ(recordsAfterHeader(), (Lines{"X$STARTED", "T 012.0-01.5", "@" + kGga + "!2"}));
  EXPECT_EQ(view.calls.back(), "gps 1    | 8|AGPS|-");  // the first fix on file
}

// Written records reach the storage device within a second, not per
// reading: after readings as the links hand them on while the timer sleeps,
// then on the timer alone. The pause commits at once.
TEST_F(LoggingRun, WhatIsWrittenIsSyncedWithinASecondAndAtThePause) {
  startLogging();
  const std::uint32_t start = clock.tick;
  while (clock.tick < start + 2000) {
    reading(kReleased);  // 100 ms apart
    session.syncIfDue();
  }
  for (std::uint32_t timer = clock.tick; clock.tick < start + 4000;) {
    reading(kReleased);
    if (clock.tick >= timer + kConnectionTimeoutMs) session.onTimerTick(), timer = clock.tick;
  }
  const std::size_t whileLogging = view.syncs.size();
  EXPECT_LT(whileLogging, 10u);
  session.onKey(' ');
  EXPECT_EQ(view.syncs.size(), whileLogging + 1);
  for (const FileRecord& record : readDataFile(fileBytes()).records) {
    if (const auto* reading = std::get_if<ReadingRecord>(&record.value)) {
      const auto synced = std::lower_bound(view.syncs.begin(), view.syncs.end(), reading->tick);
      EXPECT_TRUE(synced != view.syncs.end() && *synced - reading->tick <= 1000u)
          << "at " << record.offset;
    }
  }
}

}  // namespace
}  // namespace gc40
