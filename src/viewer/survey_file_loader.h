#pragma once
// Reads and splits a recorded file and places its readings for the map, off
// the user-interface thread, so the screen keeps drawing; a progress bar with
// Cancel shows when it takes longer than half a second.

#include <QString>
#include <filesystem>
#include <variant>

#include "map/map_readings.h"
#include "survey/reading_positions.h"
#include "survey/survey_lines.h"

class QWidget;

namespace gc40 {

struct LoadFailure {
  QString message;  // names the file
};
struct LoadCancelled {};

struct ViewedFile {
  SurveyFile survey;
  MapReadings map;  // placed with the options given
};

using LoadResult = std::variant<ViewedFile, LoadFailure, LoadCancelled>;

inline constexpr int kShowProgressAfterMs = 500;

LoadResult loadSurveyFile(const std::filesystem::path& path, const PositionOptions& positions,
                          QWidget* parent, int showProgressAfterMs = kShowProgressAfterMs);

}  // namespace gc40
