// The main window and the commands it hands on: Monitor/Log as far as the
// instrument port, the Monitor GPS and View Files screens. A run that starts
// is the logging window's test; the dialogs have their own.

#include "app/main_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFileDialog>
#include <QImage>
#include <QTest>
#include <QTimer>
#include <string_view>

#include "app/main_commands.h"
#include "app/title_screen_layout.h"
#include "support/dialog_checks.h"
#include "support/test_application.h"
#include "viewer/view_files_window.h"

namespace gc40 {
namespace {

using Box = std::pair<QString, QString>;  // caption, text
constexpr std::uint32_t kTwentyDaysMs = 1'728'000'000;

// Letters in both cases, Return and clicks by id name commands without moving
// the ring; a key that means nothing names none, not even the one before it.
// The ring's moves and dead keys are the window's test.
TEST(MainMenu, KeysAndClicksNameCommands) {
  const std::string_view keys = "LlSsOoGgDdVvXxEe";
  for (std::size_t i = 0; i < keys.size(); ++i) {
    MainMenuState state{.focusedButton = 3};
    EXPECT_EQ(mainMenuKey(state, keys[i]).command, MainCommand(std::min<int>(i / 2, 6))) << keys[i];
    EXPECT_EQ(state.focusedButton, 3);
  }
  for (int button = 0; button < kMainButtonCount; ++button) {
    MainMenuState state{.focusedButton = button};
    EXPECT_EQ(mainMenuKey(state, kKeyReturn).command, MainCommand(button));
    EXPECT_EQ(commandForButtonId(420 + button), MainCommand(button));
  }
  for (const int id : {0, 419, 427}) EXPECT_EQ(commandForButtonId(id), std::nullopt);
  MainMenuState state;
  ASSERT_EQ(mainMenuKey(state, 'x').command, MainCommand::kExit);
  for (const int key : std::initializer_list<int>{'q', 'Q', 'a', '0', 27, 0, -1, 420, 'L' + 256})
    EXPECT_EQ(mainMenuKey(state, key).command, std::nullopt) << key;
}

// Also leaves main_window_<orientation>.png in the tests' build folder.
TEST(MainWindow, ShapeButtonsAndTitleScreenInBothOrientations) {
  testing::TestApplication<QApplication> application;
  testing::TempFolder folder;
  const char* labels[] = {"Monitor/&Log",     "&Survey Setup", "L&ogger Setup", "Set &GPS Port",
                          "&Display Options", "&View Files",   "E&xit"};
  const QColor grey(0xC0, 0xC0, 0xC0);
  // With no scale asked for, landscape on the 800 x 600 screen doubles.
  for (const auto& [orientation, asked, scale, size, name, greyPoint] :
       {std::tuple{Orientation::kLandscape, std::optional<int>(), 2, QSize(640, 480), "landscape",
                   QPoint(100, 100)},
        {Orientation::kPortrait, std::optional<int>(1), 1, QSize(240, 320), "portrait",
         QPoint(60, 200)}}) {
    auto context = testing::preparedLogger(folder, orientation, asked);
    MainWindow window(context);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    EXPECT_EQ(std::tuple(window.windowTitle(), window.size(), context.settings.portraitScreen),
              std::tuple("GC40", size, orientation == Orientation::kPortrait ? 1 : 0));
    for (int i = 0; i < 7; ++i) {
      QPushButton* button = testing::control<QPushButton>(&window, 420 + i);
      ASSERT_NE(button, nullptr) << i;
      const LayoutRect place = mainButtonRect(orientation, i);
      EXPECT_EQ(
          std::tuple(button->text(), button->geometry(), button->isDefault()),
          std::tuple(labels[i], QRect(place.x * scale, place.y * scale, 120 * scale, 26 * scale),
                     i == 0));
    }
    const QImage image = window.grab().toImage();
    EXPECT_TRUE(image.save(QStringLiteral(GC40_TEST_OUTPUT_DIR "/main_window_%1.png").arg(name)));
    EXPECT_EQ(image.pixelColor(greyPoint * scale), grey) << name;
    EXPECT_NE(image.pixelColor(QPoint(2, 2) * scale), grey) << name;
  }
}

class MainWindowTest : public ::testing::Test {
 protected:
  MainWindowTest() { window.show(); }

  Box monitorLog() {
    Box box;
    testing::ModalScript script({testing::acknowledgeMessageBox(&box.first, &box.second)}, 3000);
    QTest::keyClick(&window, Qt::Key_L);
    return box;
  }

