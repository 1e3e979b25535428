#pragma once
// The one open survey data file. Unbuffered: each record is one write call,
// so whatever was recorded is in the file even if the program dies next.

#include <filesystem>
#include <optional>
#include <string>

#include "base/raw_file.h"
#include "datafile/data_records.h"

namespace gc40 {

class DataFile {
 public:
  // Fails (nullopt and, when asked, the system's reason) rather than
  // overwrite anything that already has this name.
  static std::optional<DataFile> createNew(const std::filesystem::path& path,
                                           std::string* error = nullptr);

  // One write call of the 24 bytes; false when they were not all written.
  bool writeRecord(const DataRecord& record);
  // Commits the file at a pause: synced and closed, then the same path opened
  // again (created if it has gone) so that later records are appended. False
  // when any step failed; after a failed reopen every write fails.
  bool reopenAtEnd();

  const std::filesystem::path& path() const { return path_; }
  // 8-bit base name for the "H " record.
  std::string baseName() const;

 private:
  DataFile(std::filesystem::path path, RawFile file);

  std::filesystem::path path_;
  std::optional<RawFile> file_;
};

}  // namespace gc40
