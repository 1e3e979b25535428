#pragma once
// Follows a data file while gc40 writes it: woken by inotify as each record
// lands, it hands out the records written since the last look, read by the
// logger's own file reader (a GPS sentence once all its pieces are there).

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "datafile/data_file_reader.h"

namespace gc40::bench {

class DataFileWatch {
 public:
  // The file may not exist yet; its folder must.
  explicit DataFileWatch(std::filesystem::path file);
  DataFileWatch(const DataFileWatch&) = delete;
  DataFileWatch& operator=(const DataFileWatch&) = delete;
  ~DataFileWatch();

  // For poll(): readable when the folder has changed; -1 once not notified.
  int fd() const { return notify_; }
  // From now on only takeNew() looks at the file. The kernel charges the
  // notifications to the writer, and in the field nothing watches the file.
  void stopNotifications();

  // The whole records written since the last call; their offsets are the
  // file's. Damage the reader finds is kept in problems().
  std::vector<FileRecord> takeNew();
  const std::vector<FileProblem>& problems() const { return problems_; }

 private:
  std::filesystem::path path_;
  int notify_ = -1;
  int file_ = -1;
  std::string unread_;        // bytes read but not yet a whole record or sentence
  std::size_t unreadAt_ = 0;  // their offset in the file
  std::vector<FileProblem> problems_;
};

}  // namespace gc40::bench
