#include "datafile/data_file.h"

#include <utility>

#include "datafile/data_file_naming.h"

namespace gc40 {

DataFile::DataFile(std::filesystem::path path, RawFile file)
    : path_(std::move(path)), file_(std::move(file)) {}

std::optional<DataFile> DataFile::createNew(const std::filesystem::path& path, std::string* error) {
  std::optional<RawFile> file = RawFile::createExclusive(path, error);
  if (!file) return std::nullopt;
  return DataFile(path, std::move(*file));
}

bool DataFile::writeRecord(const DataRecord& record) {
  return file_ && file_->write(std::string_view(record.data(), record.size()));
}

bool DataFile::reopenAtEnd() {
  bool committed = true;  // nothing open (a failed reopen before) has nothing to commit
  if (file_) {
    committed = file_->sync();
    committed = file_->close() && committed;
    file_.reset();
  }
  std::optional<RawFile> reopened = RawFile::openForAppend(path_);
  if (!reopened) return false;
  file_.emplace(std::move(*reopened));
  return committed;
}

std::string DataFile::baseName() const { return dataFileBaseName(path_); }

}  // namespace gc40
