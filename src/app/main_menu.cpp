#include "app/main_menu.h"

namespace gc40 {

namespace {

int wrappedButton(int index) {
  return (index % kMainButtonCount + kMainButtonCount) % kMainButtonCount;
}

int lowerCase(int keyCode) { return keyCode >= 'A' && keyCode <= 'Z' ? keyCode + 32 : keyCode; }

}  // namespace

std::optional<MainCommand> commandForLetter(int keyCode) {
  switch (lowerCase(keyCode)) {
    case 'l':
      return MainCommand::kMonitorLog;
    case 's':
      return MainCommand::kSurveySetup;
    case 'o':
      return MainCommand::kLoggerSetup;
    case 'g':
      return MainCommand::kSetGpsPort;
    case 'd':
      return MainCommand::kDisplayOptions;
    case 'v':
      return MainCommand::kViewFiles;
    case 'x':
    case 'e':
      return MainCommand::kExit;
    default:
      return std::nullopt;
  }
}

std::optional<MainCommand> commandForButtonId(int id) {
  const int index = id - kFirstMainButtonId;
  if (index < 0 || index >= kMainButtonCount) return std::nullopt;
  return static_cast<MainCommand>(index);
}

MainMenuStep mainMenuKey(MainMenuState& state, int keyCode) {
  MainMenuStep step{std::nullopt, state.focusedButton};
  if (state.keysActive != 0) return step;
  // Lives for this key only, so a key that means nothing never repeats the
  // command of the key before it.
  int pendingKeyCommand = kNoKeyCommand;
  switch (keyCode) {
    case kKeyTab:
    case kKeyRight:
    case kKeyDown:
      state.focusedButton = wrappedButton(state.focusedButton + 1);
      break;
    case kKeyLeft:
    case kKeyUp:
      state.focusedButton = wrappedButton(state.focusedButton - 1);
      break;
    case kKeyReturn:
      pendingKeyCommand = state.focusedButton;
      break;
    default:
      if (const auto command = commandForLetter(keyCode))
        pendingKeyCommand = static_cast<int>(*command);
  }
  if (pendingKeyCommand != kNoKeyCommand)
    step.command = static_cast<MainCommand>(pendingKeyCommand);
  return step;
}

}  // namespace gc40
