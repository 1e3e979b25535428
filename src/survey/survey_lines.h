#pragma once
// A recorded data file split into its survey lines. Every reading is placed at
// the station the logger had when it wrote it, by replaying the logging
// screen's own station rules over the file's line, station and reading
// records; readings at one station merge into one entry per station.

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "datafile/data_file_reader.h"
#include "settings/settings.h"

namespace gc40 {

// Trace order of the profile: 0 C/V, 1 C/H, 2 I/V, 3 I/H; 4..7 stay empty.
struct StationEntry {
  double station = 0.0;
  std::array<std::uint8_t, kTraceCount> present{};  // 1: the trace has a value here
  std::array<float, kTraceCount> values{};          // the last valid value of each trace
  bool operator==(const StationEntry&) const = default;
};

struct SurveyLine {
  std::string name;  // as its "L" record holds it; empty for readings before any line
  char direction = ' ';
  double startStation = 0.0;
  float stationIncrement = 0.0f;
  std::vector<double> readingStations;  // each reading's station, in file order
  std::vector<StationEntry> stations;   // in the order they were first walked
};

struct SurveyFile {
  std::optional<IdentificationRecord> identification;
  std::optional<FileNameRecord> fileName;
  std::vector<SurveyLine> lines;
  std::vector<FileProblem> problems;  // what the reader could not read
};

// The settings a file was recorded with, as far as its identification record
// holds them; the rest are the defaults. Readings decode with these.
Settings recordingSettings(const std::optional<IdentificationRecord>& identification);

// Stations that print alike ("%.2f", as the logger shows and records them)
// are one station, whatever rounding the sums carried: this is the key they
// share.
std::int64_t stationKey(double station);

// Called now and then with the records handled so far; false stops the split.
using SplitProgress = std::function<bool(std::size_t done, std::size_t total)>;

// Nullopt only when `progress` stopped it.
std::optional<SurveyFile> splitSurveyLines(const DataFileContents& contents,
                                           const SplitProgress& progress = {});

}  // namespace gc40
