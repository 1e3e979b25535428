#pragma once
// The Enter Scale dialog: the limits of the live profile's conductivity and
// inphase scales, shown on opening and corrected (never refused) on OK.

#include <string>

#include "settings/settings.h"

namespace gc40 {

// A limit typed beyond this is taken as this.
inline constexpr float kScaleLimit = 9000.0f;
// A maximum not above its minimum becomes the minimum plus this.
inline constexpr float kScaleFallbackSpan = 100.0f;

struct ProfileScaleControls {
  std::u16string conductivityMin;  // 833
  std::u16string conductivityMax;  // 834
  std::u16string inphaseMin;       // 838
  std::u16string inphaseMax;       // 839
};

ProfileScaleControls openProfileScale(const Settings& settings);

// Stores both scales and their pixels-per-unit factors; the caller saves the
// settings file and restarts the profile.
void acceptProfileScale(Settings& settings, const ProfileScaleControls& controls);

}  // namespace gc40
