#pragma once
// What the Survey Setup dialog stores when the operator presses OK, given the
// texts and selections of its controls. The dialog saves the file afterwards.

#include <cstdint>
#include <string>
#include <string_view>

#include "settings/settings.h"

namespace gc40 {

// The dialog's line edit holds 23 characters (24 with its terminator).
inline constexpr std::size_t kSurveySetupLineMaxLength = 23;
// The rate edit is read up to this many characters.
inline constexpr std::size_t kSurveySetupRateMaxLength = 32;

// The combos' selections are indexes into their choice lists.
struct SurveySetupEntry {
  std::int32_t mode = modeIndex(SurveyMode::kAuto);
  std::u16string rateOrSamples;  // "Readings/s" (Auto) or "Sample/Rdg" (Manual)
  std::int32_t component = modeIndex(Component::kBoth);
  std::int32_t dipoleMode = modeIndex(DipoleMode::kVertical);
  std::u16string line;
  std::u16string lineIncrement;
  std::int32_t lineSequence = 0;
  std::int32_t lineDirection = 0;
  std::u16string startStation;
  std::u16string stationIncrement;
};

// The survey line fields that Survey Setup and New Line both store, each read
// as typed: the name (cut to `maxLineLength`) and its numeric value, the line
// increment, sequence and direction, the start station (which the current
// station follows) and the station increment.
struct SurveyLineEntry {
  std::u16string_view line;
  std::u16string_view lineIncrement;
  std::int32_t lineSequence = 0;
  std::int32_t lineDirection = 0;
  std::u16string_view startStation;
  std::u16string_view stationIncrement;
};
void storeSurveyLine(Settings& settings, const SurveyLineEntry& entry, std::size_t maxLineLength);

// Non-numbers read as 0 and are then handled per field: a rate of 0 becomes 1
// reading per second, samples are clamped to 1..100, the rest is taken as read.
void acceptSurveySetup(Settings& settings, const SurveySetupEntry& entry);

}  // namespace gc40
