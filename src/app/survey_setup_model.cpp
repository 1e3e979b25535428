#include "app/survey_setup_model.h"

#include "base/number_text.h"
#include "base/text_codec.h"
#include "ui/combo_selection.h"

namespace gc40 {
namespace {

// "Both", the last dipole item, is offered in Manual only.
std::span<const std::string_view> dipoleItemsFor(SurveyMode mode) {
  const std::span<const std::string_view> items = choices::kDipoleModes;
  return mode == SurveyMode::kManual ? items : items.first(items.size() - 1);
}

void showDipoleModes(SurveySetupControls& controls, const Settings& settings, SurveyMode mode) {
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
    case SurveyMode::kAuto:
      controls.values.rateOrSamples = formatFixedWide(working.readingsPerSecond, 2);
      break;
    case SurveyMode::kWheel:
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

float& modeIncrement(SurveySetupWorking& working, SurveyMode mode) {
  return working.modeIncrements[static_cast<std::size_t>(modeIndex(mode))];
}

}  // namespace

SurveySetupModel openSurveySetup(const Settings& settings) {
  SurveySetupModel dialog;
  SurveySetupWorking& working = dialog.working;
  SurveySetupEntry& values = dialog.controls.values;
  values.mode = selectionOf(settings, kSurveyModeSetting);
  working.modeShown = modeFromIndex<SurveyMode>(values.mode);
  working.readingsPerSecond = narrowToFloat(1.0 / static_cast<double>(settings.readingInterval));
  working.samples = settings.samplesPerReading;
  working.stationIncrement = settings.stationIncrement;
  working.modeIncrements = {settings.stationIncrementAuto, settings.stationIncrementWheel,
                            settings.stationIncrementManual};
  values.component = selectionOf(settings, kComponentSetting);
  showDipoleModes(dialog.controls, settings, working.modeShown);
  values.line = settings.surveyLine;
  values.lineIncrement = formatFixedWide(settings.lineIncrement, 2);
  values.lineSequence = selectionOf(settings, kLineSequenceSetting);
  values.lineDirection = selectionOf(settings, kLineDirectionSetting);
  values.startStation = formatFixedWide(settings.startStation, 3);
  showMode(dialog, true);
  return dialog;
}

void changeSurveyMode(SurveySetupModel& dialog, Settings& settings, std::int32_t selection) {
  if (selection < 0 || selection >= std::ssize(choices::kSurveyModes)) return;
  const SurveyMode mode = modeFromIndex<SurveyMode>(selection);
  SurveySetupWorking& working = dialog.working;
  dialog.controls.values.mode = selection;
  if (mode != working.modeShown) {
    if (mode != SurveyMode::kManual && settings.dipoleMode == DipoleMode::kBoth) {
      settings.dipoleMode = DipoleMode::kVertical;
    }
    showDipoleModes(dialog.controls, settings, mode);
    modeIncrement(working, working.modeShown) = working.stationIncrement;
    working.stationIncrement = modeIncrement(working, mode);
  }
  working.modeShown = mode;
  showMode(dialog, false);
}

void editRateOrSamples(SurveySetupModel& dialog, std::u16string text) {
  float value = parseFloatPrefix(text);
  if (value <= 0.0f) value = 1.0f;
  dialog.controls.values.rateOrSamples = std::move(text);
  if (dialog.working.modeShown == SurveyMode::kAuto) dialog.working.readingsPerSecond = value;
  if (dialog.working.modeShown == SurveyMode::kManual)
    dialog.working.samples = truncateToInt32(value);
}

void editStationIncrement(SurveySetupModel& dialog, std::u16string text) {
  SurveySetupWorking& working = dialog.working;
  working.stationIncrement = parseFloatPrefix(text);
  dialog.controls.values.stationIncrement = std::move(text);
  if (working.stationIncrement == 0.0f) {
    working.stationIncrement = 1.0f;
    dialog.controls.values.stationIncrement = formatFixedWide(working.stationIncrement, 3);
  }
  modeIncrement(working, working.modeShown) = working.stationIncrement;
}

}  // namespace gc40
