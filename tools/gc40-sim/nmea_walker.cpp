#include "gc40-sim/nmea_walker.h"

#include <cmath>
#include <numbers>
#include <string>

#include "base/number_text.h"
#include "gc40-sim/nmea_fields.h"

namespace gc40 {
namespace {

constexpr double kStartLatitude = 45.38702;    // degrees, north positive
constexpr double kStartLongitude = -75.69608;  // degrees, east positive
constexpr double kSpeed = 1.4;                 // metres per second, a steady walk
constexpr double kCourse = 30;                 // degrees from true north
constexpr double kMetresPerDegree = 6'371'000 * std::numbers::pi / 180;
constexpr double kKnotsPerMetreSecond = 3600.0 / 1852;
constexpr int kMinuteDecimals = 4;

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
  const std::string utc = nmeaTimeOfDay(time);
  const std::string position = nmeaPosition(latitude, longitude, kMinuteDecimals);
  return Chunk{
      .bytes = nmeaSentence("$GPGGA," + utc + ',' + position + ",1,08,0.9,81.2,M,-34.0,M,,") +
               nmeaSentence("$GPGSA,A,3,03,06,09,12,17,19,22,28,,,,,1.8,0.9,1.5") +
               nmeaSentence("$GPRMC," + utc + ",A," + position + ',' +
                            formatFixed(kSpeed * kKnotsPerMetreSecond, 1) + ',' +
                            formatFixed(kCourse, 1) + ',' + nmeaDate(time) + ",,,A"),
      .gapAfter = std::chrono::seconds(1)};
}

}  // namespace gc40
