#include "app/main_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFontInfo>
#include <QTest>

#include <sstream>

#include "support/temp_folder.h"

namespace gc40 {
namespace {

int argc = 1;
char name[] = "gc40_qt_tests";
char* argv[] = {name, nullptr};

LoggerContext contextFor(const testing::TempFolder& folder, Orientation orientation,
                         std::optional<int> scale) {
  CommandLine options;
  options.storage = folder.path();
  options.orientation = orientation;
  options.scale = scale;
  std::ostringstream warnings;
  return std::get<LoggerContext>(prepareLogger(options, nullptr, warnings));
}

TEST(MainWindow, TitledGC40InTheLayoutsShape) {
  QApplication application(argc, argv);
  EXPECT_FALSE(QFontInfo(application.font()).family().isEmpty());
  testing::TempFolder folder;
  struct Case {
    Orientation orientation;
    std::optional<int> scale;
    QSize size;
  };
  for (const Case& c : {Case{Orientation::kLandscape, 2, QSize(640, 480)},
                        Case{Orientation::kPortrait, 1, QSize(240, 320)},
                        Case{Orientation::kLandscape, std::nullopt, QSize(640, 480)}}) {
    LoggerContext context = contextFor(folder, c.orientation, c.scale);
    MainWindow window(context);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    EXPECT_EQ(window.windowTitle(), "GC40");
    EXPECT_EQ(window.size(), c.size);
  }
}

}  // namespace
}  // namespace gc40
