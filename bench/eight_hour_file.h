#pragma once
// A generated day of logging for the benchmarks that read files back.

#include <cstdint>
#include <string>
#include <string_view>

#include "datafile/data_records.h"

namespace gc40 {

inline constexpr std::string_view kSentence70 =
    "$GPGGA,123519.00,4807.0380,N,01131.0000,E,1,08,0.9,545.4,M,46.9,M,,*47";

inline void append(std::string& bytes, const DataRecord& record) {
  bytes.append(record.begin(), record.end());
}

// Eight hours at 11 readings a second (316,800 "T" records), a station and a
// time mark every 5 s; `withGps` adds one GPS sentence a second.
inline std::string eightHourFile(bool withGps) {
  Settings settings;
  std::string bytes;
  append(bytes, formatIdentificationRecord(settings));
  append(bytes, formatFileNameRecord(settings, "031514A"));
  LocalTime now{2026, 3, 15, 8, 0, 0, 0};
  for (const DataRecord& record : formatLineBlock(settings, now)) append(bytes, record);
  for (std::uint32_t reading = 0; reading < 8 * 3600 * 11; ++reading) {
    const std::uint32_t tick = 1000000 + reading * 91;
    append(bytes, formatReadingRecord("T1123.4-05.6", tick));
    if (reading % 55 == 0) {
      append(bytes, formatStationRecord(reading / 55 * 0.5, now));
      append(bytes, formatTimeMark(now, tick));
    }
    if (withGps && reading % 11 == 0)
      for (const DataRecord& record : formatGpsRecords(kSentence70, tick, '@', '#'))
        append(bytes, record);
  }
  return bytes;
}

}  // namespace gc40
