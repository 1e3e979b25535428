#include "app/main_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QTest>
#include <QTimer>
#include <vector>

#include "app/title_screen_layout.h"
#include "support/modal_script.h"
#include "support/prepared_logger.h"
#include "support/test_application.h"

namespace gc40 {
namespace {

constexpr std::uint32_t kTwentyDaysMs = 1'728'000'000;

QPushButton* buttonWithId(MainWindow& window, int id) {
  return window.findChild<QPushButton*>(QString::number(id));
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
    EXPECT_EQ(std::tuple(window.windowTitle(), window.size()), std::tuple("GC40", size));
    EXPECT_EQ(context.settings.portraitScreen, orientation == Orientation::kPortrait ? 1 : 0);
    for (int i = 0; i < 7; ++i) {
      QPushButton* button = buttonWithId(window, 420 + i);
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
    const LayoutPoint version = titleScreenLayout(orientation).versionText;
    int dark = 0;
    for (int y = version.y * scale; y < (version.y + 16) * scale; ++y)
      for (int x = version.x * scale; x < (version.x + 80) * scale; ++x)
        dark += image.pixelColor(x, y).lightness() < 100;
    EXPECT_GT(dark, 40 * scale) << name;
  }
}

TEST(MainWindow, KeysMoveTheRingAndExitAndQDoesNothing) {
  testing::TestApplication<QApplication> application;
  testing::TempFolder folder;
  auto context = testing::preparedLogger(folder, Orientation::kLandscape, 1);
  MainWindow window(context);
  int chosen = 0;
  QObject::connect(&window, &MainWindow::commandChosen, [&] { ++chosen; });
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
  const auto ring = [&] {  // the button drawn as the default one
    std::string marks;
    for (int id = 420; id <= 426; ++id) marks += buttonWithId(window, id)->isDefault() ? '*' : '.';
    return marks;
  };
  QTest::keyClick(&window, 'q');
  for (int i = 0; i < 6; ++i) QTest::keyClick(&window, Qt::Key_Tab);
  EXPECT_EQ(ring(), "......*");
  QTest::keyClick(&window, Qt::Key_Tab);
  EXPECT_EQ(ring(), "*......");
  QTest::keyClick(&window, Qt::Key_Left);
  EXPECT_EQ(ring(), "......*");
  // Commands reaching their dialogs are the main commands' test.
  EXPECT_EQ(std::pair(chosen, window.isVisible()), std::pair(0, true));
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
  auto context = testing::preparedLogger(folder, Orientation::kPortrait, 1);
  std::uint32_t tick = kTwentyDaysMs;
  QString caption, text;
  const auto expectBox = [&] {
    EXPECT_EQ(caption, "PROGRAM STOP");
    EXPECT_EQ(text.split('\n').size(), 5) << text.toStdString();
    EXPECT_TRUE(text.startsWith("Windows has run for more than 20 days.\n"));
  };
  {  // exactly 20 days starts; Monitor/Log, and only it, looks at the tick again
    std::vector<int> exitCodes;
    MainWindow window(context, {.tickCount = [&] { return tick; },
                                .endProgram = [&](int code) { exitCodes.push_back(code); }});
    int handedOn = 0;
    QObject::connect(&window, &MainWindow::commandChosen, [&] { ++handedOn; });
    {  // a box here would be wrong; answered so that the test goes on
      testing::ModalScript unexpected({testing::acknowledgeMessageBox(&caption, &text)});
      window.show();
      ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
      QTest::qWait(50);
    }
    EXPECT_EQ(std::tuple(caption, exitCodes.size()), std::tuple("", 0u));
    tick = kTwentyDaysMs + 1;
    QTest::keyClick(&window, 's');
    testing::ModalScript script({testing::acknowledgeMessageBox(&caption, &text)});
    QTest::keyClick(&window, 'l');
    EXPECT_TRUE(script.finished());
    expectBox();
    EXPECT_EQ(std::tuple(handedOn, exitCodes, window.isVisible()),
              std::tuple(1, std::vector{0}, false));
  }
  // One millisecond more at start: the box at the first paint, then the loop ends with 0.
  caption.clear();
  MainWindow window(context, {.tickCount = [] { return kTwentyDaysMs + 1; },
                              .endProgram = MainWindow::machineServices().endProgram});
  testing::ModalScript script({testing::acknowledgeMessageBox(&caption, &text)});
  window.show();
  QTimer::singleShot(10000, [] { QCoreApplication::exit(1); });  // rather than hang
  EXPECT_EQ(application.get().exec(), 0);
  EXPECT_TRUE(script.finished());
  expectBox();
  EXPECT_FALSE(window.isVisible());
}

}  // namespace
}  // namespace gc40
