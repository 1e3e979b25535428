// The export dialog over a walked survey: what it keeps between openings,
// the lag it estimates, and what Cancel and an unwritable folder leave.

#include <gdal_priv.h>
#include <gtest/gtest.h>
#include <ogrsf_frmts.h>
#include <unistd.h>

#include <QDoubleSpinBox>
#include <QProgressDialog>
#include <QScopeGuard>
#include <QSpinBox>
#include <QTest>
#include <clocale>
#include <set>

#include "app/export_dialog.h"
#include "app/main_commands.h"
#include "harness/walked_survey.h"
#include "support/dialog_checks.h"
#include "viewer/view_files_window.h"

namespace gc40 {
namespace {

using namespace gc40::testing;

class ExportDialogTest : public ::testing::Test {
 protected:
  std::filesystem::path survey(const std::string& name, const WalkedSurvey& walk) {
    const std::filesystem::path path = context.storage.dataFolder() / name;
    writeBytes(path, walkedSurveyFile(walk));
    return path;
  }
  // What the folder holds, by name: no staging folder may be left in it.
  std::set<std::string> dataFiles() const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(context.storage.dataFolder()))
      names.insert(entry.path().filename().string());
    return names;
  }
  bool choicesKept() const {
    return std::filesystem::exists(context.storage.settingsFolder() / "EXPORT.INI");
  }

  TestApplication<QApplication> application;
  TempFolder folder;
  LoggerContext context = makeContext(folder, false);
};

template <typename Spin>
Spin* spin(QWidget* dialog, int id) {
  return control<Spin>(dialog, id);
}

long long featureCount(const std::filesystem::path& path) {
  GDALAllRegister();
  GDALDatasetUniquePtr dataset(GDALDataset::Open(path.string().c_str(), GDAL_OF_VECTOR));
  return dataset ? dataset->GetLayer(0)->GetFeatureCount() : -1;
}

// Cancel keeps nothing; OK exports and keeps the choices, which the next
// opening shows, as the files write numbers whatever the desktop's locale.
TEST_F(ExportDialogTest, ChoicesKeptAcrossOpeningsOnlyWhenExported) {
  const auto walked = survey("WALK.R40", {.lines = 4});
  ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr) << "test locale missing (LOCPATH)";
  const QLocale desktop;
  QLocale::setDefault(QLocale(QLocale::German));
  const auto restore = qScopeGuard([&desktop] {
    std::setlocale(LC_ALL, "C");
    QLocale::setDefault(desktop);
  });
  const auto choose = [](QWidget* dialog) {
    select(dialog, kExportFormatId, 2);  // CSV
    select(dialog, kExportSystemId, 1);  // UTM
    spin<QSpinBox>(dialog, kExportLagId)->setValue(-250);
    spin<QDoubleSpinBox>(dialog, kExportLaybackId)->setValue(1.5);
    spin<QDoubleSpinBox>(dialog, kExportOffsetId)->setValue(-0.25);
  };
  for (const Layout& layout : kLayouts) {
    context.settings.portraitScreen = layout.portrait ? 1 : 0;
    ExportDialog shaped(nullptr, context, walked);
    shaped.show();
    checkLook(&shaped, layout, "export", "Export",
              {{900, {"Format", "System", "Lag", "Layback", "Offset", "Max gap", "Output"}},
               {920, {"GeoPackage|GeoJSON|CSV|KML|FlatGeobuf|Geosoft XYZ", "WGS 84|UTM|EPSG"}},
               {924, {"Estimate"}},
               {928, {QString::fromStdString((folder.path() / "DATA40/WALK.gpkg").string())}}});
  }
  {
    ExportDialog dialog(nullptr, context, walked);
    choose(&dialog);
    EXPECT_EQ(textOf(&dialog, kExportOutputId).toStdString(), walked.parent_path() / "WALK.csv");
    dialog.reject();
  }
  EXPECT_FALSE(choicesKept());

  ExportDialog second(nullptr, context, walked);
  EXPECT_EQ(spin<QSpinBox>(&second, kExportLagId)->value(), 0);
  choose(&second);
  QString caption, text;
  ModalScript script({acknowledgeMessageBox(&caption, &text)});
  click(&second, kIdOk);
  EXPECT_TRUE(script.finished());
  EXPECT_EQ(second.result(), 1);
  EXPECT_EQ(caption, "Export");
  EXPECT_TRUE(text.startsWith("Wrote " + QString::fromStdString(walked.parent_path() / "WALK.csv") +
                              "\n880 readings, 880 positioned (WGS 84 / UTM zone 32N)"))
      << text.toStdString();
  EXPECT_EQ(featureCount(walked.parent_path() / "WALK.csv"), 880);
  EXPECT_EQ(readBytes(context.storage.settingsFolder() / "EXPORT.INI"),
            "; gc40: the last export's choices, written when an export is made.\r\n"
            "Format=CSV\r\nSystem=UTM\r\nLagMs=-250\r\nLaybackM=1.50\r\nOffsetM=-0.25\r\n"
            "MaxGapS=2.0\r\n");

  ExportDialog third(nullptr, context, walked);
  EXPECT_EQ(control<QComboBox>(&third, kExportFormatId)->currentText(), "CSV");
  EXPECT_EQ(control<QComboBox>(&third, kExportSystemId)->currentText(), "UTM");
  EXPECT_EQ(spin<QSpinBox>(&third, kExportLagId)->value(), -250);
  EXPECT_EQ(spin<QDoubleSpinBox>(&third, kExportLaybackId)->text(), "1.50 m");
  EXPECT_EQ(spin<QDoubleSpinBox>(&third, kExportOffsetId)->value(), -0.25);
}

