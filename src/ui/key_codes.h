#pragma once
// The screens compare plain character codes, as the handheld gave them: 'L'
// and 'l' are two codes, Return is 13, Tab 9 and the arrows 37..40. A Qt key
// event is turned into such a code here; a key with no code gives -1, which
// the screens still see (any key pauses a logging run).

class QKeyEvent;

namespace gc40 {

inline constexpr int kKeyTab = 9;
inline constexpr int kKeyReturn = 13;
inline constexpr int kKeyLeft = 37;
inline constexpr int kKeyUp = 38;
inline constexpr int kKeyRight = 39;
inline constexpr int kKeyDown = 40;

int handheldKeyCode(const QKeyEvent& event);

}  // namespace gc40
