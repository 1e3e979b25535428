// The logging screen's Qt side: the profile and status panel drawn, and the
// window as the main menu opens it, in both screen shapes, over
// pseudo-terminals that stand in for the meter's cable and the receiver.

#include "logging/logging_window.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QTest>

#include "app/main_commands.h"
#include "app/main_window.h"
#include "logging/field_text.h"
#include "logging/profile_view.h"
#include "logging/status_panel.h"
#include "logging/status_texts.h"
#include "support/dialog_checks.h"
#include "support/test_application.h"

void PrintTo(const QColor& colour, std::ostream* out) { *out << colour.name().toStdString(); }

namespace gc40 {
namespace {

FiledValues verticalConductivity(float value) {
  return {.verticalConductivity = value, .verticalConductivityValid = 1};
}

// What the window shows once its pending repaints are done, against what a
// full paint draws: a change left out of the repainted parts shows here.
void expectScreenMatchesFullPaint(QWidget& widget) {
  QCoreApplication::sendPostedEvents();
  const QImage onScreen = widget.screen()->grabWindow(widget.winId()).toImage();
  EXPECT_EQ(onScreen.convertToFormat(QImage::Format_RGB32),
            widget.grab().toImage().convertToFormat(QImage::Format_RGB32));
}

// When to scroll and what to join is decided in the core (logging_rules_test);
// here the picture: it moves 2 pixels once the station is done, the newest
// column comes back blank but for the grid, and a repaint shows the history.
TEST(LoggingDisplay, ProfileScrollsTwoPixelsAndKeepsItsPicture) {
  testing::TestApplication<QApplication> application;
  for (const auto& [portrait, scale] : {std::pair{true, 1}, {false, 2}}) {
    SCOPED_TRACE(portrait ? "portrait" : "landscape");
    // 0..500 over 125 pixels: value v falls on row (500 - v) / 4.
    Settings settings{.plotHeight = 125, .portraitScreen = portrait ? 1 : 0};
    settings.traceThickness[0] = 1;
    recomputeScaleFactors(settings);
    const ProfileTraces traces{.traceOn = {1}};  // V conductivity only
    ProfileView view(settings, traces, scale);
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    const int w = portrait ? 200 : 270;
    EXPECT_EQ(view.picture().size(), QSize(w + 2, 126));
    const auto at = [&view](int x, int y) { return view.picture().pixelColor(x, y); };
    const QColor blue(0, 0, 255), grey(0xC0, 0xC0, 0xC0), white(Qt::white);
    std::array<std::int32_t, kTraceCount> continues{};

    view.addReading(verticalConductivity(420), 1, continues);  // row 20
    view.addReading(verticalConductivity(320), 2, continues);  // row 45, joined
    EXPECT_EQ(at(w, 20), blue);                                // not moved yet
    view.showPending();
    expectScreenMatchesFullPaint(view);
    view.addReading(verticalConductivity(220), 0, continues);  // row 70, station done
    view.showPending();
    expectScreenMatchesFullPaint(view);
    EXPECT_EQ(std::tuple(at(w - 2, 20), at(w, 20), at(w, 25), at(w, 70)),
              std::tuple(blue, white, grey, blue));  // grid line at 400 on row 25
    const QImage shown = view.grab().toImage().convertToFormat(QImage::Format_RGB32);
    const QSize scaled = view.picture().size() * scale;
    EXPECT_EQ(shown.copy(QRect(QPoint(0, 0), scaled)), view.picture().scaled(scaled));
    // Scrolls and thick strokes piled up before the screen catches up, then
    // stations without a value: only the blanked columns change.
    settings.traceThickness[0] = 5;
    for (float value : {300.0f, 480.0f, 10.0f, 250.0f}) {
      view.addReading(verticalConductivity(value), 1, continues);
      view.addReading(verticalConductivity(value + 15), 0, continues);
    }
    view.showPending();
    expectScreenMatchesFullPaint(view);
    view.addReading(FiledValues{}, 0, continues);
    view.showPending();
    expectScreenMatchesFullPaint(view);
  }
}

// Field texts drawn from glyphs come out as the ordinary text drawing puts
// them, kerned pairs included; ligatures and other scripts take the
// ordinary way.
TEST(LoggingDisplay, FieldTextsLookAsOrdinaryTextDoes) {
  testing::TestApplication<QApplication> application;
  for (const int pixels : {14, 42}) {
    QFont font = QApplication::font();
    font.setPixelSize(pixels);
    const FieldText fieldText(font);
    const QRect rect(3, 2, 24 * pixels, pixels * 3 / 2);
    const auto drawn = [&](const auto& draw) {
      QImage image(rect.width() + 6, rect.height() + 4, QImage::Format_RGB32);
      image.fill(Qt::white);
      QPainter painter(&image);
      painter.setFont(font);
      painter.setClipRect(rect);
      draw(painter);
      return image;
    };
    for (const QString text : {"C: 12.34 mS/m", " -0.25 ppt", "Stn:  100.00", "1    | 8|AGPS|-",
                               "AVATAR To Wa", "Cliff fill", "Linie S\u00fcd 5", "\u5317 7"}) {
      SCOPED_TRACE(text.toStdString() + " at " + std::to_string(pixels) + " px");
      const QImage ordinary = drawn([&](QPainter& painter) {
        painter.drawText(rect, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text);
      });
      EXPECT_EQ(drawn([&](QPainter& painter) { fieldText.draw(painter, rect, text); }), ordinary);
      EXPECT_NE(ordinary, drawn([](QPainter&) {}));
    }
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

// Fields far apart that change together are both drawn on screen.
TEST(LoggingDisplay, StatusFieldsChangedTogetherAreAllRepainted) {
  testing::TestApplication<QApplication> application;
  StatusPanel panel(false, 2, [] { return std::optional(50); });
  panel.showStatus(Settings{}, LoggingState::kMonitor, QString(), 0);
  panel.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&panel));
  panel.setText(StatusField::kFile, "File:A");
  panel.setText(StatusField::kConductivity, "C:12.50");
  expectScreenMatchesFullPaint(panel);
  // Held back for the next repaint, then drawn together.
  panel.setTextLater(StatusField::kInphase, "I:3.25");
  panel.setTextLater(StatusField::kStation, "100.00");
  panel.showPending();
  expectScreenMatchesFullPaint(panel);
}

class LoggingWindowTest : public ::testing::TestWithParam<Orientation>,
                          protected testing::ShownLogger {
 protected:
  LoggingWindowTest() : ShownLogger(GetParam()) {
    context.ports.paths[0] = openTerminal(meter);
    context.ports.paths[1] = openTerminal(receiver);
    context.settings.gpsEnabled = GetParam() == Orientation::kLandscape ? 1 : 0;
  }
  ~LoggingWindowTest() override { close(meter), close(receiver); }

  static std::string openTerminal(int& fd) {
    fd = posix_openpt(O_RDWR | O_NOCTTY);
    return fd >= 0 && grantpt(fd) == 0 && unlockpt(fd) == 0 ? ptsname(fd) : "";
  }

  QWidget* openRun() {
    QTest::keyClick(&window, Qt::Key_L);
    auto* logging = window.findChild<QWidget*>("LoggingWnd");
    return logging && logging->isVisible() ? logging : nullptr;
  }

  void sendRecords(int count, const std::string& gps = "") {
    for (int i = 0; i < count; ++i) {
      const std::string record = "T\x20-0120 0040\r";
      ASSERT_EQ(write(meter, record.data(), record.size()), ssize_t(record.size()));
    }
    ASSERT_EQ(write(receiver, gps.data(), gps.size()), ssize_t(gps.size()));
    QTest::qWait(300);
  }

  QPushButton* visibleButton(QWidget* logging, int id) {
    for (auto* button : logging->findChildren<QPushButton*>(QString::number(id)))
      if (button->isVisible()) return button;
    return nullptr;
  }

  MainCommands commands{window};
  int meter = -1;
  int receiver = -1;
};

INSTANTIATE_TEST_SUITE_P(Both, LoggingWindowTest,
                         ::testing::Values(Orientation::kLandscape, Orientation::kPortrait),
                         [](const auto& info) {
                           return info.param == Orientation::kPortrait ? "portrait" : "landscape";
                         });

TEST_P(LoggingWindowTest, MonitorShowsEachReadingUntilTheMeterFallsQuiet) {
  QWidget* logging = openRun();
  ASSERT_TRUE(logging);
  EXPECT_EQ(logging->geometry(), window.rect());
  sendRecords(3,
              "$GPGGA,123519,4807.038,N,01131.000,E,2,08,0.9,545.4,M,46.9,M,,*44\r\n"
              "$GPGSA,A,3,04,05,,09,12,,,24,,,,,2.5,1.3,2.1*39\r\n");
  auto* status = logging->findChild<StatusPanel*>();
  ASSERT_TRUE(status);
  QStringList shown;
  for (StatusField field :
       {StatusField::kState, StatusField::kConductivity, StatusField::kGpsDisabled,
        StatusField::kGpsActivity, StatusField::kGpsSatellites, StatusField::kGpsFix,
        StatusField::kGpsPdop})
    shown << status->text(field).trimmed();
  EXPECT_EQ(shown.join('|').toStdString(), context.settings.gpsEnabled
                                               ? "Monitor|C:30.00||/|8|DGPS|2.5"
                                               : "Monitor|C:30.00   mS/m|GPS  Input  disabled||||");
  ASSERT_TRUE(visibleButton(logging, 460) && visibleButton(logging, 461));
  EXPECT_EQ(visibleButton(logging, 460)->text(), "&Create File");
  EXPECT_FALSE(visibleButton(logging, 462));

  // The meter falls quiet with New Station open (in Monitor too): the watch
  // closes the dialog, says so, and gives the menu its keys back.
  QString openTitle, caption, text;
  testing::ModalScript script({[&](QWidget* modal) {  // left open for the watch to close
                                 openTitle = modal->windowTitle();
                                 return true;
                               },
                               testing::acknowledgeMessageBox(&caption, &text)});
  QTest::keyClick(logging, Qt::Key_N);
  EXPECT_TRUE(script.finished());
  EXPECT_FALSE(script.timedOut());
  EXPECT_EQ(openTitle, "New Station");
  EXPECT_EQ(std::pair(caption, text),
            std::pair(QString("NO CONNECTION"), QString("NO CONNECTION Press <ENTER> to STOP")));
  EXPECT_FALSE(logging->isVisible());
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  EXPECT_EQ(window.focusedButton(), 0);
  QTest::keyClick(&window, Qt::Key_Tab);
  EXPECT_EQ(window.focusedButton(), 1);
}

}  // namespace
}  // namespace gc40
