#pragma once
// Recorded data files to one file of point features: every reading with
// its position (or, where the files hold no fixes, its station and line as
// grid coordinates), in WGS 84 or a projected system, in any format GDAL
// writes or as Geosoft-style XYZ. What r40 export and the export dialog do.

#include <atomic>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "export/reading_columns.h"
#include "survey/reading_positions.h"

namespace gc40 {

inline constexpr const char* kXyzFormat = "XYZ";

enum class OutputSystem { kWgs84, kEpsg, kUtm };

struct ExportOptions {
  std::vector<std::filesystem::path> inputs;
  std::filesystem::path output;
  std::string format;  // an OGR driver name or kXyzFormat; empty: from the output's extension
  OutputSystem system = OutputSystem::kWgs84;
  int epsg = 0;  // for kEpsg
  PositionOptions positions;
  std::optional<CoilGeometry> inversionNames;
  // A GeoPackage's R-tree costs more time than all the rest for a long
  // survey, and a GIS draws a few hundred thousand points well without it.
  bool spatialIndex = false;
  // Set from another thread (a Cancel button) to end the export at its next
  // progress report.
  const std::atomic<bool>* stop = nullptr;
};

struct ExportSummary {
  std::size_t readings = 0;
  std::size_t positioned = 0;                          // with a GPS position, or grid coordinates
  std::map<std::string, std::size_t> withoutPosition;  // by reason
  std::size_t leftOut = 0;  // readings the format could not hold (no point)
  std::string format;       // the driver used
  std::string system;       // "WGS 84", "WGS 84 / UTM zone 33N", or the grid
};

struct ExportResult {
  std::optional<ExportSummary> summary;
  std::string error;     // when there is no summary; names the file concerned
  bool stopped = false;  // by ExportOptions::stop: the output may be partly written
};

// `stage` is "reading NAME" (done/total in bytes), "placing NAME" (in records)
// or "writing" (in readings).
using ExportProgress =
    std::function<void(const std::string& stage, std::size_t done, std::size_t total)>;

ExportResult exportReadings(const ExportOptions& options, const ExportProgress& progress = {});

}  // namespace gc40
