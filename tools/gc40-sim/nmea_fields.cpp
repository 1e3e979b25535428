#include "gc40-sim/nmea_fields.h"

#include <cmath>
#include <cstdint>

#include "base/number_text.h"
#include "gps/nmea.h"

namespace gc40 {
namespace {

using std::chrono::days;
using std::chrono::floor;

std::string angleText(double degrees, std::size_t degreeDigits, int minuteDecimals) {
  const auto decimals = static_cast<std::size_t>(minuteDecimals);
  const std::int64_t perMinute = std::llround(std::pow(10.0, minuteDecimals));
  const std::int64_t perDegree = 60 * perMinute;
  const std::int64_t units = std::llround(std::abs(degrees) * static_cast<double>(perDegree));
  const std::int64_t minutes = units % perDegree;
  return formatZeroPadded(units / perDegree, degreeDigits) +
         formatZeroPadded(minutes / perMinute, 2) + '.' +
         formatZeroPadded(minutes % perMinute, decimals);
}

}  // namespace

std::string nmeaPosition(double latitude, double longitude, int minuteDecimals) {
  return angleText(latitude, 2, minuteDecimals) + (latitude < 0 ? ",S," : ",N,") +
         angleText(longitude, 3, minuteDecimals) + (longitude < 0 ? ",W" : ",E");
}

std::string nmeaTimeOfDay(std::chrono::sys_time<std::chrono::milliseconds> time) {
  const std::chrono::hh_mm_ss clock(time - floor<days>(time));
  return formatZeroPadded(clock.hours().count(), 2) + formatZeroPadded(clock.minutes().count(), 2) +
         formatZeroPadded(clock.seconds().count(), 2) + '.' +
         formatZeroPadded(clock.subseconds().count() / 10, 2);
}

std::string nmeaDate(std::chrono::sys_time<std::chrono::milliseconds> time) {
  const std::chrono::year_month_day date(floor<days>(time));
  return formatZeroPadded(unsigned(date.day()), 2) + formatZeroPadded(unsigned(date.month()), 2) +
         formatZeroPadded(int(date.year()) % 100, 2);
}

std::string nmeaSentence(std::string_view body) {
  return std::string(body) + nmeaChecksumTail(body) + "\r\n";
}

}  // namespace gc40
