// survey-picture on a small export of its own: each reading lands where it
// stands, north up and east right, coloured by its value; rows without a
// position or a value stay out, and a file that is no export is refused.

#include <gtest/gtest.h>

#include <QColor>
#include <QImage>
#include <QPoint>
#include <QString>
#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "harness/child_process.h"
#include "harness/temp_folder.h"

namespace gc40 {
namespace {

std::optional<int> drawPicture(const testing::TempFolder& folder,
                               const std::vector<std::string>& arguments) {
  testing::ChildProcess run(SURVEY_PICTURE_BINARY, arguments, folder.path() / "errors.txt");
  return run.waitForExit(std::chrono::seconds(20));
}

// The middle of the pixels of `colour` left of the colour bar (the last 80
// pixels), none when there are none.
std::optional<QPoint> middleOf(const QImage& image, const QColor& colour) {
  long x = 0, y = 0, count = 0;
  for (int row = 0; row < image.height(); ++row)
    for (int column = 0; column < image.width() - 80; ++column) {
      const QColor pixel = image.pixelColor(column, row);
      if (std::abs(pixel.red() - colour.red()) + std::abs(pixel.green() - colour.green()) +
              std::abs(pixel.blue() - colour.blue()) <
          30)
        x += column, y += row, ++count;
    }
  if (count == 0) return std::nullopt;
  return QPoint(static_cast<int>(x / count), static_cast<int>(y / count));
}

TEST(SurveyPicture, ReadingsStandNorthUpEastRightAndOtherFilesAreRefused) {
  const testing::TempFolder folder;
  // The high reading some 8 m north-east of the low one; the quoted comma
  // must not shift the columns, and the 90 has no position to stand at.
  testing::writeBytes(folder.path() / "export.csv",
                      "X,Y,file,cond_v,latitude,longitude\n"
                      ",,\"A,B.R40\",20,45.0,10.0\n"
                      ",,\"A,B.R40\",65,45.00007,10.0001\n"
                      ",,\"A,B.R40\",,45.00003,10.00005\n"
                      ",,\"A,B.R40\",90,,\n");
  const std::string picture = (folder.path() / "picture.png").string();
  ASSERT_EQ(drawPicture(folder, {picture, "Survey", (folder.path() / "export.csv").string()}), 0)
      << testing::readBytes(folder.path() / "errors.txt");
  const QImage image(QString::fromStdString(picture));
  ASSERT_FALSE(image.isNull());
  const std::optional<QPoint> high = middleOf(image, QColor(253, 231, 37)),  // the ramp's top
      low = middleOf(image, QColor(68, 1, 84));                              // and its bottom
  ASSERT_TRUE(high && low);
  EXPECT_GT(high->x() - low->x(), 50);
  EXPECT_LT(high->y() - low->y(), -50);

  testing::writeBytes(folder.path() / "other.csv", "name,value\nA,1\n");
  EXPECT_EQ(drawPicture(folder, {picture, "Other", (folder.path() / "other.csv").string()}), 2);
  EXPECT_NE(testing::readBytes(folder.path() / "errors.txt").find("not an r40 export"),
            std::string::npos);
}

}  // namespace
}  // namespace gc40
