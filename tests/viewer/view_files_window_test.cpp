#include "viewer/view_files_window.h"

#include <gtest/gtest.h>

#include <QFileDialog>
#include <QLabel>
#include <QListWidget>
#include <QProgressDialog>
#include <QTest>

#include "base/number_text.h"
#include "instrument/reading_decoder.h"
#include "support/dialog_checks.h"
#include "support/modal_script.h"
#include "support/recorded_file.h"
#include "viewer/line_index_files.h"
#include "viewer/survey_file_loader.h"
#include "viewer/view_curve.h"
#include "viewer/viewer_texts.h"

namespace gc40 {
namespace {

using namespace gc40::testing;

// The raw values of the long line's station k, as the instrument sends them
// (conductivity and inphase wander about the middle of the default scales).
std::string valuesAt(int k) {
  const int conductivity = -(800 + (k * 53) % 600 - (k % 40) * 10);
  const int inphase = ((k * 7) % 31 - 15) * 600;
  return rightAligned(formatInteger(conductivity), 5) + rightAligned(formatInteger(inphase), 5);
}

const Settings kRecorded{
    .instrumentVariant = 1, .surveyMode = SurveyMode::kWheel, .surveyLine = u"7"};

// A short line, then one of 200 stations walked down.
std::string surveyFile() {
  RecordedFile file(kRecorded);
  file.reading(instrumentRecord(0x20, "001.0002.0")).reading(instrumentRecord(0x20, "001.0002.0"));
  file.newLine(u"8", 400.0, -2.0f);
  file.reading(instrumentRecord(0x20, valuesAt(0)));  // held at the start with the next
  for (int k = 0; k < 200; ++k) file.reading(instrumentRecord(0x20, valuesAt(k)));
  return file.bytes();
}

struct Screen : ShownLogger {
  explicit Screen(bool portrait)
      : ShownLogger(portrait ? Orientation::kPortrait : Orientation::kLandscape) {
    writeBytes(context.storage.dataFolder() / "SURVEY.R40", surveyFile());
  }
  QListWidget* lines() { return view.findChild<QListWidget*>(QStringLiteral("lines")); }
  // As the operator's keys come: to whatever has the focus, which must be the screen.
  void key(Qt::Key key) {
    const auto screenHasKeys = [this] {
      QWidget* focus = QApplication::focusWidget();
      return focus && (focus == &view || view.isAncestorOf(focus));
    };
    ASSERT_TRUE(QTest::qWaitFor(screenHasKeys, 2000));
    QTest::keyClick(QApplication::focusWidget(), key);
  }

