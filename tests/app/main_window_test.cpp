#include "app/main_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFontInfo>
#include <QTest>
#include <sstream>

#include "support/temp_folder.h"
#include "support/test_application.h"

namespace gc40 {
namespace {

TEST(MainWindow, TitledGC40InTheLayoutsShape) {
  testing::TestApplication<QApplication> application;
  EXPECT_FALSE(QFontInfo(application.get().font()).family().isEmpty());
  testing::TempFolder folder;
  for (const auto& [orientation, scale, size] :
       {std::tuple{Orientation::kPortrait, std::optional<int>(1), QSize(240, 320)},
        {Orientation::kLandscape, std::nullopt, QSize(640, 480)}}) {  // 800 x 600 screen
    CommandLine options;
    options.storage = folder.path();
    options.orientation = orientation;
    options.scale = scale;
    std::ostringstream warnings;
    auto context = std::get<LoggerContext>(prepareLogger(options, nullptr, warnings));
    MainWindow window(context);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    EXPECT_EQ(window.windowTitle(), "GC40");
    EXPECT_EQ(window.size(), size);
  }
}

}  // namespace
}  // namespace gc40
