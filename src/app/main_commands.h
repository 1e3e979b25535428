#pragma once
// Carries out the main menu's commands other than Exit: a Monitor/Log run
// start, the four setup dialogs (Set GPS Port may open the Monitor GPS
// screen) and the View Files screen, with the export it asks for.

#include <QObject>

#include "app/main_menu.h"

namespace gc40 {

class MainWindow;
struct LoggerContext;
class LoggingWindow;
class MonitorGpsWindow;
class ViewFilesWindow;

class MainCommands : public QObject {
  Q_OBJECT

 public:
  // Listens to the window's commands; lives as long as the window.
  explicit MainCommands(MainWindow& window);

  void carryOut(MainCommand command);

 private:
  void startMonitorLog();
  void openMonitorGps();
  static void mapSimulatedPorts(LoggerContext& context);

  MainWindow& window_;
  LoggingWindow* logging_ = nullptr;
  MonitorGpsWindow* monitorGps_ = nullptr;
  ViewFilesWindow* viewFiles_ = nullptr;
};

}  // namespace gc40
