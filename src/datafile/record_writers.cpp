#include "datafile/record_writers.h"

#include <system_error>

#include "datafile/data_records.h"

namespace gc40 {

bool writeFileHeader(DataFile& file, const Settings& settings) {
  const DataRecord records[] = {formatIdentificationRecord(settings),
                                formatFileNameRecord(settings, file.baseName())};
  return file.writeRecords(records);
}

bool writeLineBlock(DataFile& file, const Settings& settings, const LocalTime& now) {
  return file.writeRecords(formatLineBlock(settings, now));
}

bool writeStationRecord(DataFile& file, const Settings& settings, const LocalTime& now) {
  return file.writeRecord(formatStationRecord(settings.currentStation, now));
}

bool writeReadingRecord(DataFile& file, std::string_view instrumentRecord, std::uint32_t tick) {
  return file.writeRecord(formatReadingRecord(instrumentRecord, tick));
}

bool writeTimeMark(DataFile& file, const LocalTime& now, std::uint32_t tick) {
  return file.writeRecord(formatTimeMark(now, tick));
}

bool writeTextRecord(DataFile& file, std::u16string_view text, char typeLetter,
                     std::uint32_t tick) {
  return file.writeRecord(formatTextRecord(text, typeLetter, tick));
}

bool writeNewFileHeader(DataFile& file, const Settings& settings, const LocalTime& now,
                        std::uint32_t tick) {
  return writeFileHeader(file, settings) && writeLineBlock(file, settings, now) &&
         writeTimeMark(file, now, tick);
}

std::optional<DataFile> createFileWithHeader(const std::filesystem::path& path,
                                             const Settings& settings, const LocalTime& now,
                                             std::uint32_t tick, std::string* error) {
  std::optional<DataFile> file = DataFile::createNew(path, error);
  if (!file || writeNewFileHeader(*file, settings, now, tick)) return file;
  if (error) *error = file->failure();
  file.reset();
  std::error_code ignored;
  std::filesystem::remove(path, ignored);
  return std::nullopt;
}

}  // namespace gc40
