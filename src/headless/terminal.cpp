#include "headless/terminal.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>

#include "headless/terminal_status.h"

namespace gc40 {
namespace {

constexpr std::string_view kClearToEnd = "\x1b[K";

// For exits that skip destructors: the terminal must not stay raw.
termios modesAtStart;
void restoreModesAtExit() { ::tcsetattr(STDIN_FILENO, TCSANOW, &modesAtStart); }

void writeAll(int fd, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(fd, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;  // a closed pipe or a full disk: the logger goes on without it
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

std::size_t terminalColumns() {
  winsize size{};
  if (::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return 80;
  return size.ws_col;
}

// Only the foreground job may change the terminal's modes; one started in
// the background would be stopped for trying.
bool ownsTerminal() { return ::isatty(STDIN_FILENO) && ::tcgetpgrp(STDIN_FILENO) == ::getpgrp(); }

}  // namespace

Terminal::Terminal(QObject* parent) : QObject(parent) {
  statusInPlace_ = ::isatty(STDOUT_FILENO);
  termios modes{};
  if (ownsTerminal() && ::tcgetattr(STDIN_FILENO, &modes) == 0) {
    savedModes_ = modes;
    modesAtStart = modes;
    std::atexit(restoreModesAtExit);
    // Each key as it is pressed, not echoed; Ctrl-C still signals.
    modes.c_lflag &= ~tcflag_t(ICANON | ECHO);
    modes.c_cc[VMIN] = 1;
    modes.c_cc[VTIME] = 0;
    ::tcsetattr(STDIN_FILENO, TCSANOW, &modes);
  }
  // Standard input may be closed altogether (a service): then no keys come.
  // Nor from a terminal this job does not own: reading it would stop the
  // program (started with & from a shell) until brought to the foreground.
  if (::fcntl(STDIN_FILENO, F_GETFD) == -1) return;
  if (::isatty(STDIN_FILENO) && !ownsTerminal()) return;
  input_ = std::make_unique<QSocketNotifier>(STDIN_FILENO, QSocketNotifier::Read);
  connect(input_.get(), &QSocketNotifier::activated, this, &Terminal::readInput);
}

Terminal::~Terminal() {
  if (statusShown_) writeAll(STDOUT_FILENO, "\n");
  if (savedModes_) ::tcsetattr(STDIN_FILENO, TCSANOW, &*savedModes_);
}

// One read per wake-up never blocks. At the end of the input (or a terminal
// that has gone) the notifier is switched off: it would wake the loop for
// ever.
void Terminal::readInput() {
  char bytes[256];
  const ssize_t got = ::read(STDIN_FILENO, bytes, sizeof bytes);
  if (got < 0 && (errno == EINTR || errno == EAGAIN)) return;
  if (got <= 0) {
    input_->setEnabled(false);
    return;
  }
  emit bytesRead(QByteArray(bytes, static_cast<qsizetype>(got)));
}

void Terminal::showStatus(std::string_view line) {
  if (!statusInPlace_) {
    writeAll(STDOUT_FILENO, std::string(line) + "\n");
    return;
  }
  // One column short of the width: a line that fills it moves the cursor on.
  const std::string shown = fitToColumns(line, terminalColumns() - 1);
  writeAll(STDOUT_FILENO, "\r" + shown + std::string(kClearToEnd));
  statusShown_ = true;
}

void Terminal::clearStatus() {
  if (!statusShown_) return;
  writeAll(STDOUT_FILENO, "\r" + std::string(kClearToEnd));
  statusShown_ = false;
}

void Terminal::showEvent(std::string_view line) {
  clearStatus();
  writeAll(STDERR_FILENO, std::string(line) + "\n");
}

void Terminal::bell() {
  if (statusInPlace_) writeAll(STDOUT_FILENO, "\a");
}

}  // namespace gc40
