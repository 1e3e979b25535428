// The port map reader over any bytes: each malformed line is reported once,
// by its number, and the map it gives, written as the program writes its
// file, reads back whole and without a problem. Each line is also tried as
// a --port assignment.

#include "fuzz_support.h"
#include "platform/port_map.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace gc40;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const ParsedPortMap parsed = parsePortMap(text);
  int lastProblem = 0;
  for (const PortMapProblem& problem : parsed.problems) {
    FUZZ_CHECK(problem.lineNumber > lastProblem && !problem.line.empty());
    lastProblem = problem.lineNumber;
  }
  const auto lineCount = static_cast<int>(std::count(text.begin(), text.end(), '\n'));
  FUZZ_CHECK(lastProblem <= lineCount + 1);

  const ParsedPortMap reread = parsePortMap(formatPortMap(parsed.map), PortMap{});
  FUZZ_CHECK(reread.problems.empty() && reread.map.paths == parsed.map.paths);

  for (std::size_t start = 0; start <= text.size();) {
    const std::size_t end = std::min(text.find('\n', start), text.size());
    if (const auto assignment = parsePortAssignment(text.substr(start, end - start))) {
      FUZZ_CHECK(assignment->index >= 0 && assignment->index < 12 && !assignment->path.empty());
    }
    start = end + 1;
  }
  return 0;
}
