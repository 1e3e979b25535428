#pragma once
// What the terminal says where the logging screen shows buttons and dialogs:
// the keys of the state the run is in, and the questions that stand in for
// New Line, New Station, Enter Comment, Create File and Confirm Exit.

#include <cstdint>
#include <string>

#include "logging/line_station_model.h"
#include "logging/logging_view.h"

namespace gc40 {

inline constexpr char kCreateFileLabel[] = "Create File";
inline constexpr char kCommentLabel[] = "Comment (11 characters are kept)";
inline constexpr char kNoConnectionEvent[] =
    "NO CONNECTION: the meter sent nothing for 1.8 s; the run has ended";

// "Keys: C Create File, X Exit": the buttons of the group with their letters,
// or, while logging, the key that pauses.
std::string keysText(const ButtonGroupShown& buttons, std::int32_t pauseKey);

// The New Line proposal as a question: "New Line 1.00 from 0.000 by -1.000,
// North (Alternate)?".
std::string newLineQuestion(const NewLineControls& proposal);

// "New Station (start 0.000, last 12.000)".
std::string newStationLabel(const NewStationControls& controls);

}  // namespace gc40
