#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>

#include "logging/profile_view.h"
#include "logging/status_panel.h"
#include "logging/status_texts.h"
#include "support/test_application.h"

void PrintTo(const QColor& colour, std::ostream* out) { *out << colour.name().toStdString(); }

namespace gc40 {
namespace {

FiledValues verticalConductivity(float value) {
  return {.verticalConductivity = value, .verticalConductivityValid = 1};
}

// When to scroll and what to join is decided in the core (logging_rules_test);
// here the picture: it moves 2 pixels once the station is done, the newest
// column comes back blank but for the grid, and a repaint shows the history.
TEST(LoggingDisplay, ProfileScrollsTwoPixelsAndKeepsItsPicture) {
  testing::TestApplication<QApplication> application;
  for (const auto& [portrait, scale] : {std::pair{true, 1}, {false, 2}}) {
    SCOPED_TRACE(portrait ? "portrait" : "landscape");
    Settings settings;  // 0..500 over 125 pixels: value v falls on row (500 - v) / 4
    settings.portraitScreen = portrait ? 1 : 0;
    settings.plotHeight = 125;
    settings.traceThickness[0] = 1;
    recomputeScaleFactors(settings);
    ProfileTraces traces;
    traces.traceOn[0] = 1;
    ProfileView view(settings, traces, scale);
    const int w = portrait ? 200 : 270;
    EXPECT_EQ(view.picture().size(), QSize(w + 2, 126));
    const auto at = [&view](int x, int y) { return view.picture().pixelColor(x, y); };
    const QColor blue(0, 0, 255), grey(0xC0, 0xC0, 0xC0), white(Qt::white);
    std::array<std::int32_t, kTraceCount> continues{};

    view.addReading(verticalConductivity(420), 1, continues);  // row 20
    view.addReading(verticalConductivity(320), 2, continues);  // row 45, joined
    EXPECT_EQ(at(w, 20), blue);                                // not moved yet
    view.addReading(verticalConductivity(220), 0, continues);  // row 70, station done
    EXPECT_EQ(std::tuple(at(w - 2, 20), at(w, 20), at(w, 25), at(w, 70)),
              std::tuple(blue, white, grey, blue));  // grid line at 400 on row 25
    const QImage shown = view.grab().toImage().convertToFormat(QImage::Format_RGB32);
    const QSize scaled = view.picture().size() * scale;
    EXPECT_EQ(shown.copy(QRect(QPoint(0, 0), scaled)), view.picture().scaled(scaled));
  }
}

// The panel asks for the battery once per full screen, then only when three
// minutes have passed, also across the tick's wrap; no answer means mains.
TEST(Battery, AskedAtMostEveryThreeMinutes) {
  testing::TestApplication<QApplication> application;
  int asked = 0;
  StatusPanel panel(false, 1, [&asked]() -> std::optional<int> {
    return ++asked == 1 ? std::optional(5) : std::nullopt;
  });
  panel.showStatus(Settings{}, LoggingState::kMonitor, QString(), 1000);
  EXPECT_EQ(panel.text(StatusField::kBattery), "  5%");
  panel.refreshBattery(181000);
  EXPECT_EQ(asked, 1);
  panel.refreshBattery(181001);
  EXPECT_EQ(panel.text(StatusField::kBattery), "AC");
  EXPECT_FALSE(batteryRefreshDue(100, 0xFFFFFF00u));  // across the tick's wrap
  EXPECT_TRUE(batteryRefreshDue(180000, 0xFFFFFF00u));
}

}  // namespace
}  // namespace gc40
