#include "logging/status_texts.h"

#include <gtest/gtest.h>

#include <tuple>

namespace gc40 {
namespace {

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
  using Trigger = std::tuple<bool, SurveyMode, LoggingState, const char*>;
  for (const auto& [pressed, mode, state, shown] : {
           Trigger{true, SurveyMode::kAuto, LoggingState::kLogging, "M"},
           Trigger{true, SurveyMode::kWheel, LoggingState::kStandBy, "M"},
           Trigger{true, SurveyMode::kManual, LoggingState::kLogging, " "},
           Trigger{true, SurveyMode::kManual, LoggingState::kStandBy, "M"},
           Trigger{true, SurveyMode::kManual, LoggingState::kMonitor, "M"},
           Trigger{false, SurveyMode::kAuto, LoggingState::kMonitor, " "},
       }) {
    EXPECT_EQ(triggerIndicatorText(pressed, mode, state), shown)
        << pressed << modeIndex(mode) << static_cast<int>(state);
  }
}

}  // namespace
}  // namespace gc40
