#pragma once
// The real gc40 (offscreen, --control) in a storage folder of its own, its
// meter port (COM1) and GPS port (COM2) on pseudo-terminals the bench owns,
// so the bench knows when each byte went out. Driven by the keys an operator
// would press; gc40 is ended and the folder removed when the rig goes, also
// when a measurement fails (every failure is a BenchError naming what).

#include <chrono>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "datafile/data_file_reader.h"
#include "e2e/data_file_watch.h"
#include "e2e/process_usage.h"
#include "e2e/pty_feed.h"
#include "gc40-sim/pty_link.h"
#include "harness/child_process.h"
#include "harness/temp_folder.h"

namespace gc40::bench {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

struct BenchError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Makes Ctrl-C and SIGTERM end a measurement as a failure does, so that what
// it started is ended.
void catchStopSignals();

// Milliseconds between two moments.
double millisecondsBetween(Clock::time_point from, Clock::time_point to);

// A pseudo-terminal under `folder`, named for error messages.
PtyLink makePty(const std::filesystem::path& folder, const std::string& name);

class Gc40Rig {
 public:
  static constexpr const char* kFileName = "BENCH";

  // Starts gc40 with the settings of a survey at 11 readings a second with
  // GPS on, and waits for its main window.
  explicit Gc40Rig(const std::string& gc40Binary);
  Gc40Rig(const Gc40Rig&) = delete;
  Gc40Rig& operator=(const Gc40Rig&) = delete;
  ~Gc40Rig();

  // From exec to the main window's first "front GC40".
  double startUpMilliseconds() const { return startUpMs_; }

  void send(const std::string& command);
  // Reads gc40's lines until `wanted` (or, with `prefix`, a line starting so).
  void waitForLine(const std::string& wanted, std::chrono::seconds timeout = 10s,
                   bool prefix = false);
  void waitFront(const std::string& front, std::chrono::seconds timeout = 10s);
  // Waits for `front`, and then until no other window has come in front for
  // `quiet`: a progress bar that shows after a while has had its chance.
  void waitFrontSettled(const std::string& front, std::chrono::seconds timeout,
                        std::chrono::milliseconds quiet);

  // Monitor/Log, Create File, Go; returns once "$STARTED" is in the file, so
  // every reading sent from then on belongs in it.
  void startLogging();
  // Pause ("$PAUSED" in the file), Exit and Yes: back at the main menu.
  void stopLogging();

  // Waits until `until` or until something happens (the file grows, a port
  // has room, gc40 says something), moving the feeds' bytes along, and returns
  // the file's new records. gc40's lines are read and checked on the way.
  std::vector<FileRecord> pump(Clock::time_point until, const std::vector<PtyFeed*>& feeds);
  // When the last pump read the file: the moment its records were seen.
  Clock::time_point takenAt() const { return takenAt_; }

  // Exit from the main menu; throws unless gc40 ends with 0.
  void exitFromMenu();

  int meterMaster() const { return meter_.masterFd(); }
  int gpsMaster() const { return gps_.masterFd(); }
  ProcessUsage usage() const;
  const std::filesystem::path& folder() const { return folder_.path(); }
  std::filesystem::path dataFile() const;
  const DataFileWatch& watch() const { return *watch_; }
  DataFileWatch& watch() { return *watch_; }
  // Every "front" line gc40 has printed, in order.
  const std::vector<std::string>& fronts() const { return fronts_; }

 private:
  void noteLine(const std::string& line);
  std::string errorsSoFar();

  testing::TempFolder folder_;
  PtyLink meter_;
  PtyLink gps_;
  std::unique_ptr<testing::ChildProcess> gc40_;
  std::unique_ptr<DataFileWatch> watch_;
  std::vector<std::string> fronts_;
  double startUpMs_ = 0;
  Clock::time_point takenAt_;
};

}  // namespace gc40::bench
