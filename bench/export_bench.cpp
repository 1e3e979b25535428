// Exporting a day's survey: an eight-hour file (316,800 readings, a GPS fix
// a second) read from disk, split into lines, joined to its fixes and
// written to a GeoPackage, the progress reported as r40 reports it.

#include <benchmark/benchmark.h>

#include <filesystem>

#include "export/readings_export.h"
#include "harness/temp_folder.h"
#include "harness/walked_survey.h"

namespace gc40 {
namespace {

// 144 lines of 2,200 readings: 316,800 readings, eight hours at 11 a second.
constexpr testing::WalkedSurvey kEightHours{.lines = 144, .readingsPerLine = 2200};

void exportEightHourSurvey(benchmark::State& state, const char* extension) {
  const testing::TempFolder folder;
  const std::filesystem::path input = folder.path() / "EIGHTH.R40";
  testing::writeBytes(input, testing::walkedSurveyFile(kEightHours));
  ExportOptions options;
  options.inputs = {input};
  options.output = folder.path() / (std::string("survey") + extension);
  std::size_t progressCalls = 0;
  ExportSummary summary;
  for (auto _ : state) {
    const ExportResult result = exportReadings(
        options, [&](const std::string&, std::size_t, std::size_t) { ++progressCalls; });
    if (!result.summary) {
      state.SkipWithError(result.error.c_str());
      return;
    }
    summary = *result.summary;
  }
  state.counters["readings"] = static_cast<double>(summary.readings);
  state.counters["positioned"] = static_cast<double>(summary.positioned);
  state.counters["MB_in"] = static_cast<double>(std::filesystem::file_size(input)) / 1e6;
  state.counters["MB_out"] = static_cast<double>(std::filesystem::file_size(options.output)) / 1e6;
  state.counters["progress_calls"] = static_cast<double>(progressCalls) / state.iterations();
}
BENCHMARK_CAPTURE(exportEightHourSurvey, gpkg, ".gpkg")->Unit(benchmark::kSecond)->Iterations(3);
BENCHMARK_CAPTURE(exportEightHourSurvey, csv, ".csv")->Unit(benchmark::kSecond)->Iterations(1);

}  // namespace
}  // namespace gc40
