#include "logging/line_station_model.h"

#include <gtest/gtest.h>

#include <tuple>

#include "logging/profile_scale_model.h"

namespace gc40 {
namespace {

Settings lineTen(std::int32_t sequence) {
  Settings settings;
  settings.surveyLine = u"10";
  settings.lineSequence = sequence;
  settings.lineDirection = 2;  // North
  settings.startStation = 100.0;
  settings.currentStation = 47.5;
  settings.stationIncrement = 2.5f;
  return settings;
}

// Alternate starts where the last line ended and walks back; One Way starts
// every line alike. A name that is no number proposes the increment alone;
// unknown stored indexes act as Alternate from South.
TEST(LineStationModel, NewLineProposals) {
  Settings named = lineTen(1);
  named.surveyLine = u"A1";
  Settings damaged = lineTen(7);
  damaged.lineDirection = -3;
  using Case = std::tuple<Settings, const char16_t*, const char16_t*, const char16_t*, int, int>;
  for (const auto& [settings, line, start, increment, sequence, direction] :
       {Case{lineTen(0), u"11.00", u"47.500", u"-2.500", 0, 1},
        Case{lineTen(1), u"11.00", u"100.000", u"2.500", 1, 2},
        Case{named, u"1.00", u"100.000", u"2.500", 1, 2},
        Case{damaged, u"11.00", u"47.500", u"-2.500", 0, 2}}) {
    const NewLineControls c = openNewLine(settings);
    EXPECT_EQ(std::tuple(c.newLine, c.startStation, c.stationIncrement, c.lineSequence,
                         c.lineDirection, c.lastStation),
              std::tuple(line, start, increment, sequence, direction, u"47.500"));
  }
}

// The accepted Alternate proposal counts down, so the line after it counts up
// again. Typed numbers read as far as they are numbers.
TEST(LineStationModel, NewLineOkStoresWhatIsTyped) {
  Settings settings = lineTen(0);
  acceptNewLine(settings, openNewLine(settings));
  EXPECT_EQ(
      std::tuple(settings.surveyLineValue, settings.currentStation, settings.stationIncrement),
      std::tuple(11.0f, 47.5, -2.5f));
  NewLineControls typed = openNewLine(settings);
  EXPECT_EQ(std::tuple(typed.newLine, typed.stationIncrement, typed.lineDirection),
            std::tuple(u"12.00", u"2.500", 2));
  typed.newLine = u"North boundary line 12 of 30";
  typed.lineIncrement = u"";
  typed.startStation = u" -12.25e1m";
  acceptNewLine(settings, typed);
  EXPECT_EQ(std::tuple(settings.surveyLine, settings.surveyLineValue, settings.lineIncrement,
                       settings.startStation, settings.currentStation),
            std::tuple(u"North boundary line 12 o", 0.0f, 0.0f, -122.5, -122.5));
  EXPECT_EQ(commentText(std::u16string(50, u'c')).size(), kCommentReadLength);
  // New Station opens empty; left so, OK makes the station 0.
  EXPECT_EQ(openNewStation(settings).newStation, u"");
  acceptNewStation(settings, openNewStation(settings).newStation);
  EXPECT_EQ(settings.currentStation, 0.0);
}

// Limits beyond +-9000 are cut back, a maximum not above its minimum is moved
// 100 above it, and the pixel factors follow.
TEST(ProfileScaleModel, OkCorrectsTheLimits) {
  Settings settings{.plotHeight = 150};
  using Case = std::tuple<const char16_t*, const char16_t*, float, float>;
  for (const auto& [minText, maxText, min, max] :
       {Case{u"50", u"20", 50.0f, 150.0f}, Case{u"-12000", u"10", -9000.0f, 10.0f},
        Case{u"9500", u"1e6", 9000.0f, 9100.0f}, Case{u"nan", u"x", 0.0f, 100.0f}}) {
    acceptProfileScale(settings, {u"-5", u"5", minText, maxText});
    EXPECT_EQ(std::tuple(settings.inphaseScaleMin, settings.inphaseScaleMax,
                         settings.inphasePixelsPerUnit, settings.conductivityPixelsPerUnit),
              std::tuple(min, max, 150.0f / (max - min), 15.0f));
  }
}

}  // namespace
}  // namespace gc40
