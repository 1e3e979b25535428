#include "settings/survey_setup.h"

#include <gtest/gtest.h>

namespace gc40 {
namespace {

TEST(ReadingTiming, DerivedFromTheInterval) {
  struct Case {
    float interval;
    int cycles;
    int perSecond;
  };
  for (const Case c : {Case{0.2f, 2, 5}, Case{1.0f, 11, 1}, Case{0.05f, 1, 11}, Case{0.5f, 5, 2},
                       Case{2.0f, 22, 1}, Case{0.1f, 1, 10}}) {
    Settings settings;
    settings.readingInterval = c.interval;
    computeSamplesPerReading(settings);
    EXPECT_EQ(settings.cyclesPerReading, c.cycles) << c.interval;
    EXPECT_EQ(settings.readingsPerSecondWhole, c.perSecond) << c.interval;
    EXPECT_EQ(settings.recordPeriodMs, 91.0f);
  }
}

SurveySetupEntry autoEntry(std::u16string rate) {
  SurveySetupEntry entry;
  entry.mode = 0;
  entry.rateOrSamples = std::move(rate);
  entry.line = u"10";
  entry.lineIncrement = u"1.00";
  entry.startStation = u"0.000";
  entry.stationIncrement = u"1.000";
  return entry;
}

TEST(SurveySetupAcceptance, ReadingsPerSecondBecomeTheInterval) {
  struct Case {
    std::u16string text;
    float interval;
    int cycles;
    int perSecond;
  };
  for (const Case& c : {Case{u"0", 1.0f, 11, 1}, Case{u"", 1.0f, 11, 1}, Case{u"abc", 1.0f, 11, 1},
                        Case{u"20", 0.05f, 1, 11}, Case{u"5.00", 0.2f, 2, 5}}) {
    Settings settings;
    acceptSurveySetup(settings, autoEntry(c.text));
    EXPECT_EQ(settings.readingInterval, c.interval);
    EXPECT_EQ(settings.cyclesPerReading, c.cycles);
    EXPECT_EQ(settings.readingsPerSecondWhole, c.perSecond);
  }
  // A negative rate is taken as it stands; the timing still stays sane.
  Settings settings;
  acceptSurveySetup(settings, autoEntry(u"-5"));
  EXPECT_EQ(settings.readingInterval, -0.2f);
  EXPECT_EQ(settings.cyclesPerReading, 1);
  EXPECT_EQ(settings.readingsPerSecondWhole, 1);
}

TEST(SurveySetupAcceptance, ManualSamplesAreClampedAndOtherModesLeaveThem) {
  for (const auto& [text, samples] : {std::pair{u"0", 1},
                                      {u"250", 100},
                                      {u"37.9", 37},
                                      {u"-4", 1},
                                      {u"1e20", 100},
                                      {u"nan", 1}}) {
    Settings settings;
    SurveySetupEntry entry = autoEntry(text);
    entry.mode = 2;
    acceptSurveySetup(settings, entry);
    EXPECT_EQ(settings.samplesPerReading, samples);
    EXPECT_EQ(settings.readingInterval, 0.2f);  // the Auto rate is left alone
  }
  Settings settings;
  SurveySetupEntry wheel = autoEntry(u"Not Available");
  wheel.mode = 1;
  acceptSurveySetup(settings, wheel);
  EXPECT_EQ(settings.readingInterval, 0.2f);
  EXPECT_EQ(settings.samplesPerReading, 10);
}

TEST(SurveySetupAcceptance, StoresTheSurveyAndTheModesOwnStep) {
  Settings settings;
  settings.currentStation = 99.0;
  settings.stationAdvance = 1;
  SurveySetupEntry entry = autoEntry(u"5");
  entry.mode = 1;
  entry.component = 1;
  entry.dipoleMode = 1;
  entry.line = u"A1-North-\u00c9ast-0123456789abc";  // 27 characters
  entry.lineIncrement = u"-2.5";
  entry.lineSequence = 1;
  entry.lineDirection = 3;
  entry.startStation = u"1250.125";
  entry.stationIncrement = u"-0.250";
  acceptSurveySetup(settings, entry);

  EXPECT_EQ(settings.surveyMode, 1);
  EXPECT_EQ(settings.surveyModeSetting, 1);
  EXPECT_EQ(settings.component, 1);
  EXPECT_EQ(settings.dipoleMode, 1);
  EXPECT_EQ(settings.surveyLine, u"A1-North-\u00c9ast-012345678");
  EXPECT_EQ(settings.surveyLineValue, 0.0f);  // not a number
  EXPECT_EQ(settings.lineIncrement, -2.5f);
  EXPECT_EQ(settings.lineSequence, 1);
  EXPECT_EQ(settings.lineDirection, 3);
  EXPECT_EQ(settings.startStation, 1250.125);
  EXPECT_EQ(settings.currentStation, 1250.125);
  EXPECT_EQ(settings.stationAdvance, 0);
  EXPECT_EQ(settings.stationIncrement, -0.25f);
  EXPECT_EQ(settings.stationIncrementWheel, -0.25f);
  EXPECT_EQ(settings.stationIncrementAuto, 1.0f);
  EXPECT_EQ(settings.stationIncrementManual, 2.0f);

  entry.line = u"12.5";
  acceptSurveySetup(settings, entry);
  EXPECT_EQ(settings.surveyLineValue, 12.5f);
}

}  // namespace
}  // namespace gc40
