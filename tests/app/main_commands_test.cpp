// Monitor/Log as far as the instrument port, and the View Files screen.

#include "app/main_commands.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <QApplication>
#include <QTest>

#include "app/main_window.h"
#include "app/view_files_screen.h"
#include "support/modal_script.h"
#include "support/prepared_logger.h"
#include "support/test_application.h"

namespace gc40 {
namespace {

using Box = std::pair<QString, QString>;  // caption, text; empty when none showed

class MainCommandsTest : public ::testing::Test {
 protected:
  MainCommandsTest() {
    context = testing::preparedLogger(folder, Orientation::kLandscape, 1);
    window.emplace(context);
    commands = new MainCommands(*window);
    window->show();
  }

  // Runs Monitor/Log by its key; returns the caption and text of the box it
  // showed, if any.
  Box monitorLog() {
    QString caption, text;
    testing::ModalScript script({testing::acknowledgeMessageBox(&caption, &text)}, 3000);
    QTest::keyClick(&*window, Qt::Key_L);
    return {caption, text};
  }

  bool keysAct() {
    const int before = window->focusedButton();
    QTest::keyClick(&*window, Qt::Key_Tab);
    const bool moved = window->focusedButton() != before;
    if (moved) QTest::keyClick(&*window, Qt::Key_Left);
    return moved;
  }

  testing::TestApplication<QApplication> application;
  testing::TempFolder folder;
  LoggerContext context;
  std::optional<MainWindow> window;
  MainCommands* commands = nullptr;
};

TEST_F(MainCommandsTest, MonitorLogChecksThePortsBeforeItStarts) {
  // A pseudo-terminal stands in for the meter's cable.
  const int master = posix_openpt(O_RDWR | O_NOCTTY);
  ASSERT_TRUE(master >= 0 && grantpt(master) == 0 && unlockpt(master) == 0);
  context.ports.paths[0] = ptsname(master);
  context.settings.gpsEnabled = 1;
  context.settings.gpsPort = 0;
  EXPECT_EQ(monitorLog(), Box("Serial Port", "Same Port Assigned"));
  EXPECT_TRUE(keysAct());

  context.settings.gpsEnabled = 0;  // the same number no longer matters
  EXPECT_EQ(monitorLog(), Box());
  auto* logging = window->findChild<QWidget*>("LoggingWnd");
  ASSERT_TRUE(logging && logging->isVisible());
  EXPECT_FALSE(keysAct());  // the run holds the keys
  QTest::keyClick(logging, Qt::Key_X);  // leaves Monitor without a question
  EXPECT_FALSE(logging->isVisible());
  EXPECT_TRUE(keysAct());

  context.ports.paths[0] = (folder.path() / "no-cable").string();
  EXPECT_EQ(monitorLog(), Box("Serial Port", "Cannot open GC40 port"));
  EXPECT_FALSE(keysAct());  // dead keys until a run ends normally
  close(master);
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
    QTest::keyClick(&*window, key);
    EXPECT_EQ(shown, title);
  }
}

TEST_F(MainCommandsTest, ViewFilesCoversTheMenuUntilEscape) {
  QTest::keyClick(&*window, Qt::Key_V);
  auto* screen = window->findChild<ViewFilesScreen*>("ViewFilesWnd");
  ASSERT_TRUE(screen);
  EXPECT_TRUE(screen->isVisible());
  EXPECT_EQ(screen->geometry(), window->rect());
  QTest::keyClick(screen, Qt::Key_Escape);
  EXPECT_FALSE(screen->isVisible());
}

}  // namespace
}  // namespace gc40
