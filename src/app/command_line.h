#pragma once
// The logger's command line. It only says where things are and how the
// window is shown; what the operator configures lives in the settings file.

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/logger_context.h"
#include "ui/window_geometry.h"

namespace gc40 {

struct CommandLine {
  std::optional<std::filesystem::path> storage;
  std::vector<PortAssignment> portOverrides;
  Orientation orientation = Orientation::kLandscape;
  std::optional<int> scale;                           // whole factor, 1..kMaxWindowScale
  std::optional<std::filesystem::path> rawLogFolder;  // --raw-log: capture port bytes here
  bool simulate = false;       // the instrument is gc40-sim on a pseudo-terminal
  bool remoteControl = false;  // --control: keys from standard input, for scripted runs
  bool listPorts = false;      // --list-ports: print the port map and the adapters found
  bool headless = false;       // no windows: keys from standard input, a status line out
  bool autoStart = false;      // --headless: create a file and start logging at once
  bool help = false;
  bool version = false;
  // Qt's own options (-platform offscreen, -style=fusion ...), in their order,
  // for the application object.
  std::vector<std::string_view> qtArguments;
};

struct CommandLineError {
  std::string message;
};

// The arguments after the program name. They are parsed before any window
// system is touched, so --help, --version and mistakes need no display.
std::variant<CommandLine, CommandLineError> parseCommandLine(
    std::span<const std::string_view> arguments);

std::string usageText();
std::string versionText();

}  // namespace gc40
