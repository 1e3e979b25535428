// r40 export and r40 lag run as a user runs them, on surveys walked with
// the logger's own records, and read back through GDAL as a GIS would.

#include <gdal_priv.h>
#include <gtest/gtest.h>
#include <ogrsf_frmts.h>

#include <clocale>
#include <cmath>
#include <sstream>

#include "export/crs.h"
#include "export/readings_export.h"
#include "harness/child_process.h"
#include "harness/temp_folder.h"
#include "harness/walked_survey.h"
#include "support/r40_run.h"

namespace gc40 {
namespace {

using testing::r40;
using testing::R40Run;
using testing::readBytes;
using testing::TempFolder;
using testing::WalkedSurvey;
using testing::walkedSurveyFile;
using testing::writeBytes;

struct Layer {
  std::vector<std::string> fields;
  std::vector<std::optional<PointXY>> points;
  std::vector<std::vector<std::string>> values;  // as GDAL prints them; "" for null
  std::string crs;

  std::string value(std::size_t feature, const std::string& field) const {
    const auto at = std::find(fields.begin(), fields.end(), field);
    return at == fields.end() ? "(no such field)" : values[feature][at - fields.begin()];
  }
};

Layer readLayer(const std::filesystem::path& path) {
  GDALAllRegister();
  Layer layer;
  GDALDatasetUniquePtr dataset(GDALDataset::Open(path.string().c_str(), GDAL_OF_VECTOR));
  if (!dataset) {
    ADD_FAILURE() << path << " does not open";
    return layer;
  }
  OGRLayer* source = dataset->GetLayer(0);
  OGRFeatureDefn* definition = source->GetLayerDefn();
  for (int i = 0; i < definition->GetFieldCount(); ++i)
    layer.fields.push_back(definition->GetFieldDefn(i)->GetNameRef());
  if (const OGRSpatialReference* srs = source->GetSpatialRef()) layer.crs = srs->GetName();
  for (auto& feature : *source) {
    const OGRGeometry* geometry = feature->GetGeometryRef();
    layer.points.push_back(geometry ? std::optional<PointXY>(PointXY{geometry->toPoint()->getX(),
                                                                     geometry->toPoint()->getY()})
                                    : std::nullopt);
    std::vector<std::string> values;
    for (int i = 0; i < definition->GetFieldCount(); ++i)
      values.push_back(feature->IsFieldSetAndNotNull(i) ? feature->GetFieldAsString(i) : "");
    layer.values.push_back(values);
  }
  return layer;
}

std::vector<std::string> lines(const std::string& text) {
  std::vector<std::string> result;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) result.push_back(line);
  return result;
}

std::vector<std::string> words(const std::string& line) {
  std::vector<std::string> result;
  std::istringstream in(line);
  for (std::string word; in >> word;) result.push_back(word);
  return result;
}

void expectSamePoints(const Layer& a, const Layer& b, double tolerance) {
  ASSERT_EQ(a.points.size(), b.points.size());
  for (std::size_t i = 0; i < a.points.size(); ++i) {
    ASSERT_TRUE(a.points[i] && b.points[i]) << "feature " << i;
    EXPECT_NEAR(a.points[i]->x, b.points[i]->x, tolerance) << "feature " << i;
    EXPECT_NEAR(a.points[i]->y, b.points[i]->y, tolerance) << "feature " << i;
  }
}

// One survey to GeoPackage, GeoJSON, CSV and XYZ: the same features with the
// same columns, points and values everywhere, the first where the walk
// began; the CSV's .prj names its system, and the XYZ has a Line block per
// survey line. Projected, --utm picks the zone --crs names.
TEST(R40Export, EveryFormatHoldsTheSameReadings) {
  TempFolder folder;
  const std::string input = folder.path() / "WALK.R40";
  writeBytes(input, walkedSurveyFile({}));
  const auto path = [&](const char* name) { return (folder.path() / name).string(); };
  for (const char* file : {"w.gpkg", "w.geojson", "w.csv", "w.xyz"}) {
    const R40Run run = r40(folder, {"export", input, "-o", path(file)});
    ASSERT_EQ(run.status, 0) << file << ": " << run.err;
    EXPECT_NE(run.out.find(": 880 readings, "), std::string::npos) << run.out;
    EXPECT_NE(run.out.find("with a position: 880\n"), std::string::npos) << run.out;
  }
  const Layer gpkg = readLayer(path("w.gpkg"));
  const Layer geojson = readLayer(path("w.geojson"));
  Layer csv = readLayer(path("w.csv"));
  ASSERT_EQ(gpkg.points.size(), 880u);
  ASSERT_GE(csv.fields.size(), 2u);
  EXPECT_EQ(csv.fields[0] + csv.fields[1], "XY");  // its point, in front
  csv.fields.erase(csv.fields.begin(), csv.fields.begin() + 2);
  for (auto& row : csv.values) row.erase(row.begin(), row.begin() + 2);
  EXPECT_EQ(geojson.fields, gpkg.fields);
  EXPECT_EQ(csv.fields, gpkg.fields);
  expectSamePoints(gpkg, geojson, 1e-7);
  expectSamePoints(gpkg, csv, 1e-7);
  EXPECT_NEAR(gpkg.points[0]->x, testing::kWalkOriginLongitude, 1e-7);
  EXPECT_NEAR(gpkg.points[0]->y, testing::kWalkOriginLatitude, 1e-7);
  for (std::size_t i = 0; i < gpkg.values.size(); i += 97) {
    for (const char* field : {"line", "station", "reading", "cond_v", "inph_v", "altitude"}) {
      EXPECT_EQ(std::stod(csv.value(i, field) + "0"), std::stod(gpkg.value(i, field) + "0"));
      EXPECT_EQ(geojson.value(i, field), gpkg.value(i, field)) << field;
    }
  }
  EXPECT_EQ(gpkg.value(0, "cond_v"), "20");
  EXPECT_EQ(gpkg.value(0, "line"), "10");
  EXPECT_EQ(csv.value(0, "time"), "2026-03-15T09:00:00.000Z");  // the receiver's clock, UTC
  EXPECT_EQ(csv.value(0, "local_time"), "2026-03-15T10:00:00.000");
  EXPECT_EQ(csv.crs, "WGS 84");
  EXPECT_NE(readBytes(path("w.prj")).find("GEOGCS[\"WGS 84\""), std::string::npos);

  // XYZ: "/" header, a block per line, the same points and values.
  const std::vector<std::string> xyz = lines(readBytes(path("w.xyz")));
  ASSERT_FALSE(xyz.empty());
  const std::vector<std::string> header = words(xyz[0]);
  ASSERT_EQ(header.size(), gpkg.fields.size() + 3);
  EXPECT_EQ(std::vector<std::string>(header.begin() + 3, header.end()), gpkg.fields);
  // The header's "/" stands where the rows have nothing.
  const auto column = [&](const char* name) {
    return std::find(header.begin(), header.end(), name) - header.begin() - 1;
  };
  std::vector<std::string> blocks;
  std::size_t row = 0;
  for (std::size_t i = 1; i < xyz.size(); ++i) {
    const std::vector<std::string> item = words(xyz[i]);
    if (item.size() == 2 && item[0] == "Line") {
      blocks.push_back(item[1]);
      continue;
    }
    ASSERT_EQ(item.size(), header.size() - 1) << xyz[i];
    ASSERT_LT(row, gpkg.points.size());
    EXPECT_NEAR(std::stod(item[0]), gpkg.points[row]->x, 1e-7);
    EXPECT_NEAR(std::stod(item[1]), gpkg.points[row]->y, 1e-7);
    EXPECT_EQ(item[column("line")], blocks.back());
    EXPECT_EQ(std::stod(item[column("cond_v")]), std::stod(gpkg.value(row, "cond_v")));
    ++row;
  }
  EXPECT_EQ(row, 880u);
  EXPECT_EQ(blocks, (std::vector<std::string>{"10", "11", "12", "13"}));

  // Projected: the .prj names the zone, and --utm finds the same one.
  ASSERT_EQ(r40(folder, {"export", input, "-o", path("u.csv"), "--crs", "EPSG:32632"}).status, 0);
  const R40Run utm = r40(folder, {"export", input, "-o", path("z.gpkg"), "--utm"});
  ASSERT_EQ(utm.status, 0) << utm.err;
  EXPECT_NE(utm.out.find("WGS 84 / UTM zone 32N"), std::string::npos) << utm.out;
  EXPECT_NE(readBytes(path("u.prj")).find("WGS 84 / UTM zone 32N"), std::string::npos);
  const Layer projected = readLayer(path("z.gpkg"));
  expectSamePoints(projected, readLayer(path("u.csv")), 1e-3);
  PointProjection zone32;
  ASSERT_TRUE(zone32.setUp(32632));
  std::vector<PointXY> first = {*gpkg.points[0]};
  ASSERT_TRUE(zone32.project(first));
  EXPECT_NEAR(projected.points[0]->x, first[0].x, 1e-3);
  EXPECT_NEAR(projected.points[0]->y, first[0].y, 1e-3);
}

// Without GPS the readings stand on a grid of station and line number; for
// the inversion tools the values carry the coil geometry in their names and
// x, y, elevation follow, with no columns the survey never filled.
TEST(R40Export, GridWithoutFixesAndInversionToolNames) {
  TempFolder folder;
  const std::string plain = folder.path() / "PLAIN.R40", walked = folder.path() / "WALK.R40";
  writeBytes(plain, walkedSurveyFile({.lines = 3, .readingsPerLine = 30, .gps = false}));
  writeBytes(walked, walkedSurveyFile({.lines = 2, .readingsPerLine = 30}));
  const std::string grid = folder.path() / "grid.csv";
  const R40Run run = r40(folder, {"export", plain, "-o", grid});
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find("grid (x = station, y = line number)"), std::string::npos) << run.out;
  const Layer layer = readLayer(grid);
  ASSERT_EQ(layer.points.size(), 90u);
  EXPECT_EQ(layer.value(0, "X") + " " + layer.value(0, "Y"), "0 10");
  EXPECT_EQ(layer.value(89, "Y"), "12");
  EXPECT_EQ(layer.value(89, "X"), layer.value(89, "station"));
  EXPECT_EQ(layer.value(0, "no_position"), "no fixes");
  const R40Run projected = r40(folder, {"export", plain, "-o", folder.path() / "g.gpkg", "--utm"});
  EXPECT_EQ(projected.status, 2);
  EXPECT_NE(projected.err.find("no file holds GPS fixes"), std::string::npos) << projected.err;

