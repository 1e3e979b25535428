#include "app/title_screen_layout.h"

namespace gc40 {

TitleScreenLayout titleScreenLayout(Orientation orientation) {
  if (orientation == Orientation::kPortrait) {
    return {.greyArea = {49, 0, 191, 320},
            .cornerCircles = {{{87, 72}, {227, 72}, {87, 290}, {227, 290}}},
            .versionText = {105, 56},
            .titleArt = {65, 10},
            .bottomArt = {65, 300},
            .sideArt = {0, 0, 49, 320}};
  }
  // Landscape places two circles at (177, 7) and (43, 227); the other two
  // close the frame at the right-hand corners.
  return {.greyArea = {37, 0, 283, 240},
          .cornerCircles = {{{177, 7}, {307, 7}, {43, 227}, {307, 227}}},
          .versionText = {72, 120},
          .titleArt = {48, 26},
          .bottomArt = {48, 185},
          .sideArt = {0, 0, 37, 240}};
}

LayoutRect mainButtonRect(Orientation orientation, int index) {
  const bool portrait = orientation == Orientation::kPortrait;
  return {portrait ? 100 : 180, (portrait ? 82 : 18) + 30 * index, kMainButtonWidth,
          kMainButtonHeight};
}

}  // namespace gc40