// The lag found in the file fills the field; a file that cannot tell says
// why and leaves the field as it was.
TEST_F(ExportDialogTest, EstimateFillsTheLagOrSaysWhyNot) {
  ExportDialog lagged(nullptr, context, survey("LAG.R40", {.lines = 6, .meterLagMs = 300}));
  click(&lagged, kExportEstimateId);
  EXPECT_NEAR(spin<QSpinBox>(&lagged, kExportLagId)->value(), 300, 30);
  EXPECT_TRUE(textOf(&lagged, kExportNoteId).startsWith("Lag estimated from the file: "));

  ExportDialog oneWay(nullptr, context, survey("ONE.R40", {.lines = 1}));
  spin<QSpinBox>(&oneWay, kExportLagId)->setValue(120);
  click(&oneWay, kExportEstimateId);
  EXPECT_EQ(spin<QSpinBox>(&oneWay, kExportLagId)->value(), 120);
  EXPECT_EQ(textOf(&oneWay, kExportNoteId), "No lag estimate: lines walked one way only.");
}

// Cancelled while it writes, the export leaves the folder as it found it,
// an earlier output of that name included, and keeps no choices.
TEST_F(ExportDialogTest, CancelWritesNothing) {
  const auto big = survey("BIG.R40", {.lines = 40, .readingsPerLine = 2000});
  writeBytes(big.parent_path() / "BIG.gpkg", "earlier");
  const std::set<std::string> before = dataFiles();
  ExportDialog dialog(nullptr, context, big, 0);
  bool progressShown = false;
  ModalScript script({[&](QWidget* modal) {
    auto* progress = qobject_cast<QProgressDialog*>(modal);
    auto* cancel = progress ? progress->findChild<QPushButton*>() : nullptr;
    if (!cancel) return false;
    progressShown = progress->isVisible();
    cancel->click();
    return true;
  }});
  click(&dialog, kIdOk);
  EXPECT_TRUE(script.finished() && progressShown);
  EXPECT_EQ(textOf(&dialog, kExportNoteId), "Export cancelled: nothing was written.");
  EXPECT_EQ(dataFiles(), before);
  EXPECT_EQ(readBytes(big.parent_path() / "BIG.gpkg"), "earlier");
  EXPECT_FALSE(choicesKept());
}

// A folder that cannot be written is named in the warning, and the dialog
// stays for another choice. Root writes into read-only folders, so there
// only a path under a plain file stands for one.
TEST_F(ExportDialogTest, UnwritableFolderIsNamed) {
  const auto walked = survey("WALK.R40", {.lines = 2});
  const std::filesystem::path readOnly = folder.path() / "readonly";
  std::filesystem::create_directories(readOnly);
  std::filesystem::permissions(
      readOnly, std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
  writeBytes(folder.path() / "plain", "");
  std::vector<std::pair<std::filesystem::path, QString>> targets = {
      {folder.path() / "plain/WALK.gpkg", "Not a directory"}};
  if (geteuid() != 0) targets.push_back({readOnly / "WALK.gpkg", "Permission denied"});
  for (const auto& [target, reason] : targets) {
    ExportDialog dialog(nullptr, context, walked);
    type(&dialog, kExportOutputId, QString::fromStdString(target.string()));
    QString caption, text;
    ModalScript script({acknowledgeMessageBox(&caption, &text)});
    click(&dialog, kIdOk);
    EXPECT_TRUE(script.finished());
    EXPECT_EQ(caption, "WARNING");
    EXPECT_EQ(text, "Cannot write " + QString::fromStdString(target.string()) + ": " + reason);
    EXPECT_EQ(dialog.result(), 0);
  }
  EXPECT_TRUE(std::filesystem::is_empty(readOnly));
  EXPECT_FALSE(choicesKept());
  std::filesystem::permissions(readOnly, std::filesystem::perms::owner_all);
}

// E on View Files opens the dialog for the open file, and the screen has
// the keys again once it closes.
TEST(ExportFromViewFiles, KeyEOpensTheDialogForTheOpenFile) {
  ShownLogger logger(Orientation::kLandscape);
  MainCommands commands(logger.window);
  const std::filesystem::path path = logger.context.storage.dataFolder() / "WALK.R40";
  writeBytes(path, walkedSurveyFile({.lines = 2}));
  auto* view = logger.window.findChild<ViewFilesWindow*>("ViewFilesWnd");
  ASSERT_TRUE(view && view->openFile(path));
  view->showOverMainWindow();
  const auto viewHasKeys = [view] {
    QWidget* focus = QApplication::focusWidget();
    return focus && (focus == view || view->isAncestorOf(focus));
  };
  ASSERT_TRUE(QTest::qWaitFor(viewHasKeys, 2000));
  QString offered;
  ModalScript script({[&offered](QWidget* modal) {
    auto* dialog = dynamic_cast<ExportDialog*>(modal);
    if (!dialog) return false;
    offered = textOf(dialog, kExportOutputId);
    dialog->reject();
    return true;
  }});
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_E);
  EXPECT_TRUE(script.finished());
  EXPECT_EQ(offered.toStdString(), path.parent_path() / "WALK.gpkg");
  EXPECT_TRUE(QTest::qWaitFor(viewHasKeys, 2000));
}

}  // namespace
}  // namespace gc40
