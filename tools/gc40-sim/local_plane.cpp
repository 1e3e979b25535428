#include "gc40-sim/local_plane.h"

#include "survey/fix_track.h"

namespace gc40 {

// The logger's own radii, so the simulator's ground and the export agree to the millimetre.
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
