#pragma once
// Someone surveying a grid: parallel lines walked in alternate directions at a
// steady pace, a half circle from the end of one line to the start of the
// next, the GPS antenna on their back and the meter's sensor carried behind
// them. Positions are metres east and north of the start of the first line.

#include <chrono>

#include "gc40-sim/local_plane.h"
#include "gc40-sim/synthetic_ground.h"

namespace gc40 {

struct SurveyOptions {
  int lines = 10;
  double lineLength = 100;             // metres
  double lineSpacing = 2;              // metres, to the right of the first line's direction
  double speed = 1.0;                  // metres per second
  double bearing = 0;                  // degrees clockwise from north: the first line's direction
  LatLon origin{45.38702, -75.69608};  // the start of the first line
  // After the last line, back over the lines in reverse order and on without
  // end (each line always walked the same way); else standing at its end.
  bool repeat = false;
  // The meter's values lag the position the receiver reports by this much.
  std::chrono::milliseconds trueLag{600};
  double layback = 1.5;    // metres, the sensor behind the antenna (negative: ahead)
  int fixesPerSecond = 1;  // the receiver's rate
};

struct WalkPose {
  EastNorth position;
  double heading = 0;  // degrees clockwise from north, 0 to 360
  double speed = 0;    // metres per second
};

// Where the antenna is `seconds` after the walk reached the start of the
// first line; before that it comes along the first line.
WalkPose antennaPose(const SurveyOptions& survey, double seconds);

// The sensor, `layback` metres behind the antenna along its heading.
EastNorth sensorPosition(const SurveyOptions& survey, double seconds);

// Seconds from the start of the first line to the end of the last, once over.
double walkDuration(const SurveyOptions& survey);

// The ground under the grid, laid out to fit it: background 20 mS/m and
// 0.5 ppt; three round targets 1.5 m wide, each centred on a line (a quarter,
// half and three quarters of the way across the grid, rounded to a line; 30 %,
// 70 % and 45 % along it) and adding 30, 45 and 25 mS/m; and a pipe 0.4 m wide
// adding 35 mS/m and 6 ppt that crosses every line near 85 % of its length,
// 75 degrees off the lines.
SyntheticGround groundForSurvey(const SurveyOptions& survey);

}  // namespace gc40
