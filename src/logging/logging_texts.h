#pragma once
// The event notes the logging screen records and the questions and warnings
// it puts in boxes; the status display's own texts are in status_texts.h.

#include <string>
#include <string_view>

namespace gc40 {

// The program's own notes in the data file ("X" records).
inline constexpr std::u16string_view kStartedNote = u"$STARTED";
inline constexpr std::u16string_view kPausedNote = u"$PAUSED";
inline constexpr std::u16string_view kConnectionBreakNote = u"$CONN BREAK";
inline constexpr std::u16string_view kConnectionEndNote = u"$CONN END  ";

inline constexpr std::string_view kNoConnectionCaption = "NO CONNECTION";
inline constexpr std::string_view kNoConnectionText = "NO CONNECTION Press <ENTER> to STOP";
inline constexpr std::string_view kConfirmExitCaption = "Confirm Exit";
inline constexpr std::string_view kConfirmExitText = "Exit Logging?";

// Recording stopped because the data file could not be written (in a
// "WARNING" box).
inline std::string writeFailureText(std::string_view path, std::string_view reason) {
  return "Cannot write to " + std::string(path) + ": " + std::string(reason) +
         ".\nRecording has stopped. Every reading before this is in the file.\n"
         "Make room, then create a new file to go on.";
}

}  // namespace gc40
