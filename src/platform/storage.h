#pragma once
// The storage root: one folder holding the settings folder FLDINI and the
// data folder DATA40. Default ~/GC40; --storage DIR chooses another.

#include <filesystem>
#include <optional>
#include <string>

namespace gc40 {

struct StorageRoot {
  std::filesystem::path root;

  std::filesystem::path settingsFolder() const { return root / "FLDINI"; }
  std::filesystem::path dataFolder() const { return root / "DATA40"; }
};

// $HOME/GC40 (the current folder's GC40 when HOME is not set).
std::filesystem::path defaultStorageRoot(const char* home);

// Creates a folder and its parents. Nullopt on success, else a message that
// names the folder.
std::optional<std::string> createFolder(const std::filesystem::path& folder);

// Creates the root and both folders. Nullopt on success, else a message that
// names the folder that could not be made.
std::optional<std::string> prepareStorage(const StorageRoot& storage);

}  // namespace gc40
