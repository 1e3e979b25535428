// Drawing the map of a day's survey: an eight-hour file (316,800 readings, a
// GPS fix a second), loaded and placed once, then drawn as View Files draws
// it (the dots kept one per pixel, painted with the colour bar, scale bar and
// marker) into an image of the map's size on the screen, in both layouts at
// the window's scale 1 and 3. The first showing also takes the percentiles.

#include <benchmark/benchmark.h>

#include <QImage>
#include <QPainter>

#include "harness/walked_survey.h"
#include "map/map_colours.h"
#include "survey/reading_positions.h"
#include "ui/offscreen_gui.h"
#include "viewer/map_painter.h"

namespace gc40 {
namespace {

// 144 lines of 2,200 readings: 316,800 readings, eight hours at 11 a second,
// the survey the export bench writes.
constexpr testing::WalkedSurvey kEightHours{.lines = 144, .readingsPerLine = 2200};

// The map's part of the View Files screen in layout pixels: the screen less
// the row of choices over it and the buttons under it.
constexpr PixelSize kLandscapeMap{320, 196};
constexpr PixelSize kPortraitMap{240, 276};

const MapReadings& eightHours() {
  static const MapReadings map = [] {
    const DataFileContents contents = readDataFile(testing::walkedSurveyFile(kEightHours));
    const SurveyFile survey = *splitSurveyLines(contents);
    return mapReadings(positionReadings(contents, survey, {}), survey);
  }();
  return map;
}

MapPaint paintOf(const MapReadings& map, PixelSize layout, int scale) {
  MapPaint paint{.map = &map, .scene = {}, .hasLimits = true, .view = {}, .scale = scale};
  paint.scene.limits = *percentileLimits(map, 0);
  paint.scene.selectedLine = 70;
  paint.scene.marker = MapStation{70, 1000};
  paint.view = fitView(*mapBounds(map), mapDotsSize(layout.width, layout.height), kMapFitMargin);
  return paint;
}

void drawEightHourMap(benchmark::State& state) {
  const MapReadings& map = eightHours();
  const PixelSize layout = state.range(0) ? kPortraitMap : kLandscapeMap;
  const int scale = static_cast<int>(state.range(1));
  const MapPaint paint = paintOf(map, layout, scale);
  QImage image(layout.width * scale, layout.height * scale, QImage::Format_RGB32);
  PaintedMap painted;
  for (auto _ : state) {
    QPainter painter(&image);
    painted = paintMap(painter, image.rect(), paint);
  }
  state.counters["readings"] = static_cast<double>(map.readings.size());
  state.counters["drawn"] = static_cast<double>(painted.drawing.readingsDrawn);
  state.counters["dots"] = static_cast<double>(painted.drawing.dots.size());
}
BENCHMARK(drawEightHourMap)
    ->ArgNames({"portrait", "scale"})
    ->ArgsProduct({{0, 1}, {1, 3}})
    ->Unit(benchmark::kMillisecond);

// The first showing of a value: its percentiles, then the picture.
void showEightHourMapFirst(benchmark::State& state) {
  const MapReadings& map = eightHours();
  MapPaint paint = paintOf(map, kLandscapeMap, 1);
  QImage image(kLandscapeMap.width, kLandscapeMap.height, QImage::Format_RGB32);
  for (auto _ : state) {
    paint.scene.limits = *percentileLimits(map, 0);
    QPainter painter(&image);
    benchmark::DoNotOptimize(paintMap(painter, image.rect(), paint));
  }
}
BENCHMARK(showEightHourMapFirst)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace gc40

int main(int argc, char** argv) {
  const gc40::OffscreenGui gui;
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
