#pragma once
// Metres east and north of an origin, and WGS 84 latitude and longitude, on
// the plane that touches the ellipsoid at the origin. Over a survey of a few
// hundred metres it is out by millimetres, far less than a receiver resolves.

namespace gc40 {

struct LatLon {
  double latitude = 0;   // degrees, north positive
  double longitude = 0;  // degrees, east positive
};

struct EastNorth {
  double east = 0;  // metres
  double north = 0;
};

LatLon toLatLon(const LatLon& origin, const EastNorth& point);
EastNorth toEastNorth(const LatLon& origin, const LatLon& point);

}  // namespace gc40
