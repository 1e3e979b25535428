#pragma once
// The View Files screen's keys: what each key means on the line list, on a
// line's profile and on the map. Keys are the plain codes of ui/key_codes.h
// (letters in either case).

#include <cstddef>

#include "map/map_view.h"
#include "viewer/line_view.h"

namespace gc40 {

enum class ViewerPage { kLineList, kProfile, kMap };

enum class ViewerAction {
  kNone,  // not the screen's: handed on
  kLeave,
  kOpenFile,
  kExport,  // the open file, through the export dialog
  kBackToList,
  kMoveBar,
  kPreviousLine,
  kNextLine,
  kViewLine,
  kShowMap,      // M on the list or the profile
  kLeaveMap,     // M again: back to the page the map came from
  kSavePicture,  // P on the profile or the map
  kChooseValue,  // 1..4 on the map
  kMoveMap,
};

struct ViewerKeyCommand {
  ViewerAction action = ViewerAction::kNone;
  BarMove move = BarMove::kFirst;   // for kMoveBar
  std::size_t value = 0;            // for kChooseValue, in trace order
  MapMove mapMove = MapMove::kFit;  // for kMoveMap
};

ViewerKeyCommand viewerKeyCommand(ViewerPage page, int keyCode);

}  // namespace gc40
