#pragma once
// A data file as r40's survey commands take it in: read whole and split
// into its survey lines.

#include <filesystem>
#include <optional>
#include <string>

#include "datafile/data_file_reader.h"
#include "survey/survey_lines.h"

namespace gc40 {

struct LoadedSurvey {
  DataFileContents contents;
  SurveyFile survey;
};

// Nullopt with `error` naming the file when it cannot be read or holds no record.
std::optional<LoadedSurvey> loadSurvey(const std::filesystem::path& path, std::string& error);

}  // namespace gc40
