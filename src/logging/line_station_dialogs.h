#pragma once
// The logging screen's New Line, New Station, Enter Comment and Enter Scale
// dialogs, modal over `owner` in the layout of the screen's shape. They read
// and write only their controls and the settings: the records, the gap in
// the profile and the station count that follow an OK are the caller's. The
// logging screen closes whichever is open by its caption when the instrument
// is lost, so the captions are exact; closing counts as Cancel.

#include <optional>
#include <string>

#include "platform/logger_context.h"

class QWidget;

namespace gc40 {

// True on OK: the new line, its start and increments are stored (the current
// station is the start station) and the settings file is saved.
bool runNewLineDialog(QWidget* owner, LoggerContext& context);

// True on OK: currentStation is the station typed (0 when none).
bool runNewStationDialog(QWidget* owner, Settings& settings);

// The comment typed, cut to kCommentReadLength characters (possibly empty),
// or nullopt on Cancel. The layout follows the shape of the owner's window.
std::optional<std::u16string> runCommentDialog(QWidget* owner);

// True on OK: both profile scales and their pixel factors are stored and the
// settings file is saved.
bool runProfileScaleDialog(QWidget* owner, LoggerContext& context);

}  // namespace gc40
