#pragma once
// Positions between GPS fixes: which two fixes bracket a moment, and the
// flat-earth geometry that moves a point by metres along and across the
// direction of travel.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "survey/reading_positions.h"

namespace gc40 {

struct MetresPerDegree {
  double north = 0.0;
  double east = 0.0;
};

// On the WGS 84 ellipsoid at `latitude`; flat enough for the extent of a survey.
MetresPerDegree metresPerDegree(double latitude);

struct FixBracket {
  NoPositionReason reason = NoPositionReason::kPositioned;
  std::size_t before = 0;  // the segment holding the moment: fixes `before` and `after`
  std::size_t after = 0;   // equal to `before` only when there is one fix
  double fraction = 0.0;   // 0 at `before`, 1 at `after`
};

// `times` ascending. A moment that falls on a fix is placed whatever the gap
// beside it. `hint` keeps where the last search ended, so moments taken in
// order are found at once.
FixBracket bracketFixes(std::span<const std::int64_t> times, std::int64_t moment,
                        std::int64_t maxGapMs, std::size_t& hint);

struct Metres {
  double east = 0.0;
  double north = 0.0;
};

// The unit vector of travel on a segment between two fixes `step` metres
// and `spanMs` apart: the segment's own, or the receiver's course where the
// segment is too short to tell (standing still) or spans a gap.
std::optional<Metres> travelDirection(Metres step, std::int64_t spanMs, std::int64_t maxGapMs,
                                      std::optional<double> courseDegrees);

// Where the sensor rides relative to the antenna: `laybackM` behind it along
// the travel, `crossTrackM` to the right of it.
Metres sensorOffset(Metres direction, double laybackM, double crossTrackM);

}  // namespace gc40
