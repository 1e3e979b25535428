#pragma once
// A line's profile drawn as the logging screen draws its live profile: the
// grey grid, each trace in its colour and thickness, the scale labels beside
// the plot and, on screen, the bar. The screen and the pictures draw it
// alike, in layout pixels on a painter already scaled.

#include <cstddef>
#include <optional>
#include <vector>

#include "settings/settings.h"
#include "survey/survey_lines.h"
#include "viewer/line_view.h"

class QPainter;

namespace gc40 {

struct ProfilePaint {
  const std::vector<StationEntry>* stations = nullptr;
  std::size_t first = 0;  // the stations drawn: first .. first + columns - 1
  std::size_t columns = 0;
  double columnWidth = kViewColumnPixels;  // narrower to fit a whole line in a picture
  Settings settings;                       // as viewingSettings made them for plotHeight
  int plotWidth = 0;
  std::int32_t plotHeight = 0;
  int width = 0;  // the plot, its axis and the labels
  std::optional<std::size_t> bar;
};

// Draws over a white background; text in the painter's font.
void paintProfile(QPainter& painter, const ProfilePaint& paint);

}  // namespace gc40
