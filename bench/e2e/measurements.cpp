#include "e2e/measurements.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <iostream>
#include <optional>
#include <thread>
#include <vector>

#include "base/number_text.h"
#include "e2e/feeds.h"
#include "e2e/gc40_rig.h"
#include "e2e/paced_source.h"

namespace gc40::bench {
namespace {

namespace fs = std::filesystem;

std::string fixed(double value, int decimals = 1) { return formatFixed(value, decimals); }

std::string megabytes(long kilobytes) { return fixed(double(kilobytes) / 1024.0) + " MB"; }

// The value at fraction `share` of the sorted values (nearest rank).
double percentile(const std::vector<double>& sorted, double share) {
  const auto rank = std::size_t(std::ceil(share * double(sorted.size())));
  return sorted[std::clamp<std::size_t>(rank, 1, sorted.size()) - 1];
}

void printSpread(const std::string& what, std::vector<double> values, const std::string& unit) {
  if (values.empty()) return void(std::cout << what << ": no values\n");
  std::sort(values.begin(), values.end());
  std::cout << what << ": n " << values.size() << ", min " << fixed(values.front(), 2) << unit
            << ", p50 " << fixed(percentile(values, 0.5), 2) << unit << ", p99 "
            << fixed(percentile(values, 0.99), 2) << unit << ", max " << fixed(values.back(), 2)
            << unit << '\n';
}

// Reading numbers below `count` and when each was first seen in the file.
struct ArrivalLog {
  explicit ArrivalLog(std::int64_t count) : writtenAt(count), seenAt(count) {}

  void note(const std::vector<FileRecord>& records, Clock::time_point seen) {
    for (const FileRecord& record : records) {
      const auto* reading = std::get_if<ReadingRecord>(&record.value);
      const auto number = reading ? meterRecordNumber(reading->instrumentRecord) : std::nullopt;
      if (!number || *number >= std::int64_t(seenAt.size()) || seenAt[*number]) continue;
      seenAt[*number] = seen;
      ++arrived;
    }
  }

  std::vector<double> latencies() const {
    std::vector<double> milliseconds;
    for (std::size_t i = 0; i < seenAt.size(); ++i)
      if (seenAt[i] && writtenAt[i])
        milliseconds.push_back(millisecondsBetween(*writtenAt[i], *seenAt[i]));
    return milliseconds;
  }

