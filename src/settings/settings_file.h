#pragma once
// The settings file GC40.INI: 55 lines of 8-bit text ended by CR LF, a
// version tag and then one value per line. Loaded once at start-up and
// rewritten whole after every accepted settings change.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/settings.h"

namespace gc40 {

inline constexpr std::string_view kSettingsVersionTag = "CEVer2.11";
inline constexpr std::string_view kSettingsFileName = "GC40.INI";
inline constexpr int kSettingsValueLines = 54;  // lines 2..55

struct SettingsFileResult {
  enum class Outcome {
    kSaved,     // save: the file was written
    kLoaded,    // load: the values were read from the file
    kCreated,   // load: no file, one was written with the current values
    kReplaced,  // load: another version's file was replaced by the current values
    kFailed     // the file could not be written; `error` says why
  };
  Outcome outcome = Outcome::kFailed;
  std::string error;  // names the file
};

// save = true writes the file; save = false loads it, creating it when it is
// missing or of another version. The folder is created first either way.
SettingsFileResult loadOrSaveSettings(Settings& settings,
                                      const std::filesystem::path& settingsFolder, bool save);

// Lines 2..55, each with its CR LF, ready for one write call each.
std::vector<std::string> writeSettings(const Settings& settings);

// The whole file: the version tag and lines 2..55.
std::vector<std::string> settingsFileLines(const Settings& settings);

// The whole file: false, with `settings` untouched, when its first line is not
// this version's tag; else the values are read as readSettings reads them.
bool readSettingsFile(std::string_view bytes, Settings& settings);

// Reads lines 2..55 from `rest` (the file after its first line), consuming
// them. Fields whose lines are missing keep their values; the load-time
// derivations all run.
void readSettings(std::string_view& rest, Settings& settings);

// One line from the front of `rest`: the bytes up to the next line feed with
// the byte before the line feed dropped (it is the CR of a CR LF). Nullopt
// when no line feed is left: a line cut off by the end of the file.
std::optional<std::string_view> readSettingsLine(std::string_view& rest);

}  // namespace gc40
