#include "gc40-sim/nmea_walker.h"

#include <cmath>
#include <numbers>
#include <string>
#include <string_view>

#include "base/number_text.h"
#include "gps/nmea.h"

namespace gc40 {
namespace {

using std::chrono::days;
using std::chrono::floor;

constexpr double kStartLatitude = 45.38702;    // degrees, north positive
constexpr double kStartLongitude = -75.69608;  // degrees, east positive
constexpr double kSpeed = 1.4;                 // metres per second, a steady walk
constexpr double kCourse = 30;                 // degrees from true north
constexpr double kMetresPerDegree = 6'371'000 * std::numbers::pi / 180;
constexpr double kKnotsPerMetreSecond = 3600.0 / 1852;
constexpr std::int64_t kTenThousandthsPerDegree = 60 * 10'000;

// "ddmm.mmmm" (or "dddmm.mmmm"), the hemisphere apart.
std::string angleText(double degrees, std::size_t degreeDigits) {
  const std::int64_t units = std::llround(std::abs(degrees) * kTenThousandthsPerDegree);
  const std::int64_t minutes = units % kTenThousandthsPerDegree;
  return formatZeroPadded(units / kTenThousandthsPerDegree, degreeDigits) +
         formatZeroPadded(minutes / 10'000, 2) + '.' + formatZeroPadded(minutes % 10'000, 4);
}

std::string positionText(double latitude, double longitude) {
  return angleText(latitude, 2) + (latitude < 0 ? ",S," : ",N,") + angleText(longitude, 3) +
         (longitude < 0 ? ",W" : ",E");
}

std::string timeText(std::chrono::sys_seconds time) {
  const std::chrono::hh_mm_ss clock(time - floor<days>(time));
  return formatZeroPadded(clock.hours().count(), 2) + formatZeroPadded(clock.minutes().count(), 2) +
         formatZeroPadded(clock.seconds().count(), 2) + ".00";
}

std::string dateText(std::chrono::sys_seconds time) {
  const std::chrono::year_month_day date(floor<days>(time));
  return formatZeroPadded(unsigned(date.day()), 2) + formatZeroPadded(unsigned(date.month()), 2) +
         formatZeroPadded(int(date.year()) % 100, 2);
}

std::string sentence(std::string_view body) {
  return std::string(body) + nmeaChecksumTail(body) + "\r\n";
}

}  // namespace

NmeaWalker startNmeaWalker(std::chrono::sys_seconds start) { return NmeaWalker{.start = start}; }

Chunk nextWalkerChunk(NmeaWalker& walker) {
  const std::chrono::sys_seconds time = walker.start + std::chrono::seconds(walker.fixes);
  const double metres = kSpeed * static_cast<double>(walker.fixes++);
  const double course = kCourse * std::numbers::pi / 180;
  const double latitude = kStartLatitude + metres * std::cos(course) / kMetresPerDegree;
  const double longitude =
      kStartLongitude +
      metres * std::sin(course) / (kMetresPerDegree * std::cos(latitude * std::numbers::pi / 180));
  const std::string utc = timeText(time), position = positionText(latitude, longitude);
  return Chunk{.bytes = sentence("$GPGGA," + utc + ',' + position + ",1,08,0.9,81.2,M,-34.0,M,,") +
                        sentence("$GPGSA,A,3,03,06,09,12,17,19,22,28,,,,,1.8,0.9,1.5") +
                        sentence("$GPRMC," + utc + ",A," + position + ',' +
                                 formatFixed(kSpeed * kKnotsPerMetreSecond, 1) + ',' +
                                 formatFixed(kCourse, 1) + ',' + dateText(time) + ",,,A"),
               .gapAfter = std::chrono::seconds(1)};
}

}  // namespace gc40
