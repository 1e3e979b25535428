// r40 plot as a report writer runs it, on a survey of the simulator's
// ground: the pictures' sizes, the colour bar's ends among the dots, the
// settings of the storage root the file lies in, and the refusals.

#include <gtest/gtest.h>

#include <QImage>

#include "harness/child_process.h"
#include "harness/simulated_survey.h"
#include "harness/temp_folder.h"
#include "map/map_colours.h"
#include "settings/settings_file.h"
#include "support/r40_run.h"
#include "support/test_application.h"
#include "survey/export_choices.h"

namespace gc40 {
namespace {

using namespace gc40::testing;

int pixelsOf(const QImage& image, QRgb colour) {
  int count = 0;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      count += (image.pixel(x, y) & 0xFFFFFF) == (colour & 0xFFFFFF);
  return count;
}

QRgb rgb(const MapColour& colour) { return qRgb(colour.red, colour.green, colour.blue); }

struct Storage {
  Storage() {
    writeBytes(file, simulatedSurveyFile({}));
    Settings settings;
    settings.traceColour[0] = 0x00FF00;  // C/V in pure green, no default colour
    std::string ini;
    for (const std::string& line : settingsFileLines(settings)) ini += line;
    writeBytes(folder.path() / "FLDINI" / kSettingsFileName, ini);
    ExportChoices exported;  // the simulator's meter: 600 ms late, 1.5 m behind the antenna
    exported.lagMs = 600;
    exported.laybackM = 1.5;
    EXPECT_FALSE(saveExportChoices(folder.path() / "FLDINI", exported));
  }
  TempFolder folder;
  std::filesystem::path file = folder.path() / "DATA40" / "SIMSURV.R40";
  std::string out(const char* name) const { return (folder.path() / name).string(); }
};

TEST(R40Plot, MapsAndProfilesInBothLayoutsWithTheRootsSettings) {
  TestApplication<QCoreApplication> app;  // QImage reads the pictures back
  const Storage storage;
  const R40Run map = r40(storage.folder, {"plot", storage.file.string(), "--map",
                                          storage.out("map.png"), "--line", "8"});
  ASSERT_EQ(map.status, 0) << map.err;
  // EXPORT.INI's lag leaves the first seven readings before the first fix.
  EXPECT_EQ(map.out,
            storage.out("map.png") +
                ": map of SIMSURV.R40, 11293 readings placed, 7 readings without position\n");
  const QImage landscape(QString::fromStdString(storage.out("map.png")));
  EXPECT_EQ(landscape.size(), QSize(640, 480));
  // The targets and the pipe reach the top of the bar, the background its
  // bottom, and neither fills the picture.
  for (const QRgb end : {rgb(colourBar().back()), rgb(colourBar().front())}) {
    EXPECT_GT(pixelsOf(landscape, end), 200);
    EXPECT_LT(pixelsOf(landscape, end), 640 * 480 / 4);
  }
  landscape.save(GC40_TEST_OUTPUT_DIR "/r40_plot_map_landscape.png");

  const R40Run portrait = r40(storage.folder, {"plot", storage.file.string(), "--map",
                                               storage.out("tall.png"), "--portrait"});
  ASSERT_EQ(portrait.status, 0) << portrait.err;
  const QImage tall(QString::fromStdString(storage.out("tall.png")));
  EXPECT_EQ(tall.size(), QSize(480, 640));
  tall.save(GC40_TEST_OUTPUT_DIR "/r40_plot_map_portrait.png");
  // The command line's corrections win over EXPORT.INI's.
  const R40Run unlagged =
      r40(storage.folder, {"plot", storage.file.string(), "--map", storage.out("small.png"),
                           "--lag", "0", "--scale", "1"});
  EXPECT_EQ(unlagged.out,
            storage.out("small.png") + ": map of SIMSURV.R40, 11300 readings placed\n");
  EXPECT_EQ(QImage(QString::fromStdString(storage.out("small.png"))).size(), QSize(320, 240));

  const R40Run profile =
      r40(storage.folder, {"plot", storage.file.string(), "--profile", "8", storage.out("p.png")});
  ASSERT_EQ(profile.status, 0) << profile.err;
  const QImage line(QString::fromStdString(storage.out("p.png")));
  EXPECT_EQ(line.size(), QSize(640, 480));
  EXPECT_GT(pixelsOf(line, qRgb(0, 255, 0)), 300) << "C/V in the colour GC40.INI gives it";
  line.save(GC40_TEST_OUTPUT_DIR "/r40_plot_profile.png");

  const R40Run noLine =
      r40(storage.folder, {"plot", storage.file.string(), "--profile", "7", storage.out("q.png")});
  EXPECT_EQ(noLine.status, 2);
  EXPECT_EQ(noLine.err,
            "r40: no line \"7\" in SIMSURV.R40 (lines: 0, 2, 4, 6, 8, 10, 12, 14, 16, 18)\n");
  const R40Run badValue = r40(storage.folder, {"plot", storage.file.string(), "--map",
                                               storage.out("r.png"), "--value", "qx"});
  EXPECT_EQ(badValue.status, 2);
  EXPECT_EQ(badValue.err, "r40: --value wants cv, ch, iv or ih, not \"qx\"\n");
  EXPECT_FALSE(std::filesystem::exists(storage.out("q.png")) ||
               std::filesystem::exists(storage.out("r.png")));
}

}  // namespace
}  // namespace gc40
