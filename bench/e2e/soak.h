#pragma once
// A whole field day through gc40 as fast as it takes it: readings and GPS
// sentences, each numbered, then the file checked and opened in View Files.

#include <cstdint>
#include <string>

namespace gc40::bench {

struct SoakOptions {
  std::int64_t readings = 316'800;  // eight hours at 11 readings a second
  // Of the 10 Hz receiver's fixes, five sentences each, per 11 readings.
  std::int64_t fixesPer11Readings = 10;
  int window = 64;       // readings (and fixes) written but not yet on file
  std::string viewShot;  // where to keep View Files' picture; empty: not kept
};

// Prints the figures; true when nothing was lost, doubled or reordered and
// View Files opened the file.
bool runSoak(const std::string& gc40, const SoakOptions& options);

}  // namespace gc40::bench
