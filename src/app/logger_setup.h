#pragma once
// What the logger prepares before it opens a window: the storage folders, the
// settings record loaded from (or written to) its file, and the port map.

#include <iosfwd>
#include <string>
#include <variant>

#include "app/command_line.h"
#include "app/profile_setup.h"
#include "platform/port_map.h"
#include "platform/storage.h"
#include "settings/settings.h"

namespace gc40 {

struct LoggerContext {
  CommandLine options;
  StorageRoot storage;
  Settings settings;
  PortMap ports;
  ProfileTraces profileTraces;  // which traces the live profile draws
  // --simulate: the simulated instrument's and GPS receiver's ports, else empty.
  std::string simulatedInstrumentPath;
  std::string simulatedGpsPath;
};

struct SetupError {
  std::string message;
};

// `home` is the HOME variable (may be null). Problems that do not stop the
// logger (a settings file that cannot be written, malformed port map lines)
// go to `warnings`; a storage folder that cannot be made stops it.
std::variant<LoggerContext, SetupError> prepareLogger(const CommandLine& options, const char* home,
                                                      std::ostream& warnings);

}  // namespace gc40
