#pragma once
// Files written the way the logger needs: unbuffered, each write() one system
// call, so what has been written is in the file even if the program dies next.

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace gc40 {

class RawFile {
 public:
  RawFile(const RawFile&) = delete;
  RawFile& operator=(const RawFile&) = delete;
  RawFile(RawFile&& other) noexcept;
  RawFile& operator=(RawFile&&) = delete;
  ~RawFile();

  // Creates or truncates the file. On failure returns nullopt and, when
  // asked, the system's reason.
  static std::optional<RawFile> create(const std::filesystem::path& path,
                                       std::string* error = nullptr);
  // Creates the file only when nothing of that name exists, so an existing
  // file is never overwritten.
  static std::optional<RawFile> createExclusive(const std::filesystem::path& path,
                                                std::string* error = nullptr);
  // Opens the file, or creates it, so that every write goes to its end.
  static std::optional<RawFile> openForAppend(const std::filesystem::path& path,
                                              std::string* error = nullptr);

  // Writes the whole text, as one write call unless the system takes part of
  // it; false with the system's reason when not all of it was written.
  bool write(std::string_view bytes, std::string* error = nullptr);
  // Commits what was written to the storage device (its data, and the size
  // the data needs).
  bool sync(std::string* error = nullptr);
  // Cuts the file to `size` bytes.
  bool truncate(std::uint64_t size, std::string* error = nullptr);
  // The file's size now, or nullopt when it cannot be read.
  std::optional<std::uint64_t> size() const;
  bool close(std::string* error = nullptr);

 private:
  explicit RawFile(int fd) : fd_(fd) {}
  static std::optional<RawFile> open(const std::filesystem::path& path, int flags,
                                     std::string* error);
  int fd_ = -1;
};

// Up to maxBytes from the start of a file; nullopt when it cannot be opened.
std::optional<std::string> readFilePrefix(const std::filesystem::path& path, std::size_t maxBytes);

// Writes a whole file safely: into a temporary file beside it, synced, then
// renamed over the old one, so a power cut leaves the old or the new file and
// never an empty one. Each line is written with one write call.
bool replaceFileByLines(const std::filesystem::path& path, const std::vector<std::string>& lines,
                        std::string* error = nullptr);

}  // namespace gc40
