// The map in View Files over surveys of the simulator's ground: every placed
// reading drawn and coloured by its value, the corrections of EXPORT.INI
// applied, the marker on the profile's bar, a tap choosing line and station,
// pictures, and the files it cannot place.

#include "viewer/survey_map.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QListWidget>
#include <QMouseEvent>
#include <QTest>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "harness/simulated_survey.h"
#include "map/map_texts.h"
#include "support/dialog_checks.h"
#include "survey/export_choices.h"
#include "viewer/view_curve.h"
#include "viewer/view_files_window.h"

namespace gc40 {
namespace {

using namespace gc40::testing;

// The simulator's grid: ten lines of 100 m, 2 m apart, the strongest target
// on line 5 (walked south) at 70 m, another on line 2 (walked north) at
// 30 m, the pipe across all of them near 85 m.
const SurveyOptions kGrid;
// Four lines of 30 m, for the files that are not placed by their fixes.
const SurveyOptions kSmallGrid{.lines = 4, .lineLength = 30};

struct MapScreen : ShownLogger {
  MapScreen(bool portrait, const SimulatedRecording& recording, const ExportChoices& exported = {})
      : ShownLogger(portrait ? Orientation::kPortrait : Orientation::kLandscape) {
    writeBytes(file, simulatedSurveyFile(recording));
    EXPECT_FALSE(saveExportChoices(context.storage.settingsFolder(), exported));
    EXPECT_TRUE(view.openFile(file));
    view.showOverMainWindow();
  }
  void key(int key) { QTest::keyClick(&view, static_cast<Qt::Key>(key)); }
  QImage shown() { return view.map()->grab().toImage(); }
  const MapReadings& map() { return view.mapReadings(); }
  std::string notes() { return view.map()->notes().join(" | ").toStdString(); }
  // The last placed reading of a station, found the long way.
  std::uint32_t readingAt(std::uint32_t line, std::uint32_t station) {
    const auto& readings = map().readings;
    for (std::size_t i = readings.size(); i-- > 0;)
      if (readings[i].line == line && readings[i].station == station)
        return static_cast<std::uint32_t>(i);
    ADD_FAILURE() << "no reading at line " << line << " station " << station;
    return 0;
  }
  // The strongest C/V reading of a line among stations [from, to).
  std::uint32_t peakOf(std::uint32_t line, std::uint32_t from, std::uint32_t to) {
    std::uint32_t best = 0;
    for (std::uint32_t i = 0; i < map().readings.size(); ++i) {
      const MapReading& r = map().readings[i];
      if (r.line == line && r.station >= from && r.station < to &&
          (map().readings[best].line != line || r.values[0] > map().readings[best].values[0]))
        best = i;
    }
    return best;
  }

