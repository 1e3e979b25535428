#include "export/feature_writer.h"

#include <gdal_priv.h>
#include <gtest/gtest.h>
#include <ogrsf_frmts.h>

#include <clocale>
#include <cstdio>

#include "export/crs.h"
#include "export/xyz_writer.h"
#include "harness/temp_folder.h"

namespace gc40 {
namespace {

using testing::readBytes;
using testing::TempFolder;

const std::vector<FieldDef> kFields = {{"name", FieldType::kText},
                                       {"count", FieldType::kInteger},
                                       {"value", FieldType::kReal},
                                       {"time", FieldType::kDateTime}};

std::vector<FeatureRow> literalRows() {
  return {
      {PointXY{11.123456789, 48.1},
       {std::string("a, \"b\""), std::int64_t{7}, 12.5, DateTime{2026, 3, 15, 8, 0, 1, 500, true}}},
      {std::nullopt, {std::string("no fix"), std::int64_t{-3}, std::monostate{}, std::monostate{}}},
      {PointXY{-0.5, -33.25},
       {std::string(""), std::monostate{}, -0.001, DateTime{2026, 3, 15, 9, 30, 0, 0, false}}},
  };
}

bool write(const std::filesystem::path& path, const FeatureLayout& layout,
           std::size_t* leftOut = nullptr) {
  FeatureWriter writer;
  if (!writer.open(path, driverForExtension(path), layout)) {
    ADD_FAILURE() << writer.error();
    return false;
  }
  for (const FeatureRow& row : literalRows()) EXPECT_TRUE(writer.add(row)) << writer.error();
  if (leftOut) *leftOut = writer.leftOut();
  return writer.close();
}

struct ReadBack {
  std::vector<std::string> fields;
  std::vector<std::optional<PointXY>> points;
  std::vector<std::vector<std::string>> values;  // "null" for a null field
  std::string crs;
};

ReadBack readBack(const std::filesystem::path& path) {
  ReadBack result;
  GDALAllRegister();
  GDALDatasetUniquePtr dataset(GDALDataset::Open(path.string().c_str(), GDAL_OF_VECTOR));
  if (!dataset) {
    ADD_FAILURE() << path << " does not open";
    return result;
  }
  OGRLayer* layer = dataset->GetLayer(0);
  OGRFeatureDefn* definition = layer->GetLayerDefn();
  for (int i = 0; i < definition->GetFieldCount(); ++i)
    result.fields.push_back(definition->GetFieldDefn(i)->GetNameRef());
  if (const OGRSpatialReference* srs = layer->GetSpatialRef()) result.crs = srs->GetName();
  for (auto& feature : *layer) {
    const OGRGeometry* geometry = feature->GetGeometryRef();
    if (geometry && !geometry->IsEmpty())
      result.points.push_back(PointXY{geometry->toPoint()->getX(), geometry->toPoint()->getY()});
    else
      result.points.push_back(std::nullopt);
    std::vector<std::string> values;
    for (int i = 0; i < definition->GetFieldCount(); ++i)
      values.push_back(feature->IsFieldSetAndNotNull(i) ? feature->GetFieldAsString(i) : "null");
    result.values.push_back(values);
  }
  return result;
}

// The CSV names its point columns X and Y in front; the rest are the same.
std::vector<std::string> withoutPointColumns(std::vector<std::string> fields) {
  if (fields.size() >= 2 && fields[0] == "X" && fields[1] == "Y")
    fields.erase(fields.begin(), fields.begin() + 2);
  return fields;
}

// One table, every format: the same features, columns, points and values
// come back, nulls stay null, and only FlatGeobuf, which cannot hold a
// feature without a point, leaves one out and says so.
TEST(FeatureWriter, EveryFormatGivesBackTheSameTable) {
  TempFolder folder;
  const FeatureLayout layout{kFields, kWgs84Epsg};
  const std::vector<std::string> names = {"name", "count", "value", "time"};
  for (const char* file : {"t.gpkg", "t.geojson", "t.csv"}) {
    SCOPED_TRACE(file);
    ASSERT_TRUE(write(folder.path() / file, layout));
    const ReadBack back = readBack(folder.path() / file);
    EXPECT_EQ(withoutPointColumns(back.fields), names);
    EXPECT_EQ(back.crs, "WGS 84");
    ASSERT_EQ(back.points.size(), 3u);
    ASSERT_TRUE(back.points[0] && back.points[2]);
    EXPECT_FALSE(back.points[1]);
    EXPECT_NEAR(back.points[0]->x, 11.123456789, 1e-9);
    EXPECT_NEAR(back.points[0]->y, 48.1, 1e-9);
    EXPECT_NEAR(back.points[2]->x, -0.5, 1e-9);
    EXPECT_NEAR(back.points[2]->y, -33.25, 1e-9);
    const std::size_t first = back.fields.size() - names.size();
    EXPECT_EQ(back.values[0][first], "a, \"b\"");
    EXPECT_EQ(back.values[0][first + 1], "7");
    EXPECT_EQ(back.values[0][first + 2], "12.5");
    EXPECT_EQ(back.values[1][first + 1], "-3");
    EXPECT_EQ(back.values[1][first + 2], "null");
    EXPECT_EQ(back.values[2][first + 2], "-0.001");
  }
  std::size_t leftOut = 0;
  ASSERT_TRUE(write(folder.path() / "t.fgb", layout, &leftOut));
  EXPECT_EQ(leftOut, 1u);
  EXPECT_EQ(readBack(folder.path() / "t.fgb").points.size(), 2u);

  // Writing again replaces the earlier file rather than adding to it.
  ASSERT_TRUE(write(folder.path() / "t.gpkg", layout));
  EXPECT_EQ(readBack(folder.path() / "t.gpkg").points.size(), 3u);
}

// What a GIS needs to load the CSV as points in the right system without
// asking, whatever the locale says about decimal commas: X and Y typed as
// coordinates in the .csvt, the system in the .prj, ISO 8601 times.
TEST(FeatureWriter, CsvCarriesItsPointTypesSystemAndIsoTimesInAnyLocale) {
  TempFolder folder;
  const std::string before = std::setlocale(LC_ALL, nullptr);
  ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr) << "test locale missing (LOCPATH)";
  char printed[16];
  std::snprintf(printed, sizeof printed, "%.1f", 12.5);
  EXPECT_STREQ(printed, "12,5");

