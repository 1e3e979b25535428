#pragma once
// The Display Options dialog's controls for the four GC40 traces (C/V, C/H,
// I/V, I/H). Thickness and colour change the settings while the dialog is
// open, so that the colour buttons show them; Cancel puts them back.

#include <array>
#include <cstdint>
#include <optional>

#include "settings/profile_setup.h"
#include "settings/settings.h"

namespace gc40 {

inline constexpr int kDialogTraceCount = 4;

struct DisplayOptionsControls {
  std::array<bool, kDialogTraceCount> traceVisible{};       // check boxes 750..753
  std::array<std::int32_t, kDialogTraceCount> thickness{};  // combos 766..769: pixels - 1
  std::int32_t gridScale = 0;                               // combo 775
};

struct DisplayOptionsBackup {
  std::array<std::int32_t, kDialogTraceCount> traceThickness{};
  std::array<Colorref, kDialogTraceCount> traceColour{};
};

struct DisplayOptionsModel {
  DisplayOptionsControls controls;
  DisplayOptionsBackup backup;  // taken on opening, for Cancel
};

DisplayOptionsModel openDisplayOptions(const Settings& settings);

// A thickness combo's new selection, into the settings at once.
void selectTraceThickness(Settings& settings, int trace, std::int32_t selection);

// The colour picker's result for a trace, into the settings at once. The
// picker starts at black, so cancelling it (nullopt) turns the trace black.
void storePickedColour(Settings& settings, int trace, std::optional<Colorref> picked);

// OK: grid scale and visibility (slots 4..7 cleared); the caller saves the
// file and hands the returned traces to the live profile.
ProfileTraces acceptDisplayOptions(Settings& settings, const DisplayOptionsControls& controls);

// Cancel: thickness and colour as they were on opening.
void cancelDisplayOptions(Settings& settings, const DisplayOptionsBackup& backup);

}  // namespace gc40
