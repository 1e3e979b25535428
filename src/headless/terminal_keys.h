#pragma once
// Keys read from a terminal, or from a pipe, as the logging screen's key
// codes: a character gives its own code, Return, Backspace and Escape theirs,
// and the sequences that arrow and function keys send one key with no code,
// which the screen still sees (any key pauses a logging run).

#include <string>
#include <string_view>
#include <vector>

namespace gc40 {

inline constexpr int kNoKeyCode = -1;

struct TerminalKey {
  int code = kNoKeyCode;
  std::string text;  // a typed character's UTF-8 bytes; empty for keys that type nothing
  bool operator==(const TerminalKey&) const = default;
};

// The keys in one read. CR, LF and CR LF are each one Return; an Escape that
// '[' or 'O' follows in the same read starts a sequence that runs to its
// final byte, and one at the end of a read is the Escape key itself.
std::vector<TerminalKey> decodeTerminalKeys(std::string_view bytes);

}  // namespace gc40
