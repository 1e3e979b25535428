#pragma once
// The texts the logging screen shows and the event notes it records.

#include <cstdint>
#include <string>
#include <string_view>

namespace gc40 {

// The program's own notes in the data file ("X" records).
inline constexpr std::u16string_view kStartedNote = u"$STARTED";
inline constexpr std::u16string_view kPausedNote = u"$PAUSED";
inline constexpr std::u16string_view kConnectionBreakNote = u"$CONN BREAK";
inline constexpr std::u16string_view kConnectionEndNote = u"$CONN END  ";

inline constexpr std::string_view kPleaseWaitText = "Please Wait...";
inline constexpr std::string_view kNoConnectionCaption = "NO CONNECTION";
inline constexpr std::string_view kNoConnectionText = "NO CONNECTION Press <ENTER> to STOP";
inline constexpr std::string_view kConfirmExitCaption = "Confirm Exit";
inline constexpr std::string_view kConfirmExitText = "Exit Logging?";

// "Monitor", "Stand By" or "Logging".
std::string_view stateText(std::int32_t loggingState);

// "File:" and the first 8 characters of the data file's base name.
std::string fileFieldText(std::string_view baseName);

// The station as "%-11.2f".
std::string stationText(double station);

// "Sample %-3d of %-3d".
std::string sampleText(std::int32_t sample, std::int32_t samplesPerReading);

}  // namespace gc40
