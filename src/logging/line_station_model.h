#pragma once
// The New Line, New Station and Enter Comment dialogs of the logging screen:
// what their controls show on opening and what OK stores. The line and
// station records and the gap in the profile that follow an OK are the
// logging session's.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "settings/settings.h"

namespace gc40 {

// New Line opens on a proposal for the next line: its name one line
// increment on and, when lines alternate, a start where the last line ended,
// walked the other way.
struct NewLineControls {
  std::u16string currentLine;       // 651
  std::u16string lastStation;       // 653
  std::u16string newLine;           // 674
  std::u16string lineIncrement;     // 675
  std::int32_t lineSequence = 0;    // 676: 0 Alternate, 1 One Way
  std::int32_t lineDirection = 0;   // 677: 0 West, 1 South, 2 North, 3 East
  std::u16string startStation;      // 678
  std::u16string stationIncrement;  // 679
};

NewLineControls openNewLine(const Settings& settings);

// Takes the fields as typed: an empty or non-numeric number reads as 0, and
// the line name keeps its first kSurveyLineMaxLength characters. The new line
// starts at its start station.
void acceptNewLine(Settings& settings, const NewLineControls& controls);

struct NewStationControls {
  std::u16string startStation;  // 863
  std::u16string lastStation;   // 864
  std::u16string newStation;    // 865, empty on opening
};

NewStationControls openNewStation(const Settings& settings);

// The station typed becomes the current one (0 when it is no number).
void acceptNewStation(Settings& settings, std::u16string_view newStation);

// The comment edit is read up to this many characters; the record keeps 11.
inline constexpr std::size_t kCommentReadLength = 42;

std::u16string commentText(std::u16string_view typed);

// New Station and Enter Scale have a second layout for a landscape screen on
// a device that keeps its folders in the store; New Line has one layout.
bool usesLandscapeLayout(const Settings& settings);

}  // namespace gc40
