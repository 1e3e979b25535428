#include "logging/command_keys.h"

#include <gtest/gtest.h>

#include <optional>
#include <tuple>

#include "logging/run_state.h"

namespace gc40 {
namespace {

using Action = LoggingAction;
constexpr std::optional<Action> kNothing;

// What a key ends in: its command number, then the action of that number.
std::optional<Action> keyAction(LoggingState state, std::int32_t pauseKey, int key) {
  const std::optional<int> command = keyCommand(state, pauseKey, 0, key);
  return command ? actionFor(state, *command) : std::nullopt;
}

// The keys the session test drives (C, Enter, G, L, c, X, u) are not repeated.
TEST(LoggingCommands, KeysActPerStateAndLoggingHearsOnlyThePauseKeyAndItsButton) {
  constexpr int kShift = 16;
  for (const auto& [state, pauseKey, key, action] : {
           std::tuple{LoggingState::kMonitor, 0, int{'n'}, std::optional{Action::kNewStation}},
           {LoggingState::kMonitor, 0, 'M', Action::kExit},
           {LoggingState::kMonitor, 0, 'x', Action::kExit},
           {LoggingState::kMonitor, 0, 'g', kNothing},
           {LoggingState::kMonitor, 0, 'S', kNothing},
           {LoggingState::kStandBy, 0, kKeyReturn, Action::kGo},
           {LoggingState::kStandBy, 0, 'N', Action::kNewStation},
           {LoggingState::kStandBy, 0, 'm', Action::kPopupMenu},
           {LoggingState::kStandBy, 0, 'u', kNothing},
           {LoggingState::kStandBy, 0, 'b', kNothing},
           {LoggingState::kLogging, 0, kShift, Action::kPause},
           {LoggingState::kLogging, 1, kKeySpace, Action::kPause},
           {LoggingState::kLogging, 1, kKeyReturn, kNothing},
           {LoggingState::kLogging, 2, kKeyReturn, Action::kPause},
           {LoggingState::kLogging, 2, kKeySpace, kNothing},
           {LoggingState::kLogging, 3, 'p', Action::kPause},
           {LoggingState::kLogging, 3, 'S', kNothing},
           {LoggingState::kLogging, 7, 'q', Action::kPause},  // a damaged setting acts as "any key"
       }) {
    EXPECT_EQ(keyAction(state, pauseKey, key), action)
        << "state " << static_cast<int>(state) << " pauseKey " << pauseKey << " key " << key;
  }
  // The pause button shown follows the pause key and, for any key, the mode.
  for (const auto& [pauseKey, mode, button] : {std::tuple{0, SurveyMode::kAuto, 0},
                                               {3, SurveyMode::kWheel, 3},
                                               {1, SurveyMode::kManual, 5},
                                               {9, SurveyMode::kManual, 4}})
    EXPECT_EQ(pauseButtonNumber(pauseKey, mode), button) << pauseKey << " " << modeIndex(mode);
  EXPECT_EQ(buttonCommand(LoggingState::kMonitor, 459), std::nullopt);
}

}  // namespace
}  // namespace gc40