  // Both files in one output: the file column tells them apart.
  const std::string both = folder.path() / "both.gpkg";
  ASSERT_EQ(r40(folder, {"export", walked, plain, "-o", both}).status, 0);
  const Layer mixed = readLayer(both);
  ASSERT_EQ(mixed.points.size(), 150u);
  EXPECT_EQ(mixed.value(0, "file"), "WALK.R40");
  EXPECT_EQ(mixed.value(149, "file"), "PLAIN.R40");
  EXPECT_FALSE(mixed.points[149]);  // the grid is no place on the earth
  EXPECT_EQ(mixed.value(149, "grid_y"), "12");

  // A lag of 2.5 s puts the first readings before the first fix; FlatGeobuf
  // cannot hold them, and the summary says so.
  const std::string late = folder.path() / "late.fgb";
  const R40Run lagged = r40(folder, {"export", walked, "-o", late, "--lag", "2500"});
  ASSERT_EQ(lagged.status, 0) << lagged.err;
  const std::size_t early = readLayer(late).points.size();
  EXPECT_EQ(early, 60u - 28u);  // readings 0..27 come within 2.5 s of the first fix
  EXPECT_NE(lagged.out.find("  without: 28 (before first fix 28)\n"
                            "  left out: 28 without a position, which FlatGeobuf cannot hold\n"),
            std::string::npos)
      << lagged.out;

