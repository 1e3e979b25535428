#include "logging/line_station_model.h"

#include "base/number_text.h"
#include "base/text_codec.h"
#include "settings/setting_choices.h"
#include "settings/survey_setup.h"

namespace gc40 {
namespace {

constexpr std::int32_t kOneWay = 1;

// The list runs West, South, North, East, so each direction's opposite sits
// at the mirrored place.
std::int32_t reversed(std::int32_t direction) { return 3 - direction; }

}  // namespace

NewLineControls openNewLine(const Settings& settings) {
  NewLineControls controls;
  controls.currentLine = settings.surveyLine;
  controls.lastStation = formatFixedWide(settings.currentStation, 3);
  // Taken from the name, not surveyLineValue, so a name that is no number
  // proposes the increment alone.
  const float next = parseFloatPrefix(settings.surveyLine) + settings.lineIncrement;
  controls.newLine = formatFixedWide(next, 2);
  controls.lineIncrement = formatFixedWide(settings.lineIncrement, 2);
  controls.lineSequence = effectiveIndex(settings, kLineSequenceSetting);
  const std::int32_t direction = effectiveIndex(settings, kLineDirectionSetting);
  if (controls.lineSequence == kOneWay) {
    controls.lineDirection = direction;
    controls.startStation = formatFixedWide(settings.startStation, 3);
    controls.stationIncrement = formatFixedWide(settings.stationIncrement, 3);
  } else {
    controls.lineDirection = reversed(direction);
    controls.startStation = formatFixedWide(settings.currentStation, 3);
    controls.stationIncrement = formatFixedWide(-settings.stationIncrement, 3);
  }
  return controls;
}

void acceptNewLine(Settings& settings, const NewLineControls& controls) {
  storeSurveyLine(settings,
                  {controls.newLine, controls.lineIncrement, controls.lineSequence,
                   controls.lineDirection, controls.startStation, controls.stationIncrement},
                  kSurveyLineMaxLength);
}

NewStationControls openNewStation(const Settings& settings) {
  return {formatFixedWide(settings.startStation, 3), formatFixedWide(settings.currentStation, 3),
          u""};
}

void acceptNewStation(Settings& settings, std::u16string_view newStation) {
  settings.currentStation = parseDecimalPrefix(newStation);
}

std::u16string commentText(std::u16string_view typed) {
  return std::u16string(leadingUnits(typed, kCommentReadLength));
}

bool usesLandscapeLayout(const Settings& settings) {
  return settings.portraitScreen == 0 && settings.useStorageFolder == 1;
}

}  // namespace gc40
