#include "datafile/data_file.h"

#include <utility>

#include "datafile/data_file_naming.h"

namespace gc40 {
namespace {

constexpr char kNotOpen[] = "the file is not open";

}  // namespace

DataFile::DataFile(std::filesystem::path path, RawFile file)
    : path_(std::move(path)), file_(std::move(file)) {}

std::optional<DataFile> DataFile::createNew(const std::filesystem::path& path, std::string* error) {
  std::optional<RawFile> file = RawFile::createExclusive(path, error);
  if (!file) return std::nullopt;
  return DataFile(path, std::move(*file));
}

bool DataFile::writeRecords(std::span<const DataRecord> records) {
  if (!file_) return fail(kNotOpen);
  std::string bytes;
  bytes.reserve(records.size() * dataRecordLength);
  for (const DataRecord& record : records) bytes.append(record.data(), record.size());
  std::string reason;
  if (!file_->write(bytes, &reason)) {
    // Whatever part of the group went in is taken out again. Should even
    // that fail, the reader still finds every whole record before it.
    file_->truncate(size_);
    return fail(std::move(reason));
  }
  size_ += bytes.size();
  return true;
}

bool DataFile::sync() {
  if (!file_) return fail(kNotOpen);
  std::string reason;
  if (!file_->sync(&reason)) return fail(std::move(reason));
  if (syncHook_) syncHook_();
  return true;
}

bool DataFile::close() {
  if (!file_) return true;
  bool closed = sync();
  std::string reason;
  if (!file_->close(&reason)) closed = closed ? fail(std::move(reason)) : false;
  file_.reset();
  return closed;
}

bool DataFile::reopenAtEnd() {
  const bool committed = close();
  std::string reason;
  std::optional<RawFile> reopened = RawFile::openForAppend(path_, &reason);
  if (!reopened) return fail(std::move(reason));
  size_ = reopened->size().value_or(size_);
  file_.emplace(std::move(*reopened));
  return committed;
}

bool DataFile::fail(std::string reason) {
  failure_ = std::move(reason);
  return false;
}

std::string DataFile::baseName() const { return dataFileBaseName(path_); }

}  // namespace gc40
