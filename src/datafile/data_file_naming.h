#pragma once
// Names of survey data files: the proposal made from the date and hour, and
// the base name that the "H " header record carries.

#include <filesystem>
#include <string>
#include <string_view>

#include "base/local_time.h"

namespace gc40 {

inline constexpr std::string_view kDataFileExtension = ".R40";

// MMDDHH and the first letter A..Z whose file does not exist in `folder`, e.g.
// "031514A"; empty when all 26 exist.
std::string proposeDataFileName(const std::filesystem::path& folder, const LocalTime& now);

// The base name of a chosen path as 8-bit text: from after the last '/' to the
// first '.' after it (the whole rest when there is no '.').
std::string dataFileBaseName(const std::filesystem::path& chosen);

}  // namespace gc40
