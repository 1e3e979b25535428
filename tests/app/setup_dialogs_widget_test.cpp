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

// Leaves <name>_<layout>.png in the tests' build folder for a look.
void screenshot(QWidget* dialog, const char* name, const Layout& layout) {
  EXPECT_FALSE(QFontInfo(dialog->font()).family().isEmpty());
  EXPECT_EQ(dialog->size(), layout.portrait ? QSize(240, 320) : QSize(320, 240));
  EXPECT_TRUE(dialog->grab().toImage().save(
      QStringLiteral(GC40_TEST_OUTPUT_DIR "/%1_%2.png").arg(name, layout.name)));
}

// Opens the dialog through its entry point and hands it to `drive`, which
// must end it; returns the dialog's result.
int runDialog(Entry entry, LoggerContext& context, const std::function<void(QDialog*)>& drive,
              QWidget* owner = nullptr) {
  testing::ModalScript script({[&](QWidget* modal) {
    auto* dialog = qobject_cast<QDialog*>(modal);
    if (!dialog || qobject_cast<QColorDialog*>(modal)) return false;
    drive(dialog);
    return true;
  }});
  const int result = entry(owner, context);
  EXPECT_TRUE(script.finished());
  EXPECT_FALSE(script.timedOut());
  return result;
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
      EXPECT_EQ(textOf(dialog, 809), "GC40 Type");
      EXPECT_EQ(textOf(dialog, 803), "GC40 Port");
      EXPECT_EQ(textOf(dialog, 804), "Units");
      EXPECT_EQ(textOf(dialog, 805), "Audio");
      EXPECT_EQ(textOf(dialog, 806), "Pause Key");
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

TEST(SetupDialogWidgets, GpsPortOkMonitorAndCancel) {
  testing::TestApplication<QApplication> application;
  for (const Layout& layout : kLayouts) {
    testing::TempFolder folder;
    auto context = makeContext(folder, layout.portrait);
    const std::string fileBefore = savedFile(context);
    // Monitor GPS Output: stored, not saved, result 1.
    int result = runDialog(&runGpsPortSetup, context, [&](QDialog* dialog) {
      EXPECT_EQ(dialog->windowTitle(), "Set GPS Port");
      EXPECT_EQ(textOf(dialog, 700), "GPS Input");
      EXPECT_EQ(textOf(dialog, 701), "Serial Port");
      EXPECT_EQ(textOf(dialog, 702), "Baud Rate");
      EXPECT_EQ(textOf(dialog, 703), "Parity");
      EXPECT_EQ(textOf(dialog, 704), "Data Bits");
      EXPECT_EQ(textOf(dialog, 705), "Stop Bits");
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

}  // namespace
}  // namespace gc40
