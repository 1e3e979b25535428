// Framer and decoder throughput on the stream a GC40 sends: 13-byte records,
// now and then a line feed between them, arriving a few bytes at a time.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "base/number_text.h"
#include "instrument/reading_decoder.h"
#include "instrument/record_framer.h"

namespace gc40 {
namespace {

constexpr int kRecords = 1000;

// A value as the instrument sends it: five characters, right-aligned.
std::string valueText(double value) {
  std::string text = formatFixed(value, 1);
  text.insert(0, 5 - std::min<std::size_t>(text.size(), 5), ' ');
  return text;
}

std::vector<std::string> makeRecords() {
  std::mt19937 random(40);
  const char statuses[] = {0x20, 0x21, 0x24, 0x00, 0x02, 0x44};
  std::vector<std::string> records;
  for (int i = 0; i < kRecords; ++i) {
    std::string record = "T";
    record += statuses[random() % 6];
    record += valueText(static_cast<double>(random() % 10000) / 10.0);
    record += valueText(static_cast<double>(random() % 2000) / 10.0 - 99.9);
    records.push_back(record);
  }
  return records;
}

std::string makeStream(const std::vector<std::string>& records) {
  std::string stream;
  for (std::size_t i = 0; i < records.size(); ++i) {
    stream += records[i];
    stream += '\r';
    if (i % 16 == 0) stream += '\n';
  }
  return stream;
}

void BM_FrameAndDecode(benchmark::State& state) {
  const std::string stream = makeStream(makeRecords());
  const auto chunk = static_cast<std::size_t>(state.range(0));
  const Settings settings;
  RecordFramer framer;
  FiledValues filed;
  framer.start();
  std::int64_t readings = 0;
  const RecordHandlers handlers{.onReading = [&](std::string_view record, std::uint32_t) {
    benchmark::DoNotOptimize(decodeInstrumentRecord(record, settings, filed));
    ++readings;
  }};
  for (auto _ : state) {
    for (std::size_t at = 0; at < stream.size(); at += chunk) {
      framer.feed(std::string_view(stream).substr(at, chunk), 0, handlers);
    }
  }
  if (readings != state.iterations() * kRecords) state.SkipWithError("a record was not framed");
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(stream.size()));
  state.SetItemsProcessed(state.iterations() * kRecords);
}
BENCHMARK(BM_FrameAndDecode)->Arg(1)->Arg(8)->Arg(64);

void BM_Decode(benchmark::State& state) {
  const std::vector<std::string> records = makeRecords();
  const Settings settings;
  FiledValues filed;
  std::size_t next = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(decodeInstrumentRecord(records[next], settings, filed));
    next = next + 1 == records.size() ? 0 : next + 1;
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_Decode);

}  // namespace
}  // namespace gc40
