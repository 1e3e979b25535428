#pragma once
// The meter and the GPS receiver of a simulated survey, both following one
// walker on one clock: the receiver reports where the antenna is when it
// sends, the meter the ground under its sensor `trueLag` earlier.

#include <chrono>
#include <functional>

#include "gc40-sim/chunk_source.h"
#include "gc40-sim/instrument_records.h"
#include "gc40-sim/link_streamer.h"
#include "gc40-sim/survey_walk.h"

namespace gc40 {

struct SurveyLinks {
  ChunkSource meter;  // records as `instrument` says, the values from the ground
  ChunkSource gps;    // GGA, GSA and RMC at the survey's rate
};

// The walk starts at the start of the first line when either source is first
// asked for a chunk; `utcStart` is the time the receiver gives then. Both read
// `clock` each time they are asked.
SurveyLinks startSurveyLinks(const SurveyOptions& survey, const InstrumentOptions& instrument,
                             std::chrono::sys_time<std::chrono::milliseconds> utcStart,
                             std::function<Instant()> clock);

}  // namespace gc40
