#pragma once
// Point features into any vector format GDAL/OGR writes. Made for the places
// surveyors open their data: a CSV comes out comma-separated with the point
// as X and Y columns in front, and with the .csvt and .prj beside it that let
// GIS programs load it as points in the right system without asking.

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "export/feature_table.h"

namespace gc40 {

// The OGR driver for the name's extension, case ignored: .gpkg GPKG,
// .geojson/.json GeoJSON, .csv CSV, .kml KML, .fgb FlatGeobuf, .shp ESRI
// Shapefile. Empty when none fits.
std::string driverForExtension(const std::filesystem::path& path);

struct FeatureLayout {
  std::vector<FieldDef> fields;
  std::optional<int> epsg;      // the points' system; none for local grid coordinates
  bool csvPointColumns = true;  // CSV only: X and Y columns in front (and .csvt/.prj)
  bool spatialIndex = true;     // GeoPackage only: its R-tree
};

class FeatureWriter {
 public:
  FeatureWriter();
  ~FeatureWriter();
  FeatureWriter(const FeatureWriter&) = delete;
  FeatureWriter& operator=(const FeatureWriter&) = delete;

  // Replaces whatever is at `path`. False, with error(), when the driver is
  // unknown, cannot create files, or the file cannot be made.
  bool open(const std::filesystem::path& path, const std::string& driver,
            const FeatureLayout& layout);
  bool add(const FeatureRow& row);
  // Commits and closes; false when anything failed to reach the file.
  bool close();

  // Rows without a point that the format could not take (FlatGeobuf holds
  // only features with a geometry).
  std::size_t leftOut() const { return leftOut_; }
  const std::string& error() const { return error_; }

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
  std::size_t leftOut_ = 0;
  std::string error_;
};

}  // namespace gc40