  PointProjection utm;
  ASSERT_TRUE(utm.setUp(32633)) << utm.error();
  const std::filesystem::path csv = folder.path() / "utm.csv";
  FeatureWriter writer;
  ASSERT_TRUE(writer.open(csv, "CSV", {kFields, 32633}));
  std::vector<PointXY> points = {{15.0, 0.0}};
  ASSERT_TRUE(utm.project(points));
  FeatureRow row = literalRows()[0];
  row.point = points[0];
  ASSERT_TRUE(writer.add(row));
  ASSERT_TRUE(writer.close()) << writer.error();
  std::setlocale(LC_ALL, before.c_str());

  const std::string text = readBytes(csv);
  EXPECT_TRUE(text.starts_with("X,Y,name,count,value,time\n500000")) << text;
  EXPECT_TRUE(text.ends_with(",\"a, \"\"b\"\"\",7,12.5,2026-03-15T08:00:01.500Z\n")) << text;
  EXPECT_EQ(readBytes(folder.path() / "utm.csvt"), "CoordX,CoordY,String,Integer64,Real,String\n");
  EXPECT_NE(readBytes(folder.path() / "utm.prj").find("WGS 84 / UTM zone 33N"), std::string::npos);
  const ReadBack back = readBack(csv);
  EXPECT_EQ(back.crs, "WGS 84 / UTM zone 33N");
  ASSERT_EQ(back.points.size(), 1u);
  ASSERT_TRUE(back.points[0]);
  EXPECT_NEAR(back.points[0]->x, 500000.0, 1e-6);

