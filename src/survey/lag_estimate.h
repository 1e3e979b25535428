#pragma once
// Estimates the meter-to-GPS lag from the survey itself: with the right lag,
// readings on adjacent lines walked in opposite directions agree where the
// lines pass close; with a wrong one, anomalies shift against each other in
// alternate directions (the herringbone).

#include <cstddef>
#include <string>
#include <vector>

#include "datafile/data_file_reader.h"
#include "survey/reading_positions.h"
#include "survey/survey_lines.h"

namespace gc40 {

struct LagSearch {
  int fromMs = -2000;
  int toMs = 2000;
  int stepMs = 10;
  double radiusM = 5.0;  // how far a reading looks for its neighbour on a line walked the other way
};

// The misfit at one lag: the root mean square, over readings and the line
// walked the other way nearest to them, of asinh(a) - asinh(b), with a the
// reading's conductivity in mS/m and b that line's, interpolated where it
// passes closest (the vertical dipole's, or the horizontal one's in a file
// that holds mostly those). asinh is the log for ordinary values and stays
// defined at zero and below. NaN when no reading found a neighbour.
struct LagMisfit {
  int lagMs = 0;
  double misfit = 0.0;
  std::size_t pairs = 0;  // readings that found a neighbour
};

struct LagEstimate {
  bool found = false;
  // When not found, why: "no GPS fixes", "no conductivity readings along a
  // GPS track", "lines walked one way only", "too few neighbour pairs",
  // "misfit smallest at the edge of the lag search" (lagMs then holds that
  // edge), "empty lag search".
  std::string problem;
  int lagMs = 0;  // the curve's minimum, refined by a parabola through its neighbours
  // Half the width of the span of lags around the best one over which the
  // misfit stays within 5 % of its minimum: lags inside it fit the survey
  // nearly as well. Where the curve stays that low to the end of the
  // search, the span is cut there.
  double uncertaintyMs = 0.0;
  std::vector<LagMisfit> curve;  // every lag of the search, in order
};

struct RecordedSurvey {
  const DataFileContents* contents = nullptr;
  const SurveyFile* survey = nullptr;
};

// `options.lagMs` is ignored: every lag of `search` is tried, with the
// layback, cross-track offset and gap limit of `options`. Readings are
// walked "the other way" when their tracks (over 4 s around each reading)
// point opposite ways along the lines' mean axis; turns are left out. Long
// surveys are thinned to a fixed number of readings per lag.
LagEstimate estimateLag(const std::vector<RecordedSurvey>& files, const PositionOptions& options,
                        const LagSearch& search = {});

}  // namespace gc40
