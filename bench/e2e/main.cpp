// gc40_e2e_bench: the whole gc40 program measured from outside, on
// pseudo-terminals the bench writes (see --help). Run by hand on a quiet
// machine with a Release build.

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iostream>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "e2e/gc40_rig.h"
#include "e2e/measurements.h"
#include "e2e/soak.h"

namespace {

using namespace gc40::bench;

constexpr const char* kUsage = R"(usage: gc40_e2e_bench [OPTION]... [MEASUREMENT]...

Measurements (default: latency cpu startup):
  latency       CR written to the meter's port -> its T record in the data file,
                at the meter's 91 ms and flat out
  cpu           gc40's CPU while logging 11 readings/s and a 10 Hz receiver
                (5 sentences a fix), against two `cat` copiers of the same bytes
  startup       exec -> the main window, several starts
  monitor-gps   gc40 on Monitor GPS fed 50 lines/s: CPU and RSS per interval
  soak          a whole field day as fast as gc40 takes it, checked reading by
                reading and sentence by sentence, then opened in View Files

Options:
  --quick             spans for a run of about a minute: 200 paced and 1000 flat
                      out records, 20 s of CPU, 3 starts, 30 s of Monitor GPS
                      in 10 s intervals, a soak of 11,000 readings
  --records N         paced latency records (default 1100)
  --flat-records N    flat-out latency records (default 5000)
  --window N          flat out: records in flight (default 1); soak: 64
  --span S            seconds of CPU measurement (default 600)
  --warm-up S         seconds of logging before it (default 10)
  --starts N          start-ups (default 10)
  --seconds S         seconds of Monitor GPS (default 600)
  --interval S        its reporting interval (default 60)
  --readings N        soak readings (default 316800, eight hours at 11/s)
  --fixes N           soak GPS fixes per 11 readings (default 10: a 10 Hz receiver)
  --view-shot PATH    soak: keep View Files' picture of the file as PATH (PNG)
  --gc40 PATH         the gc40 to measure (default: the one built beside the bench)
)";

struct Options {
  std::string gc40 = GC40_BINARY;
  std::set<std::string> measurements;
  LatencyOptions latency;
  SoakOptions soak;
  int window = 0;
  int starts = 10;
  std::chrono::seconds warmUp{10}, span{600}, monitorSpan{600}, interval{60};
};

void makeQuick(Options& options) {
  options.latency = {.pacedRecords = 200, .flatRecords = 1000, .window = 1};
  options.warmUp = std::chrono::seconds(3);
  options.span = std::chrono::seconds(20);
  options.starts = 3;
  options.monitorSpan = std::chrono::seconds(30);
  options.interval = std::chrono::seconds(10);
  options.soak.readings = 11'000;
}

long long number(const std::string& option, const char* text) {
  char* end = nullptr;
  const long long value = text ? std::strtoll(text, &end, 10) : 0;
  if (!text || *end != '\0' || value <= 0)
    throw BenchError(option + " needs a whole number above 0");
  return value;
}

Options parse(const std::vector<std::string>& arguments) {
  Options options;
  if (std::find(arguments.begin(), arguments.end(), "--quick") != arguments.end())
    makeQuick(options);
  using std::chrono::seconds;
  const std::map<std::string, std::function<void(long long)>> numberOptions{
      {"--records", [&](long long n) { options.latency.pacedRecords = n; }},
      {"--flat-records", [&](long long n) { options.latency.flatRecords = n; }},
      {"--window", [&](long long n) { options.window = int(n); }},
      {"--span", [&](long long n) { options.span = seconds(n); }},
      {"--warm-up", [&](long long n) { options.warmUp = seconds(n); }},
      {"--starts", [&](long long n) { options.starts = int(n); }},
      {"--seconds", [&](long long n) { options.monitorSpan = seconds(n); }},
      {"--interval", [&](long long n) { options.interval = seconds(n); }},
      {"--readings", [&](long long n) { options.soak.readings = n; }},
      {"--fixes", [&](long long n) { options.soak.fixesPer11Readings = n; }}};
  const std::map<std::string, std::function<void(const std::string&)>> pathOptions{
      {"--gc40", [&](const std::string& path) { options.gc40 = path; }},
      {"--view-shot", [&](const std::string& path) {
         options.soak.viewShot = std::filesystem::absolute(path).string();
       }}};
  const std::set<std::string> measurements{"latency", "cpu", "startup", "monitor-gps", "soak"};
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    const char* next = i + 1 < arguments.size() ? arguments[i + 1].c_str() : nullptr;
    if (argument == "--quick") continue;
    if (measurements.contains(argument)) {
      options.measurements.insert(argument);
    } else if (const auto found = numberOptions.find(argument); found != numberOptions.end()) {
      found->second(number(argument, next)), ++i;
    } else if (const auto path = pathOptions.find(argument); path != pathOptions.end() && next) {
      path->second(next), ++i;
    } else {
      throw BenchError("unknown argument " + argument + " (see --help)");
    }
  }
  if (options.window > 0) options.latency.window = options.soak.window = options.window;
  if (options.measurements.empty()) options.measurements = {"latency", "cpu", "startup"};
  return options;
}

int run(const Options& options) {
  bool clean = true;
  // In a fixed order, whatever the command line's.
  if (options.measurements.contains("startup")) measureStartUp(options.gc40, options.starts);
  if (options.measurements.contains("latency")) measureLatency(options.gc40, options.latency);
  if (options.measurements.contains("cpu")) measureCpu(options.gc40, options.warmUp, options.span);
  if (options.measurements.contains("monitor-gps"))
    measureMonitorGps(options.gc40, options.monitorSpan, options.interval);
  if (options.measurements.contains("soak")) clean = runSoak(options.gc40, options.soak);
  return clean ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  if (!arguments.empty() && arguments.front() == "--help") return std::cout << kUsage, 0;
  catchStopSignals();
  std::cout << std::unitbuf;  // each figure as it comes, also into a file
  try {
    return run(parse(arguments));
  } catch (const BenchError& error) {
    std::cerr << "gc40_e2e_bench: " << error.what() << '\n';
    return 2;
  }
}
