#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "logging/command_keys.h"
#include "logging/line_station_model.h"
#include "logging/profile_plot.h"
#include "logging/profile_scale_model.h"
#include "logging/run_state.h"
#include "logging/status_texts.h"

namespace gc40 {
namespace {

using Action = LoggingAction;
constexpr std::optional<Action> kNothing;

std::optional<Action> keyAction(LoggingState state, std::int32_t pauseKey, int key) {
  const std::optional<int> command = keyCommand(state, pauseKey, 0, key);
  return command ? actionFor(state, *command) : std::nullopt;
}

// The keys the session test drives (C, Enter, G, L, c, X, u) are not repeated.
TEST(LoggingCommands, KeysActPerStateAndLoggingHearsOnlyThePauseKeyAndItsButton) {
  using enum LoggingState;
  using enum LoggingAction;
  using Case = std::tuple<LoggingState, std::int32_t, int, std::optional<Action>>;
  constexpr int kShift = 16;
  for (const auto& [state, pauseKey, key, action] :
       {Case{kMonitor, 0, 'n', kNewStation}, Case{kMonitor, 0, 'M', kExit},
        Case{kMonitor, 0, 'x', kExit}, Case{kMonitor, 0, 'g', kNothing},
        Case{kMonitor, 0, 'S', kNothing}, Case{kStandBy, 0, kKeyReturn, kGo},
        Case{kStandBy, 0, 'N', kNewStation}, Case{kStandBy, 0, 'm', kPopupMenu},
        Case{kStandBy, 0, 'u', kNothing}, Case{kStandBy, 0, 'b', kNothing},
        Case{kLogging, 0, kShift, kPause}, Case{kLogging, 1, kKeySpace, kPause},
        Case{kLogging, 1, kKeyReturn, kNothing}, Case{kLogging, 2, kKeyReturn, kPause},
        Case{kLogging, 2, kKeySpace, kNothing}, Case{kLogging, 3, 'p', kPause},
        Case{kLogging, 3, 'S', kNothing},
        Case{kLogging, 7, 'q', kPause}})  // a damaged setting acts as "any key"
    EXPECT_EQ(keyAction(state, pauseKey, key), action)
        << "state " << static_cast<int>(state) << " pauseKey " << pauseKey << " key " << key;
  // The pause button shown follows the pause key and, for any key, the mode.
  using enum SurveyMode;
  using Button = std::tuple<std::int32_t, SurveyMode, std::int32_t>;
  for (const auto& [pauseKey, mode, button] :
       {Button{0, kAuto, 0}, Button{3, kWheel, 3}, Button{1, kManual, 5}, Button{9, kManual, 4}})
    EXPECT_EQ(pauseButtonNumber(pauseKey, mode), button) << pauseKey << " " << modeIndex(mode);
  EXPECT_EQ(buttonCommand(kMonitor, 459), std::nullopt);
}

// A station too wide for its field is shown whole; the file name is cut to 8
// characters, never through a character outside the basic plane; in Manual
// mode while logging the trigger records and never shows.
TEST(StatusTexts, StationFileAndTrigger) {
  EXPECT_EQ(stationText(-12.345678), "-12.35     ");
  EXPECT_EQ(stationText(1234567890.5), "1234567890.50");
  EXPECT_EQ(fileText(u"LONGNAME1.R40"), u"File:LONGNAME");
  EXPECT_EQ(fileText(u"ABCDEFG\U0001F600"), u"File:ABCDEFG");
  EXPECT_EQ(dipoleModeText(DipoleMode::kHorizontal) + dipoleModeText(modeFromIndex<DipoleMode>(7)),
            "Mode:HMode: ");  // 7: a damaged index
  using enum SurveyMode;
  using enum LoggingState;
  using Trigger = std::tuple<bool, SurveyMode, LoggingState, const char*>;
  for (const auto& [pressed, mode, state, shown] :
       {Trigger{true, kAuto, kLogging, "M"}, Trigger{true, kManual, kLogging, " "},
        Trigger{true, kManual, kStandBy, "M"}, Trigger{false, kAuto, kMonitor, " "}})
    EXPECT_EQ(triggerIndicatorText(pressed, mode, state), shown)
        << pressed << modeIndex(mode) << static_cast<int>(state);
}

Settings lineTen(std::int32_t sequence) {
  return {.surveyLine = u"10",
          .lineSequence = sequence,
          .lineDirection = 2,  // North
          .startStation = 100.0,
          .currentStation = 47.5,
          .stationIncrement = 2.5f};
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

// Three readings make a station: only the third, which completes a station
// of a started profile, scrolls. A trace starts with a point and then joins;
// traces not in use, or not valid in the reading, are left alone.
TEST(ProfilePlot, ReadingsScrollOnStationsAndJoinTheirTraces) {
  const Settings settings;  // 0..500 over 180 rows
  const ProfileTraces traces{.traceOn = {1, 0, 1, 1, 1, 1, 1, 1}};
  FiledValues filed{250, 1, 100, 1};  // V and H conductivity, no inphase
  std::array<std::int32_t, kTraceCount> continues{};
  ProfileState state;
  std::vector<bool> scrolls;
  std::vector<std::vector<TraceStroke>> strokes;
  for (std::int32_t readingsAtStation : {1, 2, 0, 1}) {
    ProfileStep step =
        addReadingToProfile(state, filed, readingsAtStation, traces, settings, continues);
    scrolls.push_back(step.scroll);
    strokes.push_back(step.strokes);
    filed.verticalConductivity -= 50;
  }
  EXPECT_EQ(scrolls, (std::vector<bool>{false, false, true, false}));
  EXPECT_EQ(strokes[0], (std::vector<TraceStroke>{{0, false, 0, 90}}));
  EXPECT_EQ(strokes[1], (std::vector<TraceStroke>{{0, true, 90, 108}}));
  EXPECT_EQ(strokes[3], (std::vector<TraceStroke>{{0, true, 126, 144}}));
  EXPECT_EQ(continues, (std::array<std::int32_t, kTraceCount>{1, 0, 0, 0, 0, 0, 0, 0}));
  // Every reading a station: nothing to move before the first point.
  ProfileState fresh;
  EXPECT_FALSE(addReadingToProfile(fresh, filed, 0, traces, settings, continues).scroll);
  EXPECT_TRUE(addReadingToProfile(fresh, filed, 0, traces, settings, continues).scroll);
}

// A scale with no span, or a limit that is no number (a damaged settings
// file), draws no grid and does nothing undefined on the way.
TEST(ProfilePlot, NoGridWithoutASpan) {
  for (const float min : {500.0f, std::numeric_limits<float>::quiet_NaN()}) {
    Settings settings{.conductivityScaleMin = min};
    recomputeScaleFactors(settings);
    EXPECT_TRUE(profileGrid(settings).lineYs.empty()) << min;
  }
}

// The stroke's pixels in `box`, row by row, '#' where it covers one; also
// fails when a run leaves the box or comes twice for one row.
std::vector<std::string> strokePicture(const StrokeShape& shape, const PixelBox& box) {
  const auto width = std::size_t(box.right - box.left + 1);
  std::vector<std::string> rows(std::size_t(box.bottom - box.top + 1), std::string(width, '.'));
  std::vector<bool> seen(rows.size());
  forEachStrokeRun(shape, box, [&](int y, int fromX, int toX) {
    ASSERT_TRUE(y >= box.top && y <= box.bottom && fromX >= box.left && toX <= box.right);
    EXPECT_FALSE(seen[std::size_t(y - box.top)]) << "row " << y << " twice";
    seen[std::size_t(y - box.top)] = true;
    for (int x = fromX; x <= toX; ++x)
      rows[std::size_t(y - box.top)][std::size_t(x - box.left)] = '#';
  });
  return rows;
}

// Thin lines take one pixel a row (steep) or a column (flat); thick ones are
// their width across with round ends, odd widths on the pixel, even ones on
// its corner; nothing lands outside the box, however far off the value.
TEST(ProfilePlot, StrokesCoverTheirWidthWithRoundEnds) {
  using Rows = std::vector<std::string>;
  const std::pair<StrokeShape, Rows> cases[] = {
      {{3, 3, 3, 3, 1},
       {".......", ".......", ".......", "...#...", ".......", ".......", "......."}},
      {{1, 0, 3, 6, 1},
       {".#.....", ".#.....", "..#....", "..#....", "..#....", "...#...", "...#..."}},
      {{0, 1, 6, 4, 1},
       {".......", "#......", ".##....", "...##..", ".....##", ".......", "......."}},
      {{3, 3, 3, 3, 3},
       {".......", ".......", "..###..", "..###..", "..###..", ".......", "......."}},
      {{3, 3, 3, 3, 4},
       {".......", "..##...", ".####..", ".####..", "..##...", ".......", "......."}},
      {{0, 3, 6, 3, 2},
       {".......", ".......", "#######", "#######", ".......", ".......", "......."}},
      {{4, 3, 6, 1 << 16, 3},
       {".......", ".......", "...###.", "...###.", "...###.", "...###.", "...###."}},
  };
  for (const auto& [shape, rows] : cases) {
    SCOPED_TRACE(::testing::Message() << "from " << shape.fromX << "," << shape.fromY << " to "
                                      << shape.toX << "," << shape.toY << " width " << shape.width);
    EXPECT_EQ(strokePicture(shape, {0, 0, 6, 6}), rows);
  }
}

}  // namespace
}  // namespace gc40
