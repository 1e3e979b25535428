#pragma once
// The readings of a file as a map places them: metres east and north of the
// first placed reading (north up), or for a file recorded without GPS its
// grid, the station across and the line's number up.

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "survey/reading_positions.h"
#include "survey/survey_lines.h"

namespace gc40 {

// The four values in trace order: C/V, C/H, I/V, I/H.
inline constexpr std::size_t kMapValueCount = 4;

struct MapReading {
  // Single precision holds a millimetre across ten kilometres.
  float x = 0.0f;
  float y = 0.0f;
  std::array<float, kMapValueCount> values{};  // NaN where the reading has none
  std::uint32_t line = 0;                      // into SurveyFile::lines
  std::uint32_t station = 0;                   // into that line's stations
};

enum class MapPlacing {
  kPositions,  // metres from the fixes
  kGrid,       // x the station, y the line's number, in the file's distance units
};

struct MapReadings {
  MapPlacing placing = MapPlacing::kPositions;
  std::vector<MapReading> readings;  // the placed ones, in file order
  std::size_t withoutPosition = 0;   // the rest
  std::int32_t distanceUnits = 0;    // of a grid: 0 metres, 1 feet
};

// A file recorded with GPS is placed by its fixes alone, even when it holds
// none; a file without is placed on its grid, where a line not named by a
// number has no place.
MapReadings mapReadings(const PositionedFile& positioned, const SurveyFile& survey);

// `wanted` when a placed reading holds it, else the first value one holds
// (a file of horizontal dipoles has no C/V); `wanted` when none holds any.
std::size_t valueShown(const MapReadings& map, std::size_t wanted);

}  // namespace gc40
