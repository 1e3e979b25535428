#pragma once
// The logging screen's commands: its buttons, what a click or a key means in
// each state, and which action a command number carries out there.

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "settings/modes.h"
#include "ui/key_codes.h"

namespace gc40 {

// Button i of the visible group carries id 460 + i; a click gives command i.
inline constexpr int kFirstLoggingButtonId = 460;
inline constexpr std::int32_t kMonitorButtonCount = 2;
inline constexpr std::int32_t kStandByButtonCount = 6;
inline constexpr int kPauseButtonCount = 8;

// Labels in button order; '&' marks the mnemonic letter.
inline constexpr std::array<std::string_view, kMonitorButtonCount> kMonitorButtonLabels = {
    "&Create File", "E&xit"};
inline constexpr std::array<std::string_view, kStandByButtonCount> kStandByButtonLabels = {
    "&Go", "&Line", "&NStn", "&Cmnt", "&Menu", "E&xit"};
// One pause button is shown at a time: number pauseKey, + 4 in Manual mode.
// Setting 3 says "key S", though P is the key that pauses.
inline constexpr std::array<std::string_view, kPauseButtonCount> kLandscapePauseLabels = {
    "TAP ME or press any key to Pause",
    "TAP ME or press SPACE bar to Pause",
    "TAP ME or press ENTER key to Pause",
    "TAP ME or press key S to Pause",
    "Trigger to Log, Tap/any key to Pause",
    "Trigger to Log, Tap or press SPACE bar to Pause",
    "Trigger to Log, Tap or press ENTER key to Pause",
    "Trigger to Log, Tap or press key S to Pause"};
inline constexpr std::array<std::string_view, kPauseButtonCount> kPortraitPauseLabels = {
    "TAP ME or press any key to Pause",     "TAP ME or press SPACE bar to Pause",
    "TAP ME or press ENTER key to Pause",   "TAP ME or press key S to Pause",
    "Trigger to Log, Tap/any key to Pause", "Trigger to Log, Tap/SPACE to Pause",
    "Trigger to Log, Tap/ENTER to Pause",   "Trigger to Log, Tap/<S> to Pause"};

// Commands of the popup menu (shown from Stand By) and the redraw request.
inline constexpr int kScaleMenuCommand = 1101;
inline constexpr int kDisplayOptionsMenuCommand = 1102;
inline constexpr int kRedrawCommand = 1103;
inline constexpr int kHideMenuCommand = 1106;

enum class LoggingAction {
  kCreateFile,
  kGo,
  kPause,
  kNewLine,
  kNewStation,
  kComment,
  kPopupMenu,
  kExit,
};

// The pause button shown while logging: 0..3 by pauseKey, 4..7 in Manual.
int pauseButtonNumber(std::int32_t pauseKey, SurveyMode surveyMode);

// The command number of a click on button `id`. While logging, every button
// pauses; nullopt for ids below the first button.
std::optional<int> buttonCommand(LoggingState loggingState, int id);

// The command number of a key, or nullopt when the key means nothing in this
// state. While logging only the pause key of the pauseKey setting counts.
std::optional<int> keyCommand(LoggingState loggingState, std::int32_t pauseKey,
                              std::int32_t selectedButton, int keyCode);

// What a command number does in a state; nullopt when nothing handles it.
std::optional<LoggingAction> actionFor(LoggingState loggingState, int command);

}  // namespace gc40
