// Record formatting per record, writing and committing the data file, and
// reading a whole day's file back.

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "datafile/data_file.h"
#include "datafile/data_file_reader.h"
#include "datafile/data_records.h"
#include "datafile/record_writers.h"
#include "eight_hour_file.h"

namespace gc40 {
namespace {

void formatReading(benchmark::State& state) {
  std::uint32_t tick = 0;
  for (auto _ : state) benchmark::DoNotOptimize(formatReadingRecord("T1123.4-05.6", tick++));
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(formatReading);

// Five records (four pieces and the "!") per sentence.
void formatGpsSentence(benchmark::State& state) {
  std::uint32_t tick = 0;
  for (auto _ : state) benchmark::DoNotOptimize(formatGpsRecords(kSentence70, tick++, '@', '#'));
  state.SetItemsProcessed(state.iterations() * 5);
}
BENCHMARK(formatGpsSentence);

// One second of logging as the file sees it, 11 readings and a 10 Hz
// receiver's five sentences each (five records apiece), then, with the
// argument 1, the sync the logging screen's timer does. The file is made in
// the folder the bench runs in, so it measures that storage; the difference
// between the two is the cost of a sync.
void writeASecondOfLogging(benchmark::State& state) {
  const std::filesystem::path path = "gc40-bench-" + std::to_string(::getpid()) + ".R40";
  std::optional<DataFile> file = DataFile::createNew(path);
  if (!file) return state.SkipWithError("cannot create the file in this folder");
  std::uint32_t tick = 0;
  for (auto _ : state) {
    for (int reading = 0; reading < 11; ++reading)
      writeReadingRecord(*file, "T1123.4-05.6", tick += 91);
    for (int sentence = 0; sentence < 50; ++sentence)
      file->writeRecords(formatGpsRecords(kSentence70, tick, '@', '#'));
    if (state.range(0) == 1 && !file->sync()) state.SkipWithError(file->failure().c_str());
  }
  file.reset();
  std::filesystem::remove(path);
  state.SetItemsProcessed(state.iterations() * (11 + 50 * 5));
}
BENCHMARK(writeASecondOfLogging)->Arg(0)->Arg(1)->UseRealTime()->Unit(benchmark::kMicrosecond);

void readEightHourFile(benchmark::State& state) {
  const std::string bytes = eightHourFile(state.range(0) == 1);
  std::size_t records = 0;
  for (auto _ : state) {
    const DataFileContents contents = readDataFile(bytes);
    records = contents.records.size();
    benchmark::DoNotOptimize(contents);
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes.size()));
  state.counters["MB"] = static_cast<double>(bytes.size()) / 1e6;
  state.counters["records"] = static_cast<double>(records);
}
BENCHMARK(readEightHourFile)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace gc40
