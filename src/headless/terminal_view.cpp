#include "headless/terminal_view.h"

#include <QCoreApplication>
#include <system_error>

#include "base/text_codec.h"
#include "datafile/create_data_file.h"
#include "datafile/data_file_naming.h"
#include "datafile/record_writers.h"
#include "headless/terminal_texts.h"
#include "instrument/serial_ports.h"
#include "logging/command_keys.h"
#include "logging/line_station_model.h"
#include "logging/logging_texts.h"
#include "logging/status_texts.h"
#include "settings/setting_choices.h"
#include "settings/settings_file.h"

namespace gc40 {
namespace {

constexpr int kInPlaceRefreshMs = 250;  // as often as the screen repaints
constexpr int kLineEveryMs = 1000;      // one line a second into a file or a pipe
constexpr std::size_t kFileNameMaxCharacters = 64;
constexpr std::size_t kStationMaxCharacters = 24;

void saveSettings(LoggerContext& context, Terminal& terminal) {
  const SettingsFileResult saved =
      loadOrSaveSettings(context.settings, context.storage.settingsFolder(), true);
  if (saved.outcome == SettingsFileResult::Outcome::kFailed) terminal.showEvent(saved.error);
}

}  // namespace

TerminalView::TerminalView(LoggerContext& context, Terminal& terminal, LoggingClock* clock)
    : context_(context),
      terminal_(terminal),
      ownClock_(clock ? nullptr : std::make_unique<MachineClock>()),
      clock_(clock ? *clock : *ownClock_),
      session_(context.settings, framer_, *this, clock_),
      links_(context, session_, framer_, clock_) {
  connect(&terminal_, &Terminal::bytesRead, this, &TerminalView::takeBytes);
  connect(&statusTimer_, &QTimer::timeout, this, &TerminalView::refreshStatus);
  statusTimer_.setInterval(terminal_.statusInPlace() ? kInPlaceRefreshMs : kLineEveryMs);
}

TerminalView::~TerminalView() { links_.stop(); }

void TerminalView::startRun(std::unique_ptr<QSerialPort> instrumentPort, bool autoStart) {
  const Settings& settings = context_.settings;
  status_.setGpsEnabled(settings.gpsEnabled == 1);
  status_.setLineAndStation(settings.surveyLine, stationText(settings.currentStation));
  if (const std::optional<QString> gpsFailure = links_.start(std::move(instrumentPort)))
    terminal_.showEvent(std::string(kCannotOpenGpsPort) + ": " + gpsFailure->toStdString());
  if (links_.gpsRunning()) {
    const GpsStatus& gps = session_.gpsStatus();
    showGps({.activity = std::string(1, gps.gpsActivityMark),
             .fixCount = gpsFixCountText(gps.gpsFixCount)});
  }
  statusTimer_.start();
  refreshStatus();
  if (!autoStart) return;
  // The first button of Monitor is Create File, of Stand By Go.
  creatingWithoutAsking_ = true;
  session_.onButton(kFirstLoggingButtonId);
  creatingWithoutAsking_ = false;
  if (session_.state().loggingState == LoggingState::kStandBy)
    session_.onButton(kFirstLoggingButtonId);
}

void TerminalView::shutDown() { session_.shutDown(); }

void TerminalView::takeBytes(const QByteArray& bytes) {
  for (TerminalKey& key : decodeTerminalKeys({bytes.constData(), std::size_t(bytes.size())}))
    keys_.push_back(std::move(key));
  takeKeys();
}

// Keys go to the question while one is asked and to the session otherwise.
// A key that opens a question leaves those typed after it waiting here: the
// question takes them, and whatever follows its answer goes to the session
// once the question has returned.
void TerminalView::takeKeys() {
  while (!keys_.empty()) {
    const TerminalKey key = std::move(keys_.front());
    if (prompt_) {
      if (prompt_->step() != TerminalPrompt::Step::kAsking) return;
      keys_.pop_front();
      if (prompt_->feed(key) != TerminalPrompt::Step::kAsking && promptLoop_) promptLoop_->quit();
      refreshStatus();
      continue;
    }
    keys_.pop_front();
    session_.onKey(key.code);
  }
}

bool TerminalView::ask(TerminalPrompt prompt, std::string* answer) {
  prompt_ = std::move(prompt);
  if (!terminal_.statusInPlace()) terminal_.showEvent(prompt_->shown());
  refreshStatus();
  takeKeys();  // typed ahead
  if (prompt_->step() == TerminalPrompt::Step::kAsking) {
    QEventLoop loop;
    promptLoop_ = &loop;
    loop.exec();  // ended by the answer, closeDialogs or the end of the program
  }
  const bool accepted = prompt_->step() == TerminalPrompt::Step::kAccepted;
  if (answer) *answer = prompt_->answer();
  prompt_.reset();
  refreshStatus();
  return accepted && session_.running();
}

void TerminalView::refreshStatus() {
  if (prompt_ && terminal_.statusInPlace()) {
    terminal_.showStatus(prompt_->shown());
    return;
  }
  terminal_.showStatus(status_.text(clock_.tickCount()));
}

void TerminalView::showButtons(const ButtonGroupShown& buttons) {
  if (!terminal_.interactive()) return;
  terminal_.showEvent(keysText(buttons, effectiveIndex(context_.settings, kPauseKeySetting)));
}

void TerminalView::showStateText(std::string_view text) {
  status_.setState(text);
  terminal_.showEvent(text);
}

void TerminalView::showFileName(std::u16string_view text) { status_.setFile(text); }

void TerminalView::showLineAndStation(std::u16string_view line, std::string_view station) {
  status_.setLineAndStation(line, station);
}

void TerminalView::showMessage(std::string_view text) { status_.setMessage(text); }

void TerminalView::showReading(const ReadingShown& shown) {
  status_.showReading(shown, context_.settings, clock_.tickCount());
}

void TerminalView::showGps(const GpsFieldsShown& shown) { status_.showGps(shown); }

void TerminalView::redraw() { refreshStatus(); }

// No profile here: nothing is joined, so nothing to mark.
void TerminalView::addToProfile(const FiledValues&, std::int32_t, TraceFlags&) {}

void TerminalView::beep() { terminal_.bell(); }

// The name as the Create File dialog takes it: in the data folder, ".R40"
// added when it has no extension.
std::optional<DataFile> TerminalView::createFile(const std::string& name) {
  if (name.empty() || name.find('/') != std::string::npos) {
    terminal_.showEvent("Create File: a name within " + context_.storage.dataFolder().string() +
                        ", please");
    return std::nullopt;
  }
  std::filesystem::path path = context_.storage.dataFolder() / name;
  if (!path.has_extension()) path += kDataFileExtension;
  std::error_code ignored;
  if (std::filesystem::exists(path, ignored)) {
    terminal_.showEvent(kFileExistsText);
    return std::nullopt;
  }
  std::string error;
  std::optional<DataFile> file =
      createFileWithHeader(path, context_.settings, clock_.localTime(), clock_.tickCount(), &error);
  terminal_.showEvent(file ? "Created " + path.string()
                           : "Cannot create " + path.string() + ": " + error);
  return file;
}

std::optional<DataFile> TerminalView::runCreateFile() {
  const std::filesystem::path folder = context_.storage.dataFolder();
  std::error_code ignored;
  std::filesystem::create_directories(folder, ignored);
  std::string name = proposeDataFileName(folder, clock_.localTime());
  if (creatingWithoutAsking_) return createFile(name);
  // Asked again until a file is made or the operator gives up, as the dialog does.
  while (ask(TerminalPrompt::line(kCreateFileLabel, name, kFileNameMaxCharacters), &name)) {
    if (std::optional<DataFile> file = createFile(name)) return file;
  }
  return std::nullopt;
}

bool TerminalView::runNewLine() {
  const NewLineControls proposal = openNewLine(context_.settings);
  if (!ask(TerminalPrompt::yesNo(newLineQuestion(proposal)))) return false;
  acceptNewLine(context_.settings, proposal);
  saveSettings(context_, terminal_);
  return true;
}

bool TerminalView::runNewStation() {
  const NewStationControls controls = openNewStation(context_.settings);
  std::string station;
  if (!ask(TerminalPrompt::line(newStationLabel(controls), "", kStationMaxCharacters), &station))
    return false;
  acceptNewStation(context_.settings, utf8ToWide(station));
  return true;
}

std::optional<std::u16string> TerminalView::runComment() {
  std::string text;
  if (!ask(TerminalPrompt::line(kCommentLabel, "", kCommentReadLength), &text)) return std::nullopt;
  return commentText(utf8ToWide(text));
}

bool TerminalView::confirmExit() {
  return ask(TerminalPrompt::yesNo(std::string(kConfirmExitText)));
}

void TerminalView::showNoConnection() {
  meterLost_ = true;
  terminal_.showEvent(kNoConnectionEvent);
}

// The question goes unanswered, which the session takes as Cancel or No.
void TerminalView::closeDialogs() {
  if (!prompt_ || prompt_->step() != TerminalPrompt::Step::kAsking) return;
  prompt_->feed({kKeyEscape, {}});
  if (promptLoop_) promptLoop_->quit();
}

void TerminalView::showWriteFailure(const std::filesystem::path& path, std::string_view reason) {
  std::string text = "WARNING: " + writeFailureText(path.string(), reason);
  for (std::size_t end; (end = text.find('\n')) != std::string::npos; text.erase(0, end + 1))
    terminal_.showEvent(std::string_view(text).substr(0, end));
  terminal_.showEvent(text);
}

void TerminalView::leave() {
  links_.stop();
  statusTimer_.stop();
  refreshStatus();
  emit runEnded(meterLost_ ? kRunEndedWithoutMeter : kRunEndedByOperator);
}

}  // namespace gc40
