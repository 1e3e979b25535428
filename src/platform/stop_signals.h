#pragma once
// SIGINT, SIGTERM and SIGHUP made readable: each one writes a byte into a
// pipe that the program polls, so a stop is handled in order by
// the program's own loop, never inside the handler. A closed pipe or socket
// (SIGPIPE) and a file at its size limit (SIGXFSZ) become failed writes to
// report instead of deaths.

#include <optional>
#include <string>

namespace gc40 {

// Installs the handlers once per process; returns the pipe's read end, or
// nullopt and the system's reason.
std::optional<int> watchStopSignals(std::string* error);

}  // namespace gc40
