#include <gtest/gtest.h>

#include <QApplication>
#include <QFontInfo>
#include <QFontMetrics>
#include <QImage>

#include "logging/profile_view.h"
#include "logging/status_panel.h"
#include "logging/status_texts.h"
#include "platform/battery.h"
#include "support/temp_folder.h"
#include "support/test_application.h"

void PrintTo(const QColor& colour, std::ostream* out) { *out << colour.name().toStdString(); }

namespace gc40 {
namespace {

struct Shape {
  bool portrait;
  int scale;
  const char* name;
};
void PrintTo(const Shape& shape, std::ostream* out) { *out << shape.name; }
const Shape kShapes[] = {{true, 1, "portrait"}, {false, 2, "landscape"}};

class LoggingDisplay : public ::testing::TestWithParam<Shape> {
 protected:
  testing::TestApplication<QApplication> application;
  const Shape& shape = GetParam();
};
INSTANTIATE_TEST_SUITE_P(Both, LoggingDisplay, ::testing::ValuesIn(kShapes),
                         [](const auto& info) { return std::string(info.param.name); });

// Every field lies inside the panel, holds its widest texts in the font it is
// drawn with, and overlaps no other, at any window scale.
TEST_P(LoggingDisplay, StatusFieldsHoldTheirTextsApart) {
  for (int scale : {1, 2, 3}) {
    StatusPanel panel(shape.portrait, scale, [] { return 100; });
    ASSERT_FALSE(QFontInfo(panel.font()).family().isEmpty());
    const QFontMetrics metrics(panel.font());
    for (int i = 0; i < kStatusFieldCount; ++i) {
      const auto field = static_cast<StatusField>(i);
      const QRect rect = panel.fieldRect(field);
      EXPECT_TRUE(panel.rect().contains(rect)) << i << " at scale " << scale;
      for (std::string_view sample : fieldSamples(field, shape.portrait))
        EXPECT_LE(metrics.horizontalAdvance(QString::fromUtf8(sample.data(), sample.size())),
                  rect.width())
            << sample << scale;
      for (int j = i + 1; j < kStatusFieldCount; ++j) {
        const auto other = static_cast<StatusField>(j);
        if (fieldsTakeTurns(field, other)) continue;
        EXPECT_FALSE(rect.intersects(panel.fieldRect(other))) << i << " and " << j << " " << scale;
      }
    }
  }
}

FiledValues verticalConductivity(float value) {
  return {.verticalConductivity = value, .verticalConductivityValid = 1};
}

// When to scroll and what to join is decided in the core (profile_plot_test);
// here the picture: it moves 2 pixels once the station is done, the newest
// column comes back blank but for the grid, and a repaint shows the history.
TEST_P(LoggingDisplay, ProfileScrollsTwoPixelsAndKeepsItsPicture) {
  Settings settings;  // 0..500 over 125 pixels: value v falls on row (500 - v) / 4
  settings.portraitScreen = shape.portrait ? 1 : 0;
  settings.plotHeight = 125;
  settings.traceThickness[0] = 1;
  recomputeScaleFactors(settings);
  ProfileTraces traces;
  traces.traceOn[0] = 1;
  ProfileView view(settings, traces, shape.scale);
  const int w = shape.portrait ? 200 : 270;
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
  const QSize scaled = view.picture().size() * shape.scale;
  EXPECT_EQ(shown.copy(QRect(QPoint(0, 0), scaled)), view.picture().scaled(scaled));
}

// The machine's first battery counts; mains, a peripheral's battery and one
// that reports no charge do not. The panel asks once per full screen, then
// only when three minutes have passed, also across the tick's wrap.
TEST(Battery, FirstMachineBatteryAskedAtMostEveryThreeMinutes) {
  testing::TempFolder folder;
  const auto supply = [&folder](const char* name, const char* type, const char* capacity,
                                const char* scope = nullptr) {
    testing::writeBytes(folder.path() / name / "type", type);
    if (capacity) testing::writeBytes(folder.path() / name / "capacity", capacity);
    if (scope) testing::writeBytes(folder.path() / name / "scope", scope);
  };
  EXPECT_EQ(platform::batteryPercent(folder.path() / "missing"), std::nullopt);
  supply("AC", "Mains\n", nullptr);
  supply("hidpp_battery_0", "Battery\n", "40\n", "Device\n");
  EXPECT_EQ(platform::batteryPercent(folder.path()), std::nullopt);
  supply("BAT2", "Battery\n", "57\n");
  supply("BAT0", "Battery\n", nullptr);
  EXPECT_EQ(platform::batteryPercent(folder.path()), 57);
  supply("BAT1", "Battery\n", "100\n", "System\n");
  EXPECT_EQ(platform::batteryPercent(folder.path()), 100);

  testing::TestApplication<QApplication> application;
  int asked = 0;
  StatusPanel panel(false, 1, [&asked]() -> std::optional<int> {
    return ++asked == 1 ? std::optional(5) : std::nullopt;
  });
  panel.showStatus(Settings{}, 0, QString(), 1000);
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
