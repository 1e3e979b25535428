// Whole logging runs of the real gc40 against gc40-sim over a pseudo-terminal,
// driven by keys as an operator would drive them; the data file each run
// leaves is read back record by record.

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "base/number_text.h"
#include "datafile/data_file_reader.h"
#include "gps/gps_line_assembler.h"
#include "support/child_process.h"
#include "support/settings_listing.h"
#include "support/temp_folder.h"

namespace gc40 {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

constexpr int kCyclesPerReading = 2;  // Auto mode at the default 5 readings a second
const std::string kLoggingScreen = "LoggingWnd";

class WholeRun : public ::testing::Test {
 protected:
  void SetUp() override {
    // The first value of each record counts the simulator's records, so a
    // lost or doubled one shows.
    std::vector<std::string> simArguments{"--link", meter.string(), "--pattern", "sequence"};
    std::vector<std::string> gc40Arguments{"--storage", (folder.path() / "GC40").string(),
                                           "--port",    "COM1=" + meter.string(),
                                           "--control", "--scale",
                                           "1"};
    if (receiverCapture) {  // the GPS receiver on COM2:, enabled in the settings
      simArguments.insert(simArguments.end(), {"--gps-link", receiver.string(), "--nmea",
                                               *receiverCapture, "--nmea-period", "5", "--loop"});
      gc40Arguments.insert(gc40Arguments.end(), {"--port", "COM2=" + receiver.string()});
      testing::writeBytes(folder.path() / "GC40" / "FLDINI" / "GC40.INI",
                          testing::fileWithLine(36, "1"));
    }
    sim = std::make_unique<testing::ChildProcess>(GC40_SIM_BINARY, simArguments,
                                                  folder.path() / "sim-errors.txt");
    ASSERT_EQ(sim->readLine(5s), "gc40-sim: ready " + meter.string());
    if (receiverCapture) {
      ASSERT_EQ(sim->readLine(5s), "gc40-sim: ready " + receiver.string());
    }
    setenv("HOME", folder.path().c_str(), 1);
    gc40 = std::make_unique<testing::ChildProcess>(GC40_BINARY, gc40Arguments,
                                                   folder.path() / "errors.txt");
    ASSERT_TRUE(waitFront("GC40"));
  }

  void TearDown() override {
    if (sim) sim->signal(SIGCONT);
  }

  // Waits until gc40 says the window in front is `title` (with the keys on
  // `screen` when one is named).
  bool waitFront(const std::string& title, const std::string& screen = "") {
    return waitForLine("front " + title + (screen.empty() ? "" : " / " + screen));
  }

  bool waitForLine(const std::string& wanted) {
    while (const auto line = gc40->readLine(10s))
      if (*line == wanted) return true;
    ADD_FAILURE() << "gc40 never said: " << wanted;
    return false;
  }

  void send(const std::string& command) { ASSERT_TRUE(gc40->send(command + "\n")); }

  // Opens a dialog with `key`, types `text` (if any) and confirms it.
  void dialog(const std::string& key, const std::string& title, const std::string& text = "") {
    send("key " + key);
    ASSERT_TRUE(waitFront(title, kLoggingScreen));
    if (!text.empty()) send("text " + text);
    send("key Return");
    ASSERT_TRUE(waitFront("GC40", kLoggingScreen));
  }

  DataFileContents file() const { return readDataFile(testing::readBytes(dataFile)); }

  // Waits until the file holds `count` records that `match`.
  bool waitForRecords(const std::function<bool(const RecordValue&)>& match, std::size_t count) {
    for (int i = 0; i < 500; ++i) {
      std::size_t found = 0;
      for (const FileRecord& record : file().records) found += match(record.value);
      if (found >= count) return true;
      std::this_thread::sleep_for(20ms);
    }
    ADD_FAILURE() << "the file never held " << count << " such records";
    return false;
  }

  static bool isReading(const RecordValue& value) {
    return std::holds_alternative<ReadingRecord>(value);
  }
  static std::function<bool(const RecordValue&)> isNote(const std::string& text) {
    return [text](const RecordValue& value) {
      const auto* note = std::get_if<TextRecord>(&value);
      return note && note->typeLetter == 'X' && note->text == text;
    };
  }

  // Create File through the real dialog, then Go.
  void createFileAndGo() {
    send("key l");
    ASSERT_TRUE(waitFront("GC40", kLoggingScreen));
    dialog("c", "Create Data File", "E2E");
    send("key g");
  }

