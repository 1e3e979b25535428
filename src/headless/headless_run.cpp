#include "headless/headless_run.h"

#include <QCoreApplication>
#include <string>

#include "headless/terminal.h"
#include "headless/terminal_view.h"
#include "instrument/serial_ports.h"
#include "logging/run_start.h"
#include "settings/profile_setup.h"

namespace gc40 {

int runHeadless(LoggerContext& context, const HeadlessOptions& options,
                StopSignalWatch& stopSignals) {
  Terminal terminal;
  context.profileTraces = setupProfileTraces(context.settings);
  if (portsConflict(context.settings)) {
    terminal.showEvent(std::string(kSerialPortCaption) + ": " + kSamePortAssignedText);
    return 1;
  }
  mapSimulatedPorts(context);
  SerialPortOpening opening = openInstrumentPort(context.settings, context.ports);
  if (!opening.port) {
    terminal.showEvent(std::string(kCannotOpenInstrumentPort) + ": " +
                       opening.failure.toStdString());
    return 1;
  }
  TerminalView view(context, terminal);
  std::optional<int> exitCode;
  QObject::connect(&view, &TerminalView::runEnded, &view, [&exitCode](int code) {
    exitCode = code;
    QCoreApplication::exit(code);
  });
  QObject::connect(&stopSignals, &StopSignalWatch::stopRequested, &view, [&view, &exitCode] {
    view.shutDown();
    exitCode = kRunEndedByOperator;
    QCoreApplication::exit(*exitCode);
  });
  view.startRun(std::move(opening.port), options.autoStart);
  if (!exitCode) QCoreApplication::exec();
  return exitCode.value_or(kRunEndedByOperator);
}

}  // namespace gc40
