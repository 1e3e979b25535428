#pragma once
// A survey walked as a surveyor walks one, written with the logger's own
// record formatting: lines side by side, walked north and south in turn at
// a steady pace with a short turn between them, 11 readings a second, and
// (when asked) a GPS fix a second, GGA and RMC, on the same ticks. The
// ground holds one conductive band across every line, so a meter that lags
// the GPS draws it in a herringbone.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <string>

#include "base/number_text.h"
#include "datafile/data_records.h"
#include "gps/nmea.h"

namespace gc40::testing {

struct WalkedSurvey {
  int lines = 4;
  int readingsPerLine = 220;  // 20 s of walking
  bool gps = true;
  int meterLagMs = 0;  // the reading at tick t shows the ground under the antenna at t - lag
  double lineSpacingM = 2.0;
  double speedMps = 1.0;
  int turnMs = 3000;
};

inline constexpr double kWalkOriginLatitude = 48.1;
inline constexpr double kWalkOriginLongitude = 11.5;
inline constexpr std::uint32_t kWalkFirstTick = 1'000'000;
inline constexpr int kWalkReadingMs = 91;
inline constexpr double kWalkMetresPerDegree = 111'320.0;

// Where the antenna is `ms` after the first line's start: x east, y north,
// in metres from the first line's start.
struct WalkPoint {
  double x = 0.0;
  double y = 0.0;
};

inline WalkPoint walkPosition(const WalkedSurvey& survey, double ms) {
  const double lineMs = survey.readingsPerLine * kWalkReadingMs;
  const double length = survey.speedMps * lineMs / 1000.0;
  const double period = lineMs + survey.turnMs;
  const int line = std::clamp(static_cast<int>(std::floor(ms / period)), 0, survey.lines - 1);
  const double into = ms - line * period;
  const bool north = line % 2 == 0;
  const double x = line * survey.lineSpacingM;
  if (into <= lineMs) {
    const double along = survey.speedMps * std::max(into, 0.0) / 1000.0;
    return {x, north ? along : length - along};
  }
  const double turned = std::min((into - lineMs) / survey.turnMs, 1.0);
  return {x + turned * survey.lineSpacingM, north ? length : 0.0};
}

inline double walkLatitude(const WalkPoint& p) {
  return kWalkOriginLatitude + p.y / kWalkMetresPerDegree;
}
inline double walkLongitude(const WalkPoint& p) {
  return kWalkOriginLongitude +
         p.x / (kWalkMetresPerDegree * std::cos(kWalkOriginLatitude * std::numbers::pi / 180));
}

// mS/m: 20 off the band, 50 at its middle, halfway along every line.
inline double walkConductivity(const WalkedSurvey& survey, const WalkPoint& p) {
  const double middle = survey.speedMps * survey.readingsPerLine * kWalkReadingMs / 2000.0;
  return 20.0 + 30.0 * std::exp(-(p.y - middle) * (p.y - middle) / 8.0);
}

namespace walk_detail {

inline void append(std::string& bytes, const DataRecord& record) {
  bytes.append(record.begin(), record.end());
}

// "ddmm.mmmmm" / "dddmm.mmmmm"
inline std::string angle(double degrees, std::size_t degreeDigits) {
  const std::int64_t units = std::llround(std::abs(degrees) * 60 * 100'000);
  return formatZeroPadded(units / 6'000'000, degreeDigits) +
         formatZeroPadded(units % 6'000'000 / 100'000, 2) + '.' +
         formatZeroPadded(units % 100'000, 5);
}

inline std::string sentence(const std::string& body) { return body + nmeaChecksumTail(body); }

// Local time is an hour ahead of the receiver's UTC; both start on the hour.
inline LocalTime clockAt(std::int64_t msSinceStart, int hour) {
  const std::int64_t seconds = msSinceStart / 1000;
  return LocalTime{2026,
                   3,
                   15,
                   hour + static_cast<int>(seconds / 3600),
                   static_cast<int>(seconds / 60 % 60),
                   static_cast<int>(seconds % 60),
                   static_cast<int>(msSinceStart % 1000)};
}

inline void appendFix(std::string& bytes, const WalkedSurvey& survey, std::int64_t ms) {
  const WalkPoint p = walkPosition(survey, static_cast<double>(ms));
  const LocalTime utc = clockAt(ms, 9);
  const std::string time = formatZeroPadded(utc.hour, 2) + formatZeroPadded(utc.minute, 2) +
                           formatZeroPadded(utc.second, 2) + ".00";
  const std::string where = angle(walkLatitude(p), 2) + ",N," + angle(walkLongitude(p), 3) + ",E";
  const std::uint32_t tick = kWalkFirstTick + static_cast<std::uint32_t>(ms);
  for (const std::string& text :
       {sentence("$GPGGA," + time + ',' + where + ",1,09,0.8,512.3,M,46.9,M,,"),
        sentence("$GPRMC," + time + ",A," + where + ",1.9,0.0,150326,,,A")})
    for (const DataRecord& record : formatGpsRecords(text, tick, '@', '#')) append(bytes, record);
}

// Status 0x24: vertical dipole, 100 mS/m range, where a count of -40 is
// 1 mS/m and an inphase count of -400 is 1 ppt.
inline std::string meterRecord(double conductivity, double inphase) {
  return std::string("T\x24") + formatZeroPadded(std::lround(-40.0 * conductivity), 5) +
         formatZeroPadded(std::lround(-400.0 * inphase), 5);
}

}  // namespace walk_detail

inline std::string walkedSurveyFile(const WalkedSurvey& survey) {
  using namespace walk_detail;
  Settings settings;
  settings.gpsEnabled = survey.gps ? 1 : 0;
  settings.readingInterval = kWalkReadingMs / 1000.0f;
  settings.stationIncrement = static_cast<float>(survey.speedMps * kWalkReadingMs / 1000.0);
  std::string bytes;
  append(bytes, formatIdentificationRecord(settings));
  append(bytes, formatFileNameRecord(settings, "WALKED"));
  const std::int64_t lineMs = std::int64_t{survey.readingsPerLine} * kWalkReadingMs;
  std::int64_t nextFixMs = 0;
  for (int line = 0; line < survey.lines; ++line) {
    const std::int64_t startMs = line * (lineMs + survey.turnMs);
    for (; survey.gps && nextFixMs < startMs; nextFixMs += 1000)
      appendFix(bytes, survey, nextFixMs);
    const std::string name = formatInteger(10 + line);
    settings.surveyLine = std::u16string(name.begin(), name.end());
    settings.lineDirection = line % 2 == 0 ? 2 : 1;
    settings.startStation = line % 2 == 0 ? 0.0 : survey.speedMps * lineMs / 1000.0;
    settings.stationIncrement = std::abs(settings.stationIncrement) * (line % 2 == 0 ? 1 : -1);
    const LocalTime lineStart = clockAt(startMs, 10);
    for (const DataRecord& record : formatLineBlock(settings, lineStart)) append(bytes, record);
    append(bytes, formatTimeMark(lineStart, kWalkFirstTick + static_cast<std::uint32_t>(startMs)));
    for (int reading = 0; reading < survey.readingsPerLine; ++reading) {
      const std::int64_t ms = startMs + std::int64_t{reading} * kWalkReadingMs;
      for (; survey.gps && nextFixMs <= ms; nextFixMs += 1000) appendFix(bytes, survey, nextFixMs);
      const WalkPoint ground = walkPosition(survey, static_cast<double>(ms - survey.meterLagMs));
      const double conductivity = walkConductivity(survey, ground);
      append(bytes, formatReadingRecord(meterRecord(conductivity, conductivity / 10.0),
                                        kWalkFirstTick + static_cast<std::uint32_t>(ms)));
    }
  }
  const std::int64_t endMs = (survey.lines - 1) * (lineMs + survey.turnMs) + lineMs;
  for (; survey.gps && nextFixMs <= endMs + 1000; nextFixMs += 1000)
    appendFix(bytes, survey, nextFixMs);
  return bytes;
}

}  // namespace gc40::testing
