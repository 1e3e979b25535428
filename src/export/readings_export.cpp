#include "export/readings_export.h"

#include <algorithm>
#include <cctype>
#include <limits>
#include <system_error>

#include "base/number_text.h"
#include "base/raw_file.h"
#include "datafile/data_file_reader.h"
#include "export/crs.h"
#include "export/feature_writer.h"
#include "export/xyz_writer.h"
#include "survey/survey_lines.h"

namespace gc40 {
namespace {

constexpr std::size_t kProgressEvery = 4096;  // readings between progress calls

struct LoadedFile {
  std::string name;  // as the file column shows it
  PositionedFile positioned;
};

std::optional<std::string> readInput(const std::filesystem::path& path, std::string& error) {
  std::error_code code;
  const auto status = std::filesystem::status(path, code);
  if (code) {
    error = path.string() + ": " + code.message();
    return std::nullopt;
  }
  if (!std::filesystem::is_regular_file(status)) {
    error = path.string() + ": not a regular file";
    return std::nullopt;
  }
  std::optional<std::string> bytes = readFilePrefix(path, std::string::npos);
  if (!bytes) error = path.string() + ": cannot be read";
  return bytes;
}

bool stopAsked(const std::atomic<bool>* stop) { return stop && *stop; }

std::optional<LoadedFile> load(const std::filesystem::path& path, const ExportOptions& options,
                               const ExportProgress& progress, std::string& error) {
  const std::optional<std::string> bytes = readInput(path, error);
  if (!bytes) return std::nullopt;
  const std::string stage = "reading " + path.filename().string();
  const ReadProgress reading = [&](std::size_t done, std::size_t total) {
    if (progress) progress(stage, done, total);
    return !stopAsked(options.stop);
  };
  const std::optional<DataFileContents> contents = readDataFile(*bytes, reading);
  if (stopAsked(options.stop)) return std::nullopt;
  if (!contents || contents->records.empty()) {
    error = path.string() + ": not a data file (no record could be read)";
    return std::nullopt;
  }
  const std::string placing = "placing " + path.filename().string();
  const SplitProgress splitting = [&](std::size_t done, std::size_t total) {
    if (progress) progress(placing, done, total);
    return !stopAsked(options.stop);
  };
  const std::optional<SurveyFile> survey = splitSurveyLines(*contents, splitting);
  if (stopAsked(options.stop)) return std::nullopt;
  if (!survey) {
    error = path.string() + ": could not be split into survey lines";
    return std::nullopt;
  }
  return LoadedFile{path.filename().string(),
                    positionReadings(*contents, *survey, options.positions)};
}

std::string formatFor(const ExportOptions& options) {
  if (!options.format.empty()) return options.format;
  std::string extension = options.output.extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  if (extension == ".xyz") return kXyzFormat;
  return driverForExtension(options.output);
}

// The middle of the positions' extent, which picks the UTM zone.
std::optional<PointXY> surveyCentre(const std::vector<LoadedFile>& files) {
  double west = std::numeric_limits<double>::infinity(), east = -west;
  double south = west, north = -west;
  for (const LoadedFile& file : files) {
    for (const PositionedReading& reading : file.positioned.readings) {
      if (!reading.position) continue;
      west = std::min(west, reading.position->longitude);
      east = std::max(east, reading.position->longitude);
      south = std::min(south, reading.position->latitude);
      north = std::max(north, reading.position->latitude);
    }
  }
  if (west > east) return std::nullopt;
  return PointXY{(west + east) / 2, (south + north) / 2};
}

// The output's EPSG code; nullopt with `error` when there is none to give.
std::optional<int> outputEpsg(const ExportOptions& options, const std::vector<LoadedFile>& files,
                              std::string& error) {
  if (options.system == OutputSystem::kEpsg) return options.epsg;
  if (options.system == OutputSystem::kWgs84) return kWgs84Epsg;
  const std::optional<PointXY> centre = surveyCentre(files);
  if (!centre) {
    error = "no reading has a position to choose the UTM zone by";
    return std::nullopt;
  }
  return utmEpsgCode(centre->x, centre->y);
}

ReadingColumnOptions columnOptionsFor(const ExportOptions& options,
                                      const std::vector<LoadedFile>& files, bool gridColumns) {
  ReadingColumnOptions columns;
  columns.inversionNames = options.inversionNames;
  columns.gridColumns = gridColumns;
  // An inversion tool takes every coil column for a measurement, so none
  // stays that no reading fills.
  if (options.inversionNames) {
    columns.values = {};
    for (const LoadedFile& file : files) {
      const std::array<bool, 4> present = valuesPresent(file.positioned);
      for (std::size_t i = 0; i < present.size(); ++i)
        columns.values[i] = columns.values[i] || present[i];
    }
  }
  return columns;
}

// Both writers behind one face, so the loop over readings is written once.
class Output {
 public:
  bool open(const ExportOptions& options, const std::string& format, const FeatureLayout& layout,
            int decimals) {
    xyz_ = format == kXyzFormat;
    if (xyz_) return xyzWriter_.open(options.output, layout.fields, decimals);
    return featureWriter_.open(options.output, format, layout);
  }
  void beginLine(const std::string& name) {
    if (xyz_) xyzWriter_.beginLine(name);
  }
  bool add(const FeatureRow& row) { return xyz_ ? xyzWriter_.add(row) : featureWriter_.add(row); }
  bool close() { return xyz_ ? xyzWriter_.close() : featureWriter_.close(); }
  std::size_t leftOut() const { return xyz_ ? 0 : featureWriter_.leftOut(); }
  const std::string& error() const { return xyz_ ? xyzWriter_.error() : featureWriter_.error(); }

