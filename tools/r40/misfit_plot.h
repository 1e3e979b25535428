#pragma once
// The misfit curve of a lag estimate as a picture: lag across, misfit up,
// the best lag marked with the span of lags that fit nearly as well.

#include <string>

#include "survey/lag_estimate.h"

namespace gc40 {

// Writes a PNG; false with `error` naming the file when it cannot. Needs no
// display: without a platform chosen, Qt draws offscreen.
bool drawMisfitPlot(const LagEstimate& estimate, const std::string& path, std::string& error);

}  // namespace gc40
