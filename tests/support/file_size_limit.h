#pragma once
// A full card without a small file system: every file this process (and what
// it starts meanwhile) writes is held to `bytes`, a write past it cut short and
// the next refused ("File too large"). Lifted at the end of the scope.

#include <signal.h>
#include <sys/resource.h>

namespace gc40::testing {

struct FileSizeLimit {
  explicit FileSizeLimit(rlim_t bytes) {
    ::signal(SIGXFSZ, SIG_IGN);  // a refused write, not a killed process
    getrlimit(RLIMIT_FSIZE, &saved);
    const rlimit limit{bytes, saved.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &saved); }
  rlimit saved{};
};

}  // namespace gc40::testing
