#include "platform/stop_signal_watch.h"

#include <unistd.h>

#include "platform/stop_signals.h"

namespace gc40 {

StopSignalWatch::StopSignalWatch(QObject* parent) : QObject(parent) {}

bool StopSignalWatch::start(std::string* error) {
  const std::optional<int> fd = watchStopSignals(error);
  if (!fd) return false;
  fd_ = *fd;
  notifier_ = std::make_unique<QSocketNotifier>(fd_, QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, &StopSignalWatch::readSignals);
  return true;
}

void StopSignalWatch::readSignals() {
  char bytes[16];
  while (::read(fd_, bytes, sizeof bytes) > 0) {
    if (requested_) continue;
    requested_ = true;
    emit stopRequested();
  }
}

}  // namespace gc40
