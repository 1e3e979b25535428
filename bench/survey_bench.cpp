// Georeferencing a day's survey: every reading joined to the GPS fixes, and
// the lag estimate that tries every lag from -2 s to 2 s in 10 ms steps.

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <numbers>
#include <string>

#include "base/number_text.h"
#include "datafile/data_records.h"
#include "gps/nmea.h"
#include "survey/lag_estimate.h"
#include "survey/reading_positions.h"

namespace gc40 {
namespace {

constexpr double kLineM = 100.0;  // lines 1 m apart
constexpr double kSpeed = 1.4;    // metres per second
constexpr double kTurnS = 5.0;    // over to the next line
constexpr int kLateMs = 400;      // the meter's values lag the GPS by this
constexpr double kMetresPerDegree = 111'195.0;

struct Point {
  double east, north;
};

Point walkedAt(double seconds) {
  const double walk = kLineM / kSpeed, cycle = walk + kTurnS;
  const double line = std::floor(std::max(seconds, 0.0) / cycle);
  const double into = std::max(seconds, 0.0) - line * cycle;
  const bool northward = std::fmod(line, 2.0) == 0.0;
  if (into < walk) return {line, northward ? into * kSpeed : kLineM - into * kSpeed};
  return {line + (into - walk) / kTurnS, northward ? kLineM : 0.0};
}

// Ground of 15 mS/m with a conductive patch every 40 m.
double groundAt(Point at) {
  const double e = std::fmod(at.east, 40.0) - 20.0, n = std::fmod(at.north, 40.0) - 20.0;
  return 15.0 + 8.0 * std::exp(-(e * e + n * n) / 50.0);
}

std::string angle(double degrees, std::size_t digits) {
  const double whole = std::floor(degrees), minutes = (degrees - whole) * 60;
  return formatZeroPadded(static_cast<std::int64_t>(whole), digits) + (minutes < 10 ? "0" : "") +
         formatFixed(minutes, 6);
}

void append(std::string& bytes, const DataRecord& record) {
  bytes.append(record.begin(), record.end());
}

void appendSentence(std::string& bytes, const std::string& body, std::uint32_t tick) {
  for (const DataRecord& record : formatGpsRecords(body + nmeaChecksumTail(body), tick, '@', '#'))
    append(bytes, record);
}

// Eight hours at 11 readings a second (316,800), walking lines back and
// forth, with a GGA and an RMC every second.
std::string eightHourSurvey() {
  Settings settings{.gpsEnabled = 1};
  std::string bytes;
  append(bytes, formatIdentificationRecord(settings));
  append(bytes, formatFileNameRecord(settings, "SURVEY"));
  const double cycle = kLineM / kSpeed + kTurnS;
  int line = -1, second = 0;
  for (std::uint32_t reading = 0; reading < 8 * 3600 * 11; ++reading) {
    const std::uint32_t ms = reading * 91;
    const LocalTime now{2026,
                        5,
                        4,
                        8 + static_cast<int>(ms / 3'600'000),
                        static_cast<int>(ms / 60'000 % 60),
                        static_cast<int>(ms / 1000 % 60),
                        static_cast<int>(ms % 1000)};
    for (; second * 1000 <= static_cast<int>(ms); ++second) {
      const Point at = walkedAt(second);
      const std::string utc = formatZeroPadded(6 + second / 3600, 2) +
                              formatZeroPadded(second / 60 % 60, 2) +
                              formatZeroPadded(second % 60, 2) + ".00";
      const std::string where =
          angle(51.0 + at.north / kMetresPerDegree, 2) + ",N," +
          angle(4.0 + at.east / (kMetresPerDegree * std::cos(51.0 * std::numbers::pi / 180)), 3) +
          ",E";
      const std::uint32_t tick = 1'000'000 + static_cast<std::uint32_t>(second) * 1000;
      appendSentence(bytes, "$GPGGA," + utc + ',' + where + ",1,12,0.8,52.0,M,46.0,M,,", tick);
      appendSentence(bytes, "$GPRMC," + utc + ",A," + where + ",2.7,0.0,040526,,,A", tick + 40);
    }
    const int lineNow = static_cast<int>(ms / 1000.0 / cycle);
    if (lineNow != line) {
      line = lineNow;
      const std::string name = formatInteger(line);
      settings.surveyLine.assign(name.begin(), name.end());
      settings.lineDirection = line % 2 ? 1 : 2;
      for (const DataRecord& record : formatLineBlock(settings, now)) append(bytes, record);
      append(bytes, formatTimeMark(now, 1'000'000 + ms));
    }
    const double value = groundAt(walkedAt((static_cast<double>(ms) - kLateMs) / 1000.0));
    append(bytes, formatReadingRecord("T " + formatFixed(-4 * value, 1) + "000.0", 1'000'000 + ms));
  }
  return bytes;
}

struct Survey {
  DataFileContents contents;
  SurveyFile survey;
};

const Survey& eightHours() {
  static const Survey survey = [] {
    Survey made{readDataFile(eightHourSurvey()), {}};
    made.survey = *splitSurveyLines(made.contents);
    return made;
  }();
  return survey;
}

void positionEightHourSurvey(benchmark::State& state) {
  const Survey& survey = eightHours();
  std::size_t positioned = 0;
  for (auto _ : state) {
    const PositionedFile file =
        positionReadings(survey.contents, survey.survey, {.lagMs = kLateMs, .laybackM = 1.0});
    positioned = 0;
    for (const PositionedReading& reading : file.readings)
      positioned += reading.position.has_value();
    benchmark::DoNotOptimize(file);
  }
  state.counters["positioned"] = static_cast<double>(positioned);
}
BENCHMARK(positionEightHourSurvey)->Unit(benchmark::kMillisecond);

void estimateLagOfEightHourSurvey(benchmark::State& state) {
  const Survey& survey = eightHours();
  LagEstimate estimate;
  for (auto _ : state) estimate = estimateLag({{&survey.contents, &survey.survey}}, {});
  state.counters["found"] = estimate.found;
  state.counters["lagMs"] = estimate.lagMs;
  state.counters["uncertaintyMs"] = estimate.uncertaintyMs;
  state.counters["pairs"] =
      static_cast<double>(estimate.curve.empty() ? 0 : estimate.curve[240].pairs);
}
BENCHMARK(estimateLagOfEightHourSurvey)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace
}  // namespace gc40
