#pragma once
// Runs the r40 program under test and keeps what it said and how it ended.

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include "harness/child_process.h"
#include "harness/temp_folder.h"

namespace gc40::testing {

struct R40Run {
  int status = -1;
  std::string out;
  std::string err;
};

// Standard error goes through a file in `folder`. Needs R40_BINARY.
inline R40Run r40(const TempFolder& folder, const std::vector<std::string>& arguments) {
  const std::filesystem::path errors = folder.path() / "stderr.txt";
  ChildProcess run(R40_BINARY, arguments, errors);
  R40Run result;
  result.out = run.readAll(std::chrono::seconds(60));
  result.status = run.waitForExit(std::chrono::seconds(10)).value_or(-1);
  result.err = readBytes(errors);
  return result;
}

}  // namespace gc40::testing
