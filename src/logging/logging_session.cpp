#include "logging/logging_session.h"

#include <array>
#include <utility>
#include <vector>

#include "base/number_text.h"
#include "base/text_codec.h"
#include "datafile/data_records.h"
#include "datafile/record_writers.h"
#include "instrument/reading_decoder.h"
#include "logging/command_keys.h"
#include "logging/logging_texts.h"
#include "logging/reading_decision.h"
#include "logging/status_texts.h"
#include "settings/setting_choices.h"

namespace gc40 {
namespace {

// The lines' records one after another, each lettered by its verdict.
std::vector<DataRecord> gpsRecords(std::span<const GpsLine> lines) {
  using namespace recordLetter;
  std::vector<DataRecord> records;
  for (const GpsLine& line : lines) {
    const std::vector<DataRecord> formed =
        formatGpsRecords(line.text, line.tick, line.valid ? kGpsValid : kGpsInvalid,
                         line.valid ? kGpsValidContinuation : kGpsInvalidContinuation);
    records.insert(records.end(), formed.begin(), formed.end());
  }
  return records;
}

}  // namespace

LoggingSession::LoggingSession(Settings& settings, RecordFramer& framer, LoggingView& view,
                               LoggingClock& clock)
    : settings_(settings), framer_(framer), view_(view), clock_(clock) {}

void LoggingSession::prepareRun(const ProfileTraces& traces) {
  state_ = startingRunState(settings_, traces.readingsPerStation);
  dataFile_.reset();
  running_ = true;
  watchStopped_ = false;
  lastRecordTick_ = clock_.tickCount();
  // A run given up for lack of records must not leave its count behind: at 6
  // or more the watch would never end the next run.
  staleTicks_ = 0;
  framer_.restartCount();
  framer_.setRecordsPerReading(1);
  view_.showStateText(stateText(LoggingState::kMonitor));
  view_.showButtons({ButtonGroup::kMonitor, 0, state_.selectedButton});
}

void LoggingSession::onButton(int id) {
  if (!running_) return;
  carryOut(buttonCommand(state_.loggingState, id));
}

void LoggingSession::onKey(int keyCode) {
  if (!running_ || state_.keysActive != 1) return;
  carryOut(keyCommand(state_.loggingState, effectiveIndex(settings_, kPauseKeySetting),
                      state_.selectedButton, keyCode));
}

void LoggingSession::onMenuCommand(int id) {
  if (!running_) return;
  switch (id) {
    case kScaleMenuCommand: {
      const bool accepted = view_.runScale();
      if (!running_) return;
      if (accepted) state_.traceContinues = {};
      view_.restartProfile();  // after Cancel too: the dialog reports nothing back
      view_.redraw();
      return;
    }
    case kDisplayOptionsMenuCommand:
      view_.runDisplayOptions();
      if (running_) view_.redraw();
      return;
    case kRedrawCommand:
      view_.redraw();
      return;
    default:  // kHideMenuCommand only closes the menu
      return;
  }
}

void LoggingSession::carryOut(std::optional<int> command) {
  if (!command) return;
  const std::optional<LoggingAction> action = actionFor(state_.loggingState, *command);
  if (!action) return;
  switch (*action) {
    case LoggingAction::kCreateFile:
      return createFile();
    case LoggingAction::kGo:
      return go();
    case LoggingAction::kPause:
      return pause();
    case LoggingAction::kNewLine:
      return newLine();
    case LoggingAction::kNewStation:
      return newStation();
    case LoggingAction::kComment:
      return comment();
    case LoggingAction::kPopupMenu:
      return popupMenu();
    case LoggingAction::kExit:
      exitLogging(false);
      return;
  }
}

void LoggingSession::createFile() {
  std::optional<DataFile> file = view_.runCreateFile();
  // A file made while the run was being given up is closed again unused.
  if (!running_ || !file) return;
  dataFile_.emplace(std::move(*file));
  unsyncedSince_ = clock_.tickCount();  // the header
  view_.showFileName(fileText(windows1252ToWide(dataFile_->baseName())));
  view_.showStateText(stateText(LoggingState::kStandBy));
  showLineAndStation();
  showStandByButtons();
  state_.loggingState = LoggingState::kStandBy;
}

void LoggingSession::go() {
  view_.showStateText(stateText(LoggingState::kLogging));
  state_.selectedButton = 0;
  view_.showButtons(
      {ButtonGroup::kPause,
       pauseButtonNumber(effectiveIndex(settings_, kPauseKeySetting), state_.surveyMode),
       state_.selectedButton});
  if (state_.surveyMode != SurveyMode::kManual) settings_.surveyModeSetting = state_.surveyMode;
  framer_.restartCount();
  state_.beepCounter = 0;
  framer_.setRecordsPerReading(state_.surveyMode == SurveyMode::kAuto ? settings_.cyclesPerReading
                                                                      : 1);
  state_.loggingState = LoggingState::kLogging;
  view_.beep();
  state_.manualTriggerLatch = kLatchSkip;
  view_.restartProfile();
  state_.traceContinues = {};
  writeNote(kStartedNote);
}

void LoggingSession::pause() {
  if (!writeNote(kPausedNote)) return;
  // Closing and reopening commits what was recorded so far.
  unsyncedSince_.reset();
  if (!dataFile_->reopenAtEnd()) return abandonFile();
  view_.showStateText(stateText(LoggingState::kStandBy));
  showStandByButtons();
  stopTakingReadings();
  state_.loggingState = LoggingState::kStandBy;
}

// Back to one record per reading, as outside Logging.
void LoggingSession::stopTakingReadings() {
  framer_.setRecordsPerReading(1);
  framer_.restartCount();
  if (state_.surveyMode == SurveyMode::kWheel) settings_.surveyModeSetting = SurveyMode::kAuto;
}

void LoggingSession::newLine() {
  const bool accepted = view_.runNewLine();
  if (!running_) return;
  if (accepted) {
    showLineAndStation();
    state_.stationStarted = 0;
    state_.traceContinues = {};
    const LocalTime now = clock_.localTime();
    toFile([&](DataFile& file) {
      return writeLineBlock(file, settings_, now) && writeTimeMark(file, now, clock_.tickCount());
    });
    writeStationMark();
    syncFile();
  }
  view_.redraw();
}

void LoggingSession::newStation() {
  const bool accepted = view_.runNewStation();
  if (!running_) return;
  if (accepted) {
    state_.traceContinues = {};
    showLineAndStation();
    state_.stationStarted = 0;
    writeStationMark();
  }
  view_.redraw();
}

void LoggingSession::comment() {
  const std::optional<std::u16string> text = view_.runComment();
  if (!running_) return;
  if (text) {
    toFile([&](DataFile& file) {
      return writeTextRecord(file, *text, recordLetter::kComment, clock_.tickCount());
    });
  }
  view_.redraw();
}

void LoggingSession::popupMenu() {
  const std::optional<int> command = view_.runPopupMenu();
  if (!running_) return;
  view_.redraw();
  if (command) onMenuCommand(*command);
}

void LoggingSession::showStandByButtons() {
  state_.buttonCount = kStandByButtonCount;
  state_.selectedButton = 0;
  view_.showButtons({ButtonGroup::kStandBy, 0, state_.selectedButton});
}

void LoggingSession::showLineAndStation() {
  view_.showLineAndStation(settings_.surveyLine, stationText(settings_.currentStation));
}

void LoggingSession::onRecordArrived(std::uint32_t tick) {
  lastRecordTick_ = tick;
  staleTicks_ = 0;
}

void LoggingSession::onReading(std::string_view framedRecord, std::uint32_t arrival) {
  if (!running_) return;
  const std::string record(framedRecord);  // the framer's buffer is not ours to keep
  ReadingShown shown;
  // Decoded in the survey's own mode: Manual hides the mark even while an
  // average runs the run in Auto.
  shown.reading = decodeInstrumentRecord(record, settings_, shown.filed);
  const bool pressed = triggerPressed(record);
  state_.manualTriggerLatch =
      nextTriggerLatch(state_.manualTriggerLatch, pressed, state_.surveyMode);
  // The survey's own mode counts, not the run's, which averaging sets to Auto.
  shown.triggerIndicator =
      triggerIndicatorText(pressed, effectiveSurveyMode(settings_), state_.loggingState).front();
  const bool logging = state_.loggingState == LoggingState::kLogging;
  const bool triggered = logging && state_.manualTriggerLatch == kLatchRecord;
  bool averaged = false;
  if (triggered && state_.averagingActive == 1) {
    const std::int32_t samples = effectiveSamplesPerReading(settings_.samplesPerReading);
    const AverageProgress progress =
        addAverageSample(state_, samples, record, shown.reading, shown.filed);
    view_.showMessage(averagingText(progress.sample, samples));
    averaged = progress.complete;
  }
  shown.recordedStation = settings_.currentStation;
  shown.recorded = triggered && (state_.averagingActive != 1 || averaged) &&
                   recordReading(record, arrival, averaged);
  if (shown.recorded) {
    shown.station = stationText(settings_.currentStation);
    if (state_.readingsPerStation > 1) shown.count = formatInteger(state_.readingsAtStation);
  }
  view_.showReading(shown);
  if (shown.recorded) {
    view_.addToProfile(shown.filed, state_.readingsAtStation, state_.traceContinues);
  }
}

// Only a reading that is on file counts toward its station.
bool LoggingSession::recordReading(std::string_view record, std::uint32_t arrival, bool averaged) {
  std::optional<std::array<float, 2>> rawAverages;
  if (averaged) rawAverages = {state_.averagedRaw1, state_.averagedRaw2};
  const std::int32_t repeat = state_.readingsAtStation + 1;
  const bool written = toFile([&](DataFile& file) {
    return writeReadingRecord(file, recordedRecordText(record, rawAverages, repeat), arrival);
  });
  if (!written) return false;
  state_.readingsAtStation = repeat;
  if (countTowardBeep(state_, effectiveIndex(settings_, kAudioSetting) == 1)) view_.beep();
  advanceStation(state_, settings_);
  return true;
}

void LoggingSession::onTimerTick() {
  if (!running_ || watchStopped_) return;
  syncIfDue();
  if (clock_.tickCount() - lastRecordTick_ <= kConnectionTimeoutMs) return;
  if (++staleTicks_ < kStaleTicksToGiveUp) {
    reportConnectionBreak();
  } else {
    giveUpConnection();
  }
}

void LoggingSession::syncIfDue() {
  if (unsyncedSince_ && clock_.tickCount() - *unsyncedSince_ >= kSyncAfterMs) syncFile();
}

void LoggingSession::reportConnectionBreak() {
  writeNote(kConnectionBreakNote);
  state_.traceContinues = {};
  view_.showMessage(kPleaseWaitText);
}

void LoggingSession::giveUpConnection() {
  watchStopped_ = true;
  writeNote(kConnectionEndNote);
  state_.loggingState = LoggingState::kStandBy;
  view_.showMessage("");
  view_.showNoConnection();
  view_.closeDialogs();
  exitLogging(true);
}

bool LoggingSession::exitLogging(bool forced) {
  if (!running_) return true;
  if (state_.loggingState != LoggingState::kMonitor && !forced) {
    const bool yes = view_.confirmExit();
    // The connection watch may have ended the run while the question was up.
    if (!running_) return true;
    if (!yes) {
      view_.redraw();
      return false;
    }
  }
  endRun();
  view_.leave();
  return true;
}

// A receiver sends a fix's sentences together: one write takes them all.
// They are shown after it, so that a fix is counted only once it is on file.
void LoggingSession::onGpsLines(std::span<const GpsLine> lines) {
  if (lines.empty()) return;
  const bool recorded =
      state_.loggingState == LoggingState::kLogging &&
      toFile([&](DataFile& file) { return file.writeRecords(gpsRecords(lines)); });
  if (gpsDisplaySuppressed_) return;
  for (const GpsLine& line : lines)
    view_.showGps(onGpsSentence(gps_, line.text, line.valid, recorded));
}

void LoggingSession::shutDown() {
  if (!running_) return;
  if (state_.loggingState == LoggingState::kLogging) pause();
  exitLogging(true);
}

void LoggingSession::endRun() {
  if (dataFile_ && !dataFile_->close())
    view_.showWriteFailure(dataFile_->path(), dataFile_->failure());
  dataFile_.reset();
  unsyncedSince_.reset();
  gps_.gpsFixCount = 0;
  state_.keysActive = 0;
  state_.loggingState = LoggingState::kMonitor;
  state_.readingsAtStation = 0;
  running_ = false;
}

// Notes go only into an open file; Monitor has none.
bool LoggingSession::writeNote(std::u16string_view note) {
  return toFile([&](DataFile& file) {
    return writeTextRecord(file, note, recordLetter::kEvent, clock_.tickCount());
  });
}

void LoggingSession::writeStationMark() {
  const LocalTime now = clock_.localTime();
  toFile([&](DataFile& file) {
    return writeStationRecord(file, settings_, now) && writeTimeMark(file, now, clock_.tickCount());
  });
}

template <typename Write>
bool LoggingSession::toFile(Write&& write) {
  if (!dataFile_) return false;
  if (!write(*dataFile_)) {
    abandonFile();
    return false;
  }
  if (!unsyncedSince_) unsyncedSince_ = clock_.tickCount();
  return true;
}

void LoggingSession::syncFile() {
  unsyncedSince_.reset();
  if (dataFile_ && !dataFile_->sync()) abandonFile();
}

// The file already ends at its last whole record: it is closed as it stands
// and the run goes back to Monitor, so that no later reading is taken for
// recorded. Create File starts afresh once there is room.
void LoggingSession::abandonFile() {
  const std::filesystem::path path = dataFile_->path();
  const std::string reason = dataFile_->failure();
  dataFile_->close();
  dataFile_.reset();
  unsyncedSince_.reset();
  stopTakingReadings();
  state_.loggingState = LoggingState::kMonitor;
  state_.selectedButton = 0;
  view_.showStateText(stateText(LoggingState::kMonitor));
  view_.showFileName(u"");
  view_.showButtons({ButtonGroup::kMonitor, 0, state_.selectedButton});
  view_.showWriteFailure(path, reason);
}

}  // namespace gc40
