#pragma once
// r40's commands over whole surveys:
//   r40 export FILE... -o OUT   every reading as a point feature
//   r40 lag FILE...             the meter-to-GPS lag the survey itself shows
// Each returns the program's exit code.

#include <string>
#include <vector>

namespace gc40 {

int runExportCommand(const std::vector<std::string>& arguments);
int runLagCommand(const std::vector<std::string>& arguments);

}  // namespace gc40
