#include "survey/file_scan.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <type_traits>
#include <variant>

#include "instrument/reading_decoder.h"
#include "survey/survey_time.h"

namespace gc40 {
namespace {

// An RMC belongs to the GGA of the same fix: the receiver sends them within
// the same second.
constexpr std::int64_t kSameFixMs = 1000;

// Ticks as written are 32 bits and wrap; records follow each other closely,
// so the signed 32-bit step from one to the next is the true step.
class TickLine {
 public:
  std::int64_t at(std::uint32_t tick) {
    time_ = started_ ? time_ + static_cast<std::int32_t>(tick - last_) : tick;
    started_ = true;
    last_ = tick;
    return time_;
  }

 private:
  bool started_ = false;
  std::uint32_t last_ = 0;
  std::int64_t time_ = 0;
};

// A "*" record tied to a date: it dates the readings around it.
struct ClockMark {
  std::size_t readingsBefore = 0;
  std::int64_t time = 0;
  std::int64_t localMs = 0;
};

struct TimedRmc {
  std::int64_t time = 0;
  RmcData data;
};

std::int64_t msOfDay(const TimeOfDay& t) {
  return ((t.hour * 60LL + t.minute) * 60 + t.second) * 1000 + t.millisecond;
}

std::optional<std::int64_t> dateTimeMs(const DateTimeRecord& record) {
  return epochMs(record.year, record.month, record.day, msOfDay(record.time));
}

std::optional<std::int64_t> firstLineStart(const DataFileContents& contents) {
  for (const FileRecord& record : contents.records)
    if (const auto* value = std::get_if<DateTimeRecord>(&record.value)) return dateTimeMs(*value);
  return std::nullopt;
}

template <typename T>
void sortByTime(std::vector<T>& items) {
  std::stable_sort(items.begin(), items.end(),
                   [](const T& a, const T& b) { return a.time < b.time; });
}

class Scanner {
 public:
  Scanner(const DataFileContents& contents, const SurveyFile& survey)
      : survey_(survey), firstLineStart_(firstLineStart(contents)) {
    used_.resize(survey.lines.size());
    scan_.readings.reserve(contents.records.size());
  }

  void add(const RecordValue& value) {
    std::visit([this](const auto& record) { take(record); }, value);
  }

  FileScan finish() {
    dateReadings();
    sortByTime(scan_.fixes);
    sortByTime(rmcs_);
    sortByTime(dateAnchors_);
    joinRmcs();
    anchorFixTimes();
    return std::move(scan_);
  }

 private:
  void take(const IdentificationRecord& value) { settings_ = recordingSettings(value); }
  void take(const LineRecord&) { line_ = nextLine_++; }
  void take(const LineStartRecord&) { currentLine(); }
  void take(const LineAttributesRecord&) { currentLine(); }
  void take(const DateTimeRecord& value) { pendingLineStart_ = dateTimeMs(value); }
  void take(const TimeMarkRecord& value) {
    const std::int64_t time = ticks_.at(value.tick);
    std::optional<std::int64_t> estimate = pendingLineStart_;
    if (!estimate && !marks_.empty()) estimate = marks_.back().localMs + time - marks_.back().time;
    if (!estimate) estimate = firstLineStart_;
    pendingLineStart_.reset();
    if (!estimate) return;
    marks_.push_back({scan_.readings.size(), time, nearestDay(msOfDay(value.time), *estimate)});
  }
  void take(const TextRecord& value) { ticks_.at(value.tick); }
  void take(const ReadingRecord& value) {
    ScannedReading& reading = scan_.readings.emplace_back();
    reading.lineIndex = currentLine();
    if (reading.lineIndex < survey_.lines.size()) {
      const std::vector<double>& stations = survey_.lines[reading.lineIndex].readingStations;
      std::size_t& used = used_[reading.lineIndex];
      if (used < stations.size()) reading.station = stations[used++];
    }
    reading.tick = value.tick;
    reading.time = ticks_.at(value.tick);
    FiledValues filed;
    const DecodedReading decoded = decodeInstrumentRecord(value.instrumentRecord, settings_, filed);
    reading.dipole = decoded.dipole;
    reading.range = decoded.range;
    const auto valid = [](std::int32_t flag, float value) {
      return flag == 1 ? std::optional<float>(value) : std::nullopt;
    };
    reading.verticalConductivity =
        valid(filed.verticalConductivityValid, filed.verticalConductivity);
    reading.horizontalConductivity =
        valid(filed.horizontalConductivityValid, filed.horizontalConductivity);
    reading.verticalInphase = valid(filed.verticalInphaseValid, filed.verticalInphase);
    reading.horizontalInphase = valid(filed.horizontalInphaseValid, filed.horizontalInphase);
  }
  void take(const GpsSentenceRecord& value) {
    const std::int64_t time = ticks_.at(value.tick);
    if (!value.valid) return;
    if (auto fix = parseGga(value.sentence)) {
      ScannedFix& scanned = scan_.fixes.emplace_back();
      scanned.time = time;
      scanned.fix = *fix;
    } else if (auto rmc = parseRmc(value.sentence)) {
      rmcs_.push_back({time, *rmc});
      if (rmc->utcMs) dateAnchors_.push_back({time, *rmc->utcMs});
    } else if (auto utc = parseZda(value.sentence)) {
      dateAnchors_.push_back({time, *utc});
    }
  }
  template <typename Other>
  void take(const Other&) {}

