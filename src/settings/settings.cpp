#include "settings/settings.h"

#include <algorithm>

#include "base/number_text.h"

namespace gc40 {

void computeSamplesPerReading(Settings& settings) {
  settings.recordPeriodMs = kRecordPeriodMs;
  const double interval = settings.readingInterval;
  settings.cyclesPerReading = std::max(1, truncateToInt32(interval * 1000.0 / 91.0 + 0.5));
  // In single precision, so that 0.2 s gives 5 per second and not 4.99999...
  std::int32_t perSecond = truncateToInt32(1.0f / settings.readingInterval);
  // Over a second (or NaN) the truncated rate is 0, so this makes it 1.
  if (!(interval <= 1.0)) ++perSecond;
  settings.readingsPerSecondWhole = perSecond < 2 ? 1 : std::min(perSecond, 11);
}

void recomputeConductivityScale(Settings& settings) {
  settings.conductivityPixelsPerUnit =
      static_cast<float>(settings.plotHeight) /
      (settings.conductivityScaleMax - settings.conductivityScaleMin);
}

void recomputeInphaseScale(Settings& settings) {
  settings.inphasePixelsPerUnit = static_cast<float>(settings.plotHeight) /
                                  (settings.inphaseScaleMax - settings.inphaseScaleMin);
}

void recomputeScaleFactors(Settings& settings) {
  recomputeConductivityScale(settings);
  recomputeInphaseScale(settings);
}

float* perModeStationIncrement(Settings& settings, SurveyMode mode) {
  switch (mode) {
    case SurveyMode::kAuto:
      return &settings.stationIncrementAuto;
    case SurveyMode::kWheel:
      return &settings.stationIncrementWheel;
    case SurveyMode::kManual:
      return &settings.stationIncrementManual;
    default:
      return nullptr;
  }
}

}  // namespace gc40
