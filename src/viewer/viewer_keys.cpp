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

std::optional<MapMove> mapMove(int keyCode) {
  static constexpr std::pair<int, MapMove> kMoves[] = {
      {kKeyLeft, MapMove::kLeft}, {kKeyRight, MapMove::kRight}, {kKeyUp, MapMove::kUp},
      {kKeyDown, MapMove::kDown}, {'+', MapMove::kZoomIn},      {'=', MapMove::kZoomIn},
      {'-', MapMove::kZoomOut},   {kKeyHome, MapMove::kFit}};
  for (const auto& [moveKey, move] : kMoves)
    if (keyCode == moveKey) return move;
  return std::nullopt;
}

bool backToList(int keyCode) { return isLetter(keyCode, 'L') || keyCode == kKeyBackspace; }

ViewerKeyCommand profileKey(int keyCode) {
  if (backToList(keyCode)) return {ViewerAction::kBackToList};
  if (isLetter(keyCode, 'M')) return {ViewerAction::kShowMap};
  if (isLetter(keyCode, 'P')) return {ViewerAction::kSavePicture};
  if (const std::optional<BarMove> move = barMove(keyCode)) return {ViewerAction::kMoveBar, *move};
  return {};
}

ViewerKeyCommand lineListKey(int keyCode) {
  if (keyCode == kKeyUp) return {ViewerAction::kPreviousLine};
  if (keyCode == kKeyDown) return {ViewerAction::kNextLine};
  if (keyCode == kKeyReturn || isLetter(keyCode, 'V')) return {ViewerAction::kViewLine};
  if (isLetter(keyCode, 'M')) return {ViewerAction::kShowMap};
  return {};
}

ViewerKeyCommand mapKey(int keyCode) {
  if (backToList(keyCode)) return {ViewerAction::kBackToList};
  if (isLetter(keyCode, 'M')) return {ViewerAction::kLeaveMap};
  if (isLetter(keyCode, 'P')) return {ViewerAction::kSavePicture};
  if (keyCode >= '1' && keyCode <= '4')
    return {.action = ViewerAction::kChooseValue, .value = static_cast<std::size_t>(keyCode - '1')};
  if (const std::optional<MapMove> move = mapMove(keyCode))
    return {.action = ViewerAction::kMoveMap, .mapMove = *move};
  return {};
}

}  // namespace

ViewerKeyCommand viewerKeyCommand(ViewerPage page, int keyCode) {
  if (isLetter(keyCode, 'X') || keyCode == kKeyEscape) return {ViewerAction::kLeave};
  if (isLetter(keyCode, 'O')) return {ViewerAction::kOpenFile};
  if (isLetter(keyCode, 'E')) return {ViewerAction::kExport};
  switch (page) {
    case ViewerPage::kLineList:
      return lineListKey(keyCode);
    case ViewerPage::kProfile:
      return profileKey(keyCode);
    case ViewerPage::kMap:
      return mapKey(keyCode);
  }
  return {};
}

}  // namespace gc40
