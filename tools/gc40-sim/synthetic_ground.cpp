#include "gc40-sim/synthetic_ground.h"

#include <cmath>
#include <numbers>

namespace gc40 {
namespace {

// exp(-d² / 2w²): 1 at the centre, 0.61 one width away.
double bump(double distance, double width) {
  return std::exp(-distance * distance / (2 * width * width));
}

double distanceFromPipe(const BuriedPipe& pipe, const EastNorth& point) {
  const double bearing = pipe.bearing * std::numbers::pi / 180;
  const double east = point.east - pipe.through.east, north = point.north - pipe.through.north;
  return std::abs(east * std::cos(bearing) - north * std::sin(bearing));
}

void add(GroundValue& value, const GroundValue& peak, double share) {
  value.conductivity += peak.conductivity * share;
  value.inphase += peak.inphase * share;
}

}  // namespace

GroundValue groundValueAt(const SyntheticGround& ground, const EastNorth& point) {
  GroundValue value = ground.background;
  for (const BuriedPipe& pipe : ground.pipes)
    add(value, pipe.peak, bump(distanceFromPipe(pipe, point), pipe.width));
  for (const RoundTarget& target : ground.targets) {
    const double distance =
        std::hypot(point.east - target.centre.east, point.north - target.centre.north);
    add(value, target.peak, bump(distance, target.width));
  }
  return value;
}

GroundValue groundValueAt(const SyntheticGround& ground, const LatLon& point) {
  return groundValueAt(ground, toEastNorth(ground.origin, point));
}

std::vector<LatLon> roundTargetPositions(const SyntheticGround& ground) {
  std::vector<LatLon> positions;
  for (const RoundTarget& target : ground.targets)
    positions.push_back(toLatLon(ground.origin, target.centre));
  return positions;
}

}  // namespace gc40
