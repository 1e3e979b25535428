#pragma once
// The modes a survey is set up in, and the state of a logging run. A mode's
// number is what the settings file and the data file headers hold, and the
// index of its item in the dialogs' choice lists. A damaged settings file may
// hold any other number: the fixed underlying type keeps it as read, and each
// use decides what such a mode does.

#include <concepts>
#include <cstdint>

namespace gc40 {

enum class SurveyMode : std::int32_t { kAuto = 0, kWheel = 1, kManual = 2 };

enum class DipoleMode : std::int32_t { kVertical = 0, kHorizontal = 1, kBoth = 2 };

// Which values the survey records: conductivity and inphase, or inphase only.
enum class Component : std::int32_t { kBoth = 0, kInphase = 1 };

// What the logging screen is doing. Only the run holds it; nothing stores it.
enum class LoggingState : std::int32_t {
  kStandBy = -1,  // file open, not recording (also paused)
  kMonitor = 0,   // no data file open
  kLogging = 1,   // each accepted reading is recorded
};

template <typename T>
concept SettingMode =
    std::same_as<T, SurveyMode> || std::same_as<T, DipoleMode> || std::same_as<T, Component>;

// The mode's number: its item's index in its choice list.
template <SettingMode Mode>
constexpr std::int32_t modeIndex(Mode mode) {
  return static_cast<std::int32_t>(mode);
}

// The mode a choice-list index or a stored number stands for, known or not.
template <SettingMode Mode>
constexpr Mode modeFromIndex(std::int32_t index) {
  return static_cast<Mode>(index);
}

}  // namespace gc40
