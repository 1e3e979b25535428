#pragma once
// The viewer's profile of one survey line: one column per station, two pixels
// apart as on the logging screen, a bar on one station that the keys move, and
// the window of stations in view kept around the bar.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "settings/profile_setup.h"
#include "settings/settings.h"
#include "survey/survey_lines.h"

namespace gc40 {

inline constexpr std::size_t kStationsPerPage = 80;  // PgUp / PgDn
inline constexpr int kViewColumnPixels = 2;

enum class BarMove { kStationBack, kStationOn, kPageBack, kPageOn, kFirst, kLast };

// The bar's station index after a move, kept on the line (0 on an empty line).
std::size_t movedBar(std::size_t bar, std::size_t stationCount, BarMove move);

// The first station in view when `columns` fit: unchanged while the bar is in
// view, else moved just far enough to show it.
std::size_t firstShownStation(std::size_t firstShown, std::size_t bar, std::size_t columns);

// How a file's line is drawn: today's display options (visibility, colours,
// thicknesses, scales), the survey mode, component and dipole mode the file
// was recorded with, and pixel scales for the viewer's own plot height.
Settings viewingSettings(const Settings& today, const Settings& recorded, std::int32_t plotHeight);

// One trace's mark between two columns in view (a point when not joined).
struct ViewStroke {
  int trace = 0;
  bool joined = false;
  int fromColumn = 0;
  std::int32_t fromY = 0;
  int column = 0;
  std::int32_t y = 0;
  bool operator==(const ViewStroke&) const = default;
};

// The marks of the stations first .. first + columns - 1: each trace in use
// joins neighbouring stations that both hold it; a station holding it alone
// is a point.
std::vector<ViewStroke> lineStrokes(const std::vector<StationEntry>& stations, std::size_t first,
                                    std::size_t columns, const ProfileTraces& traces,
                                    const Settings& settings);

}  // namespace gc40
