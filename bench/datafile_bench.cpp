// Record formatting per record, and reading a whole day's file back.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

#include "datafile/data_file_reader.h"
#include "datafile/data_records.h"
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
