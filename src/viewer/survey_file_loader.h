#pragma once
// Reads and splits a recorded file off the user-interface thread, so the
// screen keeps drawing; a progress bar with Cancel shows when it takes longer
// than half a second.

#include <QString>
#include <filesystem>
#include <variant>

#include "survey/survey_lines.h"

class QWidget;

namespace gc40 {

struct LoadFailure {
  QString message;  // names the file
};
struct LoadCancelled {};

using LoadResult = std::variant<SurveyFile, LoadFailure, LoadCancelled>;

inline constexpr int kShowProgressAfterMs = 500;

LoadResult loadSurveyFile(const std::filesystem::path& path, QWidget* parent,
                          int showProgressAfterMs = kShowProgressAfterMs);

}  // namespace gc40
