#include "plot_command.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <iostream>
#include <optional>

#include "base/number_text.h"
#include "base/raw_file.h"
#include "command_options.h"
#include "map/map_texts.h"
#include "settings/settings_file.h"
#include "survey/export_choices.h"
#include "survey_input.h"
#include "ui/offscreen_gui.h"
#include "viewer/survey_pictures.h"
#include "viewer/viewer_texts.h"

namespace gc40 {
namespace {

constexpr int kMaxScale = 8;
constexpr std::string_view kDataFolderName = "DATA40";

int plotUsage(std::ostream& out, int status) {
  out << "usage: r40 plot FILE --map OUT.png [--value cv|ch|iv|ih] [--line NAME] [--scales]\n"
         "       r40 plot FILE --profile LINE OUT.png\n"
         "  either with [--portrait|--landscape] [--scale N] [--storage DIR]\n"
         "              [--lag MS] [--layback M] [--offset M] [--max-gap S]\n";
  return status;
}

// Where gc40 keeps its settings for this file: --storage DIR's, or those of
// the storage root the file lies in (ROOT/DATA40/FILE); nullopt for neither.
std::optional<std::filesystem::path> settingsFolder(const CommandArguments& args,
                                                    const std::filesystem::path& file) {
  if (args.values.count("--storage"))
    return std::filesystem::path(args.values.at("--storage")) / "FLDINI";
  const std::filesystem::path folder = std::filesystem::absolute(file).parent_path();
  if (folder.filename() == kDataFolderName) return folder.parent_path() / "FLDINI";
  return std::nullopt;
}

// GC40.INI's display options and scales, else the defaults. Read only.
Settings drawingSettings(const std::optional<std::filesystem::path>& folder) {
  Settings settings;
  if (!folder) return settings;
  if (const auto bytes = readFilePrefix(*folder / kSettingsFileName, std::string::npos))
    readSettingsFile(*bytes, settings);
  return settings;
}

std::optional<std::size_t> valueNamed(std::string text) {
  std::erase(text, '/');
  for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  for (std::size_t value = 0; value < kMapValueCount; ++value) {
    std::string name(kMapValueNames[value]);
    std::erase(name, '/');
    if (name == text) return value;
  }
  return std::nullopt;
}

std::optional<std::size_t> lineNamed(const SurveyFile& survey, const std::string& name) {
  for (std::size_t line = 0; line < survey.lines.size(); ++line)
    if (survey.lines[line].name == name) return line;
  return std::nullopt;
}

std::string lineNames(const SurveyFile& survey) {
  std::string names;
  for (const SurveyLine& line : survey.lines) names += (names.empty() ? "" : ", ") + line.name;
  return names.empty() ? "none" : names;
}

struct PlotRequest {
  LoadedSurvey loaded;
  std::string fileName;
  Settings settings;
  PositionOptions positions;
  LayoutSize layout;
  int scale = kPictureScale;
};

int plotMap(const PlotRequest& request, const CommandArguments& args, const std::string& out) {
  const SurveyFile& survey = request.loaded.survey;
  const MapReadings map =
      mapReadings(positionReadings(request.loaded.contents, survey, request.positions), survey);
  const bool horizontal = survey.identification && survey.identification->dipoleMode == 1;
  std::size_t value = valueShown(map, horizontal ? 1 : 0);
  if (args.values.count("--value")) {
    const std::optional<std::size_t> named = valueNamed(args.values.at("--value"));
    if (!named)
      return fail("--value wants cv, ch, iv or ih, not \"" + args.values.at("--value") + "\"");
    value = *named;
  }
  MapPicture picture;
  picture.fit = true;
  picture.paint.map = &map;
  picture.paint.scene.value = value;
  const LimitsFrom limitsFrom =
      args.has("--scales") ? LimitsFrom::kProfileScales : LimitsFrom::kPercentiles;
  const std::optional<ColourLimits> limits = limitsFrom == LimitsFrom::kProfileScales
                                                 ? scaleLimits(request.settings, value)
                                                 : percentileLimits(map, value);
  picture.paint.hasLimits = limits.has_value();
  if (limits) picture.paint.scene.limits = *limits;
  const std::string* lineName = nullptr;
  if (args.values.count("--line")) {
    const std::optional<std::size_t> line = lineNamed(survey, args.values.at("--line"));
    if (!line)
      return fail("no line \"" + args.values.at("--line") + "\" in " + request.fileName +
                  " (lines: " + lineNames(survey) + ")");
    picture.paint.scene.selectedLine = static_cast<std::uint32_t>(*line);
    lineName = &survey.lines[*line].name;
  }
  picture.title =
      mapPictureTitle(request.fileName, value, limitsFrom, mapPlaceText(lineName, std::nullopt));
  if (const auto error = savePicture(mapPicture(picture, request.layout, request.scale), out))
    return fail(*error);
  std::cout << out << ": map of " << request.fileName << ", "
            << formatInteger(static_cast<std::int64_t>(map.readings.size())) << " readings placed";
  if (map.withoutPosition > 0) std::cout << ", " << withoutPositionText(map.withoutPosition);
  std::cout << '\n';
  return 0;
}

int plotProfile(const PlotRequest& request, const std::string& lineName, const std::string& out) {
  const SurveyFile& survey = request.loaded.survey;
  const std::optional<std::size_t> line = lineNamed(survey, lineName);
  if (!line)
    return fail("no line \"" + lineName + "\" in " + request.fileName +
                " (lines: " + lineNames(survey) + ")");
  const SurveyLine& chosen = survey.lines[*line];
  const QImage image = profilePicture({.stations = &chosen.stations,
                                       .first = 0,
                                       .columns = std::nullopt,
                                       .today = request.settings,
                                       .recorded = recordingSettings(survey.identification),
                                       .title = profilePictureTitle(request.fileName, chosen)},
                                      request.layout, request.scale);
  if (const auto error = savePicture(image, out)) return fail(*error);
  std::cout << out << ": profile of line " << chosen.name << " of " << request.fileName << ", "
            << formatInteger(static_cast<std::int64_t>(chosen.stations.size())) << " stations\n";
  return 0;
}

}  // namespace

int runPlotCommand(const std::vector<std::string>& arguments) {
  std::vector<KnownOption> known = {{"--map"},
                                    {"--profile"},
                                    {"--value"},
                                    {"--line"},
                                    {"--scales", false},
                                    {"--portrait", false},
                                    {"--landscape", false},
                                    {"--scale"},
                                    {"--storage"},
                                    {"--lag"},
                                    {"--help", false}};
  known.insert(known.end(), kPositionOptions.begin(), kPositionOptions.end());
  std::string error;
  const std::optional<CommandArguments> parsed = parseCommandArguments(arguments, known, error);
  if (!parsed) return fail(error);
  const CommandArguments& args = *parsed;
  if (args.has("--help")) return plotUsage(std::cout, 0);
  const bool map = args.has("--map"), profile = args.has("--profile");
  // The profile's picture is named after its line: FILE --profile LINE OUT.
  const std::size_t files = profile ? 2 : 1;
  if (map == profile || args.files.size() != files) return plotUsage(std::cerr, kTrouble);
  if (args.has("--portrait") && args.has("--landscape"))
    return fail("--portrait and --landscape exclude each other");

  const std::filesystem::path file = args.files.front();
  const std::optional<std::filesystem::path> folder = settingsFolder(args, file);
  PlotRequest request;
  // The readings are placed as the export places them, unless told otherwise.
  if (folder) request.positions = positionOptions(loadExportChoices(*folder).choices);
  NumberOptions numbers(args);
  numbers.read("--lag", request.positions.lagMs);
  readPositionOptions(numbers, request.positions);
  numbers.read("--scale", request.scale);
  if (!numbers.error().empty()) return fail(numbers.error());
  if (request.scale < 1 || request.scale > kMaxScale) return fail("--scale wants 1 to 8");
  request.layout = layoutSize(args.has("--portrait"));

  std::optional<LoadedSurvey> loaded = loadSurvey(file, error);
  if (!loaded) return fail(error);
  request.loaded = std::move(*loaded);
  request.fileName = file.filename().string();
  request.settings = drawingSettings(folder);

  const OffscreenGui gui;
  return map ? plotMap(request, args, args.values.at("--map"))
             : plotProfile(request, args.values.at("--profile"), args.files.back());
}

}  // namespace gc40
