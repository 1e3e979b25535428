#pragma once
// The View Files screen's keys: what each key means on the line list and on
// a line's profile. Keys are the plain codes of ui/key_codes.h (letters in
// either case).

#include "viewer/line_view.h"

namespace gc40 {

enum class ViewerPage { kLineList, kProfile };

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
};

struct ViewerKeyCommand {
  ViewerAction action = ViewerAction::kNone;
  BarMove move = BarMove::kFirst;  // for kMoveBar
};

ViewerKeyCommand viewerKeyCommand(ViewerPage page, int keyCode);

}  // namespace gc40