  testing::TempFolder folder;
  fs::path meter = folder.path() / "meter";
  fs::path receiver = folder.path() / "receiver";
  std::optional<std::string> receiverCapture;  // set before SetUp for a GPS run
  fs::path dataFile = folder.path() / "GC40" / "DATA40" / "E2E.R40";
  std::unique_ptr<testing::ChildProcess> sim;
  std::unique_ptr<testing::ChildProcess> gc40;
};

// One letter per record ('T' for every reading, 'X'/'C' with the text), so
// the run's shape reads as one string.
std::string shapeOf(const DataFileContents& contents) {
  std::string shape;
  for (const FileRecord& record : contents.records) {
    std::visit(
        [&shape](const auto& value) {
          using Kind = std::decay_t<decltype(value)>;
          if constexpr (std::is_same_v<Kind, IdentificationRecord>) shape += "G";
          if constexpr (std::is_same_v<Kind, FileNameRecord>) shape += "H";
          if constexpr (std::is_same_v<Kind, LineRecord>) shape += "L";
          if constexpr (std::is_same_v<Kind, LineStartRecord>) shape += "B";
          if constexpr (std::is_same_v<Kind, LineAttributesRecord>) shape += "A";
          if constexpr (std::is_same_v<Kind, DateTimeRecord>) shape += "Z";
          if constexpr (std::is_same_v<Kind, TimeMarkRecord>) shape += "*";
          if constexpr (std::is_same_v<Kind, StationRecord>) shape += "S";
          if constexpr (std::is_same_v<Kind, ReadingRecord>)
            if (shape.empty() || shape.back() != 'T') shape += "T";
          if constexpr (std::is_same_v<Kind, TextRecord>)
            shape += std::string("(") + value.typeLetter + value.text + ")";
          if constexpr (std::is_same_v<Kind, GpsSentenceRecord>) shape += "@";
        },
        record.value);
  }
  return shape;
}

// Within each stretch of logging the readings carry every second record of
// the simulator's count, none missing or doubled, with ticks that never go
// back.
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
    if (lastCount) {
      EXPECT_EQ(count, *lastCount + kCyclesPerReading) << "at " << record.offset;
    }
    EXPECT_GE(reading->tick, lastTick) << "at " << record.offset;
    EXPECT_EQ(reading->instrumentRecord[0], 'T');
    lastCount = count;
    lastTick = reading->tick;
  }
  EXPECT_GE(readings, atLeast);
}

TEST_F(WholeRun, LinesStationsCommentsAndPausesAreRecordedInOrder) {
  createFileAndGo();
  ASSERT_TRUE(waitForRecords(isReading, 6));
  send("key Space");  // any key pauses by default
  ASSERT_TRUE(waitForRecords(isNote("$PAUSED"), 1));
  dialog("l", "New Line");  // the proposal as it stands
  dialog("c", "Enter Comment", "ROCK OUTCROP AT 12M");
  dialog("n", "New Station", "100");
  const std::size_t before = file().records.size();
  send("key g");
  ASSERT_TRUE(waitForRecords(isReading, 10));
  send("key Space");
  ASSERT_TRUE(waitForRecords(isNote("$PAUSED"), 2));
  send("key x");
  ASSERT_TRUE(waitFront("Confirm Exit", kLoggingScreen));
  send("click Yes");
  ASSERT_TRUE(waitFront("GC40"));
  send("key x");
  EXPECT_EQ(gc40->waitForExit(10s), 0);

  const DataFileContents contents = file();
  EXPECT_TRUE(contents.problems.empty());
  EXPECT_EQ(shapeOf(contents),
            "GHLBAZ*(X$STARTED)T(X$PAUSED)LBAZ*S*(CROCK OUTCRO)S*(X$STARTED)T(X$PAUSED)");
  EXPECT_GT(contents.records.size(), before);
  expectEveryReadingInOrder(contents, 10);
  // The new line is the proposal (line 0 + 1, walked back North from where
  // the last one ended); the new station is the one typed.
  std::vector<const FileRecord*> lines, stations;
  for (const FileRecord& record : contents.records) {
    if (std::holds_alternative<LineRecord>(record.value)) lines.push_back(&record);
    if (std::holds_alternative<StationRecord>(record.value)) stations.push_back(&record);
  }
  ASSERT_EQ(lines.size(), 2u);
  ASSERT_EQ(stations.size(), 2u);
  EXPECT_EQ(std::get<LineRecord>(lines[1]->value).name, "1.00");
  const auto& attributes = std::get<LineAttributesRecord>((lines[1] + 2)->value);
  EXPECT_EQ(attributes.direction, 'N');
  EXPECT_EQ(attributes.stationIncrement, -1.0);
  EXPECT_EQ(std::get<StationRecord>(stations[1]->value).station, 100.0);
}

