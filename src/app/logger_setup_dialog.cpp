#include "app/logger_setup_dialog.h"

#include "app/logger_setup_model.h"
#include "app/run_setup_dialogs.h"

namespace gc40 {
namespace {

constexpr std::array<ComboRow, kLoggerSetupCombos.size()> kRows = {{{809, "GC40 Type", 810},
                                                                    {803, "GC40 Port", 823},
                                                                    {804, "Units", 824},
                                                                    {805, "Audio", 825},
                                                                    {806, "Pause Key", 826}}};
constexpr std::size_t kPortRow = 1;

}  // namespace

LoggerSetupView::LoggerSetupView(QWidget* owner, LoggerContext& context)
    : SetupDialog(owner, QStringLiteral("Logger Setup"), context.settings.portraitScreen == 1),
      context_(context) {
  combos_ = addComboRows(kRows, openLoggerSetup(context.settings), kPortRow, context.ports);
  arrangeRows();
}

void LoggerSetupView::onOk() {
  LoggerSetupControls controls = openLoggerSetup(context_.settings);
  readCombos(combos_, controls);
  acceptLoggerSetup(context_.settings, controls);
  saveSettings(context_, this);
  done(0);
}

int runLoggerSetup(QWidget* owner, LoggerContext& context) {
  return runModal<LoggerSetupView>(owner, context);
}

}  // namespace gc40
