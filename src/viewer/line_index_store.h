#pragma once
// The line index files on disk, in the settings folder: each written whole
// (to a temporary file renamed into place), then read back for drawing.

#include <filesystem>
#include <variant>
#include <vector>

#include "viewer/line_index_files.h"

namespace gc40 {

std::variant<std::vector<StationEntry>, LineIndexError> storeAndReloadLineIndex(
    const std::filesystem::path& settingsFolder, const std::vector<StationEntry>& stations);

}  // namespace gc40
