#include "logging/line_station_dialogs.h"

#include <gtest/gtest.h>

#include <QApplication>

#include "support/dialog_checks.h"
#include "support/test_application.h"

namespace gc40 {
namespace {

using namespace gc40::testing;

// Opens a dialog through `open`; the one step must end it.
template <typename Open>
auto run(Open open, std::function<void(QDialog*)> drive) {
  ModalScript script({onDialog(std::move(drive))});
  const auto result = open();
  EXPECT_TRUE(script.finished() && !script.timedOut());
  return result;
}

class LineStationDialogs : public ::testing::TestWithParam<Layout> {
 protected:
  LineStationDialogs() {
    context.settings.surveyLine = u"10";
    context.settings.lineDirection = 2;  // North
    context.settings.startStation = 5.0;
    context.settings.currentStation = 47.5;
    context.settings.stationIncrement = 2.5f;
  }

  TestApplication<QApplication> application;
  TempFolder folder;
  const Layout& layout = GetParam();
  LoggerContext context = makeContext(folder, layout.portrait);
  const std::string fileBefore = savedFile(context);
};
INSTANTIATE_TEST_SUITE_P(Both, LineStationDialogs, ::testing::ValuesIn(kLayouts),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_P(LineStationDialogs, NewLineCancelAndOk) {
  const auto open = [&] { return runNewLineDialog(nullptr, context); };
  EXPECT_FALSE(run(open, [&](QDialog* dialog) {
    checkLook(
        dialog, layout, "new_line", "New Line",
        {{650,
          {"Current Line:", "10", "Last Station:", "47.500", "New Line", "Line Increment",
           "Sequence", "Direction", "Start Station", "Stn Increment"}},
         {674,
          {"11.00", "1.00", "Alternate|One Way", "West|South|North|East", "47.500", "-2.500"}}});
    EXPECT_EQ(control<QComboBox>(dialog, 677)->currentText(), "South");
    type(dialog, 674, "99");
    click(dialog, kIdCancel);
  }));
  EXPECT_EQ(std::tuple(context.settings.surveyLine, savedFile(context)),
            std::tuple(u"10", fileBefore));
  // OK reads every control back (One Way, the start typed) and saves.
  EXPECT_TRUE(run(open, [&](QDialog* dialog) {
    type(dialog, 678, "12.5");
    select(dialog, 676, 1);
    click(dialog, kIdOk);
  }));
  const Settings& s = context.settings;
  EXPECT_EQ(std::tuple(s.surveyLine, s.lineSequence, s.lineDirection, s.currentStation),
            std::tuple(u"11.00", 1, 1, 12.5));
  EXPECT_EQ(savedFile(context), fileFor(s));
}

// New Station does not save the settings file, and an empty one is 0; Enter
// Scale clamps and saves. (All these dialogs store only on OK; New Line
// checks Cancel.)
TEST_P(LineStationDialogs, NewStationCommentAndScale) {
  EXPECT_TRUE(run(
      [&] { return runNewStationDialog(nullptr, context); },
      [&](QDialog* dialog) {
        checkLook(
            dialog, layout, "new_station", "New Station",
            {{860, {"Start Station:", "Last  Station:", "New  Station:", "5.000", "47.500", ""}}});
        click(dialog, kIdOk);
      }));
  EXPECT_EQ(std::tuple(context.settings.currentStation, savedFile(context)),
            std::tuple(0.0, fileBefore));

  QWidget owner;  // whose shape the comment dialog takes
  owner.resize(layout.portrait ? QSize(240, 320) : QSize(320, 240));
  EXPECT_EQ(run([&] { return runCommentDialog(&owner); },
                [&](QDialog* dialog) {
                  checkLook(dialog, layout, "enter_comment", "Enter Comment",
                            {{850, {"Maximum 11 characters", ""}}});
                  type(dialog, 851, "Fence crossing at 12");
                  click(dialog, kIdOk);
                }),
            u"Fence crossing at 12");

  EXPECT_TRUE(run([&] { return runProfileScaleDialog(nullptr, context); },
                  [&](QDialog* dialog) {
                    checkLook(dialog, layout, "enter_scale", "Enter Scale",
                              {{830, {"Conductivity", "Minimum:", "Maximum:", "0", "500"}},
                               {835, {"Inphase", "Minimum:", "Maximum:", "-25", "25"}}});
                    type(dialog, 833, "50");
                    type(dialog, 834, "20");
                    type(dialog, 838, "-12000");
                    click(dialog, kIdOk);
                  }));
  const Settings& s = context.settings;
  EXPECT_EQ(std::tuple(s.conductivityScaleMin, s.conductivityScaleMax, s.inphaseScaleMin,
                       s.conductivityPixelsPerUnit),
            std::tuple(50.0f, 150.0f, -9000.0f, 180.0f / 100.0f));
  EXPECT_EQ(savedFile(context), fileFor(s));
}

}  // namespace
}  // namespace gc40
