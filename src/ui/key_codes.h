#pragma once
// The screens compare plain key codes, so their rules are core and tested
// without a window: a character key gives its character ('L' and 'l' are two
// codes), the keys without one the codes below. A Qt key event is turned into
// such a code here; a key with no code gives -1, which the screens still see
// (any key pauses a logging run).

class QKeyEvent;

namespace gc40 {

inline constexpr int kKeyBackspace = 8;
inline constexpr int kKeyTab = 9;
inline constexpr int kKeyReturn = 13;
inline constexpr int kKeyEscape = 27;
inline constexpr int kKeySpace = 32;
inline constexpr int kKeyPageUp = 33;
inline constexpr int kKeyPageDown = 34;
inline constexpr int kKeyEnd = 35;
inline constexpr int kKeyHome = 36;
inline constexpr int kKeyLeft = 37;
inline constexpr int kKeyUp = 38;
inline constexpr int kKeyRight = 39;
inline constexpr int kKeyDown = 40;

int screenKeyCode(const QKeyEvent& event);

}  // namespace gc40
