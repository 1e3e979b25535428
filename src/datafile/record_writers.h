#pragma once
// The record writers that the logging screen calls: each forms its records
// and writes them to the open data file, a group (the line block, a GPS
// sentence) as a whole. False when a write failed; the file then holds none
// of the group.

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "base/local_time.h"
#include "datafile/data_file.h"
#include "settings/settings.h"

namespace gc40 {

// Identification and "H " records.
bool writeFileHeader(DataFile& file, const Settings& settings);
// "L", "B", "A", "Z".
bool writeLineBlock(DataFile& file, const Settings& settings, const LocalTime& now);
// "S" for settings.currentStation.
bool writeStationRecord(DataFile& file, const Settings& settings, const LocalTime& now);
bool writeReadingRecord(DataFile& file, std::string_view instrumentRecord, std::uint32_t tick);
bool writeTimeMark(DataFile& file, const LocalTime& now, std::uint32_t tick);
// "C" comments and "X" events.
bool writeTextRecord(DataFile& file, std::u16string_view text, char typeLetter, std::uint32_t tick);
// The whole header of a new file, in order: identification, "H ", the line
// block and a "*" time mark.
bool writeNewFileHeader(DataFile& file, const Settings& settings, const LocalTime& now,
                        std::uint32_t tick);
// A new file at `path` with its whole header, or nullopt and the system's
// reason. A file the device could not take the header of is removed again:
// recording into it would only fail later.
std::optional<DataFile> createFileWithHeader(const std::filesystem::path& path,
                                             const Settings& settings, const LocalTime& now,
                                             std::uint32_t tick, std::string* error);

}  // namespace gc40
