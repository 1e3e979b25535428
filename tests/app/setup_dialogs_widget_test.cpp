#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QFontInfo>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>
#include <sstream>

#include "app/logger_setup.h"
#include "app/main_window.h"
#include "app/setup_dialog.h"
#include "app/setup_dialogs.h"
#include "settings/settings_file.h"
#include "support/modal_script.h"
#include "support/temp_folder.h"
#include "support/test_application.h"

namespace gc40 {
namespace {

using Entry = int (*)(QWidget*, LoggerContext&);

struct Layout {
  bool portrait;
  const char* name;
};
constexpr Layout kLayouts[] = {{true, "portrait"}, {false, "landscape"}};

LoggerContext makeContext(const testing::TempFolder& folder, bool portrait) {
  CommandLine options;
  options.storage = folder.path();
  std::ostringstream warnings;
  auto context = std::get<LoggerContext>(prepareLogger(options, nullptr, warnings));
  context.settings.portraitScreen = portrait ? 1 : 0;
  return context;
}

std::string savedFile(const LoggerContext& context) {
  return testing::readBytes(context.storage.settingsFolder() / kSettingsFileName);
}

std::string fileFor(const Settings& settings) {
  std::string bytes;
  for (const std::string& line : settingsFileLines(settings)) bytes += line;
  return bytes;
}

template <typename Control>
Control* control(QWidget* dialog, int id) {
  auto* found = dialog->findChild<Control*>(QString::number(id));
  if (!found) ADD_FAILURE() << "no control " << id;
  return found;
}

QString textOf(QWidget* dialog, int id) {
  const auto* label = control<QLabel>(dialog, id);
  return label ? label->text() : QString();
}

using Texts = std::vector<std::pair<int, QString>>;

void expectLabels(QWidget* dialog, const Texts& labels) {
  for (const auto& [id, text] : labels) EXPECT_EQ(textOf(dialog, id), text) << id;
}

QStringList itemsOf(QWidget* dialog, int id) {
  QStringList items;
  if (auto* combo = control<QComboBox>(dialog, id))
    for (int i = 0; i < combo->count(); ++i) items << combo->itemText(i);
  return items;
}

void select(QWidget* dialog, int id, int index) {
  if (auto* combo = control<QComboBox>(dialog, id)) combo->setCurrentIndex(index);
}

void click(QWidget* dialog, int id) {
  if (auto* button = control<QPushButton>(dialog, id)) button->click();
}

// Checks that no label, list or button is narrower than its text needs, and
// leaves <name>_<layout>.png in the tests' build folder for a look.
void screenshot(QWidget* dialog, const char* name, const Layout& layout) {
  EXPECT_FALSE(QFontInfo(dialog->font()).family().isEmpty());
  EXPECT_EQ(dialog->size(), layout.portrait ? QSize(240, 320) : QSize(320, 240));
  for (QWidget* child : dialog->findChildren<QWidget*>()) {
    if (!qobject_cast<QLabel*>(child) && !qobject_cast<QComboBox*>(child) &&
        !qobject_cast<QAbstractButton*>(child))
      continue;
    // A label's trailing space may go unseen.
    const auto* label = qobject_cast<QLabel*>(child);
    const int needed = label ? label->fontMetrics().horizontalAdvance(label->text().trimmed())
                             : child->sizeHint().width();
    EXPECT_GE(child->width(), needed)
        << name << " " << layout.name << " " << child->objectName().toStdString();
    EXPECT_LE(child->geometry().right(), dialog->width()) << child->objectName().toStdString();
    EXPECT_LE(child->geometry().bottom(), dialog->height()) << child->objectName().toStdString();
  }
  EXPECT_TRUE(dialog->grab().toImage().save(
      QStringLiteral(GC40_TEST_OUTPUT_DIR "/%1_%2.png").arg(name, layout.name)));
}

using Drive = std::function<void(QDialog*)>;

// A script step for a setup dialog (not the colour picker it opens).
testing::ModalScript::Step onDialog(Drive drive) {
  return [drive = std::move(drive)](QWidget* modal) {
    auto* dialog = qobject_cast<QDialog*>(modal);
    if (!dialog || qobject_cast<QColorDialog*>(modal)) return false;
    drive(dialog);
    return true;
  };
}

// Opens the dialog through its entry point and runs the steps, which must end
// it; returns the dialog's result.
int runSteps(Entry entry, LoggerContext& context, std::vector<testing::ModalScript::Step> steps,
             QWidget* owner = nullptr) {
  testing::ModalScript script(std::move(steps));
  const int result = entry(owner, context);
  EXPECT_TRUE(script.finished());
  EXPECT_FALSE(script.timedOut());
  return result;
}

int runDialog(Entry entry, LoggerContext& context, Drive drive, QWidget* owner = nullptr) {
  return runSteps(entry, context, {onDialog(std::move(drive))}, owner);
}

const QStringList kComPorts = {"COM1:", "COM2:", "COM3:", "COM4:",  "COM5:",  "COM6:",
                               "COM7:", "COM8:", "COM9:", "COM10:", "COM11:", "COM12:"};

TEST(SetupDialogWidgets, LoggerSetupListsPathAndOk) {
  testing::TestApplication<QApplication> application;
  for (const Layout& layout : kLayouts) {
    testing::TempFolder folder;
    auto context = makeContext(folder, layout.portrait);
    context.settings.pauseKey = 2;  // chosen in landscape; portrait offers "any key" alone
    const int result = runDialog(&runLoggerSetup, context, [&](QDialog* dialog) {
      EXPECT_EQ(dialog->windowTitle(), "Logger Setup");
      expectLabels(dialog, {{809, "GC40 Type"},
                            {803, "GC40 Port"},
                            {804, "Units"},
                            {805, "Audio"},
                            {806, "Pause Key"}});
      EXPECT_EQ(itemsOf(dialog, 810), QStringList({"Standard", "Short"}));
      EXPECT_EQ(itemsOf(dialog, 823), kComPorts);
      EXPECT_EQ(itemsOf(dialog, 824), QStringList({"meters", "feet"}));
      EXPECT_EQ(itemsOf(dialog, 825), QStringList({"No", "Yes"}));
      EXPECT_EQ(itemsOf(dialog, 826),
                layout.portrait ? QStringList({"any key"})
                                : QStringList({"any key", "<Space Bar>", "<Enter>", "<P>"}));
      EXPECT_EQ(control<QComboBox>(dialog, 826)->currentIndex(), layout.portrait ? -1 : 2);
      auto* path = dialog->findChild<QLabel*>("devicePath");
      ASSERT_NE(path, nullptr);
      EXPECT_EQ(path->text(), "/dev/ttyUSB0");
      select(dialog, 823, 2);
      EXPECT_EQ(path->text(), "/dev/ttyUSB2");
      select(dialog, 824, 1);
      select(dialog, 810, 1);
      screenshot(dialog, "logger_setup", layout);
      click(dialog, kIdOk);
    });
    EXPECT_EQ(result, 0);
    EXPECT_EQ(context.settings.instrumentPort, 2);
    EXPECT_EQ(context.settings.distanceUnits, 1);
    EXPECT_EQ(context.settings.instrumentVariant, 1);
    // The portrait list selects nothing, and OK stores that as it stands.
    EXPECT_EQ(context.settings.pauseKey, layout.portrait ? -1 : 2);
    EXPECT_EQ(savedFile(context), fileFor(context.settings));
  }
}

TEST(SetupDialogWidgets, ScaledLikeTheMainWindow) {
  testing::TestApplication<QApplication> application;
  testing::TempFolder folder;
  auto context = makeContext(folder, true);
  context.options.orientation = Orientation::kPortrait;
  context.options.scale = 2;
  MainWindow window(context);
  runDialog(
      &runSurveySetup, context,
      [](QDialog* dialog) {
        EXPECT_EQ(dialog->size(), QSize(480, 640));
        EXPECT_EQ(dialog->font().pixelSize(), 28);
        EXPECT_EQ(control<QLabel>(dialog, 605)->text(), "Line Increment");
        dialog->reject();
      },
      &window);
}

TEST(SetupDialogWidgets, GpsPortOkMonitorAndCancel) {
  testing::TestApplication<QApplication> application;
  for (const Layout& layout : kLayouts) {
    testing::TempFolder folder;
    auto context = makeContext(folder, layout.portrait);
    const std::string fileBefore = savedFile(context);
    // Monitor GPS Output: stored, not saved, result 1.
    int result = runDialog(&runGpsPortSetup, context, [&](QDialog* dialog) {
      EXPECT_EQ(dialog->windowTitle(), "Set GPS Port");
      expectLabels(dialog, {{700, "GPS Input"},
                            {701, "Serial Port"},
                            {702, "Baud Rate"},
                            {703, "Parity"},
                            {704, "Data Bits"},
                            {705, "Stop Bits"}});
      EXPECT_EQ(itemsOf(dialog, 720), QStringList({"Disabled", "Enabled"}));
      EXPECT_EQ(itemsOf(dialog, 721), kComPorts);
      EXPECT_EQ(itemsOf(dialog, 722),
                QStringList({"4800", "9600", "19200", "38400", "57600", "115200"}));
      EXPECT_EQ(itemsOf(dialog, 723), QStringList({"No", "Even", "Odd"}));
      EXPECT_EQ(itemsOf(dialog, 724), QStringList({"7", "8"}));
      EXPECT_EQ(itemsOf(dialog, 725), QStringList({"1", "2"}));
      EXPECT_EQ(control<QPushButton>(dialog, 729)->text(), "Monitor GPS Output");
      auto* path = dialog->findChild<QLabel*>("devicePath");
      ASSERT_NE(path, nullptr);
      select(dialog, 721, 11);
      EXPECT_EQ(path->text(), "/dev/ttyUSB11");
      select(dialog, 720, 1);
      select(dialog, 722, 5);
      screenshot(dialog, "gps_port", layout);
      click(dialog, 729);
    });
    EXPECT_EQ(result, 1);
    EXPECT_EQ(context.settings.gpsEnabled, 1);
    EXPECT_EQ(context.settings.gpsPort, 11);
    EXPECT_EQ(context.settings.gpsBaudIndex, 5);
    EXPECT_EQ(savedFile(context), fileBefore);
    // Cancel leaves everything; OK saves.
    result = runDialog(&runGpsPortSetup, context, [&](QDialog* dialog) {
      EXPECT_EQ(control<QComboBox>(dialog, 721)->currentIndex(), 11);
      select(dialog, 723, 2);
      click(dialog, kIdCancel);
    });
    EXPECT_EQ(result, 0);
    EXPECT_EQ(context.settings.gpsParity, 0);
    EXPECT_EQ(savedFile(context), fileBefore);
    result = runDialog(&runGpsPortSetup, context, [&](QDialog* dialog) {
      select(dialog, 724, 0);
      select(dialog, 725, 1);
      click(dialog, kIdOk);
    });
    EXPECT_EQ(result, 0);
    EXPECT_EQ(context.settings.gpsDataBitsIndex, 0);
    EXPECT_EQ(context.settings.gpsStopBitsIndex, 1);
    EXPECT_EQ(savedFile(context), fileFor(context.settings));
  }
}

void typeInto(QWidget* dialog, int id, const QString& text) {
  if (auto* edit = control<QLineEdit>(dialog, id)) edit->setText(text);
}

QString editText(QWidget* dialog, int id) {
  const auto* edit = control<QLineEdit>(dialog, id);
  return edit ? edit->text() : QString();
}

TEST(SetupDialogWidgets, SurveySetupModesKeepTheirIncrementsAndOkStores) {
  testing::TestApplication<QApplication> application;
  for (const Layout& layout : kLayouts) {
    testing::TempFolder folder;
    auto context = makeContext(folder, layout.portrait);
    context.settings.stationIncrement = 2.0f;
    context.settings.stationIncrementAuto = 2.0f;
    context.settings.stationIncrementWheel = 0.5f;
    const int result = runDialog(&runSurveySetup, context, [&](QDialog* dialog) {
      EXPECT_EQ(dialog->windowTitle(), "Survey Setup");
      const bool full = layout.portrait;
      expectLabels(dialog, {{600, "GC40 Mode"},
                            {601, "Readings/s"},
                            {602, "Component"},
                            {603, "Dipole Mode"},
                            {604, "Survey Line"},
                            {605, full ? "Line Increment" : "Line Incr."},
                            {606, "Sequence"},
                            {607, "Direction"},
                            {608, full ? "Start Station" : "Start Stn."},
                            {609, full ? "Stn Increment" : "Stn Incr."}});
      EXPECT_EQ(itemsOf(dialog, 620), QStringList({"Auto", "Wheel", "Manual"}));
      EXPECT_EQ(itemsOf(dialog, 622), QStringList({"Both", "Inphase"}));
      EXPECT_EQ(itemsOf(dialog, 623), QStringList({"Vertical", "Horizontal"}));
      EXPECT_EQ(itemsOf(dialog, 626), QStringList({"Alternate", "One Way"}));
      EXPECT_EQ(itemsOf(dialog, 627), QStringList({"West", "South", "North", "East"}));
      EXPECT_EQ(editText(dialog, 621), "5.00");
      EXPECT_EQ(editText(dialog, 625), "1.00");
      EXPECT_EQ(editText(dialog, 628), "0.000");
      EXPECT_EQ(editText(dialog, 629), "2.000");
      screenshot(dialog, "survey_setup", layout);

      select(dialog, 620, 1);
      EXPECT_EQ(editText(dialog, 621), "Not Available");
      EXPECT_TRUE(control<QLineEdit>(dialog, 621)->isReadOnly());
      EXPECT_EQ(textOf(dialog, 609), "Wheel Inc.");
      EXPECT_EQ(editText(dialog, 629), "0.500");
      typeInto(dialog, 629, "0");  // no increment: rewritten at once
      EXPECT_EQ(editText(dialog, 629), "1.000");
      select(dialog, 620, 0);
      EXPECT_FALSE(control<QLineEdit>(dialog, 621)->isReadOnly());
      EXPECT_EQ(textOf(dialog, 609), "Stn Increment");
      EXPECT_EQ(editText(dialog, 629), "2.000");
      typeInto(dialog, 621, "20");
      select(dialog, 620, 1);
      EXPECT_EQ(editText(dialog, 629), "1.000");
      select(dialog, 620, 0);
      EXPECT_EQ(editText(dialog, 621), "20.00");
      typeInto(dialog, 629, "3.5");
      typeInto(dialog, 624, "12N");
      typeInto(dialog, 628, "-40");
      select(dialog, 627, 3);
      click(dialog, kIdOk);
    });
    EXPECT_EQ(result, 0);
    const Settings& settings = context.settings;
    EXPECT_FLOAT_EQ(settings.readingInterval, 0.05f);
    EXPECT_EQ(settings.cyclesPerReading, 1);
    EXPECT_EQ(settings.readingsPerSecondWhole, 11);
    EXPECT_FLOAT_EQ(settings.stationIncrement, 3.5f);
    EXPECT_FLOAT_EQ(settings.stationIncrementAuto, 3.5f);
    EXPECT_FLOAT_EQ(settings.stationIncrementWheel, 0.5f);  // the dialog's copy only
    EXPECT_EQ(settings.surveyLine, u"12N");
    EXPECT_FLOAT_EQ(settings.surveyLineValue, 12.0f);
    EXPECT_EQ(settings.currentStation, -40.0);
    EXPECT_EQ(settings.lineDirection, 3);
    EXPECT_EQ(savedFile(context), fileFor(settings));
  }
}

TEST(SetupDialogWidgets, SurveySetupDipoleResetOutlivesCancel) {
  testing::TestApplication<QApplication> application;
  testing::TempFolder folder;
  auto context = makeContext(folder, false);
  context.settings.surveyMode = 2;
  context.settings.dipoleMode = 2;
  const std::string fileBefore = savedFile(context);
  runDialog(&runSurveySetup, context, [&](QDialog* dialog) {
    EXPECT_EQ(textOf(dialog, 601), "Sample/Rdg");
    EXPECT_EQ(editText(dialog, 621), "10");
    EXPECT_EQ(itemsOf(dialog, 623), QStringList({"Vertical", "Horizontal", "Both"}));
    EXPECT_EQ(control<QComboBox>(dialog, 623)->currentIndex(), 2);
    select(dialog, 620, 0);
    EXPECT_EQ(context.settings.dipoleMode, 0);
    EXPECT_EQ(itemsOf(dialog, 623), QStringList({"Vertical", "Horizontal"}));
    EXPECT_EQ(control<QComboBox>(dialog, 623)->currentIndex(), 0);
    select(dialog, 620, 2);
    EXPECT_EQ(textOf(dialog, 601), "Samples/Rdg");
    click(dialog, kIdCancel);
  });
  EXPECT_EQ(context.settings.dipoleMode, 0);
  EXPECT_EQ(context.settings.surveyMode, 2);
  EXPECT_EQ(savedFile(context), fileBefore);
}

// The picker runs inside the dialog's event handling, so the click is queued
// and the picker is the script's next step.
void clickLater(QWidget* dialog, int id) {
  if (auto* button = control<QPushButton>(dialog, id))
    QTimer::singleShot(0, button, [button] { button->click(); });
}

testing::ModalScript::Step onPicker(std::function<void(QColorDialog*)> drive) {
  return [drive = std::move(drive)](QWidget* modal) {
    auto* picker = qobject_cast<QColorDialog*>(modal);
    if (!picker) return false;
    EXPECT_EQ(picker->currentColor(), QColor(Qt::black));
    drive(picker);
    return true;
  };
}

int pixelsOf(QWidget* widget, const QColor& colour) {
  const QImage image = widget->grab().toImage();
  int count = 0;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x) count += image.pixelColor(x, y) == colour;
  return count;
}

TEST(SetupDialogWidgets, DisplayOptionsLiveChangesCancelAndOk) {
  testing::TestApplication<QApplication> application;
  for (const Layout& layout : kLayouts) {
    testing::TempFolder folder;
    auto context = makeContext(folder, layout.portrait);
    const Settings opened = context.settings;
    const std::string fileBefore = savedFile(context);
    // Cancel: the live thickness and the black of a cancelled picker go back.
    runSteps(
        &runDisplayOptions, context,
        {onDialog([&](QDialog* dialog) {
           EXPECT_EQ(dialog->windowTitle(), "Display Options");
           expectLabels(dialog, {{744, "Display"},
                                 {745, "Color"},
                                 {746, "Thickness"},
                                 {748, "Display Grid for:"},
                                 {740, "Grey Grid Lines can be displayed "},
                                 {741, "for Conductivity or Inphase scale"}});
           const QString names[] = {"C/V", "C/H", "I/V", "I/H"};
           for (int i = 0; i < 4; ++i) {
             auto* check = control<QCheckBox>(dialog, 750 + i);
             ASSERT_NE(check, nullptr);
             EXPECT_EQ(check->text(), names[i]);
             EXPECT_TRUE(check->isChecked());
             EXPECT_EQ(itemsOf(dialog, 766 + i),
                       QStringList({"1 pixel", "2 pixels", "3 pixels", "4 pixels"}));
             EXPECT_EQ(control<QComboBox>(dialog, 766 + i)->currentIndex(), 1);
             EXPECT_NE(control<QPushButton>(dialog, 758 + i), nullptr);
           }
           EXPECT_EQ(itemsOf(dialog, 775), QStringList({"Conductivity", "Inphase"}));
           // COLORREF 0xFF0000 is blue.
           auto* blue = control<QPushButton>(dialog, 758);
           const int thin = pixelsOf(blue, QColor(0, 0, 255));
           EXPECT_GT(thin, 0);
           select(dialog, 766, 3);
           EXPECT_EQ(context.settings.traceThickness[0], 4);
           EXPECT_GT(pixelsOf(blue, QColor(0, 0, 255)), thin);  // the wider sample line
           const QImage up = blue->grab().toImage();
           blue->setDown(true);  // pressed: the sample line slants
           const QImage down = blue->grab().toImage();
           const int above = down.height() / 2 - 4;  // raised at the start, lowered at the end
           EXPECT_NE(up.pixelColor(8, above), QColor(0, 0, 255));
           EXPECT_EQ(down.pixelColor(8, above), QColor(0, 0, 255));
           EXPECT_NE(down.pixelColor(down.width() - 10, above), QColor(0, 0, 255));
           blue->setDown(false);
           screenshot(dialog, "display_options", layout);
           clickLater(dialog, 759);
         }),
         onPicker([](QColorDialog* picker) { picker->reject(); }), onDialog([&](QDialog* dialog) {
           EXPECT_EQ(context.settings.traceColour[1], 0x000000u);
           EXPECT_GT(pixelsOf(control<QPushButton>(dialog, 759), Qt::black), 0);
           click(dialog, kIdCancel);
         })});
    EXPECT_EQ(context.settings.traceThickness, opened.traceThickness);
    EXPECT_EQ(context.settings.traceColour, opened.traceColour);
    EXPECT_EQ(savedFile(context), fileBefore);
    // OK: a picked colour, visibility, grid, and the profile's traces.
    runSteps(&runDisplayOptions, context,
             {onDialog([&](QDialog* dialog) {
                control<QCheckBox>(dialog, 750)->setChecked(false);
                select(dialog, 775, 1);
                select(dialog, 769, 0);
                clickLater(dialog, 761);
              }),
              onPicker([](QColorDialog* picker) {
                picker->setCurrentColor(QColor(0x12, 0x34, 0x56));
                picker->accept();
              }),
              onDialog([&](QDialog* dialog) { click(dialog, kIdOk); })});
    const Settings& settings = context.settings;
    EXPECT_EQ(settings.traceColour[3], 0x563412u);
    EXPECT_EQ(settings.traceThickness[3], 1);
    EXPECT_EQ(settings.gridScale, 1);
    EXPECT_EQ(settings.traceVisible, (std::array<std::int32_t, 8>{0, 1, 1, 1, 0, 0, 0, 0}));
    EXPECT_EQ(context.profileTraces.traceOn, (std::array<std::int32_t, 8>{0, 0, 1, 0, 0, 0, 0, 0}));
    EXPECT_EQ(savedFile(context), fileFor(settings));
  }
}

}  // namespace
}  // namespace gc40
