#include "app/logger_setup_model.h"

namespace gc40 {

LoggerSetupControls openLoggerSetup(const Settings& settings) {
  LoggerSetupControls controls = openComboBoxes(settings, kLoggerSetupCombos);
  ComboBox& pauseKey = controls[kPauseKeyCombo];
  if (settings.portraitScreen == 1) pauseKey.items = pauseKey.items.first(1);
  pauseKey.selection = selectionOf(settings, kPauseKeySetting, pauseKey.items.size());
  return controls;
}

void acceptLoggerSetup(Settings& settings, const LoggerSetupControls& controls) {
  storeComboBoxes(settings, kLoggerSetupCombos, controls);
}

}  // namespace gc40
