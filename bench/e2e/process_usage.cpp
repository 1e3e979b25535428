#include "e2e/process_usage.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace gc40::bench {
namespace {

// Fields 14 and 15 of /proc/PID/stat, in clock ticks. The command name
// (field 2) may hold spaces, so counting starts after its ')'.
std::optional<double> tickedSeconds(pid_t pid) {
  std::ifstream in("/proc/" + std::to_string(pid) + "/stat");
  std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  const std::size_t nameEnd = text.rfind(')');
  if (nameEnd == std::string::npos) return std::nullopt;
  std::istringstream fields(text.substr(nameEnd + 2));
  std::string skipped;
  for (int field = 3; field < 14; ++field) fields >> skipped;
  long long user = 0, system = 0;
  if (!(fields >> user >> system)) return std::nullopt;
  return double(user + system) / double(sysconf(_SC_CLK_TCK));
}

long statusKb(const std::string& status, const std::string& name) {
  const std::size_t at = status.find("\n" + name + ":");
  return at == std::string::npos ? 0 : std::stol(status.substr(at + name.size() + 2));
}

// The scheduler's own count, in nanoseconds, summed over the threads there
// are now: clock ticks (10 ms) are too coarse for a process as idle as a
// copier.
std::optional<double> scheduledSeconds(pid_t pid) {
  std::error_code error;
  long long nanoseconds = 0;
  bool found = false;
  for (const auto& task :
       std::filesystem::directory_iterator("/proc/" + std::to_string(pid) + "/task", error)) {
    std::ifstream in(task.path() / "schedstat");
    long long taskNanoseconds = 0;
    if (in >> taskNanoseconds) nanoseconds += taskNanoseconds, found = true;
  }
  if (!found) return std::nullopt;
  return double(nanoseconds) / 1e9;
}

}  // namespace

std::optional<ProcessUsage> processUsage(pid_t pid) {
  const std::optional<double> ticked = tickedSeconds(pid);
  const std::optional<double> scheduled = scheduledSeconds(pid);
  std::ifstream in("/proc/" + std::to_string(pid) + "/status");
  const std::string status((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  if (!ticked || status.empty()) return std::nullopt;
  return ProcessUsage{scheduled.value_or(*ticked), *ticked, statusKb(status, "VmRSS"),
                      statusKb(status, "VmHWM")};
}

}  // namespace gc40::bench