TEST_F(WholeRun, ASilentMeterEndsTheRunWithoutLosingTheFile) {
  createFileAndGo();
  ASSERT_TRUE(waitForRecords(isReading, 3));
  sim->signal(SIGSTOP);  // the cable is pulled
  ASSERT_TRUE(waitFront("NO CONNECTION", kLoggingScreen));
  send("key Return");
  ASSERT_TRUE(waitFront("GC40"));

  const DataFileContents contents = file();
  EXPECT_TRUE(contents.problems.empty());
  const std::string shape = shapeOf(contents);
  const std::string breaks =
      "(X$CONN BREAK)(X$CONN BREAK)(X$CONN BREAK)(X$CONN BREAK)(X$CONN BREAK)";
  EXPECT_EQ(shape, "GHLBAZ*(X$STARTED)T" + breaks + "(X$CONN END)") << shape;
  expectEveryReadingInOrder(contents, 3);
  send("key x");  // the menu has its keys back
  EXPECT_EQ(gc40->waitForExit(10s), 0);
}

class GpsRun : public WholeRun {
 protected:
  GpsRun() { receiverCapture = std::string(GC40_NMEA_CAPTURES) + "/garmin-10x.log"; }
};

// The capture's lines with the logging run's verdicts, as the receiver sends
// them over and over.
std::vector<GpsLine> captureLines(const std::string& path) {
  std::vector<GpsLine> lines;
  GpsLineAssembler assembler;
  assembler.feed(testing::readBytes(path), 0, [&](std::string_view text, std::uint32_t tick) {
    judgeGpsLine(text, tick, [&](const GpsLine& line) { lines.push_back(line); });
  });
  return lines;
}

// The recorded sentences are one unbroken stretch of the receiver's lines
// (comment lines twice, checksum failures marked), each before the first
// reading that came after it.
TEST_F(GpsRun, EverySentenceThatArrivedWhileLoggingIsRecordedAmongTheReadings) {
  createFileAndGo();
  ASSERT_TRUE(waitForRecords(isReading, 15));
  const std::string shot = GC40_TEST_OUTPUT_DIR "/logging_gps_e2e.png";
  send("shot " + shot);
  ASSERT_TRUE(waitForLine("shot " + shot));
  send("key Space");
  ASSERT_TRUE(waitForRecords(isNote("$PAUSED"), 1));
  send("key x");
  ASSERT_TRUE(waitFront("Confirm Exit", kLoggingScreen));
  send("click Yes");
  ASSERT_TRUE(waitFront("GC40"));

  const DataFileContents contents = file();
  EXPECT_TRUE(contents.problems.empty());
  expectEveryReadingInOrder(contents, 15);
  std::vector<GpsLine> recorded;
  std::optional<std::uint32_t> pendingTick;  // of the last sentence not yet followed by a reading
  for (const FileRecord& record : contents.records) {
    if (const auto* gps = std::get_if<GpsSentenceRecord>(&record.value)) {
      recorded.push_back({gps->sentence, gps->valid, gps->tick});
      if (!pendingTick) pendingTick = gps->tick;
    } else if (const auto* reading = std::get_if<ReadingRecord>(&record.value)) {
      if (pendingTick) {
        EXPECT_LE(*pendingTick, reading->tick) << "at " << record.offset;
      }
      pendingTick.reset();
    }
  }
  const std::vector<GpsLine> sent = captureLines(*receiverCapture);
  ASSERT_GT(recorded.size(), sent.size());  // the whole capture at least once
  const auto sameLine = [](const GpsLine& a, const GpsLine& b) {
    return a.text == b.text && a.valid == b.valid;
  };
  bool unbroken = false;
  for (std::size_t start = 0; start < sent.size() && !unbroken; ++start) {
    unbroken = true;
    for (std::size_t i = 0; i < recorded.size() && unbroken; ++i)
      unbroken = sameLine(recorded[i], sent[(start + i) % sent.size()]);
  }
  EXPECT_TRUE(unbroken);
  EXPECT_NE(std::count_if(recorded.begin(), recorded.end(), [](auto& l) { return !l.valid; }), 0);
}

}  // namespace
}  // namespace gc40
