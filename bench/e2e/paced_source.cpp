#include "e2e/paced_source.h"

#include <algorithm>

#include "e2e/feeds.h"

namespace gc40::bench {

void PacedSource::writeDue() {
  while (meter_ && Clock::now() >= recordDue()) {
    meter_->write(meterRecord(records_++));
    recordWrittenAt_ = Clock::now();
  }
  while (gps_ && Clock::now() >= fixDue()) gps_->write(gpsFix(fixes_++));
}

Clock::time_point PacedSource::nextDue() const {
  if (!meter_) return fixDue();
  return gps_ ? std::min(recordDue(), fixDue()) : recordDue();
}

}  // namespace gc40::bench
