#include "base/raw_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <utility>

namespace gc40 {
namespace {

void setError(std::string* error, const std::string& text) {
  if (error) *error = text;
}

// False, with the system's text for `number` as the reason.
bool failed(std::string* error, int number) {
  setError(error, std::strerror(number));
  return false;
}

}  // namespace

RawFile::RawFile(RawFile&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}

RawFile::~RawFile() { close(); }

std::optional<RawFile> RawFile::open(const std::filesystem::path& path, int flags,
                                     std::string* error) {
  const int fd = ::open(path.c_str(), flags, 0644);
  if (fd < 0) {
    setError(error, std::strerror(errno));
    return std::nullopt;
  }
  return RawFile(fd);
}

std::optional<RawFile> RawFile::create(const std::filesystem::path& path, std::string* error) {
  return open(path, O_WRONLY | O_CREAT | O_TRUNC, error);
}

std::optional<RawFile> RawFile::createExclusive(const std::filesystem::path& path,
                                                std::string* error) {
  return open(path, O_WRONLY | O_CREAT | O_EXCL, error);
}

std::optional<RawFile> RawFile::openForAppend(const std::filesystem::path& path,
                                              std::string* error) {
  return open(path, O_WRONLY | O_CREAT | O_APPEND, error);
}

bool RawFile::write(std::string_view bytes, std::string* error) {
  if (fd_ < 0) return failed(error, EBADF);
  while (!bytes.empty()) {
    const ssize_t written = ::write(fd_, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    // A full device may take part of the text and refuse the rest; the next
    // call then gives the reason. Zero bytes taken is that refusal too.
    if (written <= 0) return failed(error, written == 0 ? ENOSPC : errno);
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

bool RawFile::sync(std::string* error) {
  return fd_ >= 0 && ::fdatasync(fd_) == 0 ? true : failed(error, fd_ < 0 ? EBADF : errno);
}

bool RawFile::truncate(std::uint64_t size, std::string* error) {
  return fd_ >= 0 && ::ftruncate(fd_, static_cast<off_t>(size)) == 0
             ? true
             : failed(error, fd_ < 0 ? EBADF : errno);
}

std::optional<std::uint64_t> RawFile::size() const {
  struct stat status {};
  if (fd_ < 0 || ::fstat(fd_, &status) != 0) return std::nullopt;
  return static_cast<std::uint64_t>(status.st_size);
}

bool RawFile::close(std::string* error) {
  if (fd_ < 0) return true;
  const bool closed = ::close(fd_) == 0;
  fd_ = -1;
  return closed ? true : failed(error, errno);
}

std::optional<std::string> readFilePrefix(const std::filesystem::path& path, std::size_t maxBytes) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return std::nullopt;
  std::string bytes;
  char chunk[65536];
  while (bytes.size() < maxBytes && in) {
    in.read(chunk, static_cast<std::streamsize>(std::min(sizeof chunk, maxBytes - bytes.size())));
    bytes.append(chunk, static_cast<std::size_t>(in.gcount()));
  }
  return bytes;
}

bool replaceFileByLines(const std::filesystem::path& path, const std::vector<std::string>& lines,
                        std::string* error) {
  std::filesystem::path temporary = path;
  temporary += ".new";
  std::optional<RawFile> file = RawFile::create(temporary, error);
  if (!file) return false;
  bool ok = true;
  for (const std::string& line : lines) ok = ok && file->write(line, error);
  ok = ok && file->sync(error);
  ok = file->close(ok ? error : nullptr) && ok;
  std::error_code renameError;
  if (ok) std::filesystem::rename(temporary, path, renameError);
  if (ok && !renameError) return true;
  if (renameError) setError(error, renameError.message());
  std::error_code ignored;
  std::filesystem::remove(temporary, ignored);
  return false;
}

}  // namespace gc40