  const std::string inversion = folder.path() / "inv.csv";
  ASSERT_EQ(r40(folder, {"export", walked, "-o", inversion, "--emagpy", "--spacing", "1",
                         "--frequency", "9000", "--height", "0.5"})
                .status,
            0);
  const std::vector<std::string> text = lines(readBytes(inversion));
  ASSERT_GE(text.size(), 2u);
  EXPECT_EQ(text[0].rfind("file,line,", 0), 0u) << text[0];
  EXPECT_NE(text[0].find(",HCP1f9000h0.5,HCP1f9000h0.5_inph,"), std::string::npos) << text[0];
  EXPECT_EQ(text[0].find("VCP"), std::string::npos) << text[0];
  EXPECT_TRUE(text[0].ends_with(",x,y,elevation")) << text[0];
  EXPECT_TRUE(text[1].ends_with(",11.5,48.1,512.3")) << text[1];
  const R40Run incomplete = r40(folder, {"export", walked, "-o", inversion, "--emagpy"});
  EXPECT_EQ(incomplete.status, 2);
  EXPECT_NE(incomplete.err.find("--spacing"), std::string::npos) << incomplete.err;
}

TEST(R40Export, FailuresNameWhatFailed) {
  TempFolder folder;
  const std::string input = folder.path() / "WALK.R40", junk = folder.path() / "junk.R40";
  writeBytes(input, walkedSurveyFile({.lines = 1, .readingsPerLine = 10}));
  writeBytes(junk, "this is not a data file\n");
  const std::string missing = folder.path() / "none.R40";
  const std::string out = folder.path() / "out.gpkg";
  const auto failure = [&](const std::vector<std::string>& arguments) {
    const R40Run run = r40(folder, arguments);
    EXPECT_EQ(run.status, 2) << run.out;
    EXPECT_TRUE(run.out.empty()) << run.out;
    return run.err;
  };
  EXPECT_EQ(failure({"export", input, missing, "-o", out}),
            "r40: " + missing + ": No such file or directory\n");
  EXPECT_EQ(failure({"export", junk, "-o", out}),
            "r40: " + junk + ": not a data file (no record could be read)\n");
  EXPECT_EQ(failure({"lag", input, missing}), "r40: " + missing + ": No such file or directory\n");
  EXPECT_NE(failure({"export", input, "-o", folder.path() / "out.txt"})
                .find("out.txt: no format goes with the extension \".txt\""),
            std::string::npos);
  EXPECT_NE(failure({"export", input, "-o", folder.path() / "no" / "out.gpkg"}).find("no/out.gpkg"),
            std::string::npos);
  EXPECT_EQ(failure({"export", input, "-o", out, "--lag", "0.5s"}),
            "r40: --lag wants a whole number, not \"0.5s\"\n");
  EXPECT_EQ(failure({"export", input, "-o", out, "--crs", "WGS84"}),
            "r40: --crs wants EPSG:NNNN, not \"WGS84\"\n");
  EXPECT_EQ(failure({"export", input, "-o", folder.path() / "k.kml", "--utm"}),
            "r40: " + (folder.path() / "k.kml").string() + ": KML holds WGS 84 coordinates only\n");
  EXPECT_FALSE(std::filesystem::exists(out));
}

