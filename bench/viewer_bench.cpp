// Opening a recorded file in the viewer: the bytes from disk, the records,
// and the split into survey lines with every reading placed and decoded.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "eight_hour_file.h"
#include "survey/survey_lines.h"

namespace gc40 {
namespace {

std::string readWhole(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// range(0) == 1: with a GPS sentence every second.
void openAndSplitEightHourFile(benchmark::State& state) {
  const std::filesystem::path path =
      std::filesystem::temp_directory_path() / "gc40_viewer_bench.R40";
  {
    const std::string bytes = eightHourFile(state.range(0) == 1);
    std::ofstream(path, std::ios::binary)
        .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  }
  std::size_t readings = 0;
  for (auto _ : state) {
    const std::string bytes = readWhole(path);
    const std::optional<SurveyFile> file = splitSurveyLines(readDataFile(bytes));
    readings = 0;
    for (const SurveyLine& line : file->lines) readings += line.readingStations.size();
    benchmark::DoNotOptimize(file);
  }
  state.counters["MB"] = static_cast<double>(std::filesystem::file_size(path)) / 1e6;
  state.counters["readings"] = static_cast<double>(readings);
  std::filesystem::remove(path);
}
BENCHMARK(openAndSplitEightHourFile)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace gc40