 private:
  bool xyz_ = false;
  XyzWriter xyzWriter_;
  FeatureWriter featureWriter_;
};

}  // namespace

ExportResult exportReadings(const ExportOptions& options, const ExportProgress& progress) {
  ExportResult result;
  const std::string format = formatFor(options);
  if (format.empty()) {
    result.error = options.output.string() + ": no format goes with the extension \"" +
                   options.output.extension().string() + "\"";
    return result;
  }
  const bool wgs84Only = format == "KML" || format == "LIBKML";
  if (wgs84Only && options.system != OutputSystem::kWgs84) {
    result.error = options.output.string() + ": KML holds WGS 84 coordinates only";
    return result;
  }

  std::vector<LoadedFile> files;
  for (const std::filesystem::path& input : options.inputs) {
    std::optional<LoadedFile> file = load(input, options, progress, result.error);
    result.stopped = stopAsked(options.stop);
    if (result.stopped || !file) return result;
    files.push_back(std::move(*file));
  }
  const bool anyFixes = std::any_of(files.begin(), files.end(),
                                    [](const LoadedFile& f) { return f.positioned.hasFixes; });
  const bool anyWithoutFixes = std::any_of(
      files.begin(), files.end(), [](const LoadedFile& f) { return !f.positioned.hasFixes; });
  if (!anyFixes && options.system != OutputSystem::kWgs84) {
    result.error = "no file holds GPS fixes: its grid coordinates cannot be projected";
    return result;
  }

  const std::optional<int> epsg = outputEpsg(options, files, result.error);
  if (!epsg) return result;
  PointProjection projection;
  if (!projection.setUp(*epsg)) {
    result.error = projection.error();
    return result;
  }

  // Where a reading stands before projection: at its fix, or, when no file
  // has fixes, at its place on the grid.
  const auto place = [anyFixes](const PositionedReading& reading) -> std::optional<PointXY> {
    if (anyFixes && reading.position)
      return PointXY{reading.position->longitude, reading.position->latitude};
    if (!anyFixes && reading.gridX && reading.gridY) return PointXY{*reading.gridX, *reading.gridY};
    return std::nullopt;
  };
  std::vector<PointXY> points;
  for (const LoadedFile& file : files)
    for (const PositionedReading& reading : file.positioned.readings)
      if (const std::optional<PointXY> at = place(reading)) points.push_back(*at);
  if (anyFixes && !projection.project(points)) {
    result.error = "some positions lie outside what " + projection.name() + " can hold";
    return result;
  }
  const ReadingColumns columns(columnOptionsFor(options, files, anyWithoutFixes));

  FeatureLayout layout;
  layout.fields = columns.fields();
  if (anyFixes) layout.epsg = *epsg;
  // The inversion tools take x and y from columns of those names.
  layout.csvPointColumns = !options.inversionNames;
  layout.spatialIndex = options.spatialIndex;
  Output output;
  if (!output.open(options, format, layout, anyFixes && projection.geographic() ? 9 : 3)) {
    result.error = output.error();
    return result;
  }

  ExportSummary summary;
  summary.format = format;
  summary.system = anyFixes ? projection.name() : "grid (x = station, y = line number)";
  std::size_t total = 0;
  for (const LoadedFile& file : files) total += file.positioned.readings.size();
  FeatureRow row;
  std::size_t nextPoint = 0;
  for (const LoadedFile& file : files) {
    std::optional<std::size_t> line;
    for (const PositionedReading& reading : file.positioned.readings) {
      if (line != reading.lineIndex) {
        line = reading.lineIndex;
        output.beginLine(reading.lineName);
      }
      const bool placed = place(reading).has_value();
      const std::optional<PointXY> point =
          placed ? std::optional<PointXY>(points[nextPoint++]) : std::nullopt;
      columns.fill(file.name, reading, point, row);
      if (!output.add(row)) {
        result.error = output.error();
        return result;
      }
      if (placed)
        ++summary.positioned;
      else
        ++summary.withoutPosition[noPositionText(reading.noPosition)];
      if (++summary.readings % kProgressEvery != 0) continue;
      if (progress) progress("writing", summary.readings, total);
      result.stopped = stopAsked(options.stop);
      if (result.stopped) return result;
    }
  }
  if (!output.close()) {
    result.error = output.error();
    return result;
  }
  if (progress) progress("writing", summary.readings, total);
  summary.leftOut = output.leftOut();
  result.summary = std::move(summary);
  return result;
}

}  // namespace gc40
