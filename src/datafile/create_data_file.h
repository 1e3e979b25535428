#pragma once
// Creating a data file: the proposed name in Qt's own save dialog, refusal of
// names that exist, exclusive creation and the header.

#include <filesystem>
#include <optional>

#include "datafile/data_file.h"
#include "settings/settings.h"

class QString;
class QWidget;

namespace gc40 {

inline constexpr char kCreateDataFileTitle[] = "Create Data File";
inline constexpr char kDataFileFilter[] = "GC40 Files (*.R40)";
inline constexpr char kFileExistsText[] = "The file already exisits. Please enter another name";

// Runs the dialog until the operator picks a new name or cancels. Returns the
// open file with its header written, or nullopt after a cancel.
std::optional<DataFile> createDataFile(QWidget* owner, const Settings& settings,
                                       const std::filesystem::path& dataFolder);

}  // namespace gc40
