#include "export/feature_writer.h"

#include <gdal_priv.h>
#include <ogrsf_frmts.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <mutex>
#include <system_error>

#include "base/number_text.h"
#include "export/gdal_errors.h"

namespace gc40 {
namespace {

// Large enough that committing costs nothing next to the inserts, small
// enough that a GeoPackage's journal stays modest.
constexpr std::size_t kRowsPerTransaction = 100000;

void registerDrivers() {
  static std::once_flag once;
  std::call_once(once, [] { GDALAllRegister(); });
}

std::string lowerCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

OGRFieldType ogrType(FieldType type, bool datesAsText) {
  switch (type) {
    case FieldType::kInteger:
      return OFTInteger64;
    case FieldType::kReal:
      return OFTReal;
    case FieldType::kText:
      return OFTString;
    case FieldType::kDateTime:
      return datesAsText ? OFTString : OFTDateTime;
  }
  return OFTString;
}

// Removes an earlier output with the files a driver keeps beside it.
bool removeEarlier(const std::filesystem::path& path, std::string& error) {
  std::error_code code;
  if (std::filesystem::is_directory(path, code)) {
    error = path.string() + ": is a folder";
    return false;
  }
  if (std::filesystem::exists(path, code)) GDALDriver::QuietDelete(path.string().c_str());
  std::vector<std::filesystem::path> files{path};
  if (lowerCase(path.extension().string()) == ".csv")
    for (const char* extension : {".csvt", ".prj"})
      files.push_back(std::filesystem::path(path).replace_extension(extension));
  for (const std::filesystem::path& file : files) {
    std::filesystem::remove(file, code);
    if (code) {
      error = file.string() + ": " + code.message();
      return false;
    }
  }
  return true;
}

}  // namespace

std::string driverForExtension(const std::filesystem::path& path) {
  const std::string extension = lowerCase(path.extension().string());
  if (extension == ".gpkg") return "GPKG";
  if (extension == ".geojson" || extension == ".json") return "GeoJSON";
  if (extension == ".csv") return "CSV";
  if (extension == ".kml") return "KML";
  if (extension == ".fgb") return "FlatGeobuf";
  if (extension == ".shp") return "ESRI Shapefile";
  return {};
}

struct FeatureWriter::Impl {
  GDALDatasetUniquePtr dataset;
  OGRLayer* layer = nullptr;
  OGRFeatureUniquePtr feature;
  std::vector<FieldType> types;
  std::vector<int> columns;  // our field i is the layer's field columns[i]
  bool datesAsText = false;
  bool takesEmptyGeometry = true;
  bool inTransaction = false;
  std::size_t sinceCommit = 0;

