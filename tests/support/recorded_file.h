#pragma once
// Data files for the viewer's tests, built from the logger's own record
// formatting in the order the logging screen writes them.

#include <string>
#include <string_view>

#include "base/local_time.h"
#include "datafile/data_records.h"
#include "settings/settings.h"

namespace gc40::testing {

class RecordedFile {
 public:
  explicit RecordedFile(const Settings& settings) : settings_(settings) {
    add(formatIdentificationRecord(settings_));
    add(formatFileNameRecord(settings_, "VIEWTEST"));
    lineBlock();
  }

  RecordedFile& newLine(std::u16string name, double start, float increment) {
    settings_.surveyLine = std::move(name);
    settings_.startStation = start;
    settings_.stationIncrement = increment;
    lineBlock();
    return newStation(start);
  }
  RecordedFile& newStation(double station) {
    add(formatStationRecord(station, kNow));
    add(formatTimeMark(kNow, tick_));
    return *this;
  }
  // `record` is the instrument's 12 bytes, marker included.
  RecordedFile& reading(std::string_view record) {
    add(formatReadingRecord(record, tick_ += 91));
    return *this;
  }
  RecordedFile& note(std::u16string_view text) {
    add(formatTextRecord(text, 'X', tick_));
    return *this;
  }

  const std::string& bytes() const { return bytes_; }

 private:
  static constexpr LocalTime kNow{2026, 11, 22, 9, 30, 0, 0};

  void add(const DataRecord& record) { bytes_.append(record.begin(), record.end()); }
  void lineBlock() {
    for (const DataRecord& record : formatLineBlock(settings_, kNow)) add(record);
    add(formatTimeMark(kNow, tick_));
  }

  Settings settings_;
  std::string bytes_;
  std::uint32_t tick_ = 5000;
};

inline std::string instrumentRecord(unsigned char status, std::string_view values,
                                    char marker = 'T') {
  return std::string(1, marker) + static_cast<char>(status) + std::string(values);
}

}  // namespace gc40::testing
