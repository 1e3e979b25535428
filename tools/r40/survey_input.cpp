#include "survey_input.h"

#include <system_error>

#include "base/raw_file.h"

namespace gc40 {

std::optional<LoadedSurvey> loadSurvey(const std::filesystem::path& path, std::string& error) {
  std::error_code code;
  const bool regular = std::filesystem::is_regular_file(path, code);
  std::optional<std::string> bytes;
  if (regular) bytes = readFilePrefix(path, std::string::npos);
  if (!bytes) {
    error = path.string() + ": " +
            (code      ? code.message()
             : regular ? "cannot be read"
                       : "not a regular file");
    return std::nullopt;
  }
  LoadedSurvey loaded{readDataFile(*bytes), {}};
  if (loaded.contents.records.empty()) {
    error = path.string() + ": not a data file (no record could be read)";
    return std::nullopt;
  }
  loaded.survey = *splitSurveyLines(loaded.contents);
  return loaded;
}

}  // namespace gc40
