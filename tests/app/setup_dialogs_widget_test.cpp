#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QColorDialog>
#include <QTimer>
#include <algorithm>

#include "app/run_setup_dialogs.h"
#include "platform/serial_port_info.h"
#include "support/dialog_checks.h"
#include "support/test_application.h"

namespace gc40 {
namespace {

using Entry = int (*)(QWidget*, LoggerContext&);
using namespace gc40::testing;

int run(Entry entry, LoggerContext& context, std::vector<ModalScript::Step> steps) {
  ModalScript script(std::move(steps));
  const int result = entry(nullptr, context);
  EXPECT_TRUE(script.finished() && !script.timedOut());
  return result;
}

class SetupDialogWidgets : public ::testing::TestWithParam<Layout> {
 protected:
  testing::TestApplication<QApplication> application;
  testing::TempFolder folder;
  const Layout& layout = GetParam();
  LoggerContext context = makeContext(folder, layout.portrait);
  const std::string fileBefore = savedFile(context);
};
INSTANTIATE_TEST_SUITE_P(Both, SetupDialogWidgets, ::testing::ValuesIn(kLayouts),
                         [](const auto& info) { return std::string(info.param.name); });

const QString kComPorts =
    "COM1:|COM2:|COM3:|COM4:|COM5:|COM6:|COM7:|COM8:|COM9:|COM10:|COM11:|COM12:";

QString devicePath(QDialog* dialog) {
  auto* path = dialog->findChild<QLabel*>("devicePath");
  return path ? path->text() : "(no device path)";
}

// The line under the path, whole (it may show shortened); what this machine's
// adapters make of `path`.
void expectAdapterNote(QDialog* dialog, const std::string& path) {
  auto* note = dialog->findChild<QLabel*>("adapter");
  EXPECT_EQ(note ? note->toolTip().toStdString() : "(no adapter line)",
            adapterNote(findSerialAdapters(), path));
}

TEST_P(SetupDialogWidgets, LoggerSetupListsPathAndOk) {
  context.settings.pauseKey = 2;  // portrait offers "any key" alone
  run(&runLoggerSetup, context, {onDialog([&](QDialog* dialog) {
    checkLook(dialog, layout, "logger_setup", "Logger Setup",
              {{803, {"GC40 Port", "Units", "Audio", "Pause Key"}},
               {809, {"GC40 Type", "Standard|Short"}},
               {823,
                {kComPorts, "meters|feet", "No|Yes",
                 layout.portrait ? "any key" : "any key|<Space Bar>|<Enter>|<P>"}}});
    EXPECT_EQ(devicePath(dialog), "/dev/ttyUSB0");
    select(dialog, 823, 2);
    EXPECT_EQ(devicePath(dialog), "/dev/ttyUSB2");
    expectAdapterNote(dialog, "/dev/ttyUSB2");
    select(dialog, 824, 1);
    select(dialog, 810, 1);
    click(dialog, kIdOk);
  })});
  const Settings& s = context.settings;
  EXPECT_EQ(std::tuple(s.instrumentPort, s.distanceUnits, s.instrumentVariant, s.pauseKey),
            std::tuple(2, 1, 1, layout.portrait ? -1 : 2));  // the empty portrait choice
  EXPECT_EQ(savedFile(context), fileFor(context.settings));
}

// Monitor GPS Output stores without saving and ends with 1; OK stores and
// saves, and with GPS input enabled also ends with 1. A port outside the list
// selects nothing; a damaged baud index shows 9600.
TEST_P(SetupDialogWidgets, GpsPortMonitorThenOk) {
  context.settings.gpsPort = 12;
  context.settings.gpsBaudIndex = 6;
  const int monitor = run(&runGpsPortSetup, context, {onDialog([&](QDialog* dialog) {
    checkLook(dialog, layout, "gps_port", "Set GPS Port",
              {{700, {"GPS Input", "Serial Port", "Baud Rate", "Parity", "Data Bits", "Stop Bits"}},
               {720,
                {"Disabled|Enabled", kComPorts, "4800|9600|19200|38400|57600|115200", "No|Even|Odd",
                 "7|8", "1|2"}},
               {729, {"Monitor GPS Output"}}});
    EXPECT_EQ(std::pair(control<QComboBox>(dialog, 721)->currentIndex(),
                        control<QComboBox>(dialog, 722)->currentIndex()),
              std::pair(-1, 1));
    select(dialog, 721, 11);
    EXPECT_EQ(devicePath(dialog), "/dev/ttyUSB11");
    expectAdapterNote(dialog, "/dev/ttyUSB11");
    select(dialog, 720, 1);
    click(dialog, 729);
  })});
  EXPECT_EQ(std::tuple(monitor, context.settings.gpsEnabled, context.settings.gpsPort),
            std::tuple(1, 1, 11));
  EXPECT_EQ(savedFile(context), fileBefore);
  const int ok = run(&runGpsPortSetup, context, {onDialog([&](QDialog* dialog) {
    select(dialog, 722, 5);
    click(dialog, kIdOk);
  })});
  EXPECT_EQ(std::tuple(ok, context.settings.gpsBaudIndex), std::tuple(1, 5));
  EXPECT_EQ(savedFile(context), fileFor(context.settings));
}

// The mode rules themselves are the model's; here the controls follow them.
TEST_P(SetupDialogWidgets, SurveySetupFollowsTheModeAndOkStores) {
  const bool full = layout.portrait;
  run(&runSurveySetup, context, {onDialog([&](QDialog* dialog) {
    checkLook(dialog, layout, "survey_setup", "Survey Setup",
              {{600,
                {"GC40 Mode", "Readings/s", "Component", "Dipole Mode", "Survey Line",
                 full ? "Line Increment" : "Line Incr.", "Sequence", "Direction",
                 full ? "Start Station" : "Start Stn.", full ? "Stn Increment" : "Stn Incr."}},
               {620, {"Auto|Wheel|Manual", "5.00", "Both|Inphase", "Vertical|Horizontal"}},
               {625, {"1.00", "Alternate|One Way", "West|South|North|East", "0.000", "1.000"}}});
    select(dialog, 620, 1);
    EXPECT_TRUE(control<QLineEdit>(dialog, 621)->isReadOnly());
    type(dialog, 629, "0");  // no increment: rewritten at once
    EXPECT_EQ(textOf(dialog, 629), "1.000");
    select(dialog, 620, 0);
    type(dialog, 621, "20");
    type(dialog, 629, "3.5");
    type(dialog, 624, "12N");
    type(dialog, 628, "-40");
    select(dialog, 627, 3);
    click(dialog, kIdOk);
  })});
  const Settings& s = context.settings;
  EXPECT_EQ(std::tuple(s.readingInterval, s.stationIncrementAuto, s.stationIncrementWheel,
                       s.currentStation, s.lineDirection, s.surveyLine),
            std::tuple(0.05f, 3.5f, 0.2f, -40.0, 3, std::u16string(u"12N")));
  EXPECT_EQ(savedFile(context), fileFor(s));
}

// The picker runs inside the dialog's event handling: the click is queued and
// the picker is the script's next step, opened on black.
void clickLater(QWidget* dialog, int id) {
  if (auto* button = control<QPushButton>(dialog, id))
    QTimer::singleShot(0, button, [button] { button->click(); });
}

ModalScript::Step onPicker(QColor picked) {
  return [picked](QWidget* modal) {
    auto* picker = qobject_cast<QColorDialog*>(modal);
    if (!picker) return false;
    EXPECT_EQ(picker->currentColor(), QColor(Qt::black));
    picker->setCurrentColor(picked);
    picker->accept();
    return true;
  };
}

int pixelsOf(QWidget* widget, const QColor& colour) {
  const QImage image = widget->grab().toImage().convertToFormat(QImage::Format_RGB32);
  const auto* pixels = reinterpret_cast<const QRgb*>(image.constBits());
  return int(std::count(pixels, pixels + image.width() * image.height(), colour.rgb()));
}

// Thickness acts at once, in the painted colour button too, and Cancel puts
// it back; OK stores the picked colour, the boxes and the grid choice.
TEST_P(SetupDialogWidgets, DisplayOptionsLiveChangesCancelAndOk) {
  const QString thicknesses = "1 pixel|2 pixels|3 pixels|4 pixels";
  const Settings opened = context.settings;
  run(&runDisplayOptions, context, {onDialog([&](QDialog* dialog) {
    checkLook(dialog, layout, "display_options", "Display Options",
              {{740, {"Grey Grid Lines can be displayed ", "for Conductivity or Inphase scale"}},
               {744, {"Display", "Color", "Thickness"}},
               {748, {"Display Grid for:"}},
               {750, {"C/V", "C/H", "I/V", "I/H"}},
               {758, {"", "", "", ""}},
               {766, {thicknesses, thicknesses, thicknesses, thicknesses}},
               {775, {"Conductivity|Inphase"}}});
    const QColor blue(0, 0, 255);  // COLORREF 0xFF0000
    const int thin = pixelsOf(control(dialog, 758), blue);
    select(dialog, 766, 3);
    EXPECT_EQ(context.settings.traceThickness[0], 4);
    EXPECT_TRUE(thin > 0 && pixelsOf(control(dialog, 758), blue) > thin) << thin;
    click(dialog, kIdCancel);
  })});
  EXPECT_EQ(context.settings, opened);
  EXPECT_EQ(savedFile(context), fileBefore);
  run(&runDisplayOptions, context,
      {onDialog([&](QDialog* dialog) {
         control<QCheckBox>(dialog, 750)->setChecked(false);
         select(dialog, 775, 1);
         select(dialog, 769, 0);
         clickLater(dialog, 761);
       }),
       onPicker(QColor(0x12, 0x34, 0x56)), onDialog([&](QDialog* dialog) {
         EXPECT_GT(pixelsOf(control(dialog, 761), QColor(0x12, 0x34, 0x56)), 0);
         click(dialog, kIdOk);
       })});
  const Settings& s = context.settings;
  EXPECT_EQ(std::tuple(s.traceColour[3], s.traceThickness[3], s.gridScale, s.traceVisible[0]),
            std::tuple(0x563412u, 1, 1, 0));
  EXPECT_EQ(context.profileTraces.traceOn, (std::array<std::int32_t, 8>{0, 0, 1, 0, 0, 0, 0, 0}));
  EXPECT_EQ(savedFile(context), fileFor(s));
}

}  // namespace
}  // namespace gc40
