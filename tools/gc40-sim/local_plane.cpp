#include "gc40-sim/local_plane.h"

#include <cmath>
#include <numbers>

namespace gc40 {
namespace {

constexpr double kSemiMajorAxis = 6'378'137.0;  // WGS 84, metres
constexpr double kEccentricitySquared = 6.694'379'990'14e-3;
constexpr double kRadiansPerDegree = std::numbers::pi / 180;

struct MetresPerDegree {
  double north;
  double east;
};

// The ellipsoid's radii of curvature at the origin's latitude: along the
// meridian, and across it scaled down to the parallel.
MetresPerDegree metresPerDegree(double latitude) {
  const double sine = std::sin(latitude * kRadiansPerDegree);
  const double w = 1 - kEccentricitySquared * sine * sine;
  const double meridian = kSemiMajorAxis * (1 - kEccentricitySquared) / (w * std::sqrt(w));
  const double primeVertical = kSemiMajorAxis / std::sqrt(w);
  return {meridian * kRadiansPerDegree,
          primeVertical * std::cos(latitude * kRadiansPerDegree) * kRadiansPerDegree};
}

}  // namespace

LatLon toLatLon(const LatLon& origin, const EastNorth& point) {
  const MetresPerDegree scale = metresPerDegree(origin.latitude);
  return {origin.latitude + point.north / scale.north, origin.longitude + point.east / scale.east};
}

EastNorth toEastNorth(const LatLon& origin, const LatLon& point) {
  const MetresPerDegree scale = metresPerDegree(origin.latitude);
  return {(point.longitude - origin.longitude) * scale.east,
          (point.latitude - origin.latitude) * scale.north};
}

}  // namespace gc40
