#include "map/map_readings.h"

#include <cmath>
#include <limits>
#include <optional>
#include <unordered_map>

#include "survey/fix_track.h"

namespace gc40 {
namespace {

constexpr float kNoValue = std::numeric_limits<float>::quiet_NaN();

float valueOf(const std::optional<float>& value) { return value ? *value : kNoValue; }

// Each line's stations by their key, so a reading finds its entry at once.
using StationEntries = std::vector<std::unordered_map<std::int64_t, std::uint32_t>>;

StationEntries stationEntries(const SurveyFile& survey) {
  StationEntries entries(survey.lines.size());
  for (std::size_t line = 0; line < survey.lines.size(); ++line) {
    const std::vector<StationEntry>& stations = survey.lines[line].stations;
    for (std::size_t i = 0; i < stations.size(); ++i)
      entries[line].try_emplace(stationKey(stations[i].station), static_cast<std::uint32_t>(i));
  }
  return entries;
}

// Metres east and north of the first fix placed, on the plane that touches
// the earth there: flat enough over any survey walked in a day.
class LocalPlane {
 public:
  void place(const GeoPosition& position, double& x, double& y) {
    if (!origin_) {
      origin_ = position;
      scale_ = metresPerDegree(position.latitude);
    }
    x = (position.longitude - origin_->longitude) * scale_.east;
    y = (position.latitude - origin_->latitude) * scale_.north;
  }

 private:
  std::optional<GeoPosition> origin_;
  MetresPerDegree scale_;
};

}  // namespace

MapReadings mapReadings(const PositionedFile& positioned, const SurveyFile& survey) {
  MapReadings map;
  const bool recordedWithGps = survey.identification && survey.identification->gpsEnabled;
  map.placing = positioned.hasFixes || recordedWithGps ? MapPlacing::kPositions : MapPlacing::kGrid;
  if (survey.identification) map.distanceUnits = survey.identification->distanceUnits;
  const StationEntries entries = stationEntries(survey);
  LocalPlane plane;
  map.readings.reserve(positioned.readings.size());
  for (const PositionedReading& reading : positioned.readings) {
    double x = 0.0, y = 0.0;
    if (map.placing == MapPlacing::kPositions && reading.position) {
      plane.place(*reading.position, x, y);
    } else if (map.placing == MapPlacing::kGrid && reading.gridX && reading.gridY) {
      x = *reading.gridX;
      y = *reading.gridY;
    } else {
      ++map.withoutPosition;
      continue;
    }
    MapReading& placed = map.readings.emplace_back();
    placed.x = static_cast<float>(x);
    placed.y = static_cast<float>(y);
    placed.values = {valueOf(reading.verticalConductivity), valueOf(reading.horizontalConductivity),
                     valueOf(reading.verticalInphase), valueOf(reading.horizontalInphase)};
    placed.line = static_cast<std::uint32_t>(reading.lineIndex);
    if (reading.lineIndex < entries.size()) {
      const auto found = entries[reading.lineIndex].find(stationKey(reading.station));
      if (found != entries[reading.lineIndex].end()) placed.station = found->second;
    }
  }
  return map;
}

std::size_t valueShown(const MapReadings& map, std::size_t wanted) {
  std::array<bool, kMapValueCount> held{};
  for (const MapReading& reading : map.readings)
    for (std::size_t value = 0; value < kMapValueCount; ++value)
      held[value] = held[value] || !std::isnan(reading.values[value]);
  if (held[wanted]) return wanted;
  for (std::size_t value = 0; value < kMapValueCount; ++value)
    if (held[value]) return value;
  return wanted;
}

}  // namespace gc40
