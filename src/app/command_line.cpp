#include "app/command_line.h"

#include <algorithm>

#include "app/version.h"
#include "base/number_text.h"

namespace gc40 {
namespace {

// "--name VALUE" or "--name=VALUE"; advances `i` past a separate value.
std::optional<std::string_view> optionValue(std::span<const std::string_view> arguments,
                                            std::size_t& i, std::string_view name,
                                            std::string* error) {
  const std::string_view argument = arguments[i];
  if (argument.size() > name.size() && argument.substr(0, name.size()) == name &&
      argument[name.size()] == '=') {
    return argument.substr(name.size() + 1);
  }
  if (argument != name) return std::nullopt;
  if (i + 1 >= arguments.size()) {
    *error = std::string(name) + " needs a value";
    return std::nullopt;
  }
  return arguments[++i];
}

std::optional<int> parseScale(std::string_view text) {
  if (text.empty() || text.size() > 2) return std::nullopt;
  for (const char c : text) {
    if (c < '0' || c > '9') return std::nullopt;
  }
  const int scale = parseIntegerPrefix(text);
  if (scale < 1 || scale > kMaxWindowScale) return std::nullopt;
  return scale;
}

// The options Qt's application object documents and takes out of the command
// line itself; they are handed on to it untouched.
constexpr std::string_view kQtOptionsWithValue[] = {
    "-platform",        "-platformpluginpath", "-platformtheme", "-plugin",
    "-qwindowgeometry", "-qwindowicon",        "-qwindowtitle",  "-session",
    "-display",         "-geometry",           "-style",         "-stylesheet"};
constexpr std::string_view kQtFlags[] = {"-reverse", "-widgetcount"};
constexpr std::string_view kQtJoinedOptions[] = {"-style=", "-stylesheet=", "-qmljsdebugger="};

// Takes one of Qt's options (and its value) into options.qtArguments; false
// when `arguments[i]` is none of them.
bool takeQtOption(std::span<const std::string_view> arguments, std::size_t& i, CommandLine& options,
                  std::string& error) {
  const std::string_view argument = arguments[i];
  const auto is = [argument](std::string_view name) { return argument == name; };
  const auto startsWith = [argument](std::string_view prefix) {
    return argument.size() > prefix.size() && argument.starts_with(prefix);
  };
  if (std::ranges::any_of(kQtFlags, is) || std::ranges::any_of(kQtJoinedOptions, startsWith)) {
    options.qtArguments.push_back(argument);
    return true;
  }
  if (!std::ranges::any_of(kQtOptionsWithValue, is)) return false;
  if (i + 1 >= arguments.size()) {
    error = std::string(argument) + " needs a value";
    return true;
  }
  options.qtArguments.push_back(argument);
  options.qtArguments.push_back(arguments[++i]);
  return true;
}

// Options without a value; false when `argument` is none of them.
bool applyFlag(std::string_view argument, CommandLine& options) {
  if (argument == "--help" || argument == "-h") {
    options.help = true;
  } else if (argument == "--version") {
    options.version = true;
  } else if (argument == "--portrait") {
    options.orientation = Orientation::kPortrait;
  } else if (argument == "--landscape") {
    options.orientation = Orientation::kLandscape;
  } else if (argument == "--simulate") {
    options.simulate = true;
  } else if (argument == "--control") {
    options.remoteControl = true;
  } else if (argument == "--list-ports") {
    options.listPorts = true;
  } else if (argument == "--headless") {
    options.headless = true;
  } else if (argument == "--auto-start") {
    options.autoStart = true;
  } else {
    return false;
  }
  return true;
}

// Applies one argument; returns false with `error` set when it is not valid.
bool applyArgument(std::span<const std::string_view> arguments, std::size_t& i,
                   CommandLine& options, std::string& error) {
  const std::string_view argument = arguments[i];
  if (applyFlag(argument, options)) return true;
  if (takeQtOption(arguments, i, options, error)) return error.empty();
  if (const auto value = optionValue(arguments, i, "--storage", &error)) {
    if (value->empty()) error = "--storage needs a folder";
    options.storage = std::filesystem::path(*value);
    return error.empty();
  }
  if (const auto value = optionValue(arguments, i, "--raw-log", &error)) {
    if (value->empty()) error = "--raw-log needs a folder";
    options.rawLogFolder = std::filesystem::path(*value);
    return error.empty();
  }
  if (const auto value = optionValue(arguments, i, "--port", &error)) {
    const std::optional<PortAssignment> assignment = parsePortAssignment(*value);
    if (!assignment) {
      error = "--port wants COMn=PATH with n 1..12, not '" + std::string(*value) + "'";
      return false;
    }
    options.portOverrides.push_back(*assignment);
    return true;
  }
  if (const auto value = optionValue(arguments, i, "--scale", &error)) {
    options.scale = parseScale(*value);
    if (!options.scale) {
      error = "--scale wants a whole number from 1 to " + formatInteger(kMaxWindowScale) +
              ", not '" + std::string(*value) + "'";
    }
    return error.empty();
  }
  if (error.empty()) error = "unknown option '" + std::string(argument) + "'";
  return false;
}

}  // namespace

std::variant<CommandLine, CommandLineError> parseCommandLine(
    std::span<const std::string_view> arguments) {
  CommandLine options;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    std::string error;
    if (!applyArgument(arguments, i, options, error)) {
      return CommandLineError{error + " (gc40 --help lists the options)"};
    }
  }
  // Without a window the keys come from standard input, which --control
  // would take; a file is started unasked only where nobody can ask.
  if (options.autoStart && !options.headless)
    return CommandLineError{"--auto-start goes with --headless"};
  if (options.remoteControl && options.headless)
    return CommandLineError{"--control drives the windows; --headless reads keys itself"};
  return options;
}

std::string usageText() {
  return "Usage: gc40 [OPTION]...\n"
         "Field data logger for the GC40 ground-conductivity meter.\n"
         "\n"
         "  --headless          no windows: log from the terminal, keys on standard input\n"
         "                      and a status line on standard output (see man gc40)\n"
         "  --auto-start        with --headless: create a file under its proposed name\n"
         "                      and start logging at once\n"
         "  --storage DIR       keep settings (DIR/FLDINI) and data files (DIR/DATA40)\n"
         "                      in DIR instead of ~/GC40\n"
         "  --port COMn=PATH    use the device PATH for port COMn: in this run\n"
         "                      (the lasting map is DIR/FLDINI/PORTS.INI); repeatable\n"
         "  --raw-log DIR       copy every byte each serial port delivers to a file\n"
         "                      in DIR (one file per port and run)\n"
         "  --simulate          read a simulated instrument and GPS receiver (gc40-sim)\n"
         "                      instead of the configured ports, whichever they are\n"
         "  --control           take key presses from standard input and name each\n"
         "                      window that comes to the front on standard output\n"
         "                      (for scripted runs and whole-program tests)\n"
         "  --landscape         320 x 240 layout (the default)\n"
         "  --portrait          240 x 320 layout\n"
         "  --scale N           draw the window N times its layout size (1..8)\n"
         "  --list-ports        list the port map and the serial adapters found, and exit\n"
         "  --help              show this help and exit\n"
         "  --version           show the version and exit\n"
         "\n"
         "Qt's own options, such as -platform NAME and -style NAME, are passed on to Qt.\n";
}

std::string versionText() { return std::string("gc40 ") + std::string(kGc40Version) + "\n"; }

}  // namespace gc40
