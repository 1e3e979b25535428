// gc40: the field data logger for the GC40 ground-conductivity meter.

#include <QApplication>
#include <QCoreApplication>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "app/command_line.h"
#include "app/main_commands.h"
#include "app/main_window.h"
#include "app/start_up.h"
#include "base/number_text.h"
#include "headless/headless_run.h"
#include "logging/logging_window.h"
#include "platform/keep_alive.h"
#include "platform/qt_text.h"
#include "platform/remote_control.h"
#include "platform/serial_port_info.h"
#include "platform/simulated_instrument.h"
#include "platform/single_instance.h"
#include "platform/stop_signal_watch.h"
#include "platform/storage.h"

namespace {

// A shutdown, Ctrl-C or a closed terminal: a recording is paused and its file
// closed as Pause and Exit would, without a question; every loop (the main
// one and any dialog's) then ends, and on the way out of main the simulator
// is stopped and the single-instance socket and temporary folders removed.
void endOnStopSignal(gc40::LoggingWindow* logging) {
  if (logging) logging->shutDown();
  QApplication::exit(0);
}

int runLogger(int argc, char** argv) {
  const std::vector<std::string_view> arguments(argv + 1, argv + argc);
  const auto parsed = gc40::parseCommandLine(arguments);
  if (const auto* error = std::get_if<gc40::CommandLineError>(&parsed)) {
    std::cerr << "gc40: " << error->message << "\n";
    return 2;
  }
  const auto& options = std::get<gc40::CommandLine>(parsed);
  if (options.help) {
    std::cout << gc40::usageText();
    return 0;
  }
  if (options.version) {
    std::cout << gc40::versionText();
    return 0;
  }
  const char* home = std::getenv("HOME");
  if (options.listPorts) {
    std::cout << gc40::portListing(options, home, gc40::findSerialAdapters(), std::cerr);
    return 0;
  }
  const gc40::StorageRoot storage{options.storage.value_or(gc40::defaultStorageRoot(home))};
  if (const std::optional<std::string> error = gc40::prepareStorage(storage)) {
    std::cerr << "gc40: " << *error << "\n";
    return 1;
  }
  // Qt gets only its own options: the rest are ours and already taken.
  std::vector<std::string> qtArguments{argv[0]};
  qtArguments.insert(qtArguments.end(), options.qtArguments.begin(), options.qtArguments.end());
  std::vector<char*> qtArgv;
  qtArgv.reserve(qtArguments.size() + 1);
  for (std::string& argument : qtArguments) qtArgv.push_back(argument.data());
  int qtArgc = static_cast<int>(qtArgv.size());
  qtArgv.push_back(nullptr);
  // Without windows no platform plugin is loaded, so no display is needed.
  const std::unique_ptr<QCoreApplication> application =
      options.headless ? std::make_unique<QCoreApplication>(qtArgc, qtArgv.data())
                       : std::make_unique<QApplication>(qtArgc, qtArgv.data());
  // From here on a stop signal ends the program in order: see endOnStopSignal.
  gc40::StopSignalWatch stopSignals;
  if (std::string error; !stopSignals.start(&error)) std::cerr << "gc40: " << error << "\n";
  // Before the settings are read: a second copy must not touch the files.
  gc40::SingleInstance instance(storage.root);
  if (!instance.isFirst()) {
    if (!instance.askFirstToRaise())
      std::cerr << "gc40: another copy uses " << storage.root << "\n";
    return -1;
  }
  auto prepared = gc40::prepareLogger(options, home, std::cerr);
  if (const auto* error = std::get_if<gc40::SetupError>(&prepared)) {
    std::cerr << "gc40: " << error->message << "\n";
    return 1;
  }
  auto& context = std::get<gc40::LoggerContext>(prepared);
  gc40::SimulatedInstrument simulator;
  if (options.simulate) {
    std::string error;
    if (!simulator.start(&error)) {
      std::cerr << "gc40: --simulate: " << error << "\n";
      return 1;
    }
    context.simulatedInstrumentPath = simulator.devicePath();
    context.simulatedGpsPath = simulator.gpsDevicePath();
  }

  gc40::KeepAlive keepAlive;
  keepAlive.start();
  if (options.headless)
    return gc40::runHeadless(context, {.autoStart = options.autoStart}, stopSignals);
  gc40::MainWindow window(context);
  gc40::MainCommands commands(window);
  QObject::connect(&instance, &gc40::SingleInstance::raiseRequested, &window,
                   &gc40::MainWindow::bringToFront);
  auto* logging = window.findChild<gc40::LoggingWindow*>();
  QObject::connect(&stopSignals, &gc40::StopSignalWatch::stopRequested, &window,
                   [logging] { endOnStopSignal(logging); });
  std::optional<gc40::RemoteControl> control;
  if (options.remoteControl) {
    control.emplace();
    QObject::connect(logging, &gc40::LoggingWindow::readingRecorded, &*control,
                     [&control](double station) {
                       if (control->muted("recorded")) return;
                       control->report("recorded " + gc40::qText(gc40::formatRoundTrip(station)));
                     });
    QObject::connect(logging, &gc40::LoggingWindow::writeFailed, &*control,
                     [&control](const QString& path, const QString& reason) {
                       control->report("write-failed " + path + ": " + reason);
                     });
  }
  window.show();
  return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) { return runLogger(argc, argv); }
