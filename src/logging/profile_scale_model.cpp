#include "logging/profile_scale_model.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"

namespace gc40 {
namespace {

// "nan" is a number to wcstod; it would leave the profile without a scale.
float limitOf(std::u16string_view text) {
  const float value = parseFloatPrefix(text);
  return std::isnan(value) ? 0.0f : std::clamp(value, -kScaleLimit, kScaleLimit);
}

void acceptScale(float& min, float& max, std::u16string_view minText, std::u16string_view maxText) {
  min = limitOf(minText);
  max = limitOf(maxText);
  if (max <= min) max = min + kScaleFallbackSpan;
}

}  // namespace

ProfileScaleControls openProfileScale(const Settings& settings) {
  return {formatFixedWide(settings.conductivityScaleMin, 0),
          formatFixedWide(settings.conductivityScaleMax, 0),
          formatFixedWide(settings.inphaseScaleMin, 0),
          formatFixedWide(settings.inphaseScaleMax, 0)};
}

void acceptProfileScale(Settings& settings, const ProfileScaleControls& controls) {
  acceptScale(settings.conductivityScaleMin, settings.conductivityScaleMax,
              controls.conductivityMin, controls.conductivityMax);
  acceptScale(settings.inphaseScaleMin, settings.inphaseScaleMax, controls.inphaseMin,
              controls.inphaseMax);
  recomputeScaleFactors(settings);
}

}  // namespace gc40
