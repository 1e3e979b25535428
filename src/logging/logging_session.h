#pragma once
// The logging screen's behaviour for one Monitor/Log run: the Monitor, Stand
// By and Logging states, their commands, each reading's record decision, the
// connection watch and the exit. It owns the data file while one is open and
// tells its view what to show.

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "datafile/data_file.h"
#include "gps/gps_line_assembler.h"
#include "gps/gps_status.h"
#include "instrument/record_framer.h"
#include "logging/logging_view.h"
#include "logging/run_state.h"
#include "settings/profile_setup.h"
#include "settings/settings.h"

namespace gc40 {

inline constexpr std::uint32_t kConnectionTimeoutMs = 300;  // also the timer's period
inline constexpr std::int32_t kStaleTicksToGiveUp = 6;
// Written records wait at most this long, plus one timer period or one
// reading, before they are synced to storage, so a power cut loses less than
// a second.
inline constexpr std::uint32_t kSyncAfterMs = 500;

class LoggingSession {
 public:
  // All four must outlive the session. The session sets `framer`'s records
  // per reading as the run goes.
  LoggingSession(Settings& settings, RecordFramer& framer, LoggingView& view, LoggingClock& clock);

  // The Monitor/Log start: a fresh run in Monitor, the connection watch
  // counting from now, one record per reading until Go.
  void prepareRun(const ProfileTraces& traces);

  // Button 460.. clicked.
  void onButton(int id);
  // A key, as a plain key code of ui/key_codes.h (Enter 13, space 32).
  void onKey(int keyCode);
  // kScaleMenuCommand, kDisplayOptionsMenuCommand, kRedrawCommand, kHideMenuCommand.
  void onMenuCommand(int id);
  // A good record arrived at `tick`: the instrument is still there.
  void onRecordArrived(std::uint32_t tick);
  // A complete reading: the record that completed it and its arrival tick.
  void onReading(std::string_view record, std::uint32_t arrival);
  // The connection timer fired.
  void onTimerTick();
  // Written records that have waited kSyncAfterMs go to the storage device.
  // The timer's tick does this too, but it sleeps while records flow.
  void syncIfDue();
  // The lines one read of the GPS port completed, in order, with their
  // verdicts: recorded while logging, all in one write, and each shown
  // unless the display is suppressed.
  void onGpsLines(std::span<const GpsLine> lines);
  // `gpsDisplaySuppressed`: the screen sets it while one of its dialogs is up.
  void setGpsDisplaySuppressed(bool suppressed) { gpsDisplaySuppressed_ = suppressed; }
  // Leaves the window, asking first when a file is open unless forced. False
  // when the operator chose to stay.
  bool exitLogging(bool forced);
  // The program is being ended: a recording is paused as Pause does, then the
  // run is left as Exit does, without a question.
  void shutDown();

  bool running() const { return running_; }
  const LoggingRunState& state() const { return state_; }
  const DataFile* dataFile() const { return dataFile_ ? &*dataFile_ : nullptr; }
  const GpsStatus& gpsStatus() const { return gps_; }

 private:
  void carryOut(std::optional<int> command);
  void createFile();
  void go();
  void pause();
  void stopTakingReadings();
  void newLine();
  void newStation();
  void comment();
  void popupMenu();
  void showStandByButtons();
  void showLineAndStation();

  bool recordReading(std::string_view record, std::uint32_t arrival, bool averaged);

  void reportConnectionBreak();
  void giveUpConnection();

  bool writeNote(std::u16string_view note);
  void writeStationMark();
  // Writes into the open file, if any, through `write`: a failure stops the
  // recording (abandonFile), a success is synced within kSyncAfterMs.
  template <typename Write>
  bool toFile(Write&& write);
  void syncFile();
  void abandonFile();
  void endRun();

  Settings& settings_;
  RecordFramer& framer_;
  LoggingView& view_;
  LoggingClock& clock_;
  LoggingRunState state_;
  std::optional<DataFile> dataFile_;
  std::optional<std::uint32_t> unsyncedSince_;  // tick of the oldest write not yet synced
  bool running_ = false;
  bool watchStopped_ = false;  // the watch has given up; later ticks mean nothing
  std::uint32_t lastRecordTick_ = 0;
  std::int32_t staleTicks_ = 0;  // timer ticks in a row without a record
  GpsStatus gps_;
  bool gpsDisplaySuppressed_ = false;
};

}  // namespace gc40
