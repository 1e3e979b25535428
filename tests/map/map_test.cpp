// The map's arithmetic with literal numbers: where readings go, their
// colours, the view, the dots kept per pixel, the tap, and the words.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <set>

#include "map/map_drawing.h"
#include "map/map_texts.h"

namespace gc40 {
namespace {

constexpr float kNone = std::numeric_limits<float>::quiet_NaN();

GeoPosition fix(double latitude, double longitude) {
  GeoPosition position;
  position.latitude = latitude;
  position.longitude = longitude;
  return position;
}

PositionedReading placed(std::size_t line, double station, std::optional<float> cv,
                         std::optional<GeoPosition> at) {
  PositionedReading reading;
  reading.lineIndex = line;
  reading.station = station;
  reading.verticalConductivity = cv;
  reading.position = at;
  return reading;
}

SurveyFile twoLines(bool gps) {
  SurveyFile survey;
  survey.identification.emplace();
  survey.identification->gpsEnabled = gps;
  survey.identification->distanceUnits = 1;
  for (const char* name : {"10", "North"}) {
    SurveyLine& line = survey.lines.emplace_back();
    line.name = name;
    for (const double station : {0.0, 0.5, 1.0}) line.stations.push_back({.station = station});
  }
  return survey;
}

MapReading at(float x, float y, std::uint32_t line = 0, std::uint32_t station = 0, float cv = 1) {
  return {x, y, {cv, kNone, kNone, kNone}, line, station};
}

// Fixes place readings in metres from the first one placed, north up; a
// file recorded without GPS stands on its grid; one with GPS but no fix on
// nothing.
TEST(MapReadings, MetresFromFixesGridWithoutGpsNothingWithoutAFix) {
  PositionedFile file;
  file.hasFixes = true;
  file.readings = {placed(1, 0.5, std::nullopt, std::nullopt),
                   placed(0, 1.0, 12.5f, fix(45.0, 7.0)), placed(1, 1.0, 3.0f, fix(45.001, 7.001))};
  file.readings[2].horizontalInphase = -1.5f;
  const MapReadings map = mapReadings(file, twoLines(true));
  EXPECT_EQ(map.placing, MapPlacing::kPositions);
  EXPECT_EQ(map.withoutPosition, 1u);
  ASSERT_EQ(map.readings.size(), 2u);
  EXPECT_EQ(map.readings[0].x, 0.0f);
  EXPECT_NEAR(map.readings[1].x, 78.85, 0.01);  // a thousandth of a degree at 45 degrees north
  EXPECT_NEAR(map.readings[1].y, 111.13, 0.01);
  EXPECT_EQ(map.readings[0].values[0], 12.5f);
  EXPECT_TRUE(std::isnan(map.readings[0].values[3]));
  EXPECT_EQ(map.readings[1].values[3], -1.5f);
  EXPECT_EQ(map.readings[1].line, 1u);
  EXPECT_EQ(map.readings[1].station, 2u);  // the third station of its line

  PositionedFile grid;
  grid.readings = {placed(0, 0.5, 1.0f, std::nullopt), placed(1, 1.0, 1.0f, std::nullopt)};
  grid.readings[0].gridX = 0.5;
  grid.readings[0].gridY = 10.0;
  grid.readings[1].gridX = 1.0;  // "North" is no number
  const MapReadings gridded = mapReadings(grid, twoLines(false));
  EXPECT_EQ(gridded.placing, MapPlacing::kGrid);
  EXPECT_EQ(gridded.distanceUnits, 1);
  ASSERT_EQ(gridded.readings.size(), 1u);
  EXPECT_EQ(gridded.readings[0].x, 0.5f);
  EXPECT_EQ(gridded.readings[0].y, 10.0f);
  EXPECT_EQ(gridded.readings[0].station, 1u);
  EXPECT_EQ(gridded.withoutPosition, 1u);

  const MapReadings noFix = mapReadings(grid, twoLines(true));
  EXPECT_EQ(noFix.placing, MapPlacing::kPositions);
  EXPECT_TRUE(noFix.readings.empty());
  EXPECT_EQ(noFix.withoutPosition, 2u);

  MapReadings horizontal;
  horizontal.readings = {{0, 0, {kNone, 4.0f, kNone, 0.5f}, 0, 0}};
  EXPECT_EQ(valueShown(horizontal, 0), 1u);
  EXPECT_EQ(valueShown(horizontal, 3), 3u);
}

TEST(MapColours, BarEndsStepsPercentilesAndScales) {
  EXPECT_EQ(colourBar().front(), (MapColour{20, 40, 190}));
  EXPECT_EQ(colourBar().back(), (MapColour{215, 30, 30}));
  const ColourLimits limits{10.0f, 20.0f};
  EXPECT_EQ(colourStep(9.0f, limits), 0);
  EXPECT_EQ(colourStep(10.0f, limits), 0);
  EXPECT_EQ(colourStep(14.99f, limits), 15);
  EXPECT_EQ(colourStep(15.0f, limits), 16);
  EXPECT_EQ(colourStep(20.0f, limits), kColourSteps - 1);
  EXPECT_EQ(colourStep(1e9f, limits), kColourSteps - 1);
  EXPECT_EQ(colourStep(kNone, limits), -1);

  std::vector<float> values;
  for (int i = 101; i >= 1; --i) values.push_back(static_cast<float>(i));
  EXPECT_EQ(percentile(values, 2.0), 3.0f);
  EXPECT_EQ(percentile(values, 98.0), 99.0f);
  std::vector<float> four{4, 1, 3, 2};
  EXPECT_EQ(percentile(four, 50.0), 2.5f);

  MapReadings map;
  for (int i = 1; i <= 101; ++i) map.readings.push_back(at(0, 0, 0, 0, static_cast<float>(i)));
  map.readings.push_back(at(0, 0, 0, 0, kNone));  // no value: not counted
  EXPECT_EQ(percentileLimits(map, 0), (ColourLimits{3.0f, 99.0f}));
  EXPECT_EQ(percentileLimits(map, 1), std::nullopt);
  map.readings = {at(0, 0, 0, 0, 7.0f), at(0, 0, 0, 0, 7.0f)};
  EXPECT_EQ(percentileLimits(map, 0), (ColourLimits{6.5f, 7.5f}));  // spread apart

  Settings settings;
  settings.inphaseScaleMin = 25.0f;
  settings.inphaseScaleMax = -25.0f;
  EXPECT_EQ(scaleLimits(settings, 1), (ColourLimits{0.0f, 500.0f}));
  EXPECT_EQ(scaleLimits(settings, 2), (ColourLimits{-25.0f, 25.0f}));
}

TEST(MapView, FitPanZoomAndTheirLimits) {
  MapReadings map;
  map.readings = {at(0, 50), at(100, 0), at(30, 20)};
  const MapBounds bounds = *mapBounds(map);
  EXPECT_EQ(bounds.left, 0);
  EXPECT_EQ(bounds.right, 100);
  EXPECT_EQ(bounds.top, 50);
  const PixelSize size{110, 60};
  const MapView fitted = fitView(bounds, size, 5);
  EXPECT_EQ(fitted, (MapView{50, 25, 1.0}));
  const MapPixel corner = toPixel(fitted, size, 0, 0);
  EXPECT_EQ(corner.x, 5);
  EXPECT_EQ(corner.y, 55);  // north up
  EXPECT_EQ(toGround(fitted, size, {5, 55}).x, 0.0);
  EXPECT_EQ(scaledView(fitted, 2).unitsPerPixel, 0.5);
  EXPECT_EQ(fitView({3, 4, 3, 4}, size, 5), (MapView{3, 4, 0.1}));

  EXPECT_EQ(movedView(fitted, MapMove::kRight, size, fitted), (MapView{77.5, 25, 1}));
  EXPECT_EQ(movedView(fitted, MapMove::kDown, size, fitted), (MapView{50, 10, 1}));
  EXPECT_EQ(movedView(fitted, MapMove::kZoomIn, size, fitted), (MapView{50, 25, 0.5}));
  EXPECT_EQ(movedView({1, 2, 3}, MapMove::kFit, size, fitted), fitted);
  // The ground under the pointer stays there; the finger drags the ground.
  const MapView zoomed = zoomedView(fitted, 4, {5, 55}, size, fitted);
  EXPECT_EQ(zoomed.unitsPerPixel, 0.25);
  EXPECT_EQ(toPixel(zoomed, size, 0, 0).x, 5);
  EXPECT_EQ(toPixel(zoomed, size, 0, 0).y, 55);
  const MapPixel dragged = toPixel(draggedView(fitted, 10, -4), size, 0, 0);
  EXPECT_EQ(dragged.x, 15);
  EXPECT_EQ(dragged.y, 51);
  EXPECT_EQ(zoomedView(fitted, 1e6, {0, 0}, size, fitted).unitsPerPixel, kFinestUnitsPerPixel);
  EXPECT_EQ(zoomedView(fitted, 1e-6, {0, 0}, size, fitted).unitsPerPixel, 8.0);
}

// Ten pixels a side at a unit a pixel: x across, y up from the bottom.
const MapView kTen{5, 5, 1};

TEST(MapDrawing, LastReadingPerPixelSelectedLineOnTopMarkerAndTap) {
  MapReadings map;
  map.readings = {
      at(1.2f, 8.5f, 0, 0, 10),  at(1.7f, 8.9f, 0, 1, 20),   // one pixel: the later shows
      at(4.5f, 4.5f, 1, 0, 30),  at(10.2f, 4.5f, 0, 2, 40),  // half outside, still seen
      at(-0.5f, 4.5f, 0, 3, 50), at(4.5f, 4.5f, 0, 4, kNone)};
  const MapScene scene{.value = 0, .limits = {10, 50}, .selectedLine = 1, .marker = {{0, 1}}};
  const MapDrawing drawing = drawMap(map, scene, kTen, {10, 10}, 2);
  EXPECT_EQ(drawing.readingsDrawn, 5u);
  EXPECT_EQ(drawing.dots,
            (std::vector<MapDot>{{1, 1, 1, 8}, {10, 5, 3, 24}, {4, 5, 5, -1}, {4, 5, 2, 16}}));
  EXPECT_EQ(drawing.selectedFrom, 3u);
  EXPECT_NEAR(drawing.marker->x, 1.7, 1e-6);
  EXPECT_NEAR(drawing.marker->y, 1.1, 1e-6);

  // Of the two dots in pixel (4, 5) the one on top answers; none beyond the radius.
  EXPECT_EQ(tappedReading(drawing, {4.5, 5.5}, 3), 2u);
  EXPECT_EQ(tappedReading(drawing, {1.0, 2.0}, 1), 1u);
  EXPECT_EQ(tappedReading(drawing, {8.0, 9.0}, 2), std::nullopt);
}

// Drawing the kept dots in order, each a square, leaves every pixel as
// drawing all the readings would: checked pixel by pixel on random surveys.
TEST(MapDrawing, KeptDotsPaintWhatEveryReadingWould) {
  std::mt19937 random(7);
  std::uniform_real_distribution<float> place(-3.0f, 14.0f);
  for (const int dot : {1, 2, 3, 4}) {
    MapReadings map;
    for (int i = 0; i < 400; ++i)
      map.readings.push_back(at(place(random), place(random), i % 3 == 0 ? 1 : 0, 0, 0));
    const MapScene scene{.value = 0, .limits = {0, 1}, .selectedLine = 1, .marker = {}};
    const PixelSize size{12, 9};
    const auto paint = [&](std::vector<int>& raster, int x, int y, int reading) {
      for (int row = y - dot / 2; row < y - dot / 2 + dot; ++row)
        for (int column = x - dot / 2; column < x - dot / 2 + dot; ++column)
          if (row >= 0 && row < size.height && column >= 0 && column < size.width)
            raster[static_cast<std::size_t>(row * size.width + column)] = reading;
    };
    std::vector<int> every(12 * 9, -1), kept(12 * 9, -1);
    for (const bool selected : {false, true})
      for (std::size_t i = 0; i < map.readings.size(); ++i) {
        if ((map.readings[i].line == 1) != selected) continue;
        const MapPixel p = toPixel(kTen, size, map.readings[i].x, map.readings[i].y);
        paint(every, static_cast<int>(std::floor(p.x)), static_cast<int>(std::floor(p.y)),
              static_cast<int>(i));
      }
    for (const MapDot& d : drawMap(map, scene, kTen, size, dot).dots)
      paint(kept, d.x, d.y, static_cast<int>(d.reading));
    EXPECT_EQ(kept, every) << "dots of " << dot;
  }
}

TEST(MapTexts, ScaleBarLimitsCountsTitlesAndPictureNames) {
  const auto bar = [](double unitsPerPixel, int pixels, MapPlacing placing, int units) {
    const ScaleBar made = scaleBar(unitsPerPixel, pixels, placing, units);
    return made.text + " " + std::to_string(made.pixels);
  };
  EXPECT_EQ(bar(0.37, 100, MapPlacing::kPositions, 1), "20 m 54");
  EXPECT_EQ(bar(25, 100, MapPlacing::kPositions, 0), "2 km 80");
  EXPECT_EQ(bar(0.004, 100, MapPlacing::kPositions, 0), "0.2 m 50");
  EXPECT_EQ(bar(1, 60, MapPlacing::kGrid, 1), "50 ft 50");
  EXPECT_EQ(bar(0.1, 100, MapPlacing::kGrid, 0), "10 m 100");

  EXPECT_EQ(limitText(123.456f, {0, 500}), "123");
  EXPECT_EQ(limitText(123.456f, {0, 50}), "123.5");
  EXPECT_EQ(limitText(-0.001f, {0, 5}), "0.00");
  EXPECT_EQ(withoutPositionText(1), "1 reading without position");
  EXPECT_EQ(withoutPositionText(12), "12 readings without position");
  const std::string line = "12";
  EXPECT_EQ(mapPlaceText(&line, 45.0), "Line 12  Stn 45.00");
  EXPECT_EQ(mapPlaceText(nullptr, std::nullopt), "");
  EXPECT_EQ(mapPictureTitle("A.R40", 3, LimitsFrom::kProfileScales, ""),
            (std::vector<std::string>{"A.R40   I/H (ppt)", "colours from the scales"}));

  EXPECT_EQ(mapPictureStem("031514A", 2), "031514A-map-IV");
  EXPECT_EQ(profilePictureStem("031514A", "L 12/3"), "031514A-line-L_12_3");
  const std::set<std::filesystem::path> taken{"/d/A.png", "/d/A-2.png"};
  EXPECT_EQ(freePicturePath("/d", "A", [&](const auto& p) { return taken.count(p) > 0; }),
            "/d/A-3.png");
  EXPECT_EQ(freePicturePath("/d", "B", [&](const auto& p) { return taken.count(p) > 0; }),
            "/d/B.png");
}

}  // namespace
}  // namespace gc40
