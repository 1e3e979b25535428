#include "survey/lag_estimate.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "survey/file_scan.h"
#include "survey/fix_track.h"
#include "survey/neighbour_grid.h"

namespace gc40 {
namespace {

// The direction a reading was walked in: the track from this long before it
// to this long after it, long enough that the fixes' scatter does not turn it.
constexpr std::int64_t kHeadingHalfSpanMs = 2000;
// Readings walked within 45 degrees of the lines' axis, one way or the other,
// take part; turns and cross lines do not.
constexpr double kOnAxis = 0.7071;
// Shorter runs one way are turns at the ends of lines, not lines.
constexpr std::int64_t kShortestRunMs = 5000;
// What each lag costs: readings positioned, and readings that look for a
// neighbour. Denser than this adds time and no precision.
constexpr std::size_t kMostTargets = 160'000;
constexpr std::size_t kMostQueries = 20'000;
constexpr std::size_t kFewestPairs = 50;
// asinh(value / 1 mS/m) is the log of the value for ordinary ground, so a
// contrast counts alike on conductive and resistive ground, and it stays
// defined at zero and below, where a meter may read over metal. Squared
// differences, not absolute ones: the neighbouring line never reads quite
// the same, and against that floor only a square bends the misfit into a
// clear minimum.
constexpr double kValueScale = 1.0;
constexpr double kUncertaintyRise = 0.05;

struct Track {
  std::vector<std::int64_t> times;
  std::vector<Metres> points;
  std::vector<std::optional<double>> courses;
};

struct Sample {
  std::uint32_t file = 0;
  std::int64_t time = 0;
  double value = 0.0;
  Metres direction;     // of travel, at no lag
  int side = 0;         // +1 or -1 along the lines' axis
  std::size_t run = 0;  // readings of one run were walked one after the other, one way
};

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// Where the sensor was at `moment` in the survey's metres; not finite when
// the track does not reach it.
Metres sensorAt(const Track& track, std::int64_t moment, const PositionOptions& options,
                std::int64_t maxGapMs, std::size_t& hint) {
  const FixBracket bracket = bracketFixes(track.times, moment, maxGapMs, hint);
  if (bracket.reason != NoPositionReason::kPositioned) return {kNaN, kNaN};
  const Metres from = track.points[bracket.before], to = track.points[bracket.after];
  const Metres step{to.east - from.east, to.north - from.north};
  Metres at{from.east + bracket.fraction * step.east, from.north + bracket.fraction * step.north};
  if (options.laybackM == 0.0 && options.crossTrackM == 0.0) return at;
  const std::size_t nearer = bracket.fraction <= 0.5 ? bracket.before : bracket.after;
  const auto direction =
      travelDirection(step, track.times[bracket.after] - track.times[bracket.before], maxGapMs,
                      track.courses[nearer]);
  if (!direction) return at;
  const Metres offset = sensorOffset(*direction, options.laybackM, options.crossTrackM);
  return {at.east + offset.east, at.north + offset.north};
}

class LagProblem {
 public:
  LagProblem(const std::vector<RecordedSurvey>& files, const PositionOptions& options)
      : options_(options),
        maxGapMs_(static_cast<std::int64_t>(std::llround(options.maxGapS * 1000.0))) {
    for (const RecordedSurvey& file : files)
      if (file.contents && file.survey)
        scans_.push_back(scanRecordedFile(*file.contents, *file.survey));
  }

  // Empty when the survey can be tried at every lag; else what it lacks.
  std::string prepare() {
    if (!makeTracks()) return "no GPS fixes";
    pickSamples();
    if (samples_.empty()) return "no conductivity readings along a GPS track";
    if (!splitBySide()) return "lines walked one way only";
    decimate();
    return "";
  }

  LagMisfit misfitAt(int lagMs, double radiusM) {
    positions_.resize(targets_.size());
    std::vector<std::size_t> hints(tracks_.size(), 0);
    for (std::size_t i = 0; i < targets_.size(); ++i) {
      const Sample& sample = samples_[targets_[i]];
      positions_[i] = sensorAt(tracks_[sample.file], sample.time - lagMs, options_, maxGapMs_,
                               hints[sample.file]);
    }
    grids_[0].build(positions_, sideMembers_[0], radiusM);
    grids_[1].build(positions_, sideMembers_[1], radiusM);
    double sum = 0.0;
    std::size_t pairs = 0;
    for (const std::uint32_t query : queries_) {
      const Sample& sample = samples_[targets_[query]];
      const auto other = grids_[sample.side > 0 ? 1 : 0].nearest(positions_[query]);
      if (!other) continue;
      const double difference = sample.value - valueClosestTo(*other, positions_[query]);
      sum += difference * difference;
      ++pairs;
    }
    return {lagMs, pairs ? std::sqrt(sum / static_cast<double>(pairs)) : kNaN, pairs};
  }

