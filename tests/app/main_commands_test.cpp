// Monitor/Log as far as the instrument port, the setup dialogs, the Monitor
// GPS and View Files screens. A run that starts is the logging window's test.

#include "app/main_commands.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFileDialog>
#include <QTest>

#include "app/main_window.h"
#include "support/modal_script.h"
#include "support/prepared_logger.h"
#include "support/test_application.h"
#include "viewer/view_files_window.h"

namespace gc40 {
namespace {

using Box = std::pair<QString, QString>;  // caption, text

class MainCommandsTest : public ::testing::Test {
 protected:
  MainCommandsTest() { window.show(); }

  Box monitorLog() {
    QString caption, text;
    testing::ModalScript script({testing::acknowledgeMessageBox(&caption, &text)}, 3000);
    QTest::keyClick(&window, Qt::Key_L);
    return {caption, text};
  }

  bool keysAct() {
    const int before = window.focusedButton();
    QTest::keyClick(&window, Qt::Key_Tab);
    return window.focusedButton() != before;
  }

  testing::TestApplication<QApplication> application;
  testing::TempFolder folder;
  LoggerContext context = testing::preparedLogger(folder, Orientation::kLandscape, 1);
  MainWindow window{context};
  MainCommands commands{window};
};

TEST_F(MainCommandsTest, MonitorLogChecksThePortsAndAFailedOpenLeavesOnlyClicks) {
  context.settings.gpsEnabled = 1;
  context.settings.gpsPort = 0;
  EXPECT_EQ(monitorLog(), Box("Serial Port", "Same Port Assigned"));
  EXPECT_TRUE(keysAct());

  context.settings.gpsEnabled = 0;
  context.ports.paths[0] = (folder.path() / "no-cable").string();
  EXPECT_EQ(monitorLog(), Box("Serial Port", "Cannot open GC40 port"));
  EXPECT_FALSE(keysAct());  // dead keys until a run ends normally
  testing::ModalScript cancelOpen({[](QWidget* modal) {
    auto* dialog = qobject_cast<QFileDialog*>(modal);
    if (dialog) dialog->reject();
    return dialog != nullptr;
  }});
  window.findChild<QPushButton*>("425")->click();
  auto* viewFiles = window.findChild<ViewFilesWindow*>("ViewFilesWnd");
  ASSERT_TRUE(viewFiles && viewFiles->isVisible());
  EXPECT_EQ(viewFiles->geometry(), window.rect());
  QTRY_VERIFY(!viewFiles->isVisible());  // no file chosen: back to the menu
  EXPECT_TRUE(cancelOpen.finished());
}

TEST_F(MainCommandsTest, LettersOpenTheirSetupDialogs) {
  for (const auto& [key, title] : {std::pair{Qt::Key_S, "Survey Setup"},
                                   {Qt::Key_O, "Logger Setup"},
                                   {Qt::Key_G, "Set GPS Port"},
                                   {Qt::Key_D, "Display Options"}}) {
    QString shown;
    testing::ModalScript script({[&shown](QWidget* modal) {
      shown = modal->windowTitle();
      static_cast<QDialog*>(modal)->reject();
      return true;
    }});
    QTest::keyClick(&window, key);
    EXPECT_EQ(shown, title);
  }
}

// The screen opens whether or not its port does; x gives the menu its keys back.
TEST_F(MainCommandsTest, MonitorGpsOutputOpensTheMonitorGpsScreen) {
  context.settings.gpsEnabled = 1;
  context.ports.paths[std::size_t(context.settings.gpsPort)] = (folder.path() / "no-gps").string();
  QString caption, text;
  testing::ModalScript script({[](QWidget* modal) {
                                 auto* monitor = modal->findChild<QPushButton*>("729");
                                 if (monitor) monitor->click();
                                 return monitor != nullptr;
                               },
                               testing::acknowledgeMessageBox(&caption, &text)},
                              5000);
  QTest::keyClick(&window, Qt::Key_G);
  EXPECT_EQ(Box(caption, text), Box("Serial Port", "Cannot open GPS port"));
  auto* monitorGps = window.findChild<QWidget*>("MonitorGPSWnd");
  ASSERT_TRUE(monitorGps && monitorGps->isVisible());
  EXPECT_EQ(monitorGps->windowTitle(), "Monitor GPS");
  QTest::keyClick(monitorGps, Qt::Key_X);
  EXPECT_FALSE(monitorGps->isVisible());
  EXPECT_EQ(window.focusWidget(), &window);  // the menu's keys, when the window is active
}

}  // namespace
}  // namespace gc40
