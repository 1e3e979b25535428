#include "settings/survey_setup.h"

#include <algorithm>

#include "base/number_text.h"
#include "base/text_codec.h"

namespace gc40 {
namespace {

void acceptRate(Settings& settings, std::u16string_view text) {
  float perSecond = parseFloatPrefix(leadingUnits(text, kSurveySetupRateMaxLength));
  if (perSecond == 0.0f) perSecond = 1.0f;  // a negative rate is taken as it stands
  settings.readingInterval = narrowToFloat(1.0 / static_cast<double>(perSecond));
  computeSamplesPerReading(settings);
}

void acceptSamples(Settings& settings, std::u16string_view text) {
  settings.samplesPerReading = std::clamp(truncateToInt32(parseDecimalPrefix(text)), 1, 100);
}

}  // namespace

void storeSurveyLine(Settings& settings, const SurveyLineEntry& entry, std::size_t maxLineLength) {
  settings.surveyLine = leadingUnits(entry.line, maxLineLength);
  settings.surveyLineValue = parseFloatPrefix(settings.surveyLine);
  settings.lineIncrement = parseFloatPrefix(entry.lineIncrement);
  settings.lineSequence = entry.lineSequence;
  settings.lineDirection = entry.lineDirection;
  settings.startStation = parseDecimalPrefix(entry.startStation);
  settings.currentStation = settings.startStation;
  settings.stationIncrement = parseFloatPrefix(entry.stationIncrement);
}

void acceptSurveySetup(Settings& settings, const SurveySetupEntry& entry) {
  const SurveyMode mode = modeFromIndex<SurveyMode>(entry.mode);
  settings.surveyModeSetting = mode;
  settings.surveyMode = mode;
  if (mode == SurveyMode::kAuto) acceptRate(settings, entry.rateOrSamples);
  if (mode == SurveyMode::kManual) acceptSamples(settings, entry.rateOrSamples);
  settings.stationAdvance = 0;  // the next reading is taken at the start station itself
  settings.component = modeFromIndex<Component>(entry.component);
  settings.dipoleMode = modeFromIndex<DipoleMode>(entry.dipoleMode);
  storeSurveyLine(settings,
                  {entry.line, entry.lineIncrement, entry.lineSequence, entry.lineDirection,
                   entry.startStation, entry.stationIncrement},
                  kSurveySetupLineMaxLength);
  if (float* perMode = perModeStationIncrement(settings, mode)) {
    *perMode = settings.stationIncrement;
  }
}

}  // namespace gc40