  // Without point columns (for tools that want their own x and y) there is
  // nothing to type or place.
  ASSERT_TRUE(writer.open(csv, "CSV", {kFields, kWgs84Epsg, false}));
  ASSERT_TRUE(writer.add(literalRows()[1]));
  ASSERT_TRUE(writer.close());
  EXPECT_EQ(readBytes(csv), "name,count,value,time\nno fix,-3,,\n");
  EXPECT_FALSE(std::filesystem::exists(folder.path() / "utm.prj"));
}

TEST(FeatureWriter, FailuresNameTheFileOrTheFormat) {
  TempFolder folder;
  FeatureWriter writer;
  EXPECT_FALSE(writer.open(folder.path() / "missing" / "t.gpkg", "GPKG", {kFields, kWgs84Epsg}));
  EXPECT_NE(writer.error().find("missing/t.gpkg"), std::string::npos) << writer.error();
  EXPECT_FALSE(writer.open(folder.path() / "t.xyz", "NoSuchFormat", {kFields, kWgs84Epsg}));
  EXPECT_NE(writer.error().find("NoSuchFormat"), std::string::npos) << writer.error();
  EXPECT_FALSE(writer.open(folder.path() / "t.gpkg", "GPKG", {kFields, 999999}));
  EXPECT_NE(writer.error().find("EPSG:999999"), std::string::npos) << writer.error();
  EXPECT_EQ(driverForExtension("a/B.GeoJSON"), "GeoJSON");
  EXPECT_EQ(driverForExtension("a/b.xyz"), "");
}

// Zones follow the grid's own exceptions over Norway and Svalbard, and the
// projection puts a zone's central meridian at the false easting.
TEST(Crs, UtmZonesAndProjection) {
  EXPECT_EQ(utmEpsgCode(11.57, 48.14), 32632);
  EXPECT_EQ(utmEpsgCode(151.2, -33.9), 32756);
  EXPECT_EQ(utmEpsgCode(-0.1, 51.5), 32630);
  EXPECT_EQ(utmEpsgCode(5.3, 60.4), 32632);  // Bergen: 31 by longitude
  EXPECT_EQ(utmEpsgCode(15.6, 78.2), 32633);
  EXPECT_EQ(utmEpsgCode(180.0, 0.0), 32660);
  EXPECT_EQ(utmEpsgCode(-180.0, -1.0), 32701);

  PointProjection projection;
  ASSERT_TRUE(projection.setUp(32756)) << projection.error();
  EXPECT_EQ(projection.name(), "WGS 84 / UTM zone 56S");
  EXPECT_FALSE(projection.geographic());
  std::vector<PointXY> points = {{153.0, 0.0}, {153.0, -33.9}, {151.2, -33.9}};
  ASSERT_TRUE(projection.project(points));
  EXPECT_NEAR(points[0].x, 500000.0, 1e-6);
  EXPECT_NEAR(points[0].y, 10000000.0, 1e-6);
  EXPECT_NEAR(points[1].x, 500000.0, 1e-6);
  EXPECT_LT(points[2].x, 500000.0);
  EXPECT_GT(points[1].y, 6000000.0);

  ASSERT_TRUE(projection.setUp(kWgs84Epsg));
  EXPECT_TRUE(projection.geographic());
  points = {{151.2, -33.9}};
  ASSERT_TRUE(projection.project(points));
  EXPECT_EQ(points[0].x, 151.2);
  EXPECT_FALSE(projection.setUp(999999));
}

TEST(XyzWriter, LineBlocksTokensAndMissingValues) {
  TempFolder folder;
  const std::filesystem::path path = folder.path() / "t.xyz";
  XyzWriter writer;
  ASSERT_TRUE(writer.open(path, kFields, 3));
  const std::vector<FeatureRow> rows = literalRows();
  writer.beginLine("10");
  ASSERT_TRUE(writer.add(rows[0]));
  ASSERT_TRUE(writer.add(rows[1]));
  writer.beginLine("A B");
  ASSERT_TRUE(writer.add(rows[2]));
  ASSERT_TRUE(writer.close()) << writer.error();
  EXPECT_EQ(readBytes(path),
            "/ X Y name count value time\n"
            "Line 10\n"
            "11.123 48.100 a,_\"b\" 7 12.5 2026-03-15T08:00:01.500Z\n"
            "* * no_fix -3 * *\n"
            "Line A_B\n"
            "-0.500 -33.250 * * -0.001 2026-03-15T09:30:00.000\n");
  EXPECT_FALSE(writer.open(folder.path() / "missing" / "t.xyz", kFields, 3));
  EXPECT_NE(writer.error().find("missing/t.xyz"), std::string::npos) << writer.error();
}

}  // namespace
}  // namespace gc40
