#pragma once
// What the View Files screen writes: the file's header, one summary per survey
// line, the readout under the bar, and the report of a damaged file.

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "survey/survey_lines.h"

namespace gc40 {

inline constexpr std::array<std::string_view, 4> kTraceNames = {"C/V", "C/H", "I/V", "I/H"};

// Three rows: instrument and GPS; units and survey mode; component and dipole mode.
std::vector<std::string> headerTexts(const SurveyFile& file);

// "Line 10.00  North" over "47.50 to 37.50, 11 readings".
std::string lineSummary(const SurveyLine& line);

// The rows above a profile picture: the file and the line, then its stations.
std::vector<std::string> profilePictureTitle(std::string_view fileName, const SurveyLine& line);

struct BarReadout {
  std::string station;                // "%.2f"
  std::array<std::string, 4> values;  // "%.2f", or "" where the station has none
};
BarReadout barReadout(const StationEntry& station);

// "13 of 40": the bar's station among the line's.
std::string barPosition(std::size_t bar, std::size_t count);

// Names the file and the byte spans skipped, the first `listed` of them in full.
std::string damageReport(std::string_view fileName, const std::vector<FileProblem>& problems,
                         std::size_t listed = 8);

}  // namespace gc40
