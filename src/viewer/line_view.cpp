#include "viewer/line_view.h"

#include <algorithm>

#include "instrument/reading_decoder.h"
#include "logging/profile_plot.h"

namespace gc40 {
namespace {

std::int32_t traceY(int trace, float value, const Settings& settings) {
  const bool conductivity = trace < 2;
  return conductivity
             ? plotOffset(settings.conductivityScaleMax, value, settings.conductivityPixelsPerUnit)
             : plotOffset(settings.inphaseScaleMax, value, settings.inphasePixelsPerUnit);
}

}  // namespace

std::size_t movedBar(std::size_t bar, std::size_t stationCount, BarMove move) {
  if (stationCount == 0) return 0;
  const std::size_t last = stationCount - 1;
  bar = std::min(bar, last);
  switch (move) {
    case BarMove::kStationBack:
      return bar == 0 ? 0 : bar - 1;
    case BarMove::kStationOn:
      return std::min(bar + 1, last);
    case BarMove::kPageBack:
      return bar < kStationsPerPage ? 0 : bar - kStationsPerPage;
    case BarMove::kPageOn:
      return std::min(bar + kStationsPerPage, last);
    case BarMove::kFirst:
      return 0;
    case BarMove::kLast:
      return last;
  }
  return bar;
}

std::size_t firstShownStation(std::size_t firstShown, std::size_t bar, std::size_t columns) {
  if (columns == 0 || bar < firstShown) return bar;
  if (bar >= firstShown + columns) return bar - columns + 1;
  return firstShown;
}

Settings viewingSettings(const Settings& today, const Settings& recorded, std::int32_t plotHeight) {
  Settings settings = today;
  settings.surveyMode = recorded.surveyMode;
  settings.component = recorded.component;
  settings.dipoleMode = recorded.dipoleMode;
  settings.plotHeight = plotHeight;
  recomputeScaleFactors(settings);
  return settings;
}

std::vector<ViewStroke> lineStrokes(const std::vector<StationEntry>& stations, std::size_t first,
                                    std::size_t columns, const ProfileTraces& traces,
                                    const Settings& settings) {
  std::vector<ViewStroke> strokes;
  // One station past each edge as well, so lines run on out of view.
  const std::size_t end = std::min(stations.size(), first + columns + 1);
  for (int trace = 0; trace < kPlottedTraces; ++trace) {
    const auto t = static_cast<std::size_t>(trace);
    if (traces.traceOn[t] != 1) continue;
    for (std::size_t i = first; i < end; ++i) {
      if (!stations[i].present[t]) continue;
      const int column = static_cast<int>(i - first);
      const std::int32_t y = traceY(trace, stations[i].values[t], settings);
      const bool joined = i > 0 && stations[i - 1].present[t];
      const bool alone = !joined && (i + 1 >= stations.size() || !stations[i + 1].present[t]);
      if (joined) {
        strokes.push_back({trace, true, column - 1,
                           traceY(trace, stations[i - 1].values[t], settings), column, y});
      } else if (alone && i < first + columns) {
        strokes.push_back({trace, false, column, y, column, y});
      }
    }
  }
  return strokes;
}

}  // namespace gc40