  // Records before the first "L" belong to an unnamed line, as in the split.
  std::size_t currentLine() {
    if (!line_) line_ = nextLine_++;
    return *line_;
  }

  // Each reading takes its clock from the "*" before it, or from the first
  // one when none came before.
  void dateReadings() {
    if (marks_.empty()) return;
    std::size_t mark = 0;
    for (std::size_t i = 0; i < scan_.readings.size(); ++i) {
      while (mark + 1 < marks_.size() && marks_[mark + 1].readingsBefore <= i) ++mark;
      ScannedReading& reading = scan_.readings[i];
      reading.localMs = marks_[mark].localMs + reading.time - marks_[mark].time;
    }
  }

  void joinRmcs() {
    for (ScannedFix& fix : scan_.fixes) {
      auto it =
          std::lower_bound(rmcs_.begin(), rmcs_.end(), fix.time - kSameFixMs,
                           [](const TimedRmc& rmc, std::int64_t time) { return rmc.time < time; });
      const TimedRmc* best = nullptr;
      for (; it != rmcs_.end() && it->time <= fix.time + kSameFixMs; ++it) {
        const bool sameTime =
            !fix.fix.msOfDay || !it->data.msOfDay || *fix.fix.msOfDay == *it->data.msOfDay;
        if (sameTime &&
            (!best || std::llabs(it->time - fix.time) < std::llabs(best->time - fix.time)))
          best = &*it;
      }
      if (best && best->data.active) {
        fix.speedKnots = best->data.speedKnots;
        fix.courseDegrees = best->data.courseDegrees;
      }
    }
  }

  // The GGA times too tie ticks to UTC, once a date from an RMC or ZDA says
  // which day they belong to.
  void anchorFixTimes() {
    scan_.utcAnchors = dateAnchors_;
    if (dateAnchors_.empty()) return;
    for (const ScannedFix& fix : scan_.fixes)
      if (fix.fix.msOfDay)
        scan_.utcAnchors.push_back(
            {fix.time, nearestDay(*fix.fix.msOfDay, *utcAt(dateAnchors_, fix.time))});
    sortByTime(scan_.utcAnchors);
  }

  const SurveyFile& survey_;
  const std::optional<std::int64_t> firstLineStart_;
  FileScan scan_;
  Settings settings_ = recordingSettings(std::nullopt);
  TickLine ticks_;
  std::optional<std::size_t> line_;
  std::size_t nextLine_ = 0;
  std::vector<std::size_t> used_;  // readings placed so far, per line
  std::optional<std::int64_t> pendingLineStart_;
  std::vector<ClockMark> marks_;
  std::vector<TimedRmc> rmcs_;
  std::vector<UtcAnchor> dateAnchors_;
};

}  // namespace

FileScan scanRecordedFile(const DataFileContents& contents, const SurveyFile& survey) {
  Scanner scanner(contents, survey);
  for (const FileRecord& record : contents.records) scanner.add(record.value);
  return scanner.finish();
}

std::optional<std::int64_t> utcAt(const std::vector<UtcAnchor>& anchors, std::int64_t time) {
  if (anchors.empty()) return std::nullopt;
  auto after = std::lower_bound(anchors.begin(), anchors.end(), time,
                                [](const UtcAnchor& a, std::int64_t t) { return a.time < t; });
  if (after == anchors.end() ||
      (after != anchors.begin() && time - std::prev(after)->time < after->time - time))
    --after;
  return after->utcMs + (time - after->time);
}

}  // namespace gc40
