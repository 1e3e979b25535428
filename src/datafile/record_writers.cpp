#include "datafile/record_writers.h"

#include <span>

#include "datafile/data_records.h"

namespace gc40 {
namespace {

// Writes on after a failure, so one lost record does not take the rest.
bool writeAll(DataFile& file, std::span<const DataRecord> records) {
  bool written = true;
  for (const DataRecord& record : records) written = file.writeRecord(record) && written;
  return written;
}

}  // namespace

bool writeFileHeader(DataFile& file, const Settings& settings) {
  const DataRecord records[] = {formatIdentificationRecord(settings),
                                formatFileNameRecord(settings, file.baseName())};
  return writeAll(file, records);
}

bool writeLineBlock(DataFile& file, const Settings& settings, const LocalTime& now) {
  return writeAll(file, formatLineBlock(settings, now));
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

bool writeGpsRecords(DataFile& file, std::string_view sentence, std::uint32_t tick,
                     char firstLetter, char continuationLetter) {
  return writeAll(file, formatGpsRecords(sentence, tick, firstLetter, continuationLetter));
}

bool writeNewFileHeader(DataFile& file, const Settings& settings, const LocalTime& now,
                        std::uint32_t tick) {
  bool written = writeFileHeader(file, settings);
  written = writeLineBlock(file, settings, now) && written;
  return writeTimeMark(file, now, tick) && written;
}

}  // namespace gc40
