#pragma once
// The main menu's decisions: which command a key or a button click means and
// how the focus ring moves over the seven buttons. The window only routes its
// keys and clicks here and carries out what comes back.

#include <array>
#include <optional>
#include <string_view>

#include "ui/key_codes.h"

namespace gc40 {

enum class MainCommand {
  kMonitorLog,
  kSurveySetup,
  kLoggerSetup,
  kSetGpsPort,
  kDisplayOptions,
  kViewFiles,
  kExit,
};

inline constexpr int kMainButtonCount = 7;
inline constexpr int kFirstMainButtonId = 420;  // button i carries id 420 + i
inline constexpr int kNoKeyCommand = -99;

// The button labels in command order; '&' marks the mnemonic letter.
inline constexpr std::array<std::string_view, kMainButtonCount> kMainButtonLabels = {
    "Monitor/&Log",     "&Survey Setup", "L&ogger Setup", "Set &GPS Port",
    "&Display Options", "&View Files",   "E&xit",
};

struct MainMenuState {
  int focusedButton = 0;  // 0..6: the button that carries the focus ring
  // Non-zero from the start of a Monitor/Log run until the run ends normally;
  // while set, keys are ignored but clicks still work.
  int keysActive = 0;
};

// What one key or click did: the command to carry out, if any, and where the
// ring was before, so the window can move the default-button look.
struct MainMenuStep {
  std::optional<MainCommand> command;
  int previousFocus = 0;
};

// The command a letter key stands for (upper or lower case); nullopt for any
// other key.
std::optional<MainCommand> commandForLetter(int keyCode);

// The command of a button click, from the button's id.
std::optional<MainCommand> commandForButtonId(int id);

// A key on the main window: moves the ring (Tab, Right, Down forward; Left,
// Up back; wrapping), or names a command (a letter, or Return for the focused
// button).
MainMenuStep mainMenuKey(MainMenuState& state, int keyCode);

}  // namespace gc40
