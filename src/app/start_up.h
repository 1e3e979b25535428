#pragma once
// What the logger prepares before it opens a window: the storage folders, the
// settings record loaded from (or written to) its file, and the port map.

#include <iosfwd>
#include <span>
#include <string>
#include <variant>

#include "app/command_line.h"
#include "platform/logger_context.h"
#include "platform/serial_adapters.h"

namespace gc40 {

struct SetupError {
  std::string message;
};

// `home` is the HOME variable (may be null). Problems that do not stop the
// logger (a settings file that cannot be written, malformed port map lines)
// go to `warnings`; a storage folder that cannot be made stops it.
std::variant<LoggerContext, SetupError> prepareLogger(const CommandLine& options, const char* home,
                                                      std::ostream& warnings);

// --list-ports: the port map these options give (the file, or the defaults
// when there is none yet, and the --port overrides) beside `adapters`. Reads
// the map without creating anything.
std::string portListing(const CommandLine& options, const char* home,
                        std::span<const SerialAdapter> adapters, std::ostream& warnings);

}  // namespace gc40
