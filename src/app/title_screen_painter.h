#pragma once
// Draws the main window's title screen: the grey field behind the menu, its
// frame with the corner circles, the version line and the program's own
// side, title and bottom pictures.

#include <QPainter>

#include "app/command_line.h"

namespace gc40 {

// `painter` works in logical layout pixels (the caller scales it).
void paintTitleScreen(QPainter& painter, Orientation orientation);

}  // namespace gc40