  std::filesystem::path file = context.storage.dataFolder() / "SIMSURV.R40";
  ViewFilesWindow view{context, &window, 1};
};

class SurveyMapScreen : public ::testing::TestWithParam<Layout> {};

TEST_P(SurveyMapScreen, DrawsEveryPlacedReadingFollowsTheBarAndTakesTaps) {
  ExportChoices exported;
  exported.lagMs = 600;  // the simulator's meter is 600 ms late and rides 1.5 m behind
  exported.laybackM = 1.5;
  MapScreen screen(GetParam().portrait, {.survey = kGrid}, exported);
  screen.key('M');
  ASSERT_TRUE(screen.view.map()->isVisible());

  // 11300 readings; the first seven come before the first fix less the lag.
  QImage image = screen.shown();
  const MapDrawing& drawing = screen.view.map()->drawing();
  EXPECT_EQ(screen.map().withoutPosition, 7u);
  EXPECT_EQ(drawing.readingsDrawn, 11293u);
  EXPECT_EQ(screen.notes(), "7 readings without position");
  EXPECT_LT(drawing.dots.size(), drawing.readingsDrawn);

  // The strongest target's peak takes the top of the bar, and the peaks of
  // two targets walked in opposite directions lie as far apart as the
  // targets: the lag and layback were taken off (else 4.2 m more).
  const std::uint32_t strongest = screen.peakOf(5, 0, 2000);
  const QPoint at = screen.view.map()->pixelOf(strongest);
  const MapColour top = colourBar().back();
  EXPECT_EQ(image.pixel(at) & 0xFFFFFF, qRgb(top.red, top.green, top.blue) & 0xFFFFFF);
  const MapReading& a = screen.map().readings[strongest];
  const MapReading& b = screen.map().readings[screen.peakOf(2, 0, 659)];  // south of 60 m
  EXPECT_NEAR(a.x - b.x, 6.0, 0.1);
  EXPECT_NEAR(a.y - b.y, 70.0 - 30.0, 0.15);

  // The profile's bar on line 1: the marker stands on its station and moves with it.
  screen.key('M');
  screen.key(Qt::Key_Down);
  screen.key(Qt::Key_Return);
  for (int i = 0; i < 10; ++i) screen.key(Qt::Key_Right);
  screen.key('M');
  screen.shown();
  ASSERT_TRUE(screen.view.map()->drawing().marker);
  const auto markerAt = [&screen] {
    const MapPixel marker = *screen.view.map()->drawing().marker;
    return QPoint(static_cast<int>(std::floor(marker.x)), static_cast<int>(std::floor(marker.y)));
  };
  EXPECT_EQ(markerAt(), screen.view.map()->pixelOf(screen.readingAt(1, 10)));
  screen.key('M');  // back on the profile, the bar moves on
  for (int i = 0; i < 5; ++i) screen.key(Qt::Key_PageDown);
  screen.key('M');
  screen.shown();
  EXPECT_EQ(markerAt(), screen.view.map()->pixelOf(screen.readingAt(1, 410)));
  screen.view.grab().save(
      QStringLiteral(GC40_TEST_OUTPUT_DIR "/survey_map_%1.png").arg(GetParam().name));

  // Zoomed in until neighbouring readings have pixels of their own, a tap
  // on a dot of line 6 chooses that line and puts the bar on its station.
  screen.key('+');
  screen.key('+');
  screen.shown();
  const std::vector<MapDot>& dots = screen.view.map()->drawing().dots;
  const auto onLine6 = std::find_if(dots.begin(), dots.end(), [&](const MapDot& dot) {
    return screen.map().readings[dot.reading].line == 6;
  });
  ASSERT_NE(onLine6, dots.end());
  const MapReading tapped = screen.map().readings[onLine6->reading];
  QTest::mouseClick(screen.view.map(), Qt::LeftButton, {}, QPoint(onLine6->x, onLine6->y));
  EXPECT_EQ(screen.view.findChild<QListWidget*>("lines")->currentRow(), 6);
  EXPECT_EQ(screen.view.curveLine(), 6);
  EXPECT_EQ(screen.view.curve()->bar(), tapped.station);

  // A drag pans and chooses nothing; a notch of the wheel zooms about the pointer.
  SurveyMap* map = screen.view.map();
  const MapView before = map->view();
  const QPointF from(100, 100), to(130, 90);
  QMouseEvent press(QEvent::MouseButtonPress, from, from, Qt::LeftButton, Qt::LeftButton, {});
  QMouseEvent move(QEvent::MouseMove, to, to, Qt::NoButton, Qt::LeftButton, {});
  QMouseEvent release(QEvent::MouseButtonRelease, to, to, Qt::LeftButton, {}, {});
  for (QMouseEvent* event : {&press, &move, &release}) QApplication::sendEvent(map, event);
  EXPECT_NEAR(map->view().centreX, before.centreX - 30 * before.unitsPerPixel, 1e-9);
  EXPECT_NEAR(map->view().centreY, before.centreY - 10 * before.unitsPerPixel, 1e-9);
  EXPECT_EQ(screen.view.curveLine(), 6);
  const MapPixel pointer{50, 60};
  const MapPixel under = toGround(map->view(), map->dotsSize(), pointer);
  QWheelEvent wheel({50, 60}, {50, 60}, {}, {0, 120}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
  QApplication::sendEvent(map, &wheel);
  EXPECT_NEAR(map->view().unitsPerPixel, before.unitsPerPixel / std::sqrt(2.0), 1e-12);
  EXPECT_NEAR(toGround(map->view(), map->dotsSize(), pointer).x, under.x, 1e-9);
  EXPECT_NEAR(toGround(map->view(), map->dotsSize(), pointer).y, under.y, 1e-9);

  // 3 chooses the inphase, P saves the picture beside the data file.
  screen.key('3');
  EXPECT_EQ(screen.view.findChild<QComboBox*>("mapValue")->currentText(), "I/V");
  QString caption, text;
  ModalScript script({acknowledgeMessageBox(&caption, &text)});
  const auto saved = screen.view.savePicture();
  ASSERT_TRUE(saved && script.finished());
  EXPECT_EQ(*saved, screen.file.parent_path() / "SIMSURV-map-IV.png");
  EXPECT_EQ(text, "Picture saved as\n" + QString::fromStdString(saved->string()));
  const LayoutSize layout = layoutSize(GetParam().portrait);
  EXPECT_EQ(QImage(QString::fromStdString(saved->string())).size(),
            QSize(layout.width, layout.height) * 2);
  screen.key('L');
  EXPECT_TRUE(screen.view.findChild<QListWidget*>("lines")->isVisible());
}

INSTANTIATE_TEST_SUITE_P(BothLayouts, SurveyMapScreen, ::testing::ValuesIn(kLayouts));

// Without GPS the file stands on its grid; with GPS but never a fix, nothing
// can be placed and the map says so.
TEST(SurveyMapPlacing, GridWithoutGpsAndNothingWithoutAFix) {
  {  // one application at a time
    MapScreen grid(false, {.survey = kSmallGrid, .gps = false});
    grid.key('M');
    grid.shown();
    EXPECT_EQ(grid.map().placing, MapPlacing::kGrid);
    EXPECT_EQ(grid.view.map()->drawing().readingsDrawn, 1423u);
    EXPECT_EQ(grid.notes(), "Grid: station across, line up");
    grid.shown().save(GC40_TEST_OUTPUT_DIR "/survey_map_grid.png");
  }
  MapScreen noFix(false, {.survey = kSmallGrid, .fixes = false});
  noFix.key('M');
  noFix.shown();
  EXPECT_TRUE(noFix.view.map()->drawing().dots.empty());
  EXPECT_EQ(noFix.notes(), "No positions | 1423 readings without position");
}

}  // namespace
}  // namespace gc40