 private:
  // The other line's value where it passes closest to `at`: on the segments
  // either side of its nearest reading rather than at that reading, so that
  // the spacing of the readings does not make the misfit step with the lag.
  double valueClosestTo(std::uint32_t nearest, Metres at) const {
    double closest = std::numeric_limits<double>::infinity();
    double value = samples_[targets_[nearest]].value;
    for (std::uint32_t first = nearest == 0 ? 0 : nearest - 1; first <= nearest; ++first) {
      if (first + 1 >= targets_.size() || !joinsNext_[first]) continue;
      const Metres a = positions_[first], b = positions_[first + 1];
      const double east = b.east - a.east, north = b.north - a.north;
      const double length2 = east * east + north * north;
      if (!(length2 > 0.0)) continue;
      const double t = std::clamp(
          ((at.east - a.east) * east + (at.north - a.north) * north) / length2, 0.0, 1.0);
      const double offEast = a.east + t * east - at.east, offNorth = a.north + t * north - at.north;
      const double distance2 = offEast * offEast + offNorth * offNorth;
      if (distance2 < closest) {
        const double from = samples_[targets_[first]].value;
        closest = distance2;
        value = from + t * (samples_[targets_[first + 1]].value - from);
      }
    }
    return value;
  }

  // The fixes of every file in metres east and north of the first one.
  bool makeTracks() {
    const ScannedFix* origin = nullptr;
    for (const FileScan& scan : scans_)
      if (!origin && !scan.fixes.empty()) origin = &scan.fixes.front();
    if (!origin) return false;
    const MetresPerDegree scale = metresPerDegree(origin->fix.latitude);
    for (const FileScan& scan : scans_) {
      Track& track = tracks_.emplace_back();
      for (const ScannedFix& fix : scan.fixes) {
        track.times.push_back(fix.time);
        track.points.push_back({(fix.fix.longitude - origin->fix.longitude) * scale.east,
                                (fix.fix.latitude - origin->fix.latitude) * scale.north});
        track.courses.push_back(fix.courseDegrees);
      }
    }
    return true;
  }

  // Readings of one conductivity trace (the vertical dipole's unless the
  // horizontal one holds more) that were walked in a known direction.
  void pickSamples() {
    std::size_t vertical = 0, horizontal = 0;
    for (const FileScan& scan : scans_) {
      for (const ScannedReading& reading : scan.readings) {
        vertical += reading.verticalConductivity.has_value();
        horizontal += reading.horizontalConductivity.has_value();
      }
    }
    const bool useVertical = vertical >= horizontal;
    const PositionOptions antenna{.maxGapS = options_.maxGapS};
    for (std::uint32_t file = 0; file < scans_.size(); ++file) {
      std::size_t before = 0, after = 0;
      for (const ScannedReading& reading : scans_[file].readings) {
        const auto value =
            useVertical ? reading.verticalConductivity : reading.horizontalConductivity;
        if (!value || !std::isfinite(*value)) continue;
        const Metres from =
            sensorAt(tracks_[file], reading.time - kHeadingHalfSpanMs, antenna, maxGapMs_, before);
        const Metres to =
            sensorAt(tracks_[file], reading.time + kHeadingHalfSpanMs, antenna, maxGapMs_, after);
        const auto direction =
            travelDirection({to.east - from.east, to.north - from.north}, 0, 0, std::nullopt);
        if (!direction) continue;
        samples_.push_back(
            {file, reading.time, std::asinh(*value / kValueScale), *direction, 0, 0});
      }
    }
  }

  // The lines' axis is the mean direction of travel with opposite ways
  // counted alike (angles doubled); each reading goes with it or against it,
  // or is left out when it was walked across it or on a short run.
  bool splitBySide() {
    double c = 0.0, s = 0.0;
    for (const Sample& sample : samples_) {
      const Metres d = sample.direction;
      c += d.north * d.north - d.east * d.east;  // cos 2a
      s += 2.0 * d.east * d.north;               // sin 2a
    }
    const double angle = std::atan2(s, c) / 2.0;
    const Metres axis{std::sin(angle), std::cos(angle)};
    for (Sample& sample : samples_) {
      const double along = sample.direction.east * axis.east + sample.direction.north * axis.north;
      sample.side = along >= kOnAxis ? 1 : along <= -kOnAxis ? -1 : 0;
    }
    std::size_t start = 0;
    for (std::size_t i = 1; i <= samples_.size(); ++i) {
      const bool runGoesOn = i < samples_.size() && samples_[i].side == samples_[start].side &&
                             samples_[i].file == samples_[start].file &&
                             samples_[i].time - samples_[i - 1].time <= maxGapMs_;
      if (runGoesOn) continue;
      const bool turn = samples_[i - 1].time - samples_[start].time < kShortestRunMs;
      for (std::size_t j = start; j < i; ++j) {
        if (turn) samples_[j].side = 0;
        samples_[j].run = start;
      }
      start = i;
    }
    std::erase_if(samples_, [](const Sample& sample) { return sample.side == 0; });
    const auto with = std::count_if(samples_.begin(), samples_.end(),
                                    [](const Sample& sample) { return sample.side > 0; });
    return with > 0 && with < static_cast<std::ptrdiff_t>(samples_.size());
  }

