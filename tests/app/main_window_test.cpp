#include "app/main_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFontInfo>
#include <QImage>
#include <QTest>
#include <QTimer>
#include <sstream>
#include <vector>

#include "app/title_screen_layout.h"
#include "app/uptime_guard.h"
#include "support/modal_script.h"
#include "support/temp_folder.h"
#include "support/test_application.h"

namespace gc40 {
namespace {

LoggerContext makeContext(const testing::TempFolder& folder, Orientation orientation,
                          std::optional<int> scale) {
  CommandLine options;
  options.storage = folder.path();
  options.orientation = orientation;
  options.scale = scale;
  std::ostringstream warnings;
  return std::get<LoggerContext>(prepareLogger(options, nullptr, warnings));
}

QPushButton* buttonWithId(MainWindow& window, int id) {
  return window.findChild<QPushButton*>(QString::number(id));
}

TEST(MainWindow, TitledGC40InTheLayoutsShape) {
  testing::TestApplication<QApplication> application;
  EXPECT_FALSE(QFontInfo(application.get().font()).family().isEmpty());
  testing::TempFolder folder;
  for (const auto& [orientation, scale, size] :
       {std::tuple{Orientation::kPortrait, std::optional<int>(1), QSize(240, 320)},
        {Orientation::kLandscape, std::nullopt, QSize(640, 480)}}) {  // 800 x 600 screen
    auto context = makeContext(folder, orientation, scale);
    MainWindow window(context);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    EXPECT_EQ(window.windowTitle(), "GC40");
    EXPECT_EQ(window.size(), size);
    EXPECT_EQ(context.settings.portraitScreen, orientation == Orientation::kPortrait ? 1 : 0);
  }
}

// Also leaves main_window_landscape.png and main_window_portrait.png in the
// tests' build folder for a look at the title screen.
TEST(MainWindow, ButtonsAndTitleScreenInBothOrientations) {
  testing::TestApplication<QApplication> application;
  testing::TempFolder folder;
  const char* labels[] = {"Monitor/&Log",     "&Survey Setup", "L&ogger Setup", "Set &GPS Port",
                          "&Display Options", "&View Files",   "E&xit"};
  for (const auto& [orientation, scale, name, greyPoint] :
       {std::tuple{Orientation::kLandscape, 2, "landscape", QPoint(100, 100)},
        {Orientation::kPortrait, 1, "portrait", QPoint(60, 200)}}) {
    auto context = makeContext(folder, orientation, scale);
    MainWindow window(context);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    for (int i = 0; i < kMainButtonCount; ++i) {
      QPushButton* button = buttonWithId(window, 420 + i);
      ASSERT_NE(button, nullptr) << i;
      EXPECT_EQ(button->text(), labels[i]);
      const LayoutRect place = mainButtonRect(orientation, i);
      EXPECT_EQ(button->geometry(),
                QRect(place.x * scale, place.y * scale, 120 * scale, 26 * scale));
      EXPECT_EQ(button->isDefault(), i == 0);
    }
    const QImage image = window.grab().toImage();
    EXPECT_TRUE(image.save(QStringLiteral(GC40_TEST_OUTPUT_DIR "/main_window_%1.png").arg(name)));
    EXPECT_EQ(image.pixelColor(greyPoint * scale), QColor(0xC0, 0xC0, 0xC0)) << name;
    EXPECT_NE(image.pixelColor(QPoint(2, 2) * scale), QColor(0xC0, 0xC0, 0xC0)) << name;
    // "Version 2.11" is drawn where it belongs.
    const LayoutPoint version = titleScreenLayout(orientation).versionText;
    int dark = 0;
    for (int y = version.y * scale; y < (version.y + 16) * scale; ++y)
      for (int x = version.x * scale; x < (version.x + 80) * scale; ++x)
        dark += image.pixelColor(x, y).lightness() < 100;
    EXPECT_GT(dark, 40 * scale) << name;
  }
}

TEST(MainWindow, KeysMoveTheRingExitOrHandOnCommandsAndClicksAlwaysWork) {
  testing::TestApplication<QApplication> application;
  testing::TempFolder folder;
  auto context = makeContext(folder, Orientation::kLandscape, 1);
  MainWindow window(context);
  std::vector<MainCommand> chosen;
  QObject::connect(&window, &MainWindow::commandChosen,
                   [&](MainCommand command) { chosen.push_back(command); });
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
  const auto ringOn = [&](int id) {
    for (int other = 420; other <= 426; ++other)
      if (buttonWithId(window, other)->isDefault() != (other == id)) return false;
    return true;
  };

  QTest::keyClick(&window, 'q');
  for (int i = 0; i < 6; ++i) QTest::keyClick(&window, Qt::Key_Tab);
  EXPECT_TRUE(ringOn(426));
  QTest::keyClick(&window, Qt::Key_Tab);
  EXPECT_TRUE(ringOn(420));
  QTest::keyClick(&window, Qt::Key_Left);
  EXPECT_TRUE(ringOn(426));
  QTest::keyClick(&window, Qt::Key_Up);
  QTest::keyClick(&window, Qt::Key_Return);  // on View Files
  QTest::keyClick(&window, 's');
  buttonWithId(window, 424)->click();
  window.setKeysActive(true);  // a run holds the keys: only clicks act
  QTest::keyClick(&window, 'x');
  QTest::keyClick(&window, 'o');
  buttonWithId(window, 422)->click();
  EXPECT_TRUE(window.isVisible());
  EXPECT_EQ(chosen, (std::vector{MainCommand::kViewFiles, MainCommand::kSurveySetup,
                                 MainCommand::kDisplayOptions, MainCommand::kLoggerSetup}));
  window.setKeysActive(false);
  for (const char key : {'x', 'E'}) {
    MainWindow exiting(context);
    exiting.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&exiting));
    QTest::keyClick(&exiting, key);
    EXPECT_FALSE(exiting.isVisible()) << key;
  }
}

