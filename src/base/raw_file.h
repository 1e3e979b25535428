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
  enum class Mode {
    kCreateAlways,   // create or truncate
    kCreateNew,      // fail when the file exists
    kAppendExisting  // fail when it does not exist; writes go to the end
  };

  RawFile() = default;
  RawFile(const RawFile&) = delete;
  RawFile& operator=(const RawFile&) = delete;
  RawFile(RawFile&& other) noexcept;
  RawFile& operator=(RawFile&& other) noexcept;
  ~RawFile();

  // On failure returns nullopt and, when asked, the system's reason.
  static std::optional<RawFile> open(const std::filesystem::path& path, Mode mode,
                                     std::string* error = nullptr);

  bool isOpen() const { return fd_ >= 0; }
  // One write call for the whole text; false when not all of it was written.
  bool write(std::string_view bytes);
  // Commits what was written to the storage device.
  bool sync();
  bool close();

 private:
  explicit RawFile(int fd) : fd_(fd) {}
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
