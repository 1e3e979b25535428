#pragma once
// A GPS receiver with a good fix, carried at walking pace along a straight
// line: once a second a GGA, a GSA and an RMC, as a receiver sends them.

#include <chrono>
#include <cstdint>

#include "gc40-sim/chunk_source.h"

namespace gc40 {

struct NmeaWalker {
  std::chrono::sys_seconds start;  // UTC of the first fix
  std::int64_t fixes = 0;          // fixes sent so far
};

NmeaWalker startNmeaWalker(std::chrono::sys_seconds start);

// The next fix's sentences, each with its checksum and CR LF, and a second's gap.
Chunk nextWalkerChunk(NmeaWalker& walker);

}  // namespace gc40
