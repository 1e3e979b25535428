#pragma once
// A copy of every byte a port delivers (gc40 --raw-log DIR), so a problem seen
// in the field becomes a capture that a test can replay.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "base/local_time.h"
#include "base/raw_file.h"

namespace gc40 {

class RawCapture {
 public:
  // A new file DIR/<port>-YYYYMMDD-HHMMSS.raw (with -2, -3.. when that name is
  // taken); an existing capture is never overwritten.
  static std::optional<RawCapture> open(const std::filesystem::path& folder,
                                        std::string_view portRole, const LocalTime& now,
                                        std::string* error = nullptr);

  bool write(std::string_view bytes) { return file_.write(bytes); }
  const std::filesystem::path& path() const { return path_; }

 private:
  RawCapture(RawFile file, std::filesystem::path path)
      : file_(std::move(file)), path_(std::move(path)) {}

  RawFile file_;
  std::filesystem::path path_;
};

// The name without the -N suffix, e.g. "instrument-20261121-093005.raw".
std::string rawCaptureName(std::string_view portRole, const LocalTime& now, int attempt);

}  // namespace gc40
