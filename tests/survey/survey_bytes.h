#pragma once
// Recorded files with GPS for the survey tests, built in memory from the
// logger's own record formatting, each record at the tick the test gives.

#include <cmath>
#include <cstdint>
#include <numbers>
#include <string>
#include <string_view>

#include "base/local_time.h"
#include "base/number_text.h"
#include "datafile/data_records.h"
#include "gps/nmea.h"
#include "settings/settings.h"

namespace gc40::testing {

class SurveyBytes {
 public:
  explicit SurveyBytes(Settings settings) : settings_(std::move(settings)) {
    add(formatIdentificationRecord(settings_));
    add(formatFileNameRecord(settings_, "SURVEY"));
  }

  // The line block and its time mark; `direction` as lineDirection (1 S, 2 N).
  SurveyBytes& line(std::u16string name, int direction, const LocalTime& now, std::uint32_t tick) {
    settings_.surveyLine = std::move(name);
    settings_.lineDirection = direction;
    for (const DataRecord& record : formatLineBlock(settings_, now)) add(record);
    return timeMark(now, tick);
  }
  SurveyBytes& timeMark(const LocalTime& now, std::uint32_t tick) {
    add(formatTimeMark(now, tick));
    return *this;
  }
  // `record`: the meter's 12 bytes.
  SurveyBytes& reading(std::string_view record, std::uint32_t tick) {
    add(formatReadingRecord(record, tick));
    return *this;
  }
  // `body` without its checksum; a wrong checksum when `valid` is false.
  SurveyBytes& sentence(std::string_view body, std::uint32_t tick, bool valid = true) {
    const std::string line = std::string(body) + (valid ? nmeaChecksumTail(body) : "*00");
    for (const DataRecord& record :
         formatGpsRecords(line, tick, valid ? '@' : '?', valid ? '#' : '"'))
      add(record);
    return *this;
  }

  const std::string& bytes() const { return bytes_; }

 private:
  void add(const DataRecord& record) { bytes_.append(record.begin(), record.end()); }

  Settings settings_;
  std::string bytes_;
};

// Positions a few metres from a point in Belgium, on a sphere: good to a few
// millimetres over the tests' distances.
inline constexpr double kMetresPerDegree = 111'195.0;
inline constexpr double kLatitude = 51.0, kLongitude = 4.0;
inline double north(double metres) { return kLatitude + metres / kMetresPerDegree; }
inline double east(double metres) {
  return kLongitude + metres / (kMetresPerDegree * std::cos(kLatitude * std::numbers::pi / 180));
}

// "ddmm.mmmmmm,N" / "dddmm.mmmmmm,E", as survey-grade receivers send them.
inline std::string nmeaAngle(double degrees, std::size_t degreeDigits,
                             std::string_view hemispheres) {
  const double whole = std::floor(std::abs(degrees));
  const double minutes = (std::abs(degrees) - whole) * 60;
  return formatZeroPadded(static_cast<std::int64_t>(whole), degreeDigits) +
         (minutes < 10 ? "0" : "") + formatFixed(minutes, 6) + ',' +
         hemispheres[degrees < 0 ? 1 : 0];
}

inline std::string gga(std::string_view utc, double latitude, double longitude, int quality = 1,
                       std::string_view altitude = "81.2") {
  return "$GPGGA," + std::string(utc) + ',' + nmeaAngle(latitude, 2, "NS") + ',' +
         nmeaAngle(longitude, 3, "EW") + ',' + formatInteger(quality) + ",08,0.9," +
         std::string(altitude) + ",M,46.9,M,,";
}

inline std::string rmc(std::string_view utc, std::string_view date, double latitude,
                       double longitude, std::string_view knots, std::string_view course) {
  return "$GPRMC," + std::string(utc) + ",A," + nmeaAngle(latitude, 2, "NS") + ',' +
         nmeaAngle(longitude, 3, "EW") + ',' + std::string(knots) + ',' + std::string(course) +
         ',' + std::string(date) + ",,,A";
}

// A vertical-dipole reading of `conductivity` mS/m (10 to 24.9) on range 1000.
inline std::string verticalReading(double conductivity) {
  return "T " + formatFixed(-4 * conductivity, 1) + "000.0";
}

}  // namespace gc40::testing
