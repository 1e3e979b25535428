#pragma once
// The field's pace: a meter record every 91 ms and a 10 Hz receiver's fix
// (five sentences) every 100 ms, each stream numbered from 0. Either feed
// may be left out.

#include <cstdint>

#include "e2e/gc40_rig.h"
#include "e2e/pty_feed.h"

namespace gc40::bench {

inline constexpr auto kRecordPeriod = 91ms;
inline constexpr auto kFixPeriod = 100ms;

class PacedSource {
 public:
  PacedSource(PtyFeed* meter, PtyFeed* gps, Clock::time_point start)
      : meter_(meter), gps_(gps), start_(start) {}

  // Writes whatever has fallen due by now.
  void writeDue();
  // When the next write falls due.
  Clock::time_point nextDue() const;
  std::int64_t recordsSent() const { return records_; }
  std::int64_t fixesSent() const { return fixes_; }
  Clock::time_point recordWrittenAt() const { return recordWrittenAt_; }

 private:
  Clock::time_point recordDue() const { return start_ + records_ * kRecordPeriod; }
  Clock::time_point fixDue() const { return start_ + fixes_ * kFixPeriod; }

  PtyFeed* meter_;
  PtyFeed* gps_;
  Clock::time_point start_;
  std::int64_t records_ = 0;
  std::int64_t fixes_ = 0;
  Clock::time_point recordWrittenAt_;
};

}  // namespace gc40::bench