  bool commit() {
    if (!inTransaction) return true;
    inTransaction = false;
    return dataset->CommitTransaction() == OGRERR_NONE;
  }
};

FeatureWriter::FeatureWriter() : impl_(std::make_unique<Impl>()) {}

FeatureWriter::~FeatureWriter() {
  if (impl_->dataset) close();
}

bool FeatureWriter::open(const std::filesystem::path& path, const std::string& driverName,
                         const FeatureLayout& layout) {
  registerDrivers();
  QuietGdal quiet;
  const std::string target = path.string();
  GDALDriver* driver = GetGDALDriverManager()->GetDriverByName(driverName.c_str());
  if (!driver || !driver->GetMetadataItem(GDAL_DCAP_VECTOR) ||
      !driver->GetMetadataItem(GDAL_DCAP_CREATE)) {
    error_ = "GDAL has no vector format \"" + driverName + "\" that it can write";
    return false;
  }
  if (!removeEarlier(path, error_)) return false;
  impl_->dataset.reset(driver->Create(target.c_str(), 0, 0, 0, GDT_Unknown, nullptr));
  if (!impl_->dataset) {
    error_ = QuietGdal::message(target + ": cannot be created");
    return false;
  }

  const bool csv = driverName == "CSV";
  impl_->datesAsText = csv;  // GDAL's CSV writes "2026/03/15 08:00:00+00", not ISO 8601
  impl_->takesEmptyGeometry = driverName != "FlatGeobuf";
  const bool points = !csv || layout.csvPointColumns;

  OGRSpatialReference* srs = nullptr;
  if (points && layout.epsg) {
    srs = new OGRSpatialReference();
    if (srs->importFromEPSG(*layout.epsg) != OGRERR_NONE) {
      srs->Release();
      error_ = "EPSG:" + formatInteger(*layout.epsg) + " is not known to GDAL";
      return false;
    }
    srs->SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
  }
  CPLStringList options;
  if (driverName == "GPKG" && !layout.spatialIndex) options.SetNameValue("SPATIAL_INDEX", "NO");
  if (csv) {
    if (points) options.SetNameValue("GEOMETRY", "AS_XY");
    options.SetNameValue("CREATE_CSVT", "YES");
    // The .csvt keeps the types; quotes around numbers only confuse readers.
    options.SetNameValue("STRING_QUOTING", "IF_NEEDED");
  }
  impl_->layer = impl_->dataset->CreateLayer(path.stem().string().c_str(), srs,
                                             points ? wkbPoint : wkbNone, options.List());
  if (srs) srs->Release();
  if (!impl_->layer) {
    error_ = QuietGdal::message(target + ": cannot hold a layer of points");
    return false;
  }

  impl_->types.clear();
  impl_->columns.clear();
  for (const FieldDef& field : layout.fields) {
    OGRFieldDefn definition(field.name.c_str(), ogrType(field.type, impl_->datesAsText));
    if (impl_->layer->CreateField(&definition) != OGRERR_NONE) {
      error_ = QuietGdal::message(target + ": cannot add the column " + field.name);
      return false;
    }
    impl_->types.push_back(field.type);
    impl_->columns.push_back(impl_->layer->GetLayerDefn()->GetFieldCount() - 1);
  }
  impl_->feature.reset(OGRFeature::CreateFeature(impl_->layer->GetLayerDefn()));
  impl_->inTransaction = impl_->dataset->StartTransaction() == OGRERR_NONE;
  impl_->sinceCommit = 0;
  leftOut_ = 0;
  return true;
}

bool FeatureWriter::add(const FeatureRow& row) {
  Impl& d = *impl_;
  if (!d.feature) return false;
  if (!row.point && !d.takesEmptyGeometry) {
    ++leftOut_;
    return true;
  }
  OGRFeature& feature = *d.feature;
  for (std::size_t i = 0; i < d.columns.size(); ++i) {
    const int column = d.columns[i];
    const FieldValue& value = i < row.values.size() ? row.values[i] : FieldValue{};
    if (const auto* integer = std::get_if<std::int64_t>(&value)) {
      feature.SetField(column, static_cast<GIntBig>(*integer));
    } else if (const auto* real = std::get_if<double>(&value); real && std::isfinite(*real)) {
      feature.SetField(column, *real);
    } else if (const auto* text = std::get_if<std::string>(&value)) {
      feature.SetField(column, text->c_str());
    } else if (const auto* time = std::get_if<DateTime>(&value)) {
      if (d.datesAsText) {
        feature.SetField(column, isoDateTime(*time).c_str());
      } else {
        const float seconds = static_cast<float>(time->second + time->millisecond / 1000.0);
        feature.SetField(column, time->year, time->month, time->day, time->hour, time->minute,
                         seconds, time->utc ? 100 : 0);
      }
    } else {
      // Null rather than unset: GeoJSON then still names the column.
      feature.SetFieldNull(column);
    }
  }
  if (row.point) {
    if (auto* point = dynamic_cast<OGRPoint*>(feature.GetGeometryRef())) {
      point->setX(row.point->x);
      point->setY(row.point->y);
    } else {
      feature.SetGeometryDirectly(new OGRPoint(row.point->x, row.point->y));
    }
  } else if (feature.GetGeometryRef()) {
    feature.SetGeometryDirectly(nullptr);
  }
  feature.SetFID(OGRNullFID);
  QuietGdal quiet;
  if (d.layer->CreateFeature(&feature) != OGRERR_NONE) {
    error_ = QuietGdal::message("a feature could not be written");
    return false;
  }
  if (d.inTransaction && ++d.sinceCommit >= kRowsPerTransaction) {
    d.sinceCommit = 0;
    if (!d.commit()) {
      error_ = QuietGdal::message("the features could not be committed");
      return false;
    }
    d.inTransaction = d.dataset->StartTransaction() == OGRERR_NONE;
  }
  return true;
}

bool FeatureWriter::close() {
  Impl& d = *impl_;
  if (!d.dataset) return error_.empty();
  QuietGdal quiet;
  d.feature.reset();
  bool ok = d.commit();
  if (!ok) error_ = QuietGdal::message("the features could not be committed");
  CPLErrorReset();
  d.dataset.reset();  // flushes and closes; GDAL reports failure only through the handler
  if (QuietGdal::failed()) {
    if (ok) error_ = QuietGdal::message("the file could not be completed");
    ok = false;
  }
  d.layer = nullptr;
  return ok;
}

}  // namespace gc40
