#pragma once
// What a running process has used so far, from /proc.

#include <sys/types.h>

#include <optional>

namespace gc40::bench {

struct ProcessUsage {
  // Time on a CPU, user and system: by the scheduler's count over the threads
  // there are now, and by clock ticks over all there were (10 ms steps).
  double cpuSeconds = 0;
  double tickedCpuSeconds = 0;
  long residentKb = 0;      // VmRSS
  long peakResidentKb = 0;  // VmHWM
};

// nullopt once the process has gone.
std::optional<ProcessUsage> processUsage(pid_t pid);

}  // namespace gc40::bench
