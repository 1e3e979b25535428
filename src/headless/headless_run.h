#pragma once
// gc40 --headless: one Monitor/Log run on the terminal, from the checks
// before the ports open to the closed file, without a window system.

#include "platform/logger_context.h"
#include "platform/stop_signal_watch.h"

namespace gc40 {

struct HeadlessOptions {
  bool autoStart = false;  // create a file under its proposed name and log at once
};

// Runs in the application's loop until the run ends or a stop signal ends
// it (a recording is paused and its file closed first). Returns the exit
// code: 0 when the operator or a stop signal ended the run, 1 when the
// instrument port could not be opened, kRunEndedWithoutMeter when the meter
// fell silent.
int runHeadless(LoggerContext& context, const HeadlessOptions& options,
                StopSignalWatch& stopSignals);

}  // namespace gc40
