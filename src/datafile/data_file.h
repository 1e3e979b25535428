#pragma once
// The one open survey data file. Unbuffered: each group of records is one
// write call, so whatever was recorded is in the file even if the program
// dies next. A write the device refuses, wholly or in part, is cut back out
// again, so the file always ends in a whole record.

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <span>
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

  // The records together, or none of them: false when they were not all
  // written, with the file cut back to where it was and failure() saying why.
  bool writeRecords(std::span<const DataRecord> records);
  bool writeRecord(const DataRecord& record) { return writeRecords({&record, 1}); }
  // Commits what was written to storage.
  bool sync();
  // Commits the file at a pause: synced and closed, then the same path opened
  // again (created if it has gone) so that later records are appended. False
  // when any step failed; after a failed reopen every write fails.
  bool reopenAtEnd();
  // Synced and closed; every later write fails.
  bool close();

  // The system's reason for the last failure ("No space left on device").
  const std::string& failure() const { return failure_; }
  // Called after every successful sync, so a test can count them.
  void setSyncHook(std::function<void()> hook) { syncHook_ = std::move(hook); }

  const std::filesystem::path& path() const { return path_; }
  // 8-bit base name for the "H " record.
  std::string baseName() const;

 private:
  DataFile(std::filesystem::path path, RawFile file);
  bool fail(std::string reason);

  std::filesystem::path path_;
  std::optional<RawFile> file_;
  std::uint64_t size_ = 0;  // the whole records on file
  std::string failure_;
  std::function<void()> syncHook_;
};

}  // namespace gc40
