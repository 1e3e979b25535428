// A data file through the View Files chain: the reader, the split into survey
// lines and each line's index files written and read back. The reader accounts
// for every byte in exactly one record or problem; the split places every
// reading; the index files give back the stations they were made from. The
// join to GPS fixes accounts for every reading too, and the lag estimate
// either finds a lag or says why not. The
// bytes are also read as a pair of index files (split before the second
// file's magic), which must be refused or read consistently.

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include "datafile/data_file_reader.h"
#include "fuzz_support.h"
#include "survey/lag_estimate.h"
#include "survey/reading_positions.h"
#include "survey/survey_lines.h"
#include "viewer/line_index_files.h"

namespace gc40::fuzz {
namespace {

// The records and the problems, each in file order, take turns to cover the
// file without a gap or an overlap.
void checkEveryByteRead(const DataFileContents& contents, std::size_t size) {
  auto record = contents.records.begin();
  auto problem = contents.problems.begin();
  std::size_t next = 0;
  while (next < size) {
    if (record != contents.records.end() && record->offset == next) {
      const bool gps = std::holds_alternative<GpsSentenceRecord>(record->value);
      FUZZ_CHECK(gps ? record->length >= 72 && record->length % 24 == 0 : record->length == 24);
      next += (record++)->length;
    } else {
      FUZZ_CHECK(problem != contents.problems.end() && problem->offset == next);
      FUZZ_CHECK(!problem->what.empty() && problem->length > 0);
      next += (problem++)->length;
    }
  }
  FUZZ_CHECK(next == size && record == contents.records.end() &&
             problem == contents.problems.end());
}

void checkSplit(const DataFileContents& contents, const SurveyFile& file) {
  const auto readings = std::count_if(
      contents.records.begin(), contents.records.end(),
      [](const FileRecord& record) { return std::holds_alternative<ReadingRecord>(record.value); });
  std::size_t placed = 0;
  for (const SurveyLine& line : file.lines) {
    placed += line.readingStations.size();
    FUZZ_CHECK(line.stations.size() <= line.readingStations.size());
  }
  FUZZ_CHECK(placed == static_cast<std::size_t>(readings));
  FUZZ_CHECK(file.problems.size() == contents.problems.size());
}

void checkPositions(const DataFileContents& contents, const SurveyFile& file) {
  const PositionedFile positioned =
      positionReadings(contents, file, {.lagMs = 300, .laybackM = 1.5, .crossTrackM = -0.5});
  std::size_t number = 0;
  for (const PositionedReading& reading : positioned.readings) {
    FUZZ_CHECK(reading.readingNumber == ++number && reading.lineIndex < file.lines.size());
    FUZZ_CHECK(reading.position.has_value() ==
               (reading.noPosition == NoPositionReason::kPositioned));
    FUZZ_CHECK(positioned.hasFixes != (reading.noPosition == NoPositionReason::kNoFixes));
    if (reading.position)
      FUZZ_CHECK(std::isfinite(reading.position->latitude) &&
                 std::isfinite(reading.position->longitude));
  }
  std::size_t placed = 0;
  for (const SurveyLine& line : file.lines) placed += line.readingStations.size();
  FUZZ_CHECK(positioned.readings.size() == placed);

  const LagEstimate lag = estimateLag({{&contents, &file}}, {}, {-200, 200, 50});
  FUZZ_CHECK(lag.found == lag.problem.empty());
}

// Stations compared by their bits, so that a NaN station equals itself.
bool sameStations(const std::vector<StationEntry>& a, const std::vector<StationEntry>& b) {
  const auto same = [](const StationEntry& x, const StationEntry& y) {
    return std::memcmp(&x.station, &y.station, sizeof x.station) == 0 && x.present == y.present &&
           std::memcmp(x.values.data(), y.values.data(), sizeof x.values) == 0;
  };
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), same);
}

// The stations written to index files and read back.
std::vector<StationEntry> roundTrip(const std::vector<StationEntry>& stations) {
  auto decoded = decodeLineIndex(encodeLineIndex(stations));
  auto* back = std::get_if<std::vector<StationEntry>>(&decoded);
  FUZZ_CHECK(back && back->size() == stations.size());
  return std::move(*back);
}

void checkIndexFiles(std::string_view bytes) {
  const std::size_t second = bytes.find("GC40R4X2", 8);
  const LineIndexBytes files{
      std::string(bytes.substr(0, second)),
      second == std::string_view::npos ? "" : std::string(bytes.substr(second))};
  const auto decoded = decodeLineIndex(files);
  if (const auto* error = std::get_if<LineIndexError>(&decoded)) {
    FUZZ_CHECK(error->message.starts_with("LINE1.R4X: ") ||
               error->message.starts_with("LINE2.R4X: "));
    return;
  }
  const auto& stations = std::get<std::vector<StationEntry>>(decoded);
  FUZZ_CHECK(stations.size() == (files.presence.size() - 24) / 16);
  // A value whose flag is 0 reads as it stands but is written as 0, so only
  // a second round gives back exactly what it was given.
  const std::vector<StationEntry> written = roundTrip(stations);
  FUZZ_CHECK(sameStations(roundTrip(written), written));
  for (std::size_t i = 0; i < stations.size(); ++i)
    FUZZ_CHECK(written[i].present == stations[i].present);
}

bool progressOk(std::size_t done, std::size_t total, std::size_t& last) {
  FUZZ_CHECK(done <= total && (done == 0 || done > last));
  last = done;
  return true;
}

}  // namespace
}  // namespace gc40::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace gc40;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  std::size_t lastRead = 0;
  const auto contents = readDataFile(bytes, [&lastRead](std::size_t done, std::size_t total) {
    return fuzz::progressOk(done, total, lastRead);
  });
  FUZZ_CHECK(contents.has_value());
  fuzz::checkEveryByteRead(*contents, size);

  std::size_t lastSplit = 0;
  const auto file = splitSurveyLines(*contents, [&lastSplit](std::size_t done, std::size_t total) {
    return fuzz::progressOk(done, total, lastSplit);
  });
  FUZZ_CHECK(file.has_value());
  fuzz::checkSplit(*contents, *file);
  fuzz::checkPositions(*contents, *file);
  for (const SurveyLine& line : file->lines)
    FUZZ_CHECK(fuzz::sameStations(fuzz::roundTrip(line.stations), line.stations));

  fuzz::checkIndexFiles(bytes);
  return 0;
}
