#include "gc40-sim/pty_link.h"

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "base/number_text.h"

namespace gc40 {
namespace {

namespace fs = std::filesystem;

bool isReplaceable(const fs::path& link, std::string* error) {
  struct stat info {};
  if (::lstat(link.c_str(), &info) != 0) {
    if (errno == ENOENT) return true;
    *error = "gc40-sim: cannot look at " + link.string() + ": " + std::strerror(errno);
    return false;
  }
  if (S_ISLNK(info.st_mode)) return true;
  *error = "gc40-sim: " + link.string() + " exists and is not a symbolic link; not replacing it";
  return false;
}

// Raw 9600 8N1, so a CR reaches the reader as a CR. Opening the slave once
// matters beyond that: on Linux the master reports POLLHUP only after a slave
// has been opened and closed again, so until this close a slave that nobody
// holds would look like one that somebody holds.
bool makeSlaveRaw(const fs::path& slave) {
  const int fd = ::open(slave.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (fd < 0) return false;
  termios mode{};
  bool ok = ::tcgetattr(fd, &mode) == 0;
  if (ok) {
    ::cfmakeraw(&mode);
    mode.c_cflag &= ~CSTOPB;
    mode.c_cflag |= CLOCAL | CREAD;
    ok = ::cfsetispeed(&mode, B9600) == 0 && ::cfsetospeed(&mode, B9600) == 0 &&
         ::tcsetattr(fd, TCSANOW, &mode) == 0;
  }
  const int reason = errno;
  ::close(fd);
  errno = reason;
  return ok;
}

// Through a temporary link and a rename, so that the path never goes missing
// while an old link is replaced.
bool pointLinkAt(const fs::path& link, const fs::path& target) {
  fs::path temporary = link;
  temporary += ".gc40-sim-" + formatInteger(::getpid());
  ::unlink(temporary.c_str());
  if (::symlink(target.c_str(), temporary.c_str()) != 0) return false;
  if (::rename(temporary.c_str(), link.c_str()) == 0) return true;
  const int reason = errno;
  ::unlink(temporary.c_str());
  errno = reason;
  return false;
}

}  // namespace

std::optional<PtyLink> PtyLink::create(const fs::path& link, std::string* error) {
  if (!isReplaceable(link, error)) return std::nullopt;
  const int master = ::posix_openpt(O_RDWR | O_NOCTTY);
  const auto fail = [&](const std::string& what) {
    *error = "gc40-sim: cannot " + what + ": " + std::strerror(errno);
    if (master >= 0) ::close(master);
    return std::nullopt;
  };
  if (master < 0) return fail("open a pseudo-terminal for " + link.string());
  if (::fcntl(master, F_SETFD, FD_CLOEXEC) != 0 || ::fcntl(master, F_SETFL, O_NONBLOCK) != 0 ||
      ::grantpt(master) != 0 || ::unlockpt(master) != 0) {
    return fail("set up a pseudo-terminal for " + link.string());
  }
  const char* name = ::ptsname(master);
  if (name == nullptr) return fail("name the pseudo-terminal for " + link.string());
  const fs::path slave = name;
  if (!makeSlaveRaw(slave)) return fail("set up " + slave.string() + " for " + link.string());
  if (!pointLinkAt(link, slave)) return fail("create the link " + link.string());
  return PtyLink(master, slave, link);
}

PtyLink::PtyLink(PtyLink&& other) noexcept
    : master_(std::exchange(other.master_, -1)),
      slave_(std::move(other.slave_)),
      link_(std::move(other.link_)) {}

PtyLink::~PtyLink() {
  if (master_ < 0) return;
  // Another simulator may have taken the path over since; its link stays.
  std::error_code ignored;
  if (fs::read_symlink(link_, ignored) == slave_) ::unlink(link_.c_str());
  ::close(master_);
}

bool PtyLink::readerPresent() const {
  pollfd hangUp{.fd = master_, .events = 0, .revents = 0};
  return ::poll(&hangUp, 1, 0) >= 0 && (hangUp.revents & POLLHUP) == 0;
}

}  // namespace gc40
