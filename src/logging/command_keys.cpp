#include "logging/command_keys.h"

namespace gc40 {
namespace {

constexpr int kNone = -1;

struct LetterKey {
  char upper;
  int monitorCommand;
  int standByCommand;
};

// Every other letter, S and B among them, does nothing in either state.
constexpr std::array<LetterKey, 7> kLetterKeys = {{
    {'C', 0, 3},
    {'G', kNone, 0},
    {'L', kNone, 1},
    {'N', 2, 2},
    {'M', 4, 4},
    {'X', 4, 5},
    {'U', 1, kNone},
}};

constexpr std::array<std::optional<LoggingAction>, 6> kMonitorActions = {
    LoggingAction::kCreateFile, LoggingAction::kExit, LoggingAction::kNewStation,
    LoggingAction::kComment,    LoggingAction::kExit, LoggingAction::kExit};
constexpr std::array<std::optional<LoggingAction>, 6> kStandByActions = {
    LoggingAction::kGo,      LoggingAction::kNewLine,   LoggingAction::kNewStation,
    LoggingAction::kComment, LoggingAction::kPopupMenu, LoggingAction::kExit};

std::optional<int> letterCommand(LoggingState loggingState, int keyCode) {
  for (const LetterKey& key : kLetterKeys) {
    if (keyCode != key.upper && keyCode != key.upper + ('a' - 'A')) continue;
    const int command =
        loggingState == LoggingState::kMonitor ? key.monitorCommand : key.standByCommand;
    if (command == kNone) return std::nullopt;
    return command;
  }
  return std::nullopt;
}

// A setting outside 0..3 (a damaged settings file) acts as 0, any key.
std::int32_t knownPauseKey(std::int32_t pauseKey) {
  return pauseKey >= 0 && pauseKey <= 3 ? pauseKey : 0;
}

bool isPauseKey(std::int32_t pauseKey, int keyCode) {
  switch (knownPauseKey(pauseKey)) {
    case 1:
      return keyCode == kKeySpace;
    case 2:
      return keyCode == kKeyReturn;
    case 3:
      return keyCode == 'P' || keyCode == 'p';
    default:
      return true;
  }
}

}  // namespace

int pauseButtonNumber(std::int32_t pauseKey, SurveyMode surveyMode) {
  const int number = knownPauseKey(pauseKey);
  return surveyMode == SurveyMode::kManual ? number + 4 : number;
}

std::optional<int> buttonCommand(LoggingState loggingState, int id) {
  const int command = id - kFirstLoggingButtonId;
  if (command < 0) return std::nullopt;
  return loggingState == LoggingState::kLogging ? 0 : command;
}

std::optional<int> keyCommand(LoggingState loggingState, std::int32_t pauseKey,
                              std::int32_t selectedButton, int keyCode) {
  if (loggingState == LoggingState::kLogging) {
    if (isPauseKey(pauseKey, keyCode)) return 0;
    return std::nullopt;
  }
  if (keyCode == kKeyReturn) return selectedButton;
  return letterCommand(loggingState, keyCode);
}

std::optional<LoggingAction> actionFor(LoggingState loggingState, int command) {
  if (loggingState == LoggingState::kLogging) {
    if (command == 0) return LoggingAction::kPause;
    return std::nullopt;
  }
  const auto& actions = loggingState == LoggingState::kMonitor ? kMonitorActions : kStandByActions;
  if (command < 0 || command >= static_cast<int>(actions.size())) return std::nullopt;
  return actions[command];
}

}  // namespace gc40
