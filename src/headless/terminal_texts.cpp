#include "headless/terminal_texts.h"

#include <array>
#include <cctype>
#include <span>
#include <string_view>

#include "base/text_codec.h"
#include "logging/command_keys.h"
#include "settings/setting_choices.h"

namespace gc40 {
namespace {

// The terminal has no popup menu: Scale and Display Options need the screen.
constexpr std::string_view kMenuLabel = "&Menu";

// "&Create File" as "C Create File": the letter after '&' is the key.
std::string withKey(std::string_view label) {
  const std::size_t mark = label.find('&');
  std::string name(label);
  name.erase(mark, 1);
  return std::string(1,
                     static_cast<char>(std::toupper(static_cast<unsigned char>(label[mark + 1])))) +
         " " + name;
}

std::string buttonKeys(std::span<const std::string_view> labels) {
  std::string text = "Keys:";
  for (const std::string_view label : labels) {
    if (label == kMenuLabel) continue;
    text += (text.size() > 5 ? ", " : " ") + withKey(label);
  }
  return text;
}

// The pause key of each pauseKey setting; 3 is P, whatever the screen's
// button says.
constexpr std::array<std::string_view, 4> kPauseKeyNames = {"any key", "Space", "Return", "P"};

template <std::size_t N>
std::string_view choice(const std::array<std::string_view, N>& choices, std::int32_t index) {
  return index >= 0 && index < std::int32_t(N) ? choices[std::size_t(index)] : "?";
}

}  // namespace

std::string keysText(const ButtonGroupShown& buttons, std::int32_t pauseKey) {
  switch (buttons.group) {
    case ButtonGroup::kMonitor:
      return buttonKeys(kMonitorButtonLabels);
    case ButtonGroup::kStandBy:
      return buttonKeys(kStandByButtonLabels);
    case ButtonGroup::kPause:
      break;
  }
  const bool manual = buttons.pauseButton >= kPauseButtonCount / 2;
  return std::string(manual ? "Trigger to log; " : "Logging; ") +
         std::string(choice(kPauseKeyNames, pauseKey)) + " pauses";
}

std::string newLineQuestion(const NewLineControls& proposal) {
  return "New Line " + wideToUtf8(proposal.newLine) + " from " + wideToUtf8(proposal.startStation) +
         " by " + wideToUtf8(proposal.stationIncrement) + ", " +
         std::string(choice(choices::kLineDirections, proposal.lineDirection)) + " (" +
         std::string(choice(choices::kLineSequences, proposal.lineSequence)) + ")?";
}

std::string newStationLabel(const NewStationControls& controls) {
  return "New Station (start " + wideToUtf8(controls.startStation) + ", last " +
         wideToUtf8(controls.lastStation) + ")";
}

}  // namespace gc40
