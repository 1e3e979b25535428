#include "app/main_commands.h"

#include <QMessageBox>

#include "app/export_dialog.h"
#include "app/main_window.h"
#include "app/run_setup_dialogs.h"
#include "app/run_start.h"
#include "gps/monitor_gps_window.h"
#include "instrument/serial_ports.h"
#include "logging/logging_window.h"
#include "settings/profile_setup.h"
#include "viewer/view_files_window.h"

namespace gc40 {

MainCommands::MainCommands(MainWindow& window)
    : QObject(&window),
      window_(window),
      logging_(new LoggingWindow(window.context(), &window, window.scale())),
      monitorGps_(new MonitorGpsWindow(window.context().settings, &window, window.scale())),
      viewFiles_(new ViewFilesWindow(window.context(), &window, window.scale())) {
  connect(&window, &MainWindow::commandChosen, this, &MainCommands::carryOut);
  // A run that ended (normally or for a lost connection) gives the menu its keys back.
  connect(logging_, &LoggingWindow::runEnded, this, [this] {
    window_.setKeysActive(false);
    window_.setFocus();
    window_.update();
  });
  const auto backToMenu = [this] {
    window_.setFocus();
    window_.update();
  };
  connect(logging_, &LoggingWindow::displayOptionsRequested, this,
          [this] { runDisplayOptions(logging_, window_.context()); });
  connect(monitorGps_, &MonitorGpsWindow::closed, this, backToMenu);
  connect(viewFiles_, &ViewFilesWindow::closed, this, backToMenu);
  connect(viewFiles_, &ViewFilesWindow::exportRequested, this, [this](const QString& dataFile) {
    runExportDialog(viewFiles_, window_.context(), dataFile.toStdString());
  });
}

void MainCommands::carryOut(MainCommand command) {
  LoggerContext& context = window_.context();
  switch (command) {
    case MainCommand::kMonitorLog:
      startMonitorLog();
      break;
    case MainCommand::kSurveySetup:
      runSurveySetup(&window_, context);
      break;
    case MainCommand::kLoggerSetup:
      runLoggerSetup(&window_, context);
      window_.setFocus();
      break;
    case MainCommand::kSetGpsPort:
      if (runGpsPortSetup(&window_, context) == 1) openMonitorGps();
      break;
    case MainCommand::kDisplayOptions:
      runDisplayOptions(&window_, context);
      break;
    case MainCommand::kViewFiles:
      viewFiles_->showOverMainWindow();
      return;
    case MainCommand::kExit:  // the window closes itself
      return;
  }
  window_.update();
}

// In a --simulate run the ports the settings name lead to the simulator.
void MainCommands::mapSimulatedPorts(LoggerContext& context) {
  if (!context.simulatedInstrumentPath.empty())
    mapSimulatedInstrument(context.simulatedInstrumentPath, context.settings, context.ports);
  if (!context.simulatedGpsPath.empty())
    mapSimulatedGps(context.simulatedGpsPath, context.settings, context.ports);
}

// The run start up to the instrument port; the logging screen takes it from
// there.
void MainCommands::startMonitorLog() {
  LoggerContext& context = window_.context();
  context.profileTraces = setupProfileTraces(context.settings);
  if (portsConflict(context.settings)) {
    QMessageBox box(QMessageBox::NoIcon, QString::fromLatin1(kSerialPortCaption),
                    QString::fromLatin1(kSamePortAssignedText), QMessageBox::Ok, &window_);
    box.exec();
    return;
  }
  // Keys stay dead after a failed open while clicks still work, until a run
  // ends normally.
  window_.setKeysActive(true);
  mapSimulatedPorts(context);
  SerialPortOpening opening = openInstrumentPort(context.settings, context.ports);
  if (!opening.port) {
    showSerialPortFailure(&window_, kCannotOpenInstrumentPort, opening.failure);
    return;
  }
  logging_->startRun(std::move(opening.port));
}

// The screen is shown even without GPS input or with a port that did not
// open: it then lists nothing.
void MainCommands::openMonitorGps() {
  LoggerContext& context = window_.context();
  if (context.settings.gpsEnabled == 1) {
    mapSimulatedPorts(context);
    SerialPortOpening opening = openGpsPort(context.settings, context.ports);
    if (opening.port)
      monitorGps_->startReader(std::move(opening.port));
    else
      showSerialPortFailure(&window_, kCannotOpenGpsPort, opening.failure);
  }
  monitorGps_->showOverMainWindow();
}

}  // namespace gc40
