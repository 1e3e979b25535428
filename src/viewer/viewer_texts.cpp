#include "viewer/viewer_texts.h"

#include <span>

#include "base/number_text.h"
#include "settings/setting_choices.h"

namespace gc40 {
namespace {

std::string choiceText(std::span<const std::string_view> items, std::int32_t index) {
  if (index < 0 || static_cast<std::size_t>(index) >= items.size()) return "?";
  return std::string(items[static_cast<std::size_t>(index)]);
}

std::string directionName(char letter) {
  constexpr std::string_view kLetters = "WSNE";
  const std::size_t at = kLetters.find(letter);
  if (at == std::string_view::npos) return std::string(1, letter);
  return std::string(choices::kLineDirections[at]);
}

std::string plural(std::size_t count, std::string_view one) {
  return formatInteger(static_cast<std::int64_t>(count)) + " " + std::string(one) +
         (count == 1 ? "" : "s");
}

}  // namespace

std::vector<std::string> headerTexts(const SurveyFile& file) {
  if (!file.identification) return {"No identification record", "", ""};
  const IdentificationRecord& id = *file.identification;
  return {
      "GC40 " + choiceText(choices::kInstrumentVariants, id.instrumentVariant) + ", GPS " +
          (id.gpsEnabled ? "enabled" : "disabled"),
      "Units: " + choiceText(choices::kDistanceUnits, id.distanceUnits) +
          "   Mode: " + choiceText(choices::kSurveyModes, id.surveyMode),
      "Component: " + choiceText(choices::kComponents, id.component) +
          "   Dipole: " + choiceText(choices::kDipoleModes, id.dipoleMode),
  };
}

std::string lineSummary(const SurveyLine& line) {
  std::string title = line.name.empty() ? std::string("(no line record)") : "Line " + line.name;
  if (line.direction != ' ') title += "  " + directionName(line.direction);
  if (line.readingStations.empty()) return title + "\nNo readings";
  return title + "\n" + formatFixed(line.readingStations.front(), 2) + " to " +
         formatFixed(line.readingStations.back(), 2) + ", " +
         plural(line.readingStations.size(), "reading");
}

std::vector<std::string> profilePictureTitle(std::string_view fileName, const SurveyLine& line) {
  const std::string summary = lineSummary(line);
  const std::size_t split = summary.find('\n');
  return {std::string(fileName) + "   " + summary.substr(0, split), summary.substr(split + 1)};
}

BarReadout barReadout(const StationEntry& station) {
  BarReadout readout{formatFixed(station.station, 2), {}};
  for (std::size_t trace = 0; trace < readout.values.size(); ++trace)
    if (station.present[trace]) readout.values[trace] = formatFixed(station.values[trace], 2);
  return readout;
}

std::string barPosition(std::size_t bar, std::size_t count) {
  return formatInteger(static_cast<std::int64_t>(bar + 1)) + " of " +
         formatInteger(static_cast<std::int64_t>(count));
}

std::string damageReport(std::string_view fileName, const std::vector<FileProblem>& problems,
                         std::size_t listed) {
  std::string report = std::string(fileName) + " is damaged. " + plural(problems.size(), "part") +
                       " could not be read and " + (problems.size() == 1 ? "was" : "were") +
                       " skipped:";
  for (std::size_t i = 0; i < problems.size() && i < listed; ++i) {
    const FileProblem& problem = problems[i];
    report += "\nbyte " + formatInteger(static_cast<std::int64_t>(problem.offset)) + " (" +
              plural(problem.length, "byte") + "): " + problem.what;
  }
  if (problems.size() > listed)
    report +=
        "\nand " + formatInteger(static_cast<std::int64_t>(problems.size() - listed)) + " more";
  return report;
}

}  // namespace gc40
