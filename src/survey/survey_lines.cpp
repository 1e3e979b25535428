#include "survey/survey_lines.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <type_traits>
#include <unordered_map>

#include "instrument/reading_decoder.h"
#include "logging/reading_decision.h"
#include "logging/run_state.h"

namespace gc40 {
namespace {

constexpr std::size_t kProgressEvery = 4096;  // records between progress calls
constexpr char kFirstRepeatDigit = '2';
constexpr char kLastRepeatDigit = '6';

// The repeat number 2..6 that the logger writes in place of the "T" for the
// later readings of a station; 0 for a first reading.
int repeatNumber(const ReadingRecord& reading) {
  const char marker = reading.instrumentRecord.empty() ? 'T' : reading.instrumentRecord[0];
  return marker >= kFirstRepeatDigit && marker <= kLastRepeatDigit ? marker - '0' : 0;
}

struct ReadingCount {
  std::size_t readings = 0;
  // The logger numbers every reading as its own station, so a file shows
  // repeat numbers only when a station took more readings; the largest one
  // seen is that count.
  std::int32_t readingsPerStation = 1;
};

ReadingCount countReadings(const DataFileContents& contents) {
  ReadingCount count;
  for (const FileRecord& record : contents.records) {
    if (const auto* reading = std::get_if<ReadingRecord>(&record.value)) {
      ++count.readings;
      count.readingsPerStation = std::max(count.readingsPerStation, repeatNumber(*reading));
    }
  }
  return count;
}

// The logging screen's station bookkeeping, driven by the records it wrote.
class StationReplay {
 public:
  explicit StationReplay(std::int32_t readingsPerStation) {
    state_.readingsPerStation = readingsPerStation;
  }

  // A line block's start, or a station record: the next group stays here.
  void enterStation(double station) {
    settings_.currentStation = station;
    state_.stationStarted = 0;
  }
  void setIncrement(float increment) { settings_.stationIncrement = increment; }

  // The station this reading was written at; moves on as the logger did.
  double place(const ReadingRecord& reading) {
    if (const int repeat = repeatNumber(reading)) state_.readingsAtStation = repeat - 1;
    ++state_.readingsAtStation;
    const double station = settings_.currentStation;
    advanceStation(state_, settings_);
    return station;
  }

 private:
  LoggingRunState state_;
  Settings settings_;
};

void mergeReading(StationEntry& entry, const FiledValues& filed) {
  const auto take = [&entry](int trace, std::int32_t valid, float value) {
    if (valid != 1) return;
    entry.present[static_cast<std::size_t>(trace)] = 1;
    entry.values[static_cast<std::size_t>(trace)] = value;
  };
  take(0, filed.verticalConductivityValid, filed.verticalConductivity);
  take(1, filed.horizontalConductivityValid, filed.horizontalConductivity);
  take(2, filed.verticalInphaseValid, filed.verticalInphase);
  take(3, filed.horizontalInphaseValid, filed.horizontalInphase);
}

class LineSplitter {
 public:
  LineSplitter(const ReadingCount& count, SurveyFile& file)
      : file_(file), replay_(count.readingsPerStation) {
    entryOf_.reserve(count.readings);
  }

  void add(const FileRecord& record) {
    std::visit([this](const auto& value) { take(value); }, record.value);
  }

 private:
  void take(const IdentificationRecord& value) {
    file_.identification = value;
    settings_ = recordingSettings(value);
  }
  void take(const FileNameRecord& value) { file_.fileName = value; }
  void take(const LineRecord& value) {
    file_.lines.emplace_back().name = value.name;
    entryOf_.clear();
  }
  void take(const LineStartRecord& value) {
    currentLine().startStation = value.station;
    replay_.enterStation(value.station);
  }
  void take(const LineAttributesRecord& value) {
    SurveyLine& line = currentLine();
    line.direction = value.direction;
    // The logger keeps the increment in single precision and adds it as such.
    line.stationIncrement = static_cast<float>(value.stationIncrement);
    replay_.setIncrement(line.stationIncrement);
  }
  void take(const StationRecord& value) { replay_.enterStation(value.station); }
  void take(const ReadingRecord& value) {
    SurveyLine& line = currentLine();
    const double station = replay_.place(value);
    line.readingStations.push_back(station);
    FiledValues filed;
    decodeInstrumentRecord(value.instrumentRecord, settings_, filed);
    mergeReading(entryAt(line, station), filed);
  }
  template <typename Other>
  void take(const Other&) {}

  // Readings before any line block (a damaged head) go to an unnamed line.
  SurveyLine& currentLine() {
    if (file_.lines.empty()) file_.lines.emplace_back();
    return file_.lines.back();
  }

  StationEntry& entryAt(SurveyLine& line, double station) {
    const auto [found, added] = entryOf_.try_emplace(stationKey(station), line.stations.size());
    if (added) line.stations.emplace_back().station = station;
    return line.stations[found->second];
  }

  SurveyFile& file_;
  StationReplay replay_;
  Settings settings_ = recordingSettings(std::nullopt);
  std::unordered_map<std::int64_t, std::size_t> entryOf_;  // station key -> entry
};

}  // namespace

std::int64_t stationKey(double station) {
  constexpr double kLimit = 9.0e16;
  const double hundredths = std::round(station * 100.0);
  if (!(std::abs(hundredths) < kLimit)) return std::numeric_limits<std::int64_t>::min();
  return static_cast<std::int64_t>(hundredths);
}

Settings recordingSettings(const std::optional<IdentificationRecord>& identification) {
  Settings settings;
  if (!identification) return settings;
  settings.instrumentVariant = identification->instrumentVariant;
  settings.gpsEnabled = identification->gpsEnabled ? 1 : 0;
  settings.distanceUnits = identification->distanceUnits;
  settings.dipoleMode = modeFromIndex<DipoleMode>(identification->dipoleMode);
  settings.surveyMode = modeFromIndex<SurveyMode>(identification->surveyMode);
  settings.component = modeFromIndex<Component>(identification->component);
  return settings;
}

std::optional<SurveyFile> splitSurveyLines(const DataFileContents& contents,
                                           const SplitProgress& progress) {
  SurveyFile file;
  file.problems = contents.problems;
  LineSplitter splitter(countReadings(contents), file);
  const std::size_t total = contents.records.size();
  for (std::size_t i = 0; i < total; ++i) {
    if (progress && i % kProgressEvery == 0 && !progress(i, total)) return std::nullopt;
    splitter.add(contents.records[i]);
  }
  return file;
}

}  // namespace gc40