  testing::TestApplication<QApplication> application;
  testing::TempFolder folder;
  LoggerContext context = testing::preparedLogger(folder, Orientation::kLandscape, 1);
  MainWindow window{context};
  MainCommands commands{window};
};

// Tab, Right and Down move the ring on, Left and Up back, wrapping.
TEST_F(MainWindowTest, KeysMoveTheRingAndExitAndQDoesNothing) {
  int chosen = 0;
  QObject::connect(&window, &MainWindow::commandChosen, [&] { ++chosen; });
  const auto ring = [&] {  // the button drawn as the default one
    std::string marks;
    for (int id = 420; id <= 426; ++id)
      marks += testing::control<QPushButton>(&window, id)->isDefault() ? '*' : '.';
    return marks;
  };
  QTest::keyClick(&window, 'q');
  for (int i = 0; i < 6; ++i) QTest::keyClick(&window, Qt::Key_Tab);
  EXPECT_EQ(ring(), "......*");
  using Move = std::pair<Qt::Key, const char*>;
  for (const auto& [key, marks] :
       {Move{Qt::Key_Tab, "*......"}, Move{Qt::Key_Left, "......*"}, Move{Qt::Key_Right, "*......"},
        Move{Qt::Key_Down, ".*....."}, Move{Qt::Key_Up, "*......"}, Move{Qt::Key_Up, "......*"}}) {
    QTest::keyClick(&window, key);
    EXPECT_EQ(ring(), marks) << key;
  }
  EXPECT_EQ(std::pair(chosen, window.isVisible()), std::pair(0, true));
  for (const char key : {'x', 'E'}) {
    MainWindow exiting(context);
    exiting.show();
    QTest::keyClick(&exiting, key);
    EXPECT_FALSE(exiting.isVisible()) << key;
  }
}

// Exactly 20 days starts; one millisecond more shows the box at the first
// paint and ends the program with 0.
TEST_F(MainWindowTest, UptimeGuardStopsAtFirstPaint) {
  Box box;
  {  // a box here would be wrong; answered so that the test goes on
    MainWindow guarded(context, {.tickCount = [] { return kTwentyDaysMs; },
                                 .endProgram = [](int) { ADD_FAILURE() << "ended"; }});
    testing::ModalScript unexpected({testing::acknowledgeMessageBox(&box.first, &box.second)});
    guarded.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&guarded));
    QTest::qWait(50);
  }
  EXPECT_EQ(box.first, "");
  MainWindow late(context, {.tickCount = [] { return kTwentyDaysMs + 1; },
                            .endProgram = MainWindow::machineServices().endProgram});
  testing::ModalScript atStart({testing::acknowledgeMessageBox(&box.first, &box.second)});
  late.show();
  QTimer::singleShot(10000, [] { QCoreApplication::exit(1); });  // rather than hang
  EXPECT_EQ(application.get().exec(), 0);
  EXPECT_TRUE(atStart.finished());
  EXPECT_EQ(box.first, "PROGRAM STOP");
  EXPECT_EQ(box.second.split('\n').size(), 5) << box.second.toStdString();
  EXPECT_TRUE(box.second.startsWith("Windows has run for more than 20 days.\n"));
  EXPECT_FALSE(late.isVisible());
}

// Keys go dead after a failed instrument open, until a run ends normally;
// clicks still work (View Files, closed by Escape).
TEST_F(MainWindowTest, MonitorLogChecksThePortsAndAFailedOpenLeavesOnlyClicks) {
  const auto keysAct = [&] {
    const int before = window.focusedButton();
    QTest::keyClick(&window, Qt::Key_Tab);
    return window.focusedButton() != before;
  };
  context.settings.gpsEnabled = 1;
  context.settings.gpsPort = 0;
  EXPECT_EQ(monitorLog(), Box("Serial Port", "Same Port Assigned"));
  EXPECT_TRUE(keysAct());
  context.settings.gpsEnabled = 0;
  context.ports.paths[0] = (folder.path() / "no-cable").string();
  EXPECT_EQ(monitorLog(), Box("Serial Port", "Cannot open GC40 port"));
  EXPECT_FALSE(keysAct());
  testing::ModalScript cancelOpen({[](QWidget* modal) {
    auto* dialog = qobject_cast<QFileDialog*>(modal);
    if (dialog) dialog->reject();
    return dialog != nullptr;
  }});
  testing::click(&window, 425);
  auto* viewFiles = window.findChild<ViewFilesWindow*>("ViewFilesWnd");
  ASSERT_TRUE(viewFiles && viewFiles->isVisible());
  EXPECT_EQ(viewFiles->geometry(), window.rect());
  QTRY_VERIFY(!viewFiles->isVisible());  // no file chosen: back to the menu
  EXPECT_TRUE(cancelOpen.finished());
}

// Set GPS Port leads to the Monitor GPS screen through "Monitor GPS Output"
// (even with GPS input off) and through OK with GPS input on; a port that does
// not open is reported and the screen still comes up. OK with GPS input off
// goes back to the menu. x gives the menu its keys back.
TEST_F(MainWindowTest, SetGpsPortOpensTheMonitorGpsScreen) {
  context.ports.paths[std::size_t(context.settings.gpsPort)] = (folder.path() / "no-gps").string();
  auto* monitorGps = window.findChild<QWidget*>("MonitorGPSWnd");
  ASSERT_TRUE(monitorGps);
  EXPECT_EQ(monitorGps->windowTitle(), "Monitor GPS");
  struct Case {
    int button;
    std::int32_t gpsEnabled;
    bool opens;
  };
  for (const auto [button, gpsEnabled, opens] :
       {Case{729, 0, true}, Case{kIdOk, 1, true}, Case{kIdOk, 0, false}}) {
    SCOPED_TRACE(::testing::Message() << "button " << button << ", GPS " << gpsEnabled);
    context.settings.gpsEnabled = gpsEnabled;
    Box box;
    testing::ModalScript script(
        {testing::onDialog([button](QDialog* dialog) { testing::click(dialog, button); }),
         testing::acknowledgeMessageBox(&box.first, &box.second)},
        5000);
    QTest::keyClick(&window, Qt::Key_G);
    EXPECT_EQ(box, gpsEnabled == 1 ? Box("Serial Port", "Cannot open GPS port") : Box());
    EXPECT_EQ(monitorGps->isVisible(), opens);
    if (!opens) continue;
    QTest::keyClick(monitorGps, Qt::Key_X);
    EXPECT_FALSE(monitorGps->isVisible());
    EXPECT_EQ(window.focusWidget(), &window);  // the menu's keys, when the window is active
  }
}

}  // namespace
}  // namespace gc40
