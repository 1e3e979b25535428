#include "headless/terminal_prompt.h"

#include "logging/command_keys.h"

namespace gc40 {
namespace {

constexpr int kClearLineKey = 0x15;  // Ctrl-U, as in a shell

bool continuationByte(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

}  // namespace

std::size_t characterCount(std::string_view utf8) {
  std::size_t count = 0;
  for (const char byte : utf8) count += continuationByte(byte) ? 0 : 1;
  return count;
}

TerminalPrompt TerminalPrompt::line(std::string label, std::string initial,
                                    std::size_t maxCharacters) {
  return TerminalPrompt(std::move(label), std::move(initial), maxCharacters, false);
}

TerminalPrompt TerminalPrompt::yesNo(std::string question) {
  return TerminalPrompt(std::move(question), {}, 0, true);
}

TerminalPrompt::Step TerminalPrompt::feed(const TerminalKey& key) {
  if (step_ != Step::kAsking) return step_;
  if (key.code == kKeyReturn) return step_ = Step::kAccepted;
  if (key.code == kKeyEscape) return step_ = Step::kCancelled;
  if (yesNo_) {
    if (key.text == "y" || key.text == "Y") return step_ = Step::kAccepted;
    if (key.text == "n" || key.text == "N") return step_ = Step::kCancelled;
    return step_;
  }
  if (key.code == kKeyBackspace) {
    while (!answer_.empty() && continuationByte(answer_.back())) answer_.pop_back();
    if (!answer_.empty()) answer_.pop_back();
  } else if (key.code == kClearLineKey) {
    answer_.clear();
  } else if (!key.text.empty() && characterCount(answer_) < maxCharacters_) {
    answer_ += key.text;
  }
  return step_;
}

std::string TerminalPrompt::shown() const {
  return yesNo_ ? label_ + " [Y/n] " : label_ + ": " + answer_;
}

}  // namespace gc40
