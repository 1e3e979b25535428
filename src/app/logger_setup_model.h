#pragma once
// The Logger Setup dialog's drop-down lists: what they show on opening and
// what OK stores.

#include "settings/settings.h"
#include "ui/combo_selection.h"

namespace gc40 {

// Combos 810, 823, 824, 825, 826 in this order.
inline constexpr ComboSettings<5> kLoggerSetupCombos = {
    &kInstrumentVariantSetting, &kInstrumentPortSetting, &kDistanceUnitsSetting, &kAudioSetting,
    &kPauseKeySetting};
inline constexpr std::size_t kPauseKeyCombo = 4;

using LoggerSetupControls = ComboBoxes<kLoggerSetupCombos.size()>;

// A portrait screen offers "any key" alone, so a pause key chosen in
// landscape selects nothing there.
LoggerSetupControls openLoggerSetup(const Settings& settings);

// Stores the selections as they stand, kNoSelection included. The caller
// saves the settings file.
void acceptLoggerSetup(Settings& settings, const LoggerSetupControls& controls);

}  // namespace gc40
