#include "app/start_up.h"

#include <ostream>

#include "settings/settings_file.h"

namespace gc40 {
namespace {

void applyOverrides(const CommandLine& options, PortMap& ports) {
  for (const PortAssignment& assignment : options.portOverrides) {
    ports.paths[static_cast<std::size_t>(assignment.index)] = assignment.path;
  }
}

}  // namespace

std::variant<LoggerContext, SetupError> prepareLogger(const CommandLine& options, const char* home,
                                                      std::ostream& warnings) {
  LoggerContext context;
  context.storage = {options.storage.value_or(defaultStorageRoot(home))};
  context.orientation = options.orientation;
  context.windowScale = options.scale;
  context.rawLogFolder = options.rawLogFolder;
  if (std::optional<std::string> error = prepareStorage(context.storage)) {
    return SetupError{*error};
  }
  if (options.rawLogFolder) {
    if (std::optional<std::string> error = createFolder(*options.rawLogFolder)) {
      return SetupError{*error};
    }
  }
  // Derived values first, so that what the file holds wins.
  computeSamplesPerReading(context.settings);
  recomputeScaleFactors(context.settings);
  const SettingsFileResult loaded =
      loadOrSaveSettings(context.settings, context.storage.settingsFolder(), false);
  if (loaded.outcome == SettingsFileResult::Outcome::kFailed) {
    warnings << "gc40: " << loaded.error << "\n";
  }
  context.ports = loadPortMap(context.storage.settingsFolder(), warnings);
  applyOverrides(options, context.ports);
  return context;
}

std::string portListing(const CommandLine& options, const char* home,
                        std::span<const SerialAdapter> adapters, std::ostream& warnings) {
  const StorageRoot storage{options.storage.value_or(defaultStorageRoot(home))};
  PortMap ports = readPortMap(storage.settingsFolder(), warnings);
  applyOverrides(options, ports);
  return formatPortListing(ports, storage.settingsFolder() / kPortMapFileName, adapters);
}

}  // namespace gc40
