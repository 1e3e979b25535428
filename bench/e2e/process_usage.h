#pragma once
// What a running process has used so far, from /proc.

#include <sys/types.h>

#include <optional>

namespace gc40::bench {

struct ProcessUsage {
  double cpuSeconds = 0;    // time on a CPU, user and system
  long residentKb = 0;      // VmRSS
  long peakResidentKb = 0;  // VmHWM
};

// nullopt once the process has gone.
std::optional<ProcessUsage> processUsage(pid_t pid);

}  // namespace gc40::bench
