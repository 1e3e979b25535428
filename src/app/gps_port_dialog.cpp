#include "app/gps_port_dialog.h"

#include <QPushButton>

#include "app/gps_port_model.h"
#include "app/run_setup_dialogs.h"

namespace gc40 {
namespace {

constexpr std::array<ComboRow, kGpsPortCombos.size()> kRows = {{{700, "GPS Input", 720},
                                                                {701, "Serial Port", 721},
                                                                {702, "Baud Rate", 722},
                                                                {703, "Parity", 723},
                                                                {704, "Data Bits", 724},
                                                                {705, "Stop Bits", 725}}};
constexpr std::size_t kPortRow = 1;
constexpr int kMonitorButtonId = 729;

}  // namespace

GpsPortView::GpsPortView(QWidget* owner, LoggerContext& context)
    : SetupDialog(owner, QStringLiteral("Set GPS Port"), context.settings.portraitScreen == 1),
      context_(context) {
  combos_ = addComboRows(kRows, openGpsPortSetup(context.settings), kPortRow, context.ports);
  QPushButton* monitor = makeButton(kMonitorButtonId, QStringLiteral("Monitor GPS Output"));
  connect(monitor, &QPushButton::clicked, this, [this] { finish(true); });
  addWide(monitor);
  arrangeRows();
}

void GpsPortView::onOk() { finish(false); }

void GpsPortView::finish(bool monitor) {
  GpsPortControls controls = openGpsPortSetup(context_.settings);
  readCombos(combos_, controls);
  const GpsPortOutcome outcome = monitor ? monitorGpsOutput(context_.settings, controls)
                                         : acceptGpsPortSetup(context_.settings, controls);
  if (outcome.saveSettings) saveSettings(context_, this);
  done(outcome.result);
}

int runGpsPortSetup(QWidget* owner, LoggerContext& context) {
  return runModal<GpsPortView>(owner, context);
}

}  // namespace gc40
