// Record formatting per record, and reading a whole day's file back.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

#include "datafile/data_file_reader.h"
#include "datafile/data_records.h"

namespace gc40 {
namespace {

constexpr std::string_view kSentence70 =
    "$GPGGA,123519.00,4807.0380,N,01131.0000,E,1,08,0.9,545.4,M,46.9,M,,*47";

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

void append(std::string& bytes, const DataRecord& record) {
  bytes.append(record.begin(), record.end());
}

// Eight hours at 11 readings a second (316,800 "T" records), a station and a
// time mark every 5 s; with range(0) == 1 also one GPS sentence a second.
std::string eightHourFile(bool withGps) {
  Settings settings;
  std::string bytes;
  append(bytes, formatIdentificationRecord(settings));
  append(bytes, formatFileNameRecord(settings, "031514A"));
  LocalTime now{2026, 3, 15, 8, 0, 0, 0};
  for (const DataRecord& record : formatLineBlock(settings, now)) append(bytes, record);
  for (std::uint32_t reading = 0; reading < 8 * 3600 * 11; ++reading) {
    const std::uint32_t tick = 1000000 + reading * 91;
    append(bytes, formatReadingRecord("T1123.4-05.6", tick));
    if (reading % 55 == 0) {
      append(bytes, formatStationRecord(reading / 55 * 0.5, now));
      append(bytes, formatTimeMark(now, tick));
    }
    if (withGps && reading % 11 == 0)
      for (const DataRecord& record : formatGpsRecords(kSentence70, tick, '@', '#'))
        append(bytes, record);
  }
  return bytes;
}

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
