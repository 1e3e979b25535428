#pragma once
// A question on the terminal where the logging screen opens a dialog: a line
// to edit (the file name, a station, a comment) or a yes/no. Return accepts,
// Escape cancels, as in the dialogs.

#include <cstddef>
#include <string>
#include <string_view>

#include "headless/terminal_keys.h"

namespace gc40 {

class TerminalPrompt {
 public:
  enum class Step { kAsking, kAccepted, kCancelled };

  // `initial` stands in the line to be accepted or changed; at most
  // `maxCharacters` characters can be typed.
  static TerminalPrompt line(std::string label, std::string initial, std::size_t maxCharacters);
  // Y or Return says yes, N or Escape no.
  static TerminalPrompt yesNo(std::string question);

  Step feed(const TerminalKey& key);
  Step step() const { return step_; }
  // The line as typed (UTF-8).
  const std::string& answer() const { return answer_; }
  // What the terminal shows while asking.
  std::string shown() const;

 private:
  TerminalPrompt(std::string label, std::string answer, std::size_t maxCharacters, bool yesNo)
      : label_(std::move(label)),
        answer_(std::move(answer)),
        maxCharacters_(maxCharacters),
        yesNo_(yesNo) {}

  std::string label_;
  std::string answer_;
  std::size_t maxCharacters_;
  bool yesNo_;
  Step step_ = Step::kAsking;
};

// The characters (not bytes) of UTF-8 text.
std::size_t characterCount(std::string_view utf8);

}  // namespace gc40
