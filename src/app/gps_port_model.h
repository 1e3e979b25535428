#pragma once
// The Set GPS Port dialog's drop-down lists: what they show on opening, and
// what OK and "Monitor GPS Output" store.

#include <cstdint>

#include "settings/settings.h"
#include "ui/combo_selection.h"

namespace gc40 {

// Combos 720..725 in this order.
inline constexpr ComboSettings<6> kGpsPortCombos = {&kGpsEnabledSetting,  &kGpsPortSetting,
                                                    &kGpsBaudSetting,     &kGpsParitySetting,
                                                    &kGpsDataBitsSetting, &kGpsStopBitsSetting};

using GpsPortControls = ComboBoxes<kGpsPortCombos.size()>;

// How the dialog ends: whether the settings file is saved, and the dialog's
// result (1 asks the caller to open the Monitor GPS window).
struct GpsPortOutcome {
  bool saveSettings = false;
  std::int32_t result = 0;

  bool operator==(const GpsPortOutcome&) const = default;
};

GpsPortControls openGpsPortSetup(const Settings& settings);

// OK: stores the six selections and saves. With GPS input enabled the result
// is 1, so the operator sees at once whether the receiver talks on that port;
// otherwise 0.
GpsPortOutcome acceptGpsPortSetup(Settings& settings, const GpsPortControls& controls);

// "Monitor GPS Output": stores them too, but leaves the file as it was; the
// next accepted dialog saves them. Result 1.
GpsPortOutcome monitorGpsOutput(Settings& settings, const GpsPortControls& controls);

}  // namespace gc40
