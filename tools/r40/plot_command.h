#pragma once
// r40 plot: the pictures View Files saves with P, for reports.
//   r40 plot FILE --map OUT.png            the map of the whole survey
//   r40 plot FILE --profile LINE OUT.png   a line's profile, the whole line
// Returns the program's exit code.

#include <string>
#include <vector>

namespace gc40 {

int runPlotCommand(const std::vector<std::string>& arguments);

}  // namespace gc40
