#include "e2e/data_file_watch.h"

#include <fcntl.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <string_view>
#include <utility>

#include "datafile/data_records.h"

namespace gc40::bench {
namespace {

bool isGpsPiece(char letter) {
  using namespace recordLetter;
  return letter == kGpsValid || letter == kGpsValidContinuation || letter == kGpsInvalid ||
         letter == kGpsInvalidContinuation;
}

// The length of the front of `bytes` that ends in a whole record that is not
// the piece of a sentence still being written.
std::size_t wholePart(std::string_view bytes) {
  std::size_t end = bytes.size() / dataRecordLength * dataRecordLength;
  while (end > 0 && isGpsPiece(bytes[end - dataRecordLength])) end -= dataRecordLength;
  return end;
}

}  // namespace

DataFileWatch::DataFileWatch(std::filesystem::path file) : path_(std::move(file)) {
  notify_ = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
  inotify_add_watch(notify_, path_.parent_path().c_str(), IN_MODIFY | IN_CREATE);
}

void DataFileWatch::stopNotifications() {
  if (notify_ >= 0) close(notify_);
  notify_ = -1;
}

DataFileWatch::~DataFileWatch() {
  if (notify_ >= 0) close(notify_);
  if (file_ >= 0) close(file_);
}

std::vector<FileRecord> DataFileWatch::takeNew() {
  std::array<char, 64 * 1024> chunk;
  while (read(notify_, chunk.data(), chunk.size()) > 0) continue;  // the events only wake us
  if (file_ < 0) file_ = open(path_.c_str(), O_RDONLY | O_CLOEXEC);
  ssize_t got = 0;
  while (file_ >= 0 && (got = read(file_, chunk.data(), chunk.size())) > 0)
    unread_.append(chunk.data(), std::size_t(got));
  const std::size_t whole = wholePart(unread_);
  if (whole == 0) return {};
  DataFileContents contents = readDataFile(std::string_view(unread_).substr(0, whole));
  for (FileRecord& record : contents.records) record.offset += unreadAt_;
  for (FileProblem& problem : contents.problems) {
    problem.offset += unreadAt_;
    problems_.push_back(std::move(problem));
  }
  unread_.erase(0, whole);
  unreadAt_ += whole;
  return std::move(contents.records);
}

}  // namespace gc40::bench