// Qt sets the process locale from the environment; a decimal comma must not
// reach the text formats, where it would split a CSV field in two.
TEST(ReadingsExport, CommaLocaleStaysOutOfTheTextFormats) {
  TempFolder folder;
  const std::filesystem::path input = folder.path() / "WALK.R40";
  writeBytes(input, walkedSurveyFile({.lines = 2, .readingsPerLine = 30, .lineSpacingM = 1.5}));
  const std::string before = std::setlocale(LC_ALL, nullptr);
  ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr) << "test locale missing (LOCPATH)";
  ExportOptions options;
  options.inputs = {input};
  options.positions.laybackM = 0.5;
  for (const char* name : {"l.csv", "l.xyz"}) {
    options.output = folder.path() / name;
    const ExportResult result = exportReadings(options);
    EXPECT_TRUE(result.summary) << result.error;
  }
  std::setlocale(LC_ALL, before.c_str());

  const std::vector<std::string> csv = lines(readBytes(folder.path() / "l.csv"));
  ASSERT_EQ(csv.size(), 61u);
  const auto commas = [](const std::string& line) {
    return std::count(line.begin(), line.end(), ',');
  };
  for (const std::string& line : csv) EXPECT_EQ(commas(line), commas(csv[0])) << line;
  EXPECT_NE(csv[30].find(",48.1000"), std::string::npos) << csv[30];  // a latitude
  const std::string xyz = readBytes(folder.path() / "l.xyz");
  EXPECT_EQ(xyz.find(','), std::string::npos);
  EXPECT_NE(xyz.find(" 0.8 "), std::string::npos);  // hdop
}

// Lines walked both ways show the meter's lag; one way, or without GPS,
// they cannot, and r40 says so.
TEST(R40Lag, FindsTheLagOrSaysWhyNot) {
  TempFolder folder;
  const std::string lagged = folder.path() / "LAG.R40", oneWay = folder.path() / "ONE.R40",
                    plain = folder.path() / "PLAIN.R40", png = folder.path() / "lag.png";
  writeBytes(lagged, walkedSurveyFile({.lines = 6, .meterLagMs = 300}));
  writeBytes(oneWay, walkedSurveyFile({.lines = 1}));
  writeBytes(plain, walkedSurveyFile({.lines = 4, .gps = false}));

  const R40Run run = r40(folder, {"lag", lagged, "--plot", png, "--from", "-1000", "--to", "1000"});
  ASSERT_EQ(run.status, 0) << run.err;
  const std::vector<std::string> out = lines(run.out);
  ASSERT_EQ(out.size(), 2u + 201u);
  const std::vector<std::string> estimate = words(out[0]);
  ASSERT_EQ(estimate.size(), 6u) << out[0];
  EXPECT_EQ(estimate[0] + estimate[2] + estimate[3] + estimate[5], "lag:ms+/-ms") << out[0];
  EXPECT_NEAR(std::stoi(estimate[1]), 300, 30) << out[0];
  EXPECT_LE(std::stoi(estimate[4]), 100) << out[0];
  EXPECT_EQ(out[1], "lag_ms misfit pairs");
  EXPECT_EQ(words(out[2])[0], "-1000");
  EXPECT_EQ(words(out.back())[0], "1000");
  const std::string picture = readBytes(png);
  EXPECT_EQ(picture.substr(0, 4), "\x89PNG");
  EXPECT_GT(picture.size(), 5000u);

  for (const auto& [file, why] :
       {std::pair(oneWay, "lines walked one way only"), std::pair(plain, "no GPS fixes")}) {
    const R40Run cannot = r40(folder, {"lag", file});
    EXPECT_EQ(cannot.status, 1) << cannot.err;
    EXPECT_EQ(lines(cannot.out).at(0), std::string("lag: cannot be told: ") + why);
  }
}

}  // namespace
}  // namespace gc40
