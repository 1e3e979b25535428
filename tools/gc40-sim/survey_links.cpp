#include "gc40-sim/survey_links.h"

#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "base/number_text.h"
#include "gc40-sim/nmea_fields.h"

namespace gc40 {
namespace {

using std::chrono::milliseconds;

constexpr double kKnotsPerMetreSecond = 3600.0 / 1852;
// A hundred-thousandth of a minute is under 2 cm, well inside what the
// positions are checked to.
constexpr int kMinuteDecimals = 5;

struct Survey {
  SurveyOptions options;
  SyntheticGround ground;
  InstrumentStream meter;
  std::chrono::sys_time<milliseconds> utcStart;
  std::function<Instant()> clock;
  std::optional<Instant> start;

  double secondsNow() {
    const Instant now = clock();
    if (!start) start = now;
    return std::chrono::duration<double>(now - *start).count();
  }
};

std::optional<Chunk> meterChunk(Survey& survey) {
  const double seconds = survey.secondsNow();
  const double sensedAt = seconds - std::chrono::duration<double>(survey.options.trueLag).count();
  const GroundValue value = groundValueAt(survey.ground, sensorPosition(survey.options, sensedAt));
  return nextInstrumentChunk(
      survey.meter, valueTextsFor(survey.meter.options.status, value.conductivity, value.inphase));
}

Chunk gpsChunk(Survey& survey) {
  const double seconds = survey.secondsNow();
  const WalkPose pose = antennaPose(survey.options, seconds);
  const LatLon where = toLatLon(survey.options.origin, pose.position);
  const auto time = survey.utcStart + milliseconds(std::llround(seconds * 1000));
  const std::string utc = nmeaTimeOfDay(time);
  const std::string position = nmeaPosition(where.latitude, where.longitude, kMinuteDecimals);
  return Chunk{
      .bytes = nmeaSentence("$GPGGA," + utc + ',' + position + ",1,09,0.9,81.2,M,-34.0,M,,") +
               nmeaSentence("$GPGSA,A,3,02,05,07,13,15,18,21,24,29,,,,1.6,0.9,1.3") +
               nmeaSentence("$GPRMC," + utc + ",A," + position + ',' +
                            formatFixed(pose.speed * kKnotsPerMetreSecond, 2) + ',' +
                            formatFixed(pose.heading, 1) + ',' + nmeaDate(time) + ",,,A"),
      .gapAfter = milliseconds(1000 / survey.options.fixesPerSecond)};
}

}  // namespace

SurveyLinks startSurveyLinks(const SurveyOptions& survey, const InstrumentOptions& instrument,
                             std::chrono::sys_time<milliseconds> utcStart,
                             std::function<Instant()> clock) {
  const auto shared = std::make_shared<Survey>(Survey{.options = survey,
                                                      .ground = groundForSurvey(survey),
                                                      .meter = startInstrumentStream(instrument),
                                                      .utcStart = utcStart,
                                                      .clock = std::move(clock),
                                                      .start = std::nullopt});
  return {.meter = [shared] { return meterChunk(*shared); },
          .gps = [shared]() -> std::optional<Chunk> { return gpsChunk(*shared); }};
}

}  // namespace gc40
