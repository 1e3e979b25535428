#include "logging/status_texts.h"

#include "base/number_text.h"

namespace gc40 {
namespace {

constexpr std::size_t kFileNameShown = 8;
constexpr std::uint32_t kBatteryRefreshMs = 180000;

// "%-8.2f": a NaN or an infinity stays short ("nan", "-inf"), and the field
// clips anything wider, so no value can push into its neighbour.
std::string valueText(float value) { return leftAligned(formatFixed(value, 2), 8); }

bool isHighSurrogate(char16_t c) { return c >= 0xD800 && c <= 0xDBFF; }

}  // namespace

std::string_view stateText(LoggingState loggingState) {
  switch (loggingState) {
    case LoggingState::kStandBy:
      return "Stand By";
    case LoggingState::kMonitor:
      return "Monitor";
    case LoggingState::kLogging:
      return "Logging";
    default:
      return "";
  }
}

std::u16string fileText(std::u16string_view baseName) {
  std::u16string_view shown = baseName.substr(0, kFileNameShown);
  // Never half a character: a pair cut in two would show as a box.
  if (shown.size() == kFileNameShown && isHighSurrogate(shown.back())) shown.remove_suffix(1);
  return u"File:" + std::u16string(shown);
}

std::string_view triggerModeText(SurveyMode surveyMode) {
  switch (surveyMode) {
    case SurveyMode::kAuto:
      return "Auto";
    case SurveyMode::kWheel:
      return "Wheel";
    case SurveyMode::kManual:
      return "Manual";
    default:
      return "";
  }
}

std::string batteryText(std::optional<int> percent) {
  if (!percent) return "AC";
  return rightAligned(formatInteger(*percent), 3) + '%';
}

std::string stationText(double station) { return leftAligned(formatFixed(station, 2), 11); }

std::string countText(std::int32_t readingsAtStation) { return formatInteger(readingsAtStation); }

std::string dipoleModeText(DipoleMode dipoleMode) {
  constexpr std::string_view kLetters = "VHB";  // in list order
  const std::int32_t index = modeIndex(dipoleMode);
  const bool known = index >= 0 && index < std::ssize(kLetters);
  return std::string("Mode:") + (known ? kLetters[static_cast<std::size_t>(index)] : ' ');
}

std::string conductivityText(const DecodedReading& reading, Component component, bool portrait) {
  if (component != Component::kBoth) return "";
  return "C:" + valueText(reading.conductivity) + (portrait ? "mS/m" : "");
}

std::string inphaseText(const DecodedReading& reading, bool portrait) {
  return "I:" + valueText(reading.inphase) + (portrait ? "ppt" : "");
}

std::string dipoleRangeText(const DecodedReading& reading, bool portrait) {
  const bool vertical = reading.dipole == 'V';
  const std::string range = leftAligned(formatInteger(reading.range), 4);
  if (portrait)
    return (vertical ? "Vertical Dipoles   Range:" : "Horizontal Dipoles   Range:") + range;
  return (vertical ? "Vertical  G" : "Horizontal  G") + range;
}

std::string averagingText(std::int32_t sampleIndex, std::int32_t samplesPerReading) {
  return "Sample " + leftAligned(formatInteger(sampleIndex), 3) + " of " +
         leftAligned(formatInteger(samplesPerReading), 3);
}

std::string_view triggerIndicatorText(bool triggerPressed, SurveyMode surveyMode,
                                      LoggingState loggingState) {
  const bool manualLogging =
      surveyMode == SurveyMode::kManual && loggingState == LoggingState::kLogging;
  return triggerPressed && !manualLogging ? "M" : " ";
}

bool batteryRefreshDue(std::uint32_t nowTick, std::uint32_t lastDrawnTick) {
  return static_cast<std::uint32_t>(nowTick - lastDrawnTick) > kBatteryRefreshMs;
}

}  // namespace gc40
