#include "viewer/viewer_keys.h"

#include <utility>

#include "ui/key_codes.h"

namespace gc40 {
namespace {

bool isLetter(int keyCode, char upper) {
  return keyCode == upper || keyCode == upper + ('a' - 'A');
}

std::optional<BarMove> barMove(int keyCode) {
  static constexpr std::pair<int, BarMove> kMoves[] = {
      {kKeyLeft, BarMove::kStationBack}, {kKeyRight, BarMove::kStationOn},
      {kKeyPageUp, BarMove::kPageBack},  {kKeyPageDown, BarMove::kPageOn},
      {kKeyHome, BarMove::kFirst},       {kKeyEnd, BarMove::kLast}};
  for (const auto& [moveKey, move] : kMoves)
    if (keyCode == moveKey) return move;
  return std::nullopt;
}

ViewerKeyCommand profileKey(int keyCode) {
  if (isLetter(keyCode, 'L') || keyCode == kKeyBackspace) return {ViewerAction::kBackToList};
  if (const std::optional<BarMove> move = barMove(keyCode)) return {ViewerAction::kMoveBar, *move};
  return {};
}

ViewerKeyCommand lineListKey(int keyCode) {
  if (keyCode == kKeyUp) return {ViewerAction::kPreviousLine};
  if (keyCode == kKeyDown) return {ViewerAction::kNextLine};
  if (keyCode == kKeyReturn || isLetter(keyCode, 'V')) return {ViewerAction::kViewLine};
  return {};
}

}  // namespace

ViewerKeyCommand viewerKeyCommand(ViewerPage page, int keyCode) {
  if (isLetter(keyCode, 'X') || keyCode == kKeyEscape) return {ViewerAction::kLeave};
  if (isLetter(keyCode, 'O')) return {ViewerAction::kOpenFile};
  if (isLetter(keyCode, 'E')) return {ViewerAction::kExport};
  return page == ViewerPage::kProfile ? profileKey(keyCode) : lineListKey(keyCode);
}

}  // namespace gc40