  std::vector<std::optional<Clock::time_point>> writtenAt, seenAt;
  std::int64_t arrived = 0;
};

// Gives up once nothing has arrived for this long after the last record.
constexpr auto kPatience = 5s;

void reportLatency(const std::string& pace, const ArrivalLog& log, Clock::time_point started,
                   Gc40Rig& rig) {
  const double seconds = millisecondsBetween(started, Clock::now()) / 1000.0;
  printSpread("latency " + pace, log.latencies(), " ms");
  std::cout << "  " << log.arrived << " of " << log.seenAt.size() << " records on file in "
            << fixed(seconds, 1) << " s (" << fixed(double(log.arrived) / seconds, 0)
            << " records/s), peak RSS " << megabytes(rig.usage().peakResidentKb) << '\n';
}

// What a pace does each turn: writes the records now due, noting when, and
// says until when to wait for the file and whether it is still sending.
struct SendStep {
  Clock::time_point waitUntil;
  bool stillSending;
};
using Pace = std::function<SendStep(PtyFeed& meter, ArrivalLog& log, Clock::time_point started)>;

// Feeds the meter at `pace` until every record is on file, or none has
// arrived for kPatience once sending is over, then reports the latencies.
void measureLatency(const std::string& gc40, std::int64_t records, const std::string& paceName,
                    const Pace& pace) {
  Gc40Rig rig(gc40);
  rig.startLogging();
  PtyFeed meter({rig.meterMaster()});
  ArrivalLog log(records);
  const Clock::time_point started = Clock::now();
  Clock::time_point lastNews = started;
  while (log.arrived < records && Clock::now() - lastNews < kPatience) {
    const std::int64_t arrivedBefore = log.arrived;
    const SendStep step = pace(meter, log, started);
    const std::vector<FileRecord> landed = rig.pump(step.waitUntil, {&meter});
    log.note(landed, rig.takenAt());  // when the pump took them
    if (log.arrived > arrivedBefore || step.stillSending) lastNews = Clock::now();
  }
  reportLatency(paceName, log, started, rig);
  rig.stopLogging();
  rig.exitFromMenu();
}

void pacedLatency(const std::string& gc40, std::int64_t records) {
  std::optional<PacedSource> source;  // its clock starts with the measurement
  measureLatency(gc40, records, "at 91 ms",
                 [&](PtyFeed& meter, ArrivalLog& log, Clock::time_point started) {
                   if (!source) source.emplace(&meter, nullptr, started);
                   const std::int64_t before = source->recordsSent();
                   if (before < records) source->writeDue();
                   for (std::int64_t n = before; n < std::min(source->recordsSent(), records); ++n)
                     log.writtenAt[n] = source->recordWrittenAt();
                   const bool sending = source->recordsSent() < records;
                   return SendStep{sending ? source->nextDue() : Clock::now() + 100ms, sending};
                 });
}

void flatOutLatency(const std::string& gc40, std::int64_t records, int window) {
  std::int64_t sent = 0;
  measureLatency(gc40, records, "flat out (" + formatInteger(window) + " in flight)",
                 [&](PtyFeed& meter, ArrivalLog& log, Clock::time_point) {
                   while (sent < records && sent - log.arrived < window) {
                     meter.write(meterRecord(sent));
                     log.writtenAt[sent++] = Clock::now();
                   }
                   return SendStep{Clock::now() + 100ms, false};
                 });
}

// `cat` copying a pseudo-terminal into a file, as a plain logger would.
struct Copier {
  Copier(const fs::path& folder, const std::string& name, const fs::path& output)
      : link(makePty(folder, name)),
        cat("/bin/sh", {"-c", "exec cat " + link.slavePath().string() + " >> " + output.string()}) {
    for (int i = 0; i < 500 && !link.readerPresent(); ++i) std::this_thread::sleep_for(10ms);
    if (!link.readerPresent()) throw BenchError("cat never opened " + link.slavePath().string());
  }
  double cpuSeconds() const {
    const std::optional<ProcessUsage> usage = processUsage(cat.pid());
    if (!usage) throw BenchError("cat on " + link.slavePath().string() + " has gone");
    return usage->cpuSeconds;
  }
  PtyLink link;
  testing::ChildProcess cat;
};

std::string perHour(double cpuSeconds, double spanSeconds) {
  const double hourly = cpuSeconds * 3600.0 / spanSeconds;
  return fixed(hourly, 1) + " CPU s/h (" + fixed(hourly / 36.0, 2) + " % of a core)";
}

}  // namespace

void measureLatency(const std::string& gc40, const LatencyOptions& options) {
  if (options.pacedRecords > 0) pacedLatency(gc40, options.pacedRecords);
  if (options.flatRecords > 0) flatOutLatency(gc40, options.flatRecords, options.window);
}

void measureCpu(const std::string& gc40, std::chrono::seconds warmUp, std::chrono::seconds span) {
  Gc40Rig rig(gc40);
  const fs::path copied = rig.folder() / "copied.bin";
  Copier meterCopier(rig.folder(), "copier-meter", copied);
  Copier gpsCopier(rig.folder(), "copier-receiver", copied);
  rig.startLogging();
  rig.watch().stopNotifications();  // the paced writes wake the pumping often enough
  rig.send("mute recorded");        // the field has no one to tell; the file is watched instead
  PtyFeed meter({rig.meterMaster(), meterCopier.link.masterFd()});
  PtyFeed gps({rig.gpsMaster(), gpsCopier.link.masterFd()});
  PacedSource source(&meter, &gps, Clock::now());
  std::int64_t readings = 0, sentences = 0;
  // Written at the field's pace until `end`, or only what is on its way.
  const auto runUntil = [&](Clock::time_point end, bool feeding) {
    while (Clock::now() < end) {
      if (feeding) source.writeDue();
      const auto until = feeding ? std::min(source.nextDue(), end) : end;
      for (const FileRecord& record : rig.pump(until, {&meter, &gps})) {
        readings += std::holds_alternative<ReadingRecord>(record.value);
        sentences += std::holds_alternative<GpsSentenceRecord>(record.value);
      }
    }
  };
  runUntil(Clock::now() + warmUp, true);
  const ProcessUsage gc40Before = rig.usage();
  const double catsBefore = meterCopier.cpuSeconds() + gpsCopier.cpuSeconds();
  const Clock::time_point spanStart = Clock::now();
  runUntil(spanStart + span, true);
  const ProcessUsage gc40After = rig.usage();
  const double gc40Cpu = gc40After.cpuSeconds - gc40Before.cpuSeconds;
  const double gc40Ticked = gc40After.tickedCpuSeconds - gc40Before.tickedCpuSeconds;
  const double catsCpu = meterCopier.cpuSeconds() + gpsCopier.cpuSeconds() - catsBefore;
  const double spanSeconds = millisecondsBetween(spanStart, Clock::now()) / 1000.0;
  runUntil(Clock::now() + 500ms, false);  // well before the 1.8 s that calls the meter lost
  std::cout << "CPU over " << fixed(spanSeconds, 1) << " s of logging (11 readings/s, 10 Hz GPS, 5 "
            << "sentences a fix):\n  gc40:          " << fixed(gc40Cpu, 2)
            << " s = " << perHour(gc40Cpu, spanSeconds) << " (by clock ticks "
            << fixed(gc40Ticked, 2) << " s)\n  two cat copiers: " << fixed(catsCpu, 2)
            << " s = " << perHour(catsCpu, spanSeconds) << "\n  ratio gc40 / cats: "
            << (catsCpu > 0 ? fixed(gc40Cpu / catsCpu, 1) : std::string("(cats took no ticks)"))
            << "\n  sent " << source.recordsSent() << " records and " << source.fixesSent() * 5
            << " sentences; gc40 recorded " << readings << " readings and " << sentences
            << " sentences; the copiers " << fs::file_size(copied) << " of "
            << meter.queued() + gps.queued() << " bytes\n  gc40 peak RSS "
            << megabytes(rig.usage().peakResidentKb) << '\n';
  rig.stopLogging();
  rig.exitFromMenu();
}

void measureStartUp(const std::string& gc40, int starts) {
  std::vector<double> times;
  long peak = 0;
  for (int start = 0; start < starts; ++start) {
    Gc40Rig rig(gc40);
    times.push_back(rig.startUpMilliseconds());
    peak = std::max(peak, rig.usage().peakResidentKb);
    rig.exitFromMenu();
  }
  printSpread("start-up to the main window", times, " ms");
  std::cout << "  peak RSS at the menu " << megabytes(peak) << '\n';
}

void measureMonitorGps(const std::string& gc40, std::chrono::seconds span,
                       std::chrono::seconds interval) {
  Gc40Rig rig(gc40);
  rig.send("key g");
  rig.waitForLine("front Set GPS Port", 10s, true);
  rig.send("click Monitor GPS Output");
  rig.waitForLine("front GC40 / MonitorGPSWnd", 10s, true);
  PtyFeed gps({rig.gpsMaster()});
  const Clock::time_point start = Clock::now();
  PacedSource source(nullptr, &gps, start);
  std::vector<double> percents;
  ProcessUsage last = rig.usage();
  Clock::time_point lastAt = start;
  std::cout << "Monitor GPS, 50 lines/s:\n";
  while (lastAt < start + span) {
    const Clock::time_point end = lastAt + interval;
    while (Clock::now() < end) {
      source.writeDue();
      rig.pump(std::min(source.nextDue(), end), {&gps});
    }
    const ProcessUsage now = rig.usage();
    const Clock::time_point nowAt = Clock::now();
    percents.push_back(100.0 * (now.cpuSeconds - last.cpuSeconds) /
                       (millisecondsBetween(lastAt, nowAt) / 1000.0));
    std::cout << "  " << fixed(millisecondsBetween(start, nowAt) / 1000.0, 0) << " s: CPU "
              << fixed(percents.back(), 1) << " %, RSS " << megabytes(now.residentKb) << '\n';
    last = now;
    lastAt = nowAt;
  }
  const double ratio = percents.front() > 0 ? percents.back() / percents.front() : 0;
  const bool pass = percents.front() > 0 && ratio <= 1.5 && percents.back() < 10.0;
  std::cout << "  last / first interval: " << fixed(ratio, 2) << "; peak RSS "
            << megabytes(last.peakResidentKb) << "; " << source.fixesSent() * kSentencesPerFix
            << " lines sent\n  acceptance (within 1.5x, under 10 % of a core): "
            << (pass ? "met" : "NOT met") << '\n';
  rig.send("key x");
  rig.waitForLine("front GC40", 10s);
  rig.exitFromMenu();
}

}  // namespace gc40::bench
