#pragma once
// The shape of the main window: the screens are laid out for a 320 x 240
// field screen (or 240 x 320 held upright) and are shown full screen on a
// screen no larger, elsewhere as a fixed window scaled by a whole factor.

#include <optional>

#include "platform/logger_context.h"

namespace gc40 {

inline constexpr int kMaxWindowScale = 8;

struct LayoutSize {
  int width = 0;
  int height = 0;
};

// 320 x 240 in landscape, 240 x 320 in portrait.
LayoutSize layoutSize(Orientation orientation);
// The same for the settings' portraitScreen flag (1: portrait).
LayoutSize layoutSize(bool portrait);

// 0 means full screen: the screen is no larger than the layout. Otherwise the
// requested factor, or the largest whole factor that keeps the window within
// nine tenths of the available screen, at least 1.
int chooseWindowScale(int screenWidth, int screenHeight, LayoutSize layout,
                      std::optional<int> requested);

}  // namespace gc40
