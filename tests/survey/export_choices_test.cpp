#include "survey/export_choices.h"

#include <gtest/gtest.h>

#include "harness/temp_folder.h"

namespace gc40 {
namespace {

std::string joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line;
  return text;
}

// What is written reads back the same, and a hand edit (other case, blanks,
// line feeds alone, comments) reads as meant.
TEST(ExportChoices, FileRoundTripsAndTakesHandEdits) {
  const ExportChoices csvInUtm{.format = 2,
                               .system = ExportSystem::kUtm,
                               .lagMs = -350,
                               .laybackM = 1.25,
                               .offsetM = -0.5,
                               .maxGapS = 3.5};
  const std::string text = joined(formatExportChoices(csvInUtm));
  EXPECT_EQ(text,
            "; gc40: the last export's choices, written when an export is made.\r\n"
            "Format=CSV\r\nSystem=UTM\r\nLagMs=-350\r\nLaybackM=1.25\r\nOffsetM=-0.50\r\n"
            "MaxGapS=3.5\r\n");
  ParsedExportChoices parsed = parseExportChoices(text);
  EXPECT_EQ(parsed.choices, csvInUtm);
  EXPECT_TRUE(parsed.problems.empty());

  const ExportChoices epsg{.format = 5, .system = ExportSystem::kEpsg, .epsg = 31468};
  EXPECT_EQ(parseExportChoices(joined(formatExportChoices(epsg))).choices, epsg);

  parsed = parseExportChoices("# mine\n  format = geojson \nLAGMS=120\n\n");
  EXPECT_TRUE(parsed.problems.empty());
  EXPECT_EQ(parsed.choices, (ExportChoices{.format = 1, .lagMs = 120}));
}

// A line that cannot be read is named and leaves its default; the others
// still count. KML cannot be projected, whatever the file says.
TEST(ExportChoices, DamagedLinesKeepTheirDefaults) {
  const ParsedExportChoices parsed = parseExportChoices(
      "LagMs=1,5\nLaybackM=2.5\nOffsetM=nan\nMaxGapS=0\nSystem=EPSG:12\nColour=red\n"
      "\x01\x02garbage\nLagMs=99999\nFormat=Shapefile\nMaxGapS=4");
  std::vector<int> lines;
  for (const ExportChoicesProblem& problem : parsed.problems) lines.push_back(problem.lineNumber);
  EXPECT_EQ(lines, (std::vector<int>{1, 3, 4, 5, 6, 7, 8, 9}));
  EXPECT_EQ(parsed.problems[0].line, "LagMs=1,5");
  EXPECT_EQ(parsed.choices, (ExportChoices{.laybackM = 2.5, .maxGapS = 4.0}));

  EXPECT_EQ(parseExportChoices("Format=KML\nSystem=UTM\n").choices, ExportChoices{.format = 3});
}

TEST(ExportChoices, KeptInTheSettingsFolder) {
  testing::TempFolder folder;
  const std::filesystem::path settings = folder.path() / "FLDINI";
  const LoadedExportChoices none = loadExportChoices(settings);
  EXPECT_EQ(none.choices, ExportChoices{});
  EXPECT_EQ(none.note, "");  // the first export has nothing to say
  EXPECT_FALSE(std::filesystem::exists(settings));

  const ExportChoices chosen{.format = 4, .lagMs = 410, .laybackM = -1.5};
  ASSERT_EQ(saveExportChoices(settings, chosen), std::nullopt);
  const LoadedExportChoices loaded = loadExportChoices(settings);
  EXPECT_EQ(loaded.choices, chosen);
  EXPECT_EQ(loaded.note, "");

  const std::filesystem::path file = settings / "EXPORT.INI";
  testing::writeBytes(file, "Format=FlatGeobuf\r\nLagMs=fast\r\n");
  EXPECT_EQ(loadExportChoices(settings).note,
            file.string() + ": 1 line not understood, defaults used:\nline 2: LagMs=fast");

  testing::writeBytes(folder.path() / "plain", "");
  const std::optional<std::string> error = saveExportChoices(folder.path() / "plain", chosen);
  ASSERT_TRUE(error);
  EXPECT_TRUE(error->starts_with("Cannot write " + (folder.path() / "plain/EXPORT.INI").string()))
      << *error;
}

TEST(ExportChoices, OutputFollowsTheFormat) {
  EXPECT_EQ(defaultExportPath("/d/SURVEY.R40", 0), "/d/SURVEY.gpkg");
  EXPECT_EQ(defaultExportPath("/d/a.b.R40", 5), "/d/a.b.xyz");
  EXPECT_EQ(outputForFormat("/d/SURVEY.gpkg", 2), "/d/SURVEY.csv");
  EXPECT_EQ(outputForFormat("/d/out.GeoJSON", 3), "/d/out.kml");
  EXPECT_EQ(outputForFormat("/d/out", 4), "/d/out.fgb");
  EXPECT_EQ(outputForFormat("/d/out.txt", 2), "/d/out.txt");  // the operator's own ending
}

}  // namespace
}  // namespace gc40
