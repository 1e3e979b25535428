#include "export/crs.h"

#include <ogr_spatialref.h>

#include <algorithm>
#include <cmath>

#include "base/number_text.h"
#include "export/gdal_errors.h"

namespace gc40 {

int utmEpsgCode(double longitude, double latitude) {
  int zone = static_cast<int>(std::floor((longitude + 180.0) / 6.0)) + 1;
  zone = std::clamp(zone, 1, 60);
  if (latitude >= 56.0 && latitude < 64.0 && longitude >= 3.0 && longitude < 12.0) zone = 32;
  if (latitude >= 72.0 && latitude < 84.0 && longitude >= 0.0 && longitude < 42.0) {
    if (longitude < 9.0)
      zone = 31;
    else if (longitude < 21.0)
      zone = 33;
    else if (longitude < 33.0)
      zone = 35;
    else
      zone = 37;
  }
  return (latitude >= 0.0 ? 32600 : 32700) + zone;
}

struct PointProjection::Impl {
  std::unique_ptr<OGRCoordinateTransformation> transform;
};

PointProjection::PointProjection() : impl_(std::make_unique<Impl>()) {}
PointProjection::~PointProjection() = default;

bool PointProjection::setUp(int epsg) {
  QuietGdal quiet;
  impl_->transform.reset();
  OGRSpatialReference source;
  OGRSpatialReference target;
  source.importFromEPSG(kWgs84Epsg);
  if (target.importFromEPSG(epsg) != OGRERR_NONE) {
    error_ = "EPSG:" + formatInteger(epsg) + " is not a coordinate reference system GDAL knows";
    return false;
  }
  // Points travel as x = easting/longitude whatever order the EPSG entry has.
  source.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
  target.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
  name_ = target.GetName() ? target.GetName() : "EPSG:" + formatInteger(epsg);
  geographic_ = target.IsGeographic();
  if (epsg == kWgs84Epsg) return true;
  impl_->transform.reset(OGRCreateCoordinateTransformation(&source, &target));
  if (!impl_->transform) {
    error_ = QuietGdal::message("no transformation from WGS 84 to " + name_);
    return false;
  }
  return true;
}

bool PointProjection::project(std::vector<PointXY>& points) const {
  if (!impl_->transform || points.empty()) return true;
  std::vector<double> x(points.size());
  std::vector<double> y(points.size());
  for (std::size_t i = 0; i < points.size(); ++i) {
    x[i] = points[i].x;
    y[i] = points[i].y;
  }
  std::vector<int> success(points.size(), 0);
  // This GDAL counts points in an int; a day's survey is far below its limit.
  impl_->transform->Transform(static_cast<int>(points.size()), x.data(), y.data(), nullptr,
                              success.data());
  bool all = true;
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (success[i] && std::isfinite(x[i]) && std::isfinite(y[i]))
      points[i] = {x[i], y[i]};
    else
      all = false;
  }
  return all;
}

}  // namespace gc40
