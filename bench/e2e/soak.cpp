#include "e2e/soak.h"

#include <iostream>
#include <set>
#include <vector>

#include "base/number_text.h"
#include "e2e/feeds.h"
#include "e2e/gc40_rig.h"

namespace gc40::bench {
namespace {

// Numbers as they arrive from a stream sent 0, 1, 2...: which came in order,
// twice, or after a later one.
class SequenceCheck {
 public:
  explicit SequenceCheck(std::int64_t count) : seen_(std::size_t(count), false) {}

  void note(std::int64_t number) {
    if (number < 0 || number >= std::int64_t(seen_.size())) return void(++foreign_);
    if (seen_[number]) return void(++doubled_);
    seen_[number] = true;
    ++distinct_;
    if (number < next_) ++reordered_;
    next_ = std::max(next_, number + 1);
  }
  std::int64_t distinct() const { return distinct_; }
  // Sent (the first `sent`) but never seen.
  std::int64_t lost(std::int64_t sent) const { return sent - distinct_; }
  std::string summary(std::int64_t sent) const {
    return formatInteger(sent) + " sent, " + formatInteger(distinct_) + " recorded, " +
           formatInteger(lost(sent)) + " lost, " + formatInteger(doubled_) + " doubled, " +
           formatInteger(reordered_) + " reordered" +
           (foreign_ ? ", " + formatInteger(foreign_) + " never sent" : "");
  }
  bool clean(std::int64_t sent) const {
    return lost(sent) == 0 && doubled_ == 0 && reordered_ == 0 && foreign_ == 0;
  }

