#pragma once
// Shared by the screens' and dialogs' widget tests: a logger on a temporary
// storage root and its main window, its saved settings file, controls by id,
// and a check of a dialog's look.
// Screenshots go to GC40_TEST_OUTPUT_DIR, which the test program defines.

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <functional>
#include <ostream>
#include <sstream>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "app/main_window.h"
#include "app/start_up.h"
#include "harness/temp_folder.h"
#include "settings/settings_file.h"
#include "support/modal_script.h"
#include "support/test_application.h"
#include "ui/setup_dialog.h"

namespace gc40::testing {

inline LoggerContext preparedLogger(const TempFolder& folder,
                                    Orientation orientation = Orientation::kLandscape,
                                    std::optional<int> scale = std::nullopt) {
  CommandLine options;
  options.storage = folder.path();
  options.orientation = orientation;
  options.scale = scale;
  std::ostringstream warnings;
  return std::get<LoggerContext>(prepareLogger(options, nullptr, warnings));
}

struct ShownLogger {
  explicit ShownLogger(Orientation shape) : context(preparedLogger(folder, shape, 1)) {
    window.show();
  }
  TestApplication<QApplication> application;
  TempFolder folder;
  LoggerContext context;
  MainWindow window{context};
};

struct Layout {
  bool portrait;
  const char* name;
};
inline void PrintTo(const Layout& layout, std::ostream* out) { *out << layout.name; }
inline constexpr Layout kLayouts[] = {{true, "portrait"}, {false, "landscape"}};

inline LoggerContext makeContext(const TempFolder& folder, bool portrait) {
  auto context = preparedLogger(folder);
  context.settings.portraitScreen = portrait ? 1 : 0;
  return context;
}

inline std::string savedFile(const LoggerContext& context) {
  return readBytes(context.storage.settingsFolder() / kSettingsFileName);
}

inline std::string fileFor(const Settings& settings) {
  std::string bytes;
  for (const std::string& line : settingsFileLines(settings)) bytes += line;
  return bytes;
}

template <typename Control = QWidget>
Control* control(QWidget* dialog, int id) {
  auto* found = dialog->findChild<Control*>(QString::number(id));
  if (!found) ADD_FAILURE() << "no control " << id;
  return found;
}

inline QString textOf(QWidget* dialog, int id) {
  QWidget* widget = control(dialog, id);
  if (auto* label = qobject_cast<QLabel*>(widget)) return label->text();
  if (auto* button = qobject_cast<QAbstractButton*>(widget)) return button->text();
  if (auto* edit = qobject_cast<QLineEdit*>(widget)) return edit->text();
  QStringList items;
  if (auto* combo = qobject_cast<QComboBox*>(widget))
    for (int i = 0; i < combo->count(); ++i) items << combo->itemText(i);
  return widget ? items.join('|') : QString();
}

inline void select(QWidget* dialog, int id, int index) {
  if (auto* combo = control<QComboBox>(dialog, id)) combo->setCurrentIndex(index);
}

inline void type(QWidget* dialog, int id, const QString& text) {
  if (auto* edit = control<QLineEdit>(dialog, id)) edit->setText(text);
}

inline void click(QWidget* dialog, int id) {
  if (auto* button = control<QPushButton>(dialog, id)) button->click();
}

using Rows = std::vector<std::pair<int, QStringList>>;

// Every control by its id with its exact text (from each id on, one text per
// control), no label, list or button narrower than its text or outside the
// dialog, and <name>_<layout>.png left in the tests' build folder.
inline void checkLook(QWidget* dialog, const Layout& layout, const char* name, const QString& title,
                      const Rows& texts) {
  EXPECT_EQ(dialog->windowTitle(), title);
  EXPECT_EQ(textOf(dialog, kIdOk) + textOf(dialog, kIdCancel), "OKCancel");
  for (const auto& [first, run] : texts)
    for (int i = 0; i < int(run.size()); ++i)
      EXPECT_EQ(textOf(dialog, first + i), run[i]) << first + i;
  EXPECT_EQ(dialog->size(), layout.portrait ? QSize(240, 320) : QSize(320, 240));
  for (QWidget* child : dialog->findChildren<QWidget*>()) {
    const auto* label = qobject_cast<QLabel*>(child);
    if (!label && !qobject_cast<QComboBox*>(child) && !qobject_cast<QAbstractButton*>(child))
      continue;
    const int needed = label ? label->fontMetrics().horizontalAdvance(label->text().trimmed())
                             : child->sizeHint().width();
    const std::string where = name + (" " + child->objectName().toStdString());
    EXPECT_GE(child->width(), needed) << where << " " << layout.name;
    EXPECT_LE(child->geometry().right(), dialog->width()) << where;
    EXPECT_LE(child->geometry().bottom(), dialog->height()) << where;
  }
  EXPECT_TRUE(dialog->grab().toImage().save(
      QStringLiteral(GC40_TEST_OUTPUT_DIR "/%1_%2.png").arg(name, layout.name)));
}

// A step for one of the program's dialogs (not a picker or message box it
// opens).
inline ModalScript::Step onDialog(std::function<void(QDialog*)> drive) {
  return [drive = std::move(drive)](QWidget* modal) {
    auto* dialog = qobject_cast<QDialog*>(modal);
    if (!dialog || !dynamic_cast<SetupDialog*>(modal)) return false;
    drive(dialog);
    return true;
  };
}

}  // namespace gc40::testing
