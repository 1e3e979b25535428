#pragma once
// The end-to-end measurements of gc40; each starts gc40 afresh, prints its
// figures and throws a BenchError when the run itself goes wrong.

#include <chrono>
#include <cstdint>
#include <string>

namespace gc40::bench {

struct LatencyOptions {
  std::int64_t pacedRecords = 1100;  // at the meter's 91 ms
  std::int64_t flatRecords = 5000;   // as fast as gc40 takes them
  int window = 1;                    // flat out: records written but not yet on file
};

// Carriage return written to the meter's port -> its T record in the file.
void measureLatency(const std::string& gc40, const LatencyOptions& options);

// gc40's CPU while logging at the field's pace with a 10 Hz receiver, against
// two `cat`s copying identical streams, over `span` after `warmUp`.
void measureCpu(const std::string& gc40, std::chrono::seconds warmUp, std::chrono::seconds span);

// Exec -> the main window's first "front GC40", `starts` times.
void measureStartUp(const std::string& gc40, int starts);

// gc40 on the Monitor GPS screen fed 50 lines a second for `span`, its CPU
// and memory reported every `interval`.
void measureMonitorGps(const std::string& gc40, std::chrono::seconds span,
                       std::chrono::seconds interval);

}  // namespace gc40::bench
