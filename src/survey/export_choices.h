#pragma once
// The export's last choices, kept in FLDINI/EXPORT.INI so the next export
// (and any screen that places readings) starts from them: the format, the
// coordinate system, and the corrections from the meter to the antenna. One
// "Key=Value" line each, 8-bit text ended by CR LF like the settings file:
//
//   Format=GPKG        a driver name of kExportFormats
//   System=WGS84       WGS84, UTM (the survey's own zone) or EPSG:code
//   LagMs=250          whole milliseconds, negative allowed
//   LaybackM=1.50      metres, two decimals
//   OffsetM=0.00       metres to the right of the travel, two decimals
//   MaxGapS=2.0        seconds, one decimal
//
// Lines starting with '#' or ';' are comments. The file is written only when
// an export has been made with the choices in it.

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "survey/reading_positions.h"

namespace gc40 {

inline constexpr std::string_view kExportChoicesFileName = "EXPORT.INI";

struct ExportFormat {
  std::string_view label;      // as the dialog lists it
  std::string_view driver;     // the OGR driver name, or "XYZ" for Geosoft XYZ
  std::string_view extension;  // with its dot
};

inline constexpr std::array<ExportFormat, 6> kExportFormats = {{
    {"GeoPackage", "GPKG", ".gpkg"},
    {"GeoJSON", "GeoJSON", ".geojson"},
    {"CSV", "CSV", ".csv"},
    {"KML", "KML", ".kml"},
    {"FlatGeobuf", "FlatGeobuf", ".fgb"},
    {"Geosoft XYZ", "XYZ", ".xyz"},
}};

enum class ExportSystem { kWgs84, kUtm, kEpsg };

// What the dialog's fields can hold; a value outside is a damaged line.
inline constexpr int kLagLimitMs = 10'000;
inline constexpr double kOffsetLimitM = 100.0;  // layback and cross-track offset, either sign
inline constexpr double kMaxGapFromS = 0.1, kMaxGapToS = 600.0;
inline constexpr int kEpsgFrom = 1024, kEpsgTo = 999'999;

struct ExportChoices {
  std::size_t format = 0;  // into kExportFormats
  ExportSystem system = ExportSystem::kWgs84;
  int epsg = 4326;  // for kEpsg
  int lagMs = 0;
  double laybackM = 0.0;
  double offsetM = 0.0;
  double maxGapS = 2.0;

  bool operator==(const ExportChoices&) const = default;
};

PositionOptions positionOptions(const ExportChoices& choices);

// KML holds longitude and latitude only.
bool formatTakesProjection(std::size_t format);

struct ExportChoicesProblem {
  int lineNumber = 0;
  std::string line;
};

struct ParsedExportChoices {
  ExportChoices choices;                       // the defaults where a line was missing or bad
  std::vector<ExportChoicesProblem> problems;  // lines not understood, ignored
};

// Each key may appear once or not at all; a later line for a key wins.
ParsedExportChoices parseExportChoices(std::string_view text);

// The whole file, each line with its CR LF.
std::vector<std::string> formatExportChoices(const ExportChoices& choices);

struct LoadedExportChoices {
  ExportChoices choices;
  // What the operator should hear, naming the file: lines of a damaged file
  // that were ignored, or a file that is there but cannot be read. Empty
  // when all is well, and when there is no file yet.
  std::string note;
};

LoadedExportChoices loadExportChoices(const std::filesystem::path& settingsFolder);

// Creates the folder when missing. Nullopt on success, else a message that
// names the file.
std::optional<std::string> saveExportChoices(const std::filesystem::path& settingsFolder,
                                             const ExportChoices& choices);

// Beside the data file, with its base name and the format's extension.
std::filesystem::path defaultExportPath(const std::filesystem::path& dataFile, std::size_t format);

// The output path after a change of format: a name ending in one of the
// formats' extensions (or in none) takes the new one; a name the operator
// gave another ending keeps it.
std::filesystem::path outputForFormat(const std::filesystem::path& output, std::size_t format);

}  // namespace gc40