 private:
  std::vector<bool> seen_;
  std::int64_t next_ = 0, distinct_ = 0, doubled_ = 0, reordered_ = 0, foreign_ = 0;
};

struct SoakCounts {
  SoakCounts(std::int64_t readings, std::int64_t sentences)
      : readings(readings), sentences(sentences) {}
  void note(const std::vector<FileRecord>& records) {
    for (const FileRecord& record : records) {
      if (const auto* reading = std::get_if<ReadingRecord>(&record.value)) {
        const auto number = meterRecordNumber(reading->instrumentRecord);
        readings.note(number.value_or(-1));
      } else if (const auto* gps = std::get_if<GpsSentenceRecord>(&record.value)) {
        sentences.note(sentenceNumber(gps->sentence).value_or(-1));
        failedChecksums += !gps->valid;
      }
    }
  }
  SequenceCheck readings, sentences;
  std::int64_t failedChecksums = 0;
};

// The dialogs, the progress bar and the viewer; a message box (a damaged
// file, a failed read) is none of these.
const std::set<std::string> kExpectedFronts{"front GC40", "front GC40 / ViewFilesWnd",
                                            "front View Files / ViewFilesWnd",
                                            "front Open Data File / ViewFilesWnd"};

// Opens the file in View Files and leaves gc40; true when it showed the
// viewer with no message in between.
bool viewFile(Gc40Rig& rig, const std::string& keptShot) {
  rig.send("key v");
  rig.waitForLine("front Open Data File", 10s, true);
  rig.send(std::string("text ") + Gc40Rig::kFileName + ".R40");
  rig.send("key Return");
  constexpr auto kQuiet = 2s;
  const std::size_t frontsBefore = rig.fronts().size();
  const Clock::time_point opening = Clock::now();
  // The progress bar shows after half a second; once the viewer has stayed
  // in front for longer, Open's dialog coming back says the file is loaded
  // and listed (keys typed while it loads wait for it). Escape keeps the file.
  rig.waitFrontSettled("front GC40 / ViewFilesWnd", std::chrono::seconds(600), kQuiet);
  const double seconds = millisecondsBetween(opening, Clock::now() - kQuiet) / 1000.0;
  rig.send("key o");
  rig.waitForLine("front Open Data File", std::chrono::seconds(600), true);
  rig.send("key Escape");
  rig.waitForLine("front GC40 / ViewFilesWnd");
  const std::string shot = keptShot.empty() ? (rig.folder() / "view.png").string() : keptShot;
  rig.send("shot " + shot);
  rig.waitForLine("shot " + shot);
  std::cout << "View Files: the viewer in front for good after " << formatFixed(seconds, 1)
            << " s; windows on the way:";
  bool clean = true;
  for (std::size_t i = frontsBefore; i < rig.fronts().size(); ++i) {
    std::cout << " \"" << rig.fronts()[i] << '"';
    clean = clean && kExpectedFronts.contains(rig.fronts()[i]);
  }
  const auto shotBytes = std::filesystem::file_size(shot);
  std::cout << "; its picture " << shotBytes << " bytes; gc40 peak RSS now "
            << formatFixed(double(rig.usage().peakResidentKb) / 1024.0, 1) << " MB\n";
  rig.send("key x");
  rig.waitForLine("front GC40", 10s);
  rig.exitFromMenu();
  return clean && shotBytes > 0;
}

}  // namespace

bool runSoak(const std::string& gc40, const SoakOptions& options) {
  const std::int64_t fixes = options.readings * options.fixesPer11Readings / 11;
  Gc40Rig rig(gc40);
  rig.startLogging();
  PtyFeed meter({rig.meterMaster()});
  PtyFeed gps({rig.gpsMaster()});
  SoakCounts counts(options.readings, fixes * kSentencesPerFix);
  const Clock::time_point started = Clock::now();
  Clock::time_point lastNews = started;
  std::int64_t readingsSent = 0, fixesSent = 0;
  const auto recordedFixes = [&] { return counts.sentences.distinct() / kSentencesPerFix; };
  while (Clock::now() - lastNews < std::chrono::seconds(10)) {
    // Flow control: only as far ahead of what is on file as the window.
    while (readingsSent < options.readings &&
           readingsSent - counts.readings.distinct() < options.window &&
           fixesSent - recordedFixes() < options.window) {
      meter.write(meterRecord(readingsSent++));
      while (fixesSent < fixes && fixesSent * 11 < readingsSent * options.fixesPer11Readings)
        gps.write(gpsFix(fixesSent++));
    }
    if (counts.readings.distinct() == readingsSent &&
        counts.sentences.distinct() == fixesSent * kSentencesPerFix &&
        readingsSent == options.readings)
      break;
    const std::int64_t before = counts.readings.distinct() + counts.sentences.distinct();
    counts.note(rig.pump(Clock::now() + 100ms, {&meter, &gps}));
    if (counts.readings.distinct() + counts.sentences.distinct() > before) lastNews = Clock::now();
  }
  const double wall = millisecondsBetween(started, Clock::now()) / 1000.0;
  const ProcessUsage usage = rig.usage();
  rig.stopLogging();
  counts.note(rig.pump(Clock::now(), {}));
  std::cout << "soak of " << options.readings << " readings and " << fixes * kSentencesPerFix
            << " GPS sentences\n  readings: " << counts.readings.summary(readingsSent)
            << "\n  sentences: " << counts.sentences.summary(fixesSent * kSentencesPerFix)
            << (counts.failedChecksums ? " (" + formatInteger(counts.failedChecksums) +
                                             " marked as failing their checksum)"
                                       : "")
            << "\n  file: " << std::filesystem::file_size(rig.dataFile()) << " bytes, "
            << rig.watch().problems().size() << " damaged spans\n  wall time "
            << formatFixed(wall, 1) << " s (" << formatFixed(double(readingsSent) / wall, 0)
            << " readings/s), gc40 CPU " << formatFixed(usage.cpuSeconds, 1) << " s, peak RSS "
            << formatFixed(double(usage.peakResidentKb) / 1024.0, 1) << " MB\n";
  const bool viewed = viewFile(rig, options.viewShot);
  return viewed && counts.readings.clean(options.readings) &&
         counts.sentences.clean(fixes * kSentencesPerFix) && counts.failedChecksums == 0 &&
         rig.watch().problems().empty();
}

}  // namespace gc40::bench
