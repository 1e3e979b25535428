#include "app/survey_setup_model.h"

#include "base/number_text.h"
#include "base/text_codec.h"
#include "ui/combo_selection.h"

namespace gc40 {
namespace {

constexpr std::int32_t kAuto = 0;
constexpr std::int32_t kWheel = 1;
constexpr std::int32_t kManual = 2;

std::span<const std::string_view> dipoleItemsFor(std::int32_t mode) {
  return std::span<const std::string_view>(choices::kDipoleModes).first(mode == kManual ? 3 : 2);
}

void showDipoleModes(SurveySetupControls& controls, const Settings& settings, std::int32_t mode) {
  controls.dipoleItems = dipoleItemsFor(mode);
  controls.values.dipoleMode =
      selectionOf(settings, kDipoleModeSetting, controls.dipoleItems.size());
}

// Labels and edit 621 for the mode shown. On opening the Manual label reads
// "Sample/Rdg" and 609 keeps its layout text; a later change relabels both.
void showMode(SurveySetupModel& dialog, bool opening) {
  SurveySetupControls& controls = dialog.controls;
  const SurveySetupWorking& working = dialog.working;
  controls.rateLabel = u"Readings/s";
  controls.rateReadOnly = false;
  controls.incrementLabel = u"Stn Increment";
  switch (working.modeShown) {
    case kAuto:
      controls.values.rateOrSamples = formatFixedWide(working.readingsPerSecond, 2);
      break;
    case kWheel:
      controls.values.rateOrSamples = u"Not Available";
      controls.rateReadOnly = true;
      controls.incrementLabel = u"Wheel Inc.";
      break;
    default:
      controls.rateLabel = opening ? u"Sample/Rdg" : u"Samples/Rdg";
      controls.values.rateOrSamples = windows1252ToWide(formatInteger(working.samples));
      break;
  }
  if (opening) controls.incrementLabel.reset();
  controls.values.stationIncrement = formatFixedWide(working.stationIncrement, 3);
}

}  // namespace

SurveySetupModel openSurveySetup(const Settings& settings) {
  SurveySetupModel dialog;
  SurveySetupWorking& working = dialog.working;
  SurveySetupEntry& values = dialog.controls.values;
  values.mode = selectionOf(settings, kSurveyModeSetting);
  working.modeShown = values.mode;
  working.readingsPerSecond = narrowToFloat(1.0 / static_cast<double>(settings.readingInterval));
  working.samples = settings.samplesPerReading;
  working.stationIncrement = settings.stationIncrement;
  working.modeIncrements = {settings.stationIncrementAuto, settings.stationIncrementWheel,
                            settings.stationIncrementManual};
  values.component = selectionOf(settings, kComponentSetting);
  showDipoleModes(dialog.controls, settings, values.mode);
  values.line = settings.surveyLine;
  values.lineIncrement = formatFixedWide(settings.lineIncrement, 2);
  values.lineSequence = selectionOf(settings, kLineSequenceSetting);
  values.lineDirection = selectionOf(settings, kLineDirectionSetting);
  values.startStation = formatFixedWide(settings.startStation, 3);
  showMode(dialog, true);
  return dialog;
}

void changeSurveyMode(SurveySetupModel& dialog, Settings& settings, std::int32_t mode) {
  if (mode < kAuto || mode > kManual) return;
  SurveySetupWorking& working = dialog.working;
  dialog.controls.values.mode = mode;
  if (mode != working.modeShown) {
    if (mode != kManual && settings.dipoleMode == 2) settings.dipoleMode = 0;
    showDipoleModes(dialog.controls, settings, mode);
    working.modeIncrements[static_cast<std::size_t>(working.modeShown)] = working.stationIncrement;
    working.stationIncrement = working.modeIncrements[static_cast<std::size_t>(mode)];
  }
  working.modeShown = mode;
  showMode(dialog, false);
}

void editRateOrSamples(SurveySetupModel& dialog, std::u16string text) {
  float value = parseFloatPrefix(text);
  if (value <= 0.0f) value = 1.0f;
  dialog.controls.values.rateOrSamples = std::move(text);
  if (dialog.working.modeShown == kAuto) dialog.working.readingsPerSecond = value;
  if (dialog.working.modeShown == kManual) dialog.working.samples = truncateToInt32(value);
}

void editStationIncrement(SurveySetupModel& dialog, std::u16string text) {
  SurveySetupWorking& working = dialog.working;
  working.stationIncrement = parseFloatPrefix(text);
  dialog.controls.values.stationIncrement = std::move(text);
  if (working.stationIncrement == 0.0f) {
    working.stationIncrement = 1.0f;
    dialog.controls.values.stationIncrement = formatFixedWide(working.stationIncrement, 3);
  }
  working.modeIncrements[static_cast<std::size_t>(working.modeShown)] = working.stationIncrement;
}

}  // namespace gc40