  ViewFilesWindow view{context, &window, 1};
};

class ViewFilesScreen : public ::testing::TestWithParam<Layout> {};

TEST_P(ViewFilesScreen, OpensAFileAndWalksTheChosenLine) {
  Screen screen(GetParam().portrait);
  ModalScript script({fileDialogStep("SURVEY.R40", [](QFileDialog* dialog, const QString&) {
    EXPECT_EQ(dialog->nameFilters(), QStringList{"GC40 Files (*.R40)"});
  })});
  screen.view.showOverMainWindow();
  QTRY_VERIFY_WITH_TIMEOUT(screen.view.file().has_value(), 10000);
  EXPECT_EQ(screen.view.findChild<QLabel*>("header")->text(),
            "GC40 Short, GPS disabled\nUnits: meters   Mode: Wheel\n"
            "Component: Both   Dipole: Vertical");
  ASSERT_EQ(screen.lines()->count(), 2);
  EXPECT_EQ(screen.lines()->item(1)->text(), "Line 8  South\n400.00 to 2.00, 201 readings");
  const QString suffix = QString::fromLatin1(GetParam().name) + ".png";
  screen.view.grab().save(GC40_TEST_OUTPUT_DIR "/view_files_lines_" + suffix);

  screen.key(Qt::Key_Down);
  screen.key(Qt::Key_Return);
  ASSERT_TRUE(screen.view.curve()->isVisible());
  // The profile is drawn from the line index files, which hold the line.
  const std::filesystem::path settingsFolder = screen.context.storage.settingsFolder();
  const auto stored = decodeLineIndex(
      {readBytes(settingsFolder / "LINE1.R4X"), readBytes(settingsFolder / "LINE2.R4X")});
  ASSERT_EQ(std::get<std::vector<StationEntry>>(stored), screen.view.file()->lines[1].stations);

  // What the readout must say at station k: the decoded values of its reading.
  const auto expected = [](int k) {
    FiledValues filed;
    decodeInstrumentRecord(instrumentRecord(0x20, valuesAt(k)), kRecorded, filed);
    return "Stn: " + formatFixed(400.0 - 2.0 * k, 2) + " | " + formatInteger(k + 1) +
           " of 200 | C/V: " + formatFixed(filed.verticalConductivity, 2) +
           " | C/H:  | I/V: " + formatFixed(filed.verticalInphase, 2) + " | I/H: ";
  };
  EXPECT_EQ(screen.view.readout().toStdString(), expected(0));
  using Step = std::pair<Qt::Key, int>;  // a key and the station the bar lands on
  for (const auto& [key, station] :
       {Step{Qt::Key_Right, 1}, Step{Qt::Key_Right, 2}, Step{Qt::Key_Left, 1},
        Step{Qt::Key_PageDown, 81}, Step{Qt::Key_PageDown, 161}, Step{Qt::Key_PageDown, 199},
        Step{Qt::Key_PageUp, 119}, Step{Qt::Key_Home, 0}, Step{Qt::Key_End, 199}}) {
    screen.key(key);
    EXPECT_EQ(screen.view.readout().toStdString(), expected(station)) << station;
    const ViewCurve& curve = *screen.view.curve();
    EXPECT_TRUE(curve.bar() >= curve.firstShown() &&
                curve.bar() < curve.firstShown() + curve.columns());
  }
  screen.key(Qt::Key_PageUp);
  screen.view.grab().save(GC40_TEST_OUTPUT_DIR "/view_files_profile_" + suffix);

  screen.key(Qt::Key_L);
  EXPECT_TRUE(screen.lines()->isVisible());
  bool closed = false;
  QObject::connect(&screen.view, &ViewFilesWindow::closed, [&closed] { closed = true; });
  screen.key(Qt::Key_X);
  EXPECT_TRUE(closed && !screen.view.isVisible());
  EXPECT_TRUE(script.finished());
}

INSTANTIATE_TEST_SUITE_P(BothLayouts, ViewFilesScreen, ::testing::ValuesIn(kLayouts));

// Damage is skipped and named by its byte offsets; the rest still opens.
TEST(ViewFilesDamage, DamagedSpansAreNamedAndSkipped) {
  Screen screen(false);
  std::string bytes = surveyFile();
  bytes.replace(24 * 10 + 3, 2, "\n\n");  // the 11th record loses its shape
  bytes.resize(bytes.size() - 7);         // and the last its tail
  writeBytes(screen.context.storage.dataFolder() / "DAMAGED.R40", bytes);
  QString caption, text;
  ModalScript script({acknowledgeMessageBox(&caption, &text)});
  ASSERT_TRUE(screen.view.openFile(screen.context.storage.dataFolder() / "DAMAGED.R40"));
  EXPECT_TRUE(script.finished());
  EXPECT_EQ(caption, "View Files");
  SCOPED_TRACE(text.toStdString());
  EXPECT_TRUE(text.startsWith("DAMAGED.R40 is damaged. 2 parts could not be read"));
  EXPECT_TRUE(text.contains("byte 240 ("));
  EXPECT_TRUE(
      text.contains(QString("byte %1 (17 bytes): truncated record").arg(bytes.size() - 17)));
  EXPECT_EQ(screen.lines()->count(), 2);
}

// A file that takes a while shows its progress, and Cancel stops the reading.
TEST(ViewFilesLoading, ProgressShowsAndCancelStops) {
  Screen screen(false);
  const std::filesystem::path folder = screen.context.storage.dataFolder();
  RecordedFile file{Settings{}};
  for (int i = 0; i < 200000; ++i) file.reading(instrumentRecord(0x20, "001.0002.0"));
  writeBytes(folder / "BIG.R40", file.bytes());
  bool progressShown = false;
  ModalScript script({[&progressShown](QWidget* modal) {
    auto* progress = qobject_cast<QProgressDialog*>(modal);
    if (!progress) return false;
    progressShown = progress->isVisible();
    progress->cancel();
    return true;
  }});
  const LoadResult result = loadSurveyFile(folder / "BIG.R40", {}, &screen.window, 0);
  EXPECT_TRUE(progressShown);
  EXPECT_TRUE(std::holds_alternative<LoadCancelled>(result));
  const LoadResult missing = loadSurveyFile(folder / "NONE.R40", {}, &screen.window, 0);
  ASSERT_TRUE(std::holds_alternative<LoadFailure>(missing));
  EXPECT_TRUE(std::get<LoadFailure>(missing).message.startsWith(
      "Cannot read " + QString::fromStdString((folder / "NONE.R40").string())));
}

}  // namespace
}  // namespace gc40
