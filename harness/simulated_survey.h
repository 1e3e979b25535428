#pragma once
// A survey walked by gc40-sim --survey as gc40 records it: the simulator's
// walker, ground, meter and receiver on a clock of our own, each reading
// and each fix written with the logger's record formatting at its tick, and
// a new survey line at the start of each line of the walk, named by how far
// across the grid it lies (0, 2, 4 ... metres) and stationed along it from 0.
// Needs the gc40sim library.

#include <chrono>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <string>

#include "base/number_text.h"
#include "datafile/data_records.h"
#include "gc40-sim/instrument_records.h"
#include "gc40-sim/nmea_fields.h"
#include "gc40-sim/survey_walk.h"
#include "gc40-sim/synthetic_ground.h"

namespace gc40::testing {

struct SimulatedRecording {
  SurveyOptions survey;  // the simulator's defaults: ten lines of 100 m, 2 m apart
  bool gps = true;       // false: recorded with GPS off, nothing from the receiver
  bool fixes = true;     // false: the receiver talks but never has a fix
};

inline constexpr std::uint32_t kSimulatedFirstTick = 2'000'000;
inline constexpr int kSimulatedReadingMs = 91;
inline constexpr std::uint8_t kSimulatedStatus = 0x24;  // vertical dipole, 100 range

namespace simulated_detail {

inline void append(std::string& bytes, const DataRecord& record) {
  bytes.append(record.begin(), record.end());
}

inline double legSeconds(const SurveyOptions& survey) {
  return (survey.lineLength + std::numbers::pi * survey.lineSpacing / 2) / survey.speed;
}

inline void appendFix(std::string& bytes, const SimulatedRecording& recording, std::int64_t ms) {
  using namespace std::chrono;
  const sys_time<milliseconds> utc = sys_days(year(2026) / 3 / 15) + hours(9) + milliseconds(ms);
  const LatLon at =
      toLatLon(recording.survey.origin, antennaPose(recording.survey, ms / 1000.0).position);
  const std::string time = nmeaTimeOfDay(utc);
  const std::string where = recording.fixes ? nmeaPosition(at.latitude, at.longitude, 5) : ",,,";
  const std::string gga = "$GPGGA," + time + ',' + where +
                          (recording.fixes ? ",1,09,0.9,81.2,M,-34.0,M,," : ",0,00,99.9,,M,,M,,");
  const std::string rmc = "$GPRMC," + time + (recording.fixes ? ",A," : ",V,") + where +
                          ",1.9,0.0," + nmeaDate(utc) + ",,,A";
  const auto tick = kSimulatedFirstTick + static_cast<std::uint32_t>(ms);
  for (const std::string& body : {gga, rmc}) {
    std::string sentence = nmeaSentence(body);
    sentence.resize(sentence.size() - 2);  // the logger keeps the sentence without its CR LF
    for (const DataRecord& record : formatGpsRecords(sentence, tick, '@', '#'))
      append(bytes, record);
  }
}

}  // namespace simulated_detail

inline std::string simulatedSurveyFile(const SimulatedRecording& recording) {
  using namespace simulated_detail;
  const SurveyOptions& survey = recording.survey;
  const SyntheticGround ground = groundForSurvey(survey);
  Settings settings;
  settings.gpsEnabled = recording.gps ? 1 : 0;
  settings.readingInterval = kSimulatedReadingMs / 1000.0f;
  const float increment = static_cast<float>(survey.speed * kSimulatedReadingMs / 1000.0);
  std::string bytes;
  append(bytes, formatIdentificationRecord(settings));
  append(bytes, formatFileNameRecord(settings, "SIMSURV"));
  const auto endMs = static_cast<std::int64_t>(walkDuration(survey) * 1000);
  const double lagS = std::chrono::duration<double>(survey.trueLag).count();
  std::int64_t nextFixMs = 0;
  int line = -1;
  for (std::int64_t ms = 0; ms <= endMs; ms += kSimulatedReadingMs) {
    for (; recording.gps && nextFixMs <= ms; nextFixMs += 1000 / survey.fixesPerSecond)
      appendFix(bytes, recording, nextFixMs);
    const int leg = std::min(static_cast<int>(ms / 1000.0 / legSeconds(survey)), survey.lines - 1);
    const std::uint32_t tick = kSimulatedFirstTick + static_cast<std::uint32_t>(ms);
    if (leg != line) {
      line = leg;
      const std::string name = formatRoundTrip(line * survey.lineSpacing);
      settings.surveyLine.assign(name.begin(), name.end());
      const bool back = line % 2 == 1;
      settings.lineDirection = back ? 1 : 2;  // South, North
      settings.startStation = back ? survey.lineLength : 0.0;
      settings.stationIncrement = back ? -increment : increment;
      const LocalTime now{2026,
                          3,
                          15,
                          10 + static_cast<int>(ms / 3'600'000),
                          static_cast<int>(ms / 60'000 % 60),
                          static_cast<int>(ms / 1000 % 60),
                          static_cast<int>(ms % 1000)};
      for (const DataRecord& record : formatLineBlock(settings, now)) append(bytes, record);
      append(bytes, formatTimeMark(now, tick));
    }
    const GroundValue value = groundValueAt(ground, sensorPosition(survey, ms / 1000.0 - lagS));
    const ValueTexts texts = valueTextsFor(kSimulatedStatus, value.conductivity, value.inphase);
    append(bytes, formatReadingRecord(std::string("T") + static_cast<char>(kSimulatedStatus) +
                                          texts.first + texts.second,
                                      tick));
  }
  for (; recording.gps && nextFixMs <= endMs + 1000; nextFixMs += 1000 / survey.fixesPerSecond)
    appendFix(bytes, recording, nextFixMs);
  return bytes;
}

}  // namespace gc40::testing
