#include "survey_commands.h"

#include <unistd.h>

#include <filesystem>
#include <iostream>
#include <optional>

#include "base/number_text.h"
#include "command_options.h"
#include "export/readings_export.h"
#include "misfit_plot.h"
#include "progress_line.h"
#include "survey/lag_estimate.h"
#include "survey/survey_lines.h"
#include "survey_input.h"

namespace gc40 {
namespace {

constexpr int kNoEstimate = 1;

int exportUsage(std::ostream& out, int status) {
  out << "usage: r40 export FILE... -o OUT [--format NAME] [--crs EPSG:NNNN | --utm]\n"
         "                  [--lag MS] [--layback M] [--offset M] [--max-gap S]\n"
         "                  [--emagpy --spacing M --frequency HZ [--height M]]\n"
         "                  [--spatial-index]\n"
         "  OUT's extension picks the format: .gpkg .geojson .csv .kml .fgb .shp .xyz\n";
  return status;
}

std::string summaryText(const std::filesystem::path& output, const ExportSummary& summary) {
  const auto count = [](std::size_t n) { return formatInteger(static_cast<std::int64_t>(n)); };
  std::string text = output.string() + ": " + count(summary.readings) + " readings, " +
                     summary.format + ", " + summary.system +
                     "\n  with a position: " + count(summary.positioned) + "\n";
  if (summary.positioned < summary.readings) {
    text += "  without: " + count(summary.readings - summary.positioned) + " (";
    bool first = true;
    for (const auto& [reason, n] : summary.withoutPosition) {
      text += (first ? "" : ", ") + reason + " " + count(n);
      first = false;
    }
    text += ")\n";
  }
  if (summary.leftOut)
    text += "  left out: " + count(summary.leftOut) + " without a position, which " +
            summary.format + " cannot hold\n";
  return text;
}

int lagUsage(std::ostream& out, int status) {
  out << "usage: r40 lag FILE... [--layback M] [--offset M] [--max-gap S]\n"
         "               [--from MS] [--to MS] [--step MS] [--radius M] [--plot PNG]\n";
  return status;
}

}  // namespace

int runExportCommand(const std::vector<std::string>& arguments) {
  std::vector<KnownOption> known = {{"-o"},
                                    {"--output"},
                                    {"--format"},
                                    {"--crs"},
                                    {"--utm", false},
                                    {"--lag"},
                                    {"--emagpy", false},
                                    {"--spacing"},
                                    {"--frequency"},
                                    {"--height"},
                                    {"--spatial-index", false}};
  known.insert(known.end(), kPositionOptions.begin(), kPositionOptions.end());
  std::string error;
  const std::optional<CommandArguments> parsed = parseCommandArguments(arguments, known, error);
  if (!parsed) return fail(error);
  const CommandArguments& args = *parsed;
  if (args.has("--help")) return exportUsage(std::cout, 0);
  const std::string output = args.values.count("-o")         ? args.values.at("-o")
                             : args.values.count("--output") ? args.values.at("--output")
                                                             : "";
  if (args.files.empty() || output.empty()) return exportUsage(std::cerr, kTrouble);

  ExportOptions options;
  options.inputs.assign(args.files.begin(), args.files.end());
  options.output = output;
  if (args.values.count("--format")) options.format = args.values.at("--format");
  options.spatialIndex = args.has("--spatial-index");
  if (args.has("--crs") && args.has("--utm")) return fail("--crs and --utm exclude each other");
  if (args.has("--crs")) {
    const std::optional<int> code = parseEpsgCode(args.values.at("--crs"));
    if (!code) return fail("--crs wants EPSG:NNNN, not \"" + args.values.at("--crs") + "\"");
    options.system = OutputSystem::kEpsg;
    options.epsg = *code;
  }
  if (args.has("--utm")) options.system = OutputSystem::kUtm;

  NumberOptions numbers(args);
  numbers.read("--lag", options.positions.lagMs);
  readPositionOptions(numbers, options.positions);
  if (args.has("--emagpy")) {
    if (!args.has("--spacing") || !args.has("--frequency"))
      return fail("--emagpy needs the coils' --spacing M and --frequency HZ");
    CoilGeometry coils;
    numbers.read("--spacing", coils.spacingM);
    numbers.read("--frequency", coils.frequencyHz);
    numbers.read("--height", coils.heightM);
    options.inversionNames = coils;
  } else if (args.has("--spacing") || args.has("--frequency") || args.has("--height")) {
    return fail("--spacing, --frequency and --height go with --emagpy");
  }
  if (!numbers.error().empty()) return fail(numbers.error());

  ProgressLine progress(std::cerr, isatty(STDERR_FILENO) == 1);
  const ExportResult result =
      exportReadings(options, [&](const std::string& stage, std::size_t done, std::size_t total) {
        progress.show(stage, done, total);
      });
  progress.clear();
  if (!result.summary) return fail(result.error);
  std::cout << summaryText(options.output, *result.summary);
  return 0;
}

int runLagCommand(const std::vector<std::string>& arguments) {
  std::vector<KnownOption> known = {{"--from"},   {"--to"},   {"--step"},
                                    {"--radius"}, {"--plot"}, {"--help", false}};
  known.insert(known.end(), kPositionOptions.begin(), kPositionOptions.end());
  std::string error;
  const std::optional<CommandArguments> parsed = parseCommandArguments(arguments, known, error);
  if (!parsed) return fail(error);
  const CommandArguments& args = *parsed;
  if (args.has("--help")) return lagUsage(std::cout, 0);
  if (args.files.empty()) return lagUsage(std::cerr, kTrouble);

  PositionOptions options;
  LagSearch search;
  NumberOptions numbers(args);
  readPositionOptions(numbers, options);
  numbers.read("--from", search.fromMs);
  numbers.read("--to", search.toMs);
  numbers.read("--step", search.stepMs);
  numbers.read("--radius", search.radiusM);
  if (!numbers.error().empty()) return fail(numbers.error());
  if (search.stepMs <= 0 || search.toMs < search.fromMs)
    return fail("the lags to try run --from MS --to MS (not below it) in --step MS above 0");

  std::vector<LoadedSurvey> surveys;
  surveys.reserve(args.files.size());
  for (const std::string& file : args.files) {
    std::optional<LoadedSurvey> survey = loadSurvey(file, error);
    if (!survey) return fail(error);
    surveys.push_back(std::move(*survey));
  }
  std::vector<RecordedSurvey> recorded;
  for (const LoadedSurvey& survey : surveys) recorded.push_back({&survey.contents, &survey.survey});
  const LagEstimate estimate = estimateLag(recorded, options, search);

  if (estimate.found)
    std::cout << "lag: " << formatInteger(estimate.lagMs) << " ms +/- "
              << formatFixed(estimate.uncertaintyMs, 0) << " ms\n";
  else
    std::cout << "lag: cannot be told: " << estimate.problem << '\n';
  if (!estimate.curve.empty()) {
    std::cout << "lag_ms misfit pairs\n";
    for (const LagMisfit& point : estimate.curve)
      std::cout << formatInteger(point.lagMs) << ' ' << formatFixed(point.misfit, 6) << ' '
                << formatInteger(static_cast<std::int64_t>(point.pairs)) << '\n';
  }
  if (args.values.count("--plot")) {
    const std::string png = args.values.at("--plot");
    if (estimate.curve.empty()) return fail(png + ": no misfit curve to draw");
    if (!drawMisfitPlot(estimate, png, error)) return fail(error);
  }
  return estimate.found ? 0 : kNoEstimate;
}

}  // namespace gc40
