#include "headless/terminal_keys.h"

#include <optional>
#include <utility>

#include "logging/command_keys.h"

namespace gc40 {
namespace {

constexpr char kEscape = '\x1b';
constexpr char kDelete = '\x7f';  // what the Backspace key of most terminals sends

// The end of a sequence after "ESC [" or "ESC O": its final byte, '@'..'~'.
std::size_t sequenceEnd(std::string_view bytes, std::size_t start) {
  std::size_t i = start;
  while (i < bytes.size() && (bytes[i] < '@' || bytes[i] > '~')) ++i;
  return i < bytes.size() ? i + 1 : i;
}

// The length and code point of the UTF-8 character at `i`; nullopt for a
// byte that starts none.
std::optional<std::pair<std::size_t, int>> utf8Character(std::string_view bytes, std::size_t i) {
  const auto lead = static_cast<unsigned char>(bytes[i]);
  if (lead < 0xC2 || lead > 0xF4) return std::nullopt;
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (i + length > bytes.size()) return std::nullopt;
  int code = lead & (0x3F >> (length - 1));
  for (std::size_t k = 1; k < length; ++k) {
    const auto next = static_cast<unsigned char>(bytes[i + k]);
    if ((next & 0xC0) != 0x80) return std::nullopt;
    code = (code << 6) | (next & 0x3F);
  }
  return std::pair(length, code);
}

}  // namespace

std::vector<TerminalKey> decodeTerminalKeys(std::string_view bytes) {
  std::vector<TerminalKey> keys;
  for (std::size_t i = 0; i < bytes.size();) {
    const char byte = bytes[i];
    if (byte == '\r' || byte == '\n') {
      keys.push_back({kKeyReturn, {}});
      i += byte == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n' ? 2 : 1;
    } else if (byte == kEscape) {
      const bool sequence = i + 1 < bytes.size() && (bytes[i + 1] == '[' || bytes[i + 1] == 'O');
      keys.push_back({sequence ? kNoKeyCode : kKeyEscape, {}});
      i = sequence ? sequenceEnd(bytes, i + 2) : i + 1;
    } else if (byte == kDelete || byte == '\b') {
      keys.push_back({kKeyBackspace, {}});
      ++i;
    } else if (static_cast<unsigned char>(byte) < 0x80) {
      const bool control = static_cast<unsigned char>(byte) < 0x20;
      keys.push_back({byte, control ? std::string() : std::string(1, byte)});
      ++i;
    } else if (const auto character = utf8Character(bytes, i)) {
      keys.push_back({character->second, std::string(bytes.substr(i, character->first))});
      i += character->first;
    } else {
      keys.push_back({kNoKeyCode, {}});
      ++i;
    }
  }
  return keys;
}

}  // namespace gc40
