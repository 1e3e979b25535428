#pragma once
// A made-up piece of ground for the simulated meter to read: an even
// background with a buried pipe and a few compact bodies in it. Positions are
// metres east and north of the ground's origin; values are what the meter
// reads standing over a point (conductivity in mS/m, inphase in ppt).

#include <vector>

#include "gc40-sim/local_plane.h"

namespace gc40 {

struct GroundValue {
  double conductivity = 0;  // mS/m
  double inphase = 0;       // ppt
};

// A compact body (a drum, a cache): a round Gaussian bump.
struct RoundTarget {
  EastNorth centre;
  double width = 0;  // metres, the bump's standard deviation
  GroundValue peak;  // added to the background at the centre
};

// A straight pipe without ends: a ridge, Gaussian across it, along the line
// through `through` at `bearing`.
struct BuriedPipe {
  EastNorth through;
  double bearing = 0;  // degrees clockwise from north
  double width = 0;    // metres, the ridge's standard deviation across the pipe
  GroundValue peak;    // added to the background right above it
};

struct SyntheticGround {
  LatLon origin;
  GroundValue background;
  std::vector<BuriedPipe> pipes;
  std::vector<RoundTarget> targets;
};

// The background plus every pipe and target at that point.
GroundValue groundValueAt(const SyntheticGround& ground, const EastNorth& point);
GroundValue groundValueAt(const SyntheticGround& ground, const LatLon& point);

// Where each round target's centre is, in the order of `targets`.
std::vector<LatLon> roundTargetPositions(const SyntheticGround& ground);

}  // namespace gc40
