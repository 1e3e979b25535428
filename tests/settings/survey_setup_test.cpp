#include "settings/survey_setup.h"

#include <gtest/gtest.h>

namespace gc40 {
namespace {

Settings accepted(std::int32_t mode, std::u16string rate, std::u16string line = u"10") {
  Settings settings;
  acceptSurveySetup(settings, {mode, std::move(rate), 1, 1, std::move(line), u"-2.5", 1, 3,
                               u"1250.125", u"-0.250"});
  return settings;
}

// Auto takes readings per second into the interval and its timing, Manual
// clamps its samples; each leaves the other's value, and Wheel leaves both.
TEST(SurveySetup, RateOrSamplesAreTakenByTheirModeOnly) {
  using Case = std::tuple<int, const char16_t*, float, int, int, int>;
  for (const auto& [mode, text, interval, cycles, perSecond, samples] :
       {Case{0, u"0", 1.0f, 11, 1, 10}, Case{0, u"", 1.0f, 11, 1, 10},
        Case{0, u"20", 0.05f, 1, 11, 10}, Case{0, u"5.00", 0.2f, 2, 5, 10},
        Case{0, u"-2", -0.5f, 1, 1, 10}, Case{2, u"0", 0.2f, 2, 5, 1},
        Case{2, u"250", 0.2f, 2, 5, 100}, Case{2, u"37.9", 0.2f, 2, 5, 37},
        Case{2, u"1e20", 0.2f, 2, 5, 100}, Case{2, u"nan", 0.2f, 2, 5, 1},
        Case{1, u"Not Available", 0.2f, 2, 5, 10}}) {
    const Settings s = accepted(mode, text);
    EXPECT_EQ(std::tuple(s.readingInterval, s.cyclesPerReading, s.readingsPerSecondWhole,
                         s.samplesPerReading),
              std::tuple(interval, cycles, perSecond, samples))
        << mode;
  }
}

TEST(SurveySetup, StoresTheSurveyAndTheChosenModesOwnStep) {
  const Settings s = accepted(1, u"", u"A1-North-\u00c9ast-0123456789abc");
  EXPECT_EQ(s.surveyModeSetting, 1);
  EXPECT_EQ(s.surveyLine, u"A1-North-\u00c9ast-012345678");  // 23 characters
  EXPECT_EQ(s.surveyLineValue, 0.0f);
  EXPECT_EQ(std::tuple(s.lineIncrement, s.lineSequence, s.lineDirection, s.currentStation),
            std::tuple(-2.5f, 1, 3, 1250.125));
  EXPECT_EQ(std::tuple(s.stationIncrement, s.stationIncrementAuto, s.stationIncrementWheel,
                       s.stationIncrementManual),
            std::tuple(-0.25f, 1.0f, -0.25f, 2.0f));
  EXPECT_EQ(accepted(0, u"1", u"12.5").surveyLineValue, 12.5f);
}

}  // namespace
}  // namespace gc40
