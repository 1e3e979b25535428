#pragma once
// One line on the terminal that says how far a long job has got, rewritten
// in place. Silent when the output is not a terminal (a pipe or a log
// wants the result, not the animation) and during the first moments, so
// small files finish without it ever flashing up.

#include <chrono>
#include <cstddef>
#include <ostream>
#include <string>

namespace gc40 {

class ProgressLine {
 public:
  ProgressLine(std::ostream& out, bool enabled);
  ~ProgressLine();
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

  void show(const std::string& stage, std::size_t done, std::size_t total);
  // Removes the line, so what follows starts on a clean one.
  void clear();

 private:
  std::ostream& out_;
  bool enabled_;
  bool shown_ = false;
  std::chrono::steady_clock::time_point start_;
  std::chrono::steady_clock::time_point last_;
  std::string lastText_;
};

}  // namespace gc40
