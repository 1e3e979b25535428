#include <gtest/gtest.h>

#include <QApplication>
#include <QFontInfo>
#include <QFontMetrics>
#include <QImage>
#include <QVBoxLayout>
#include <cmath>

#include "logging/profile_view.h"
#include "logging/status_panel.h"
#include "logging/status_texts.h"
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

QString qText(std::string_view text) { return QString::fromUtf8(text.data(), text.size()); }

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
        EXPECT_LE(metrics.horizontalAdvance(qText(sample)), rect.width()) << sample << scale;
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
// columns come back blank but for the grid, a repaint shows the history, and
// a line from a point above the window is drawn into it.
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
  const QColor blue(0, 0, 255), grey(0xC0, 0xC0, 0xC0);  // trace 0 is 0xFF0000 in 0x00BBGGRR
  std::array<std::int32_t, kTraceCount> continues{};

  view.addReading(verticalConductivity(420), 1, continues);  // row 20
  view.addReading(verticalConductivity(320), 2, continues);  // row 45, joined
  EXPECT_EQ(at(w, 20), blue);                                // not moved yet
  view.addReading(verticalConductivity(220), 0, continues);  // row 70, station done
  EXPECT_EQ(at(w - 2, 20), blue);                            // the first point, moved once
  EXPECT_EQ(at(w - 4, 20), blue);                            // where the second line starts
  EXPECT_EQ(at(w - 6, 20), Qt::white);
  EXPECT_EQ(at(w, 20), Qt::white);
  EXPECT_EQ(at(w, 70), blue);
  for (int x : {w - 1, w, w + 1}) {
    EXPECT_EQ(at(x, 25), grey) << x;   // grid line at 400
    EXPECT_EQ(at(x, 125), grey) << x;  // zero line on the bottom row
  }
  const QImage shown = view.grab().toImage().convertToFormat(QImage::Format_RGB32);
  const QSize scaled = view.picture().size() * shape.scale;
  EXPECT_EQ(shown.copy(QRect(QPoint(0, 0), scaled)), view.picture().scaled(scaled));

  view.restart();
  continues.fill(0);
  view.addReading(verticalConductivity(600), 0, continues);  // row -25
  view.addReading(verticalConductivity(420), 0, continues);
  EXPECT_EQ(at(w - 1, 0), blue);
}

// Drawn once per full screen and then only when three minutes have passed.
TEST_P(LoggingDisplay, BatteryIsAskedAtMostEveryThreeMinutes) {
  int asked = 0;
  StatusPanel panel(shape.portrait, shape.scale, [&asked]() -> std::optional<int> {
    return ++asked == 1 ? std::optional(5) : std::nullopt;
  });
  panel.showStatus(Settings{}, 0, QString(), 1000);
  EXPECT_EQ(panel.text(StatusField::kBattery), "  5%");
  panel.refreshBattery(181000);
  EXPECT_EQ(asked, 1);
  panel.refreshBattery(181001);
  EXPECT_EQ(panel.text(StatusField::kBattery), "AC");
}

// The status display with the widest values over a profile that has
// scrolled, left as logging_display_<shape>.png in the build folder.
TEST_P(LoggingDisplay, Screenshot) {
  Settings settings;
  settings.portraitScreen = shape.portrait ? 1 : 0;
  settings.surveyMode = shape.portrait ? 2 : 0;
  settings.gpsEnabled = shape.portrait ? 0 : 1;
  settings.surveyLine = u"North-Line 123456789";
  settings.currentStation = -1234.5;
  QWidget screen;
  auto* column = new QVBoxLayout(&screen);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  auto* panel = new StatusPanel(shape.portrait, shape.scale, [] { return 100; });
  const int screenHeight = shape.portrait ? 320 : 240;
  settings.plotHeight = screenHeight - 22 - panel->height() / shape.scale - 1;
  recomputeScaleFactors(settings);
  const ProfileTraces traces = setupProfileTraces(settings);
  auto* profile = new ProfileView(settings, traces, shape.scale);
  column->addWidget(panel);
  column->addWidget(profile);
  column->addStretch();
  screen.setFixedSize((shape.portrait ? 240 : 320) * shape.scale, screenHeight * shape.scale);

  panel->showStatus(settings, 1, "0315ABCDXY", 0);
  panel->showReading({.conductivity = -1999.99f, .inphase = -1999.99f, .dipole = 'H'}, settings);
  panel->showTrigger(true, settings.surveyMode, -1);
  panel->showCount(3);
  panel->showMessage(qText(shape.portrait ? averagingText(100, 100) : kPleaseWaitText));
  const char* gps[] = {"/", "12345", " 8", "AGPS", "1.2 "};
  for (int i = 0; i < 5; ++i)
    panel->setText(static_cast<StatusField>(int(StatusField::kGpsActivity) + i), gps[i]);
  EXPECT_EQ(panel->text(StatusField::kGpsDisabled).isEmpty(), !shape.portrait);

  std::array<std::int32_t, kTraceCount> continues{};
  for (int i = 0; i < 140; ++i) {
    if (i == 70) continues.fill(0);  // a connection break leaves a gap
    profile->addReading({.verticalConductivity = 250 + 200 * std::sin(i / 9.0f),
                         .verticalConductivityValid = 1,
                         .verticalInphase = 20 * std::cos(i / 13.0f),
                         .verticalInphaseValid = 1},
                        0, continues);
  }
  EXPECT_TRUE(screen.grab().save(
      QStringLiteral(GC40_TEST_OUTPUT_DIR "/logging_display_%1.png").arg(shape.name)));
}

}  // namespace
}  // namespace gc40
