#include "survey/fix_track.h"

#include <cmath>
#include <numbers>

namespace gc40 {
namespace {

constexpr double kSemiMajorAxis = 6'378'137.0;  // WGS 84, metres
constexpr double kEccentricitySquared = 6.694'379'990'14e-3;
constexpr double kRadiansPerDegree = std::numbers::pi / 180.0;
// Below this the fixes' own scatter decides the direction.
constexpr double kShortestTrackM = 0.05;

}  // namespace

MetresPerDegree metresPerDegree(double latitude) {
  const double sine = std::sin(latitude * kRadiansPerDegree);
  const double w = 1.0 - kEccentricitySquared * sine * sine;
  const double meridian = kSemiMajorAxis * (1.0 - kEccentricitySquared) / (w * std::sqrt(w));
  const double primeVertical = kSemiMajorAxis / std::sqrt(w);
  return {meridian * kRadiansPerDegree,
          primeVertical * std::cos(latitude * kRadiansPerDegree) * kRadiansPerDegree};
}

FixBracket bracketFixes(std::span<const std::int64_t> times, std::int64_t moment,
                        std::int64_t maxGapMs, std::size_t& hint) {
  FixBracket bracket;
  if (times.empty()) {
    bracket.reason = NoPositionReason::kNoFixes;
    return bracket;
  }
  const std::size_t last = times.size() - 1;
  if (hint > last) hint = last;
  while (hint > 0 && times[hint] > moment) --hint;
  while (hint < last && times[hint + 1] <= moment) ++hint;
  if (moment < times.front()) bracket.reason = NoPositionReason::kBeforeFirstFix;
  if (moment > times.back()) bracket.reason = NoPositionReason::kAfterLastFix;
  if (last == 0) return bracket;
  bracket.before = hint < last ? hint : last - 1;
  bracket.after = bracket.before + 1;
  const std::int64_t start = times[bracket.before], end = times[bracket.after];
  if (bracket.reason != NoPositionReason::kPositioned) return bracket;
  if (end == start) return bracket;
  bracket.fraction = static_cast<double>(moment - start) / static_cast<double>(end - start);
  if (moment > start && moment < end && end - start > maxGapMs)
    bracket.reason = NoPositionReason::kGapTooLong;
  return bracket;
}

std::optional<Metres> travelDirection(Metres step, std::int64_t spanMs, std::int64_t maxGapMs,
                                      std::optional<double> courseDegrees) {
  const double length = std::hypot(step.east, step.north);
  if (spanMs <= maxGapMs && length >= kShortestTrackM)
    return Metres{step.east / length, step.north / length};
  if (!courseDegrees || !std::isfinite(*courseDegrees)) return std::nullopt;
  return Metres{std::sin(*courseDegrees * kRadiansPerDegree),
                std::cos(*courseDegrees * kRadiansPerDegree)};
}

Metres sensorOffset(Metres direction, double laybackM, double crossTrackM) {
  // To the right of travel (east, north) is (north, -east).
  return {-laybackM * direction.east + crossTrackM * direction.north,
          -laybackM * direction.north - crossTrackM * direction.east};
}

}  // namespace gc40
