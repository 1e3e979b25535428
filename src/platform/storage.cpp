#include "platform/storage.h"

#include <system_error>

namespace gc40 {

std::filesystem::path defaultStorageRoot(const char* home) {
  const std::filesystem::path base = (home && *home) ? std::filesystem::path(home) : ".";
  return base / "GC40";
}

std::optional<std::string> createFolder(const std::filesystem::path& folder) {
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error || !std::filesystem::is_directory(folder)) {
    return "cannot create folder " + folder.string() + ": " +
           (error ? error.message() : std::string("a file of that name is in the way"));
  }
  return std::nullopt;
}

std::optional<std::string> prepareStorage(const StorageRoot& storage) {
  for (const std::filesystem::path& folder : {storage.settingsFolder(), storage.dataFolder()}) {
    if (std::optional<std::string> error = createFolder(folder)) return error;
  }
  return std::nullopt;
}

}  // namespace gc40
