#pragma once
// Estimates the meter-to-GPS lag from the survey itself: with the right lag,
// readings on adjacent lines walked in opposite directions agree where the
// lines pass close; with a wrong one, anomalies shift against each other in
// alternate directions (the herringbone).

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
};

struct LagMisfit {
  int lagMs = 0;
  double misfit = 0.0;
};

struct LagEstimate {
  bool found = false;
  std::string problem;  // when not found: why ("no GPS fixes", "lines walked one way only", ...)
  int lagMs = 0;
  double uncertaintyMs = 0.0;  // how sharply the misfit's minimum stands out, as a +/- in ms
  std::vector<LagMisfit> curve;
};

struct RecordedSurvey {
  const DataFileContents* contents = nullptr;
  const SurveyFile* survey = nullptr;
};

// `options.lagMs` is ignored: every lag of `search` is tried.
LagEstimate estimateLag(const std::vector<RecordedSurvey>& files, const PositionOptions& options,
                        const LagSearch& search = {});

}  // namespace gc40
