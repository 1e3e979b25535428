#include "base/raw_file.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <utility>

#ifdef _WIN32
#include <io.h>
#define GC40_OPEN ::_wopen
#define GC40_WRITE ::_write
#define GC40_CLOSE ::_close
#define GC40_FSYNC ::_commit
#define GC40_BINARY O_BINARY
#else
#include <unistd.h>
#define GC40_OPEN ::open
#define GC40_WRITE ::write
#define GC40_CLOSE ::close
#define GC40_FSYNC ::fsync
#define GC40_BINARY 0
#endif

namespace gc40 {
namespace {

int openFlags(RawFile::Mode mode) {
  switch (mode) {
    case RawFile::Mode::kCreateAlways:
      return O_WRONLY | O_CREAT | O_TRUNC;
    case RawFile::Mode::kCreateNew:
      return O_WRONLY | O_CREAT | O_EXCL;
    case RawFile::Mode::kAppendExisting:
      return O_WRONLY | O_APPEND;
  }
  return O_WRONLY;
}

void setError(std::string* error, const std::string& text) {
  if (error) *error = text;
}

}  // namespace

RawFile::RawFile(RawFile&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}

RawFile& RawFile::operator=(RawFile&& other) noexcept {
  if (this != &other) {
    close();
    fd_ = std::exchange(other.fd_, -1);
  }
  return *this;
}

RawFile::~RawFile() { close(); }

std::optional<RawFile> RawFile::open(const std::filesystem::path& path, Mode mode,
                                     std::string* error) {
  const int fd = GC40_OPEN(path.c_str(), openFlags(mode) | GC40_BINARY, 0644);
  if (fd < 0) {
    setError(error, std::strerror(errno));
    return std::nullopt;
  }
  return RawFile(fd);
}

bool RawFile::write(std::string_view bytes) {
  if (fd_ < 0) return false;
  const auto written = GC40_WRITE(fd_, bytes.data(), static_cast<unsigned>(bytes.size()));
  return written >= 0 && static_cast<std::size_t>(written) == bytes.size();
}

bool RawFile::sync() { return fd_ >= 0 && GC40_FSYNC(fd_) == 0; }

bool RawFile::close() {
  if (fd_ < 0) return true;
  const bool closed = GC40_CLOSE(fd_) == 0;
  fd_ = -1;
  return closed;
}

std::optional<std::string> readFilePrefix(const std::filesystem::path& path, std::size_t maxBytes) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return std::nullopt;
  std::string bytes(maxBytes, '\0');
  in.read(bytes.data(), static_cast<std::streamsize>(maxBytes));
  bytes.resize(static_cast<std::size_t>(in.gcount()));
  return bytes;
}

bool replaceFileByLines(const std::filesystem::path& path, const std::vector<std::string>& lines,
                        std::string* error) {
  std::filesystem::path temporary = path;
  temporary += ".new";
  std::optional<RawFile> file = RawFile::open(temporary, RawFile::Mode::kCreateAlways, error);
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
