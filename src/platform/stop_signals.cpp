#include "platform/stop_signals.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace gc40 {
namespace {

int stopPipeWriteEnd = -1;

void onStopSignal(int) {
  const int saved = errno;
  const char byte = 1;
  [[maybe_unused]] const ssize_t ignored = ::write(stopPipeWriteEnd, &byte, 1);
  errno = saved;
}

bool configurePipeEnd(int fd) {
  return ::fcntl(fd, F_SETFD, FD_CLOEXEC) == 0 && ::fcntl(fd, F_SETFL, O_NONBLOCK) == 0;
}

}  // namespace

std::optional<int> watchStopSignals(std::string* error) {
  int ends[2];
  if (::pipe(ends) != 0 || !configurePipeEnd(ends[0]) || !configurePipeEnd(ends[1])) {
    *error = std::string("cannot create a pipe: ") + std::strerror(errno);
    return std::nullopt;
  }
  stopPipeWriteEnd = ends[1];
  struct sigaction action {};
  action.sa_handler = onStopSignal;
  ::sigemptyset(&action.sa_mask);
  action.sa_flags = 0;  // no SA_RESTART: a sleep ends early, the pipe says why
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    if (::sigaction(signal, &action, nullptr) != 0) {
      *error = std::string("cannot catch signals: ") + std::strerror(errno);
      return std::nullopt;
    }
  }
  ::signal(SIGPIPE, SIG_IGN);
  ::signal(SIGXFSZ, SIG_IGN);
  return ends[0];
}

}  // namespace gc40
