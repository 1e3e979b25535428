#include "ui/window_geometry.h"

#include <algorithm>

namespace gc40 {

LayoutSize layoutSize(bool portrait) {
  return layoutSize(portrait ? Orientation::kPortrait : Orientation::kLandscape);
}

LayoutSize layoutSize(Orientation orientation) {
  return orientation == Orientation::kPortrait ? LayoutSize{240, 320} : LayoutSize{320, 240};
}

int chooseWindowScale(int screenWidth, int screenHeight, LayoutSize layout,
                      std::optional<int> requested) {
  if (requested) return *requested;
  if (screenWidth <= layout.width || screenHeight <= layout.height) return 0;
  const int byWidth = screenWidth * 9 / 10 / layout.width;
  const int byHeight = screenHeight * 9 / 10 / layout.height;
  return std::clamp(std::min(byWidth, byHeight), 1, kMaxWindowScale);
}

}  // namespace gc40