  void decimate() {
    const std::size_t stride = samples_.size() / kMostTargets + 1;
    for (std::size_t i = 0; i < samples_.size(); i += stride)
      targets_.push_back(static_cast<std::uint32_t>(i));
    const std::size_t queryStride = targets_.size() / kMostQueries + 1;
    for (std::uint32_t i = 0; i < targets_.size(); ++i) {
      sideMembers_[samples_[targets_[i]].side > 0 ? 0 : 1].push_back(i);
      if (i % queryStride == 0) queries_.push_back(i);
      joinsNext_.push_back(i + 1 < targets_.size() &&
                           samples_[targets_[i]].run == samples_[targets_[i + 1]].run);
    }
  }

  const PositionOptions options_;
  const std::int64_t maxGapMs_;
  std::vector<FileScan> scans_;
  std::vector<Track> tracks_;
  std::vector<Sample> samples_;
  std::vector<std::uint32_t> targets_;   // into samples_
  std::vector<std::uint32_t> queries_;   // into targets_
  std::vector<std::uint8_t> joinsNext_;  // target i and i + 1 were read one after the other
  std::vector<std::uint32_t> sideMembers_[2];
  std::vector<Metres> positions_;  // of targets_, at the lag being tried
  NeighbourGrid grids_[2];
};

// The lag where the misfit first rises above `limit` going from `best` one
// way (`way` +1 or -1), interpolated between curve points; the curve's last
// lag that way when it never does.
double crossing(const std::vector<LagMisfit>& curve, std::size_t best, double limit, int way) {
  std::size_t i = best;
  while (true) {
    const std::size_t next = i + static_cast<std::size_t>(way);
    if ((way < 0 && i == 0) || next >= curve.size() || std::isnan(curve[next].misfit))
      return curve[i].lagMs;
    if (curve[next].misfit > limit) {
      const double rise = (limit - curve[i].misfit) / (curve[next].misfit - curve[i].misfit);
      return curve[i].lagMs + rise * (curve[next].lagMs - curve[i].lagMs);
    }
    i = next;
  }
}

}  // namespace

LagEstimate estimateLag(const std::vector<RecordedSurvey>& files, const PositionOptions& options,
                        const LagSearch& search) {
  LagEstimate estimate;
  if (search.stepMs <= 0 || search.fromMs > search.toMs || !(search.radiusM > 0.0)) {
    estimate.problem = "empty lag search";
    return estimate;
  }
  LagProblem problem(files, options);
  estimate.problem = problem.prepare();
  if (!estimate.problem.empty()) return estimate;

  for (int lag = search.fromMs; lag <= search.toMs; lag += search.stepMs)
    estimate.curve.push_back(problem.misfitAt(lag, search.radiusM));

  std::optional<std::size_t> best;
  for (std::size_t i = 0; i < estimate.curve.size(); ++i)
    if (estimate.curve[i].pairs >= kFewestPairs &&
        (!best || estimate.curve[i].misfit < estimate.curve[*best].misfit))
      best = i;
  if (!best) {
    estimate.problem = "too few neighbour pairs";
    return estimate;
  }
  const std::vector<LagMisfit>& curve = estimate.curve;
  const std::size_t i = *best;
  estimate.lagMs = curve[i].lagMs;
  if (i == 0 || i + 1 == curve.size()) {
    estimate.problem = "misfit smallest at the edge of the lag search";
    return estimate;
  }
  // The vertex of the parabola through the minimum and its two neighbours.
  const double left = curve[i - 1].misfit, middle = curve[i].misfit, right = curve[i + 1].misfit;
  const double bend = left - 2.0 * middle + right;
  if (bend > 0.0 && curve[i - 1].pairs >= kFewestPairs && curve[i + 1].pairs >= kFewestPairs) {
    const double shift = 0.5 * (left - right) / bend;
    estimate.lagMs += static_cast<int>(std::lround(std::clamp(shift, -0.5, 0.5) * search.stepMs));
  }
  const double limit = middle * (1.0 + kUncertaintyRise);
  estimate.uncertaintyMs = (crossing(curve, i, limit, 1) - crossing(curve, i, limit, -1)) / 2.0;
  estimate.found = true;
  return estimate;
}

}  // namespace gc40
