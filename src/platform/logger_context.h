#pragma once
// What the screens and dialogs of a running logger share: where its files
// are, the settings in force, which device each port name stands for, and how
// its window is held. Start-up fills it in; the screens change the settings.

#include <filesystem>
#include <optional>
#include <string>

#include "platform/port_map.h"
#include "platform/storage.h"
#include "settings/profile_setup.h"
#include "settings/settings.h"

namespace gc40 {

enum class Orientation { kLandscape, kPortrait };

struct LoggerContext {
  StorageRoot storage;
  Settings settings;
  PortMap ports;
  ProfileTraces profileTraces;  // which traces the live profile draws
  Orientation orientation = Orientation::kLandscape;
  std::optional<int> windowScale;                     // whole factor; none: fit the screen
  std::optional<std::filesystem::path> rawLogFolder;  // --raw-log: capture port bytes here
  // --simulate: the simulated instrument's and GPS receiver's ports, else empty.
  std::string simulatedInstrumentPath;
  std::string simulatedGpsPath;
};

}  // namespace gc40
