#include "e2e/gc40_rig.h"

#include <poll.h>
#include <signal.h>

#include <atomic>

#include "settings/settings_file.h"

namespace gc40::bench {
namespace {

namespace fs = std::filesystem;

std::atomic<bool> stopRequested = false;

void requestStop(int) { stopRequested = true; }

const std::string kMainFront = "front GC40";
const std::string kLoggingFront = "front GC40 / LoggingWnd";

// 11 readings a second (Survey Setup's "Readings/s" 20: one record a reading
// at the meter's 91 ms), GPS input on COM2.
void writeSettings(const fs::path& storage) {
  Settings settings;
  settings.readingInterval = 0.05f;
  computeSamplesPerReading(settings);
  settings.gpsEnabled = 1;
  settings.gpsPort = 1;
  const SettingsFileResult result = loadOrSaveSettings(settings, storage / "FLDINI", true);
  if (result.outcome != SettingsFileResult::Outcome::kSaved) throw BenchError(result.error);
  fs::create_directories(storage / "DATA40");
}

}  // namespace

void catchStopSignals() {
  struct sigaction action {};
  action.sa_handler = requestStop;
  sigaction(SIGINT, &action, nullptr);
  sigaction(SIGTERM, &action, nullptr);
}

double millisecondsBetween(Clock::time_point from, Clock::time_point to) {
  return std::chrono::duration<double, std::milli>(to - from).count();
}

PtyLink makePty(const fs::path& folder, const std::string& name) {
  std::string error;
  std::optional<PtyLink> link = PtyLink::create(folder / name, &error);
  if (!link) throw BenchError(error);
  return std::move(*link);
}

Gc40Rig::Gc40Rig(const std::string& gc40Binary)
    : meter_(makePty(folder_.path(), "meter")), gps_(makePty(folder_.path(), "receiver")) {
  const fs::path storage = folder_.path() / "GC40", temporary = folder_.path() / "tmp",
                 runtime = folder_.path() / "runtime";
  writeSettings(storage);
  fs::create_directories(temporary);
  fs::create_directories(runtime);
  fs::permissions(runtime, fs::perms::owner_all);
  watch_ = std::make_unique<DataFileWatch>(dataFile());
  const std::vector<std::string> arguments{"-platform",
                                           "offscreen",
                                           "--storage",
                                           storage.string(),
                                           "--control",
                                           "--scale",
                                           "1",
                                           "--port",
                                           "COM1=" + meter_.linkPath().string(),
                                           "--port",
                                           "COM2=" + gps_.linkPath().string()};
  const Clock::time_point started = Clock::now();
  gc40_ = std::make_unique<testing::ChildProcess>(
      gc40Binary, arguments, folder_.path() / "errors.txt",
      std::vector<std::string>{"HOME=" + folder_.path().string(), "TMPDIR=" + temporary.string(),
                               "XDG_RUNTIME_DIR=" + runtime.string()});
  if (gc40_->pid() <= 0) throw BenchError("cannot start " + gc40Binary);
  waitFront(kMainFront);
  startUpMs_ = millisecondsBetween(started, Clock::now());
}

Gc40Rig::~Gc40Rig() = default;

fs::path Gc40Rig::dataFile() const {
  return folder_.path() / "GC40" / "DATA40" / (std::string(kFileName) + ".R40");
}

std::string Gc40Rig::errorsSoFar() {
  const std::optional<int> exit = gc40_ ? gc40_->waitForExit(100ms) : std::nullopt;
  const std::string errors = testing::readBytes(folder_.path() / "errors.txt");
  return (exit ? "; gc40 has ended with exit code " + std::to_string(*exit) : "") +
         (errors.empty() ? "" : "\ngc40's standard error:\n" + errors);
}

void Gc40Rig::send(const std::string& command) {
  if (!gc40_->send(command + "\n")) throw BenchError("gc40 has gone" + errorsSoFar());
}

void Gc40Rig::noteLine(const std::string& line) {
  if (line.starts_with("front")) fronts_.push_back(line);
  if (line.starts_with("write-failed")) throw BenchError("gc40: " + line);
}

void Gc40Rig::waitForLine(const std::string& wanted, std::chrono::seconds timeout, bool prefix) {
  const Clock::time_point deadline = Clock::now() + timeout;
  while (!stopRequested) {
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
    const std::optional<std::string> line = gc40_->readLine(std::max(left, 0ms));
    if (!line) break;
    noteLine(*line);
    if (*line == wanted || (prefix && line->starts_with(wanted))) return;
  }
  std::string fronts;
  for (const std::string& front : fronts_) fronts += "\n  " + front;
  throw BenchError("gc40 never said \"" + wanted + "\"; the windows it showed:" + fronts +
                   errorsSoFar());
}

void Gc40Rig::waitFront(const std::string& front, std::chrono::seconds timeout) {
  waitForLine(front, timeout);
}

void Gc40Rig::waitFrontSettled(const std::string& front, std::chrono::seconds timeout,
                               std::chrono::milliseconds quiet) {
  waitFront(front, timeout);
  const std::size_t frontsBefore = fronts_.size();
  while (const std::optional<std::string> line = gc40_->readLine(quiet)) {
    noteLine(*line);
    if (fronts_.size() > frontsBefore) return waitFrontSettled(front, timeout, quiet);
  }
}

void Gc40Rig::startLogging() {
  send("key l");
  waitFront(kLoggingFront);
  send("key c");
  waitFront("front Create Data File / LoggingWnd");
  send(std::string("text ") + kFileName);
  send("key Return");
  waitFront(kLoggingFront);
  send("key g");
  const Clock::time_point deadline = Clock::now() + 10s;
  while (Clock::now() < deadline)
    for (const FileRecord& record : pump(deadline, {}))
      if (const auto* note = std::get_if<TextRecord>(&record.value);
          note && note->text == "$STARTED")
        return;
  throw BenchError("no \"$STARTED\" in " + dataFile().string() + errorsSoFar());
}

void Gc40Rig::stopLogging() {
  send("key Space");  // any key pauses by default
  const Clock::time_point deadline = Clock::now() + 30s;
  bool paused = false;
  while (!paused && Clock::now() < deadline)
    for (const FileRecord& record : pump(deadline, {}))
      if (const auto* note = std::get_if<TextRecord>(&record.value);
          note && note->text == "$PAUSED")
        paused = true;
  if (!paused) throw BenchError("no \"$PAUSED\" in " + dataFile().string() + errorsSoFar());
  send("key x");
  waitFront("front Confirm Exit / LoggingWnd");
  send("click Yes");
  waitFront(kMainFront);
}

std::vector<FileRecord> Gc40Rig::pump(Clock::time_point until, const std::vector<PtyFeed*>& feeds) {
  if (stopRequested) throw BenchError("stopped by a signal");
  std::vector<pollfd> watches{{watch_->fd(), POLLIN, 0}, {gc40_->outputFd(), POLLIN, 0}};
  for (const PtyFeed* feed : feeds) feed->addWatches(watches);
  auto left = std::chrono::duration_cast<std::chrono::milliseconds>(until - Clock::now());
  if (watch_->fd() < 0) left = std::min(left, 50ms);  // nothing wakes us when the file grows
  poll(watches.data(), watches.size(), int(std::max<std::int64_t>(left.count(), 0)));
  for (PtyFeed* feed : feeds) feed->flush();
  std::vector<FileRecord> records = watch_->takeNew();
  takenAt_ = Clock::now();
  if (watches[1].revents != 0) {
    while (const std::optional<std::string> line = gc40_->readLine(0ms)) noteLine(*line);
    if (watches[1].revents & POLLHUP) throw BenchError("gc40 has ended" + errorsSoFar());
  }
  return records;
}

void Gc40Rig::exitFromMenu() {
  send("key x");
  const std::optional<int> code = gc40_->waitForExit(30s);
  if (code != 0) throw BenchError("gc40 did not exit with 0" + errorsSoFar());
}

ProcessUsage Gc40Rig::usage() const {
  const std::optional<ProcessUsage> usage = processUsage(gc40_->pid());
  if (!usage) throw BenchError("gc40 has gone");
  return *usage;
}

}  // namespace gc40::bench
