#include "app/display_options_model.h"

#include <algorithm>

#include "ui/combo_selection.h"

namespace gc40 {

DisplayOptionsModel openDisplayOptions(const Settings& settings) {
  DisplayOptionsModel dialog;
  for (std::size_t i = 0; i < kDialogTraceCount; ++i) {
    dialog.backup.traceThickness[i] = settings.traceThickness[i];
    dialog.backup.traceColour[i] = settings.traceColour[i];
    dialog.controls.traceVisible[i] = settings.traceVisible[i] == 1;
    dialog.controls.thickness[i] = effectiveTraceThickness(settings.traceThickness[i]) - 1;
  }
  dialog.controls.gridScale = selectionOf(settings, kGridScaleSetting);
  return dialog;
}

void selectTraceThickness(Settings& settings, int trace, std::int32_t selection) {
  settings.traceThickness[static_cast<std::size_t>(trace)] = selection + 1;
}

void storePickedColour(Settings& settings, int trace, std::optional<Colorref> picked) {
  settings.traceColour[static_cast<std::size_t>(trace)] = picked.value_or(0x000000);
}

ProfileTraces acceptDisplayOptions(Settings& settings, const DisplayOptionsControls& controls) {
  settings.gridScale = controls.gridScale;
  std::fill(settings.traceVisible.begin(), settings.traceVisible.end(), 0);
  std::copy(controls.traceVisible.begin(), controls.traceVisible.end(),
            settings.traceVisible.begin());
  return setupProfileTraces(settings);
}

void cancelDisplayOptions(Settings& settings, const DisplayOptionsBackup& backup) {
  std::copy(backup.traceThickness.begin(), backup.traceThickness.end(),
            settings.traceThickness.begin());
  std::copy(backup.traceColour.begin(), backup.traceColour.end(), settings.traceColour.begin());
}

}  // namespace gc40
