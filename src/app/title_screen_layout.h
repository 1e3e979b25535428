#pragma once
// Where the title screen's pieces and the seven menu buttons stand, in the
// logical pixels of the 320 x 240 (landscape) or 240 x 320 (portrait) layout.

#include <array>

#include "app/command_line.h"

namespace gc40 {

struct LayoutPoint {
  int x = 0;
  int y = 0;
};

struct LayoutRect {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
};

inline constexpr int kCornerCircleSize = 6;
inline constexpr int kMainButtonWidth = 120;
inline constexpr int kMainButtonHeight = 26;

struct TitleScreenLayout {
  LayoutRect greyArea;                       // the light-grey field behind the menu
  std::array<LayoutPoint, 4> cornerCircles;  // top-left of each small circle
  LayoutPoint versionText;                   // top-left of "Version 2.11"
  LayoutPoint titleArt;                      // top-left of the title picture
  LayoutPoint bottomArt;                     // top-left of the bottom picture
  LayoutRect sideArt;                        // the strip left of the grey field
};

TitleScreenLayout titleScreenLayout(Orientation orientation);

// Button `index` (0..6) of the main menu.
LayoutRect mainButtonRect(Orientation orientation, int index);

}  // namespace gc40
