#pragma once
// SIGINT, SIGTERM and SIGHUP made readable: each one writes a byte into a pipe
// that every wait polls, so a stop is seen at once wherever the program waits.

#include <optional>
#include <string>

namespace gc40 {

// Installs the handlers once per process; returns the pipe's read end, or
// nullopt and the system's reason.
std::optional<int> watchStopSignals(std::string* error);

}  // namespace gc40
