#pragma once
// Pictures to take home: the map or a line's profile with a title above it,
// drawn at a whole multiple of a screen layout's size (the P key draws at
// twice it) and written as PNG beside the data file or where r40 is told.

#include <QImage>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "settings/settings.h"
#include "survey/survey_lines.h"
#include "ui/window_geometry.h"
#include "viewer/map_painter.h"

namespace gc40 {

inline constexpr int kPictureScale = 2;

struct MapPicture {
  MapPaint paint;    // its view in layout pixels of the screen's dots, kept by the picture
  bool fit = false;  // instead the whole survey
  std::vector<std::string> title;  // rows above the map
};

QImage mapPicture(const MapPicture& picture, LayoutSize layout, int scale);

struct ProfilePicture {
  const std::vector<StationEntry>* stations = nullptr;
  std::size_t first = 0;
  // The stations in view on the screen; nullopt for the whole line, squeezed
  // to the plot's width when it is longer.
  std::optional<std::size_t> columns;
  Settings today;     // the display options and scales
  Settings recorded;  // the file's survey mode, component and dipole mode
  std::vector<std::string> title;
};

QImage profilePicture(const ProfilePicture& picture, LayoutSize layout, int scale);

// Nullopt when written, else why not, naming the file.
std::optional<std::string> savePicture(const QImage& image, const std::filesystem::path& path);

}  // namespace gc40
