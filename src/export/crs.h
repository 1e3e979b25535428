#pragma once
// The coordinate reference systems readings are written in: WGS 84 as the
// receiver gives it, or a projected system that PROJ reaches from it.

#include <memory>
#include <string>
#include <vector>

#include "export/feature_table.h"

namespace gc40 {

inline constexpr int kWgs84Epsg = 4326;

// The EPSG code of the WGS 84 UTM zone holding the point: 326zz in the
// northern hemisphere, 327zz in the southern, with the zones widened over
// south-west Norway and Svalbard as the grid defines them.
int utmEpsgCode(double longitude, double latitude);

// Longitude/latitude on WGS 84 into another system. Axis order is always
// x = longitude or easting, y = latitude or northing, whatever the EPSG
// definition says.
class PointProjection {
 public:
  PointProjection();
  ~PointProjection();
  PointProjection(const PointProjection&) = delete;
  PointProjection& operator=(const PointProjection&) = delete;

  // False, with error(), when the code is unknown or PROJ cannot get there.
  bool setUp(int epsg);
  // In place; false when a point could not be projected (it is left as it was).
  bool project(std::vector<PointXY>& points) const;

  const std::string& name() const { return name_; }  // "WGS 84 / UTM zone 33N"
  bool geographic() const { return geographic_; }
  const std::string& error() const { return error_; }

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
  std::string name_;
  bool geographic_ = true;
  std::string error_;
};

}  // namespace gc40
