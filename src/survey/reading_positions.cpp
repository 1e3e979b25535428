#include "survey/reading_positions.h"

#include <charconv>
#include <cmath>
#include <string_view>

#include "survey/file_scan.h"
#include "survey/fix_track.h"
#include "survey/survey_time.h"

namespace gc40 {
namespace {

// A line named by a number ("12", "-3.5") gives the grid's y; any other
// name gives none.
std::optional<double> lineNumber(std::string_view name) {
  const std::size_t first = name.find_first_not_of(' ');
  if (first == std::string_view::npos) return std::nullopt;
  name = name.substr(first, name.find_last_not_of(' ') + 1 - first);
  double value = 0.0;
  const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), value);
  if (error != std::errc{} || end != name.data() + name.size() || !std::isfinite(value))
    return std::nullopt;
  return value;
}

GeoPosition positionAt(const std::vector<ScannedFix>& fixes, const FixBracket& bracket,
                       std::int64_t moment, const PositionOptions& options, std::int64_t maxGapMs) {
  const ScannedFix& from = fixes[bracket.before];
  const ScannedFix& to = fixes[bracket.after];
  const double f = bracket.fraction;
  const ScannedFix& nearer = f <= 0.5 ? from : to;
  GeoPosition position;
  position.latitude = from.fix.latitude + f * (to.fix.latitude - from.fix.latitude);
  position.longitude = from.fix.longitude + f * (to.fix.longitude - from.fix.longitude);
  if (from.fix.altitude && to.fix.altitude)
    position.altitude = *from.fix.altitude + f * (*to.fix.altitude - *from.fix.altitude);
  position.fixQuality = nearer.fix.fixQuality;
  position.satellites = nearer.fix.satellites;
  position.hdop = nearer.fix.hdop;
  position.speedKnots = nearer.speedKnots;
  position.courseDegrees = nearer.courseDegrees;
  position.fixAgeMs = moment > from.time ? static_cast<std::uint32_t>(moment - from.time) : 0;
  if (options.laybackM == 0.0 && options.crossTrackM == 0.0) return position;

  const MetresPerDegree scale = metresPerDegree(position.latitude);
  const Metres step{(to.fix.longitude - from.fix.longitude) * scale.east,
                    (to.fix.latitude - from.fix.latitude) * scale.north};
  const auto direction = travelDirection(step, to.time - from.time, maxGapMs, nearer.courseDegrees);
  // Standing still with no course: the antenna is the best place there is.
  if (!direction) return position;
  const Metres offset = sensorOffset(*direction, options.laybackM, options.crossTrackM);
  position.latitude += offset.north / scale.north;
  position.longitude += offset.east / scale.east;
  return position;
}

}  // namespace

const char* noPositionText(NoPositionReason reason) {
  switch (reason) {
    case NoPositionReason::kPositioned:
      return "";
    case NoPositionReason::kNoFixes:
      return "no fixes";
    case NoPositionReason::kBeforeFirstFix:
      return "before first fix";
    case NoPositionReason::kAfterLastFix:
      return "after last fix";
    case NoPositionReason::kGapTooLong:
      return "gap too long";
  }
  return "";
}

PositionedFile positionReadings(const DataFileContents& contents, const SurveyFile& survey,
                                const PositionOptions& options) {
  const FileScan scan = scanRecordedFile(contents, survey);
  PositionedFile file;
  file.hasFixes = !scan.fixes.empty();
  std::vector<std::int64_t> fixTimes;
  fixTimes.reserve(scan.fixes.size());
  for (const ScannedFix& fix : scan.fixes) fixTimes.push_back(fix.time);
  const auto maxGapMs = static_cast<std::int64_t>(std::llround(options.maxGapS * 1000.0));
  std::size_t hint = 0;

  file.readings.reserve(scan.readings.size());
  for (std::size_t i = 0; i < scan.readings.size(); ++i) {
    const ScannedReading& scanned = scan.readings[i];
    PositionedReading& reading = file.readings.emplace_back();
    reading.lineIndex = scanned.lineIndex;
    if (scanned.lineIndex < survey.lines.size()) {
      reading.lineName = survey.lines[scanned.lineIndex].name;
      reading.direction = survey.lines[scanned.lineIndex].direction;
    }
    reading.station = scanned.station;
    reading.readingNumber = i + 1;
    reading.tick = scanned.tick;
    if (scanned.localMs) reading.localTime = localTimeAt(*scanned.localMs);
    if (const auto utc = utcAt(scan.utcAnchors, scanned.time)) reading.utc = localTimeAt(*utc);
    reading.dipole = scanned.dipole;
    reading.range = scanned.range;
    reading.verticalConductivity = scanned.verticalConductivity;
    reading.horizontalConductivity = scanned.horizontalConductivity;
    reading.verticalInphase = scanned.verticalInphase;
    reading.horizontalInphase = scanned.horizontalInphase;

    if (!file.hasFixes) {
      reading.noPosition = NoPositionReason::kNoFixes;
      reading.gridX = reading.station;
      reading.gridY = lineNumber(reading.lineName);
      continue;
    }
    const std::int64_t moment = scanned.time - options.lagMs;
    const FixBracket bracket = bracketFixes(fixTimes, moment, maxGapMs, hint);
    reading.noPosition = bracket.reason;
    if (bracket.reason == NoPositionReason::kPositioned)
      reading.position = positionAt(scan.fixes, bracket, moment, options, maxGapMs);
  }
  return file;
}

}  // namespace gc40
