#include "base/raw_file.h"

#include <fcntl.h>
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

bool RawFile::write(std::string_view bytes) {
  if (fd_ < 0) return false;
  const ssize_t written = ::write(fd_, bytes.data(), bytes.size());
  return written >= 0 && static_cast<std::size_t>(written) == bytes.size();
}

bool RawFile::sync() { return fd_ >= 0 && ::fsync(fd_) == 0; }

bool RawFile::close() {
  if (fd_ < 0) return true;
  const bool closed = ::close(fd_) == 0;
  fd_ = -1;
  return closed;
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
  for (const std::string& line : lines) ok = ok && file->write(line);
  ok = ok && file->sync();
  ok = file->close() && ok;
  std::error_code renameError;
  if (ok) std::filesystem::rename(temporary, path, renameError);
  if (ok && !renameError) return true;
  setError(error, renameError ? renameError.message() : std::string(std::strerror(errno)));
  std::error_code ignored;
  std::filesystem::remove(temporary, ignored);
  return false;
}

}  // namespace gc40