TEST(MainWindow, UptimeGuardStopsAtFirstPaintAndOnMonitorLog) {
  testing::TestApplication<QApplication> application;
  testing::TempFolder folder;
  auto context = makeContext(folder, Orientation::kPortrait, 1);
  std::uint32_t tick = kUptimeLimitMs;
  std::vector<int> exitCodes;
  const MainWindow::Services services{.tickCount = [&] { return tick; },
                                      .endProgram = [&](int code) { exitCodes.push_back(code); }};
  QString caption, text;
  const auto expectStopped = [&](MainWindow& window) {
    EXPECT_EQ(caption, "PROGRAM STOP");
    EXPECT_EQ(text.split('\n').size(), 5) << text.toStdString();
    EXPECT_TRUE(text.startsWith("Windows has run for more than 20 days.\n"));
    EXPECT_EQ(exitCodes, std::vector{0});
    EXPECT_FALSE(window.isVisible());
  };

  {  // exactly 20 days: starts, and Monitor/Log looks at the tick again when chosen
    MainWindow window(context, services);
    int handedOn = 0;
    QObject::connect(&window, &MainWindow::commandChosen, [&] { ++handedOn; });
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    QTest::qWait(50);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_TRUE(exitCodes.empty());
    tick = kUptimeLimitMs + 1;
    QTest::keyClick(&window, 's');  // only Monitor/Log is guarded
    testing::ModalScript script({testing::acknowledgeMessageBox(&caption, &text)});
    QTest::keyClick(&window, 'l');
    EXPECT_TRUE(script.finished());
    EXPECT_EQ(handedOn, 1);
    expectStopped(window);
  }
  {  // one millisecond more at start: the box at the first paint, then the end
    exitCodes.clear();
    caption.clear();
    MainWindow window(context, services);
    testing::ModalScript script({testing::acknowledgeMessageBox(&caption, &text)});
    window.show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !exitCodes.empty(); }, 5000));
    expectStopped(window);
  }
  {  // and on the machine's own services the event loop ends with 0
    MainWindow window(context, {.tickCount = [] { return kUptimeLimitMs + 1; },
                                .endProgram = MainWindow::machineServices().endProgram});
    testing::ModalScript script({testing::acknowledgeMessageBox(&caption, &text)});
    window.show();
    QTimer::singleShot(10000, [] { QCoreApplication::exit(1); });  // rather than hang
    EXPECT_EQ(application.get().exec(), 0);
    EXPECT_TRUE(script.finished());
  }
}

}  // namespace
}  // namespace gc40
