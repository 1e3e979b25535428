#pragma once
// The lists that index settings choose from, in the order the dialogs show
// them, and what the program does with a stored index outside its list (a
// settings file edited by hand or damaged). The record keeps such a number as
// it was read, so saving writes it back unchanged; every use of an index goes
// through these functions so that none reads outside a list.

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "settings/modes.h"
#include "settings/settings.h"

namespace gc40 {

namespace choices {
inline constexpr std::array<std::string_view, 2> kInstrumentVariants = {"Standard", "Short"};
inline constexpr std::array<std::string_view, 2> kDistanceUnits = {"meters", "feet"};
inline constexpr std::array<std::string_view, 2> kNoYes = {"No", "Yes"};
inline constexpr std::array<std::string_view, 4> kPauseKeys = {"any key", "<Space Bar>", "<Enter>",
                                                               "<P>"};
inline constexpr std::array<std::string_view, 2> kGpsInput = {"Disabled", "Enabled"};
inline constexpr std::array<std::string_view, 6> kGpsBaudRates = {"4800",  "9600",  "19200",
                                                                  "38400", "57600", "115200"};
inline constexpr std::array<std::string_view, 3> kParities = {"No", "Even", "Odd"};
inline constexpr std::array<std::string_view, 2> kDataBits = {"7", "8"};
inline constexpr std::array<std::string_view, 2> kStopBits = {"1", "2"};
inline constexpr std::array<std::string_view, 3> kSurveyModes = {"Auto", "Wheel", "Manual"};
inline constexpr std::array<std::string_view, 2> kComponents = {"Both", "Inphase"};
inline constexpr std::array<std::string_view, 3> kDipoleModes = {"Vertical", "Horizontal", "Both"};
inline constexpr std::array<std::string_view, 2> kLineSequences = {"Alternate", "One Way"};
inline constexpr std::array<std::string_view, 4> kLineDirections = {"West", "South", "North",
                                                                    "East"};
inline constexpr std::array<std::string_view, 2> kGridScales = {"Conductivity", "Inphase"};
inline constexpr std::array<std::string_view, 4> kTraceThicknesses = {"1 pixel", "2 pixels",
                                                                      "3 pixels", "4 pixels"};
inline constexpr int kComPortCount = 12;
}  // namespace choices

// The field of an index setting, a plain index or a mode, read and written as
// the index it holds.
class IndexField {
 public:
  template <typename Field>
  constexpr IndexField(Field Settings::*member) : member_(member) {}

  std::int32_t read(const Settings& settings) const;
  void write(Settings& settings, std::int32_t index) const;

 private:
  std::variant<std::int32_t Settings::*, SurveyMode Settings::*, Component Settings::*,
               DipoleMode Settings::*>
      member_;
};

// An index setting: its field, its list, and the index that a stored value
// outside the list acts as (the field's default).
struct IndexSetting {
  IndexField field;
  std::span<const std::string_view> items;
  std::int32_t fallback;
};

inline constexpr IndexSetting kInstrumentVariantSetting{&Settings::instrumentVariant,
                                                        choices::kInstrumentVariants, 0};
inline constexpr IndexSetting kDistanceUnitsSetting{&Settings::distanceUnits,
                                                    choices::kDistanceUnits, 0};
inline constexpr IndexSetting kAudioSetting{&Settings::audioEnabled, choices::kNoYes, 1};
inline constexpr IndexSetting kPauseKeySetting{&Settings::pauseKey, choices::kPauseKeys, 0};
inline constexpr IndexSetting kGpsEnabledSetting{&Settings::gpsEnabled, choices::kGpsInput, 0};
inline constexpr IndexSetting kGpsBaudSetting{&Settings::gpsBaudIndex, choices::kGpsBaudRates, 1};
inline constexpr IndexSetting kGpsParitySetting{&Settings::gpsParity, choices::kParities, 0};
inline constexpr IndexSetting kGpsDataBitsSetting{&Settings::gpsDataBitsIndex, choices::kDataBits,
                                                  1};
inline constexpr IndexSetting kGpsStopBitsSetting{&Settings::gpsStopBitsIndex, choices::kStopBits,
                                                  0};
inline constexpr IndexSetting kSurveyModeSetting{&Settings::surveyMode, choices::kSurveyModes,
                                                 modeIndex(SurveyMode::kAuto)};
inline constexpr IndexSetting kComponentSetting{&Settings::component, choices::kComponents,
                                                modeIndex(Component::kBoth)};
inline constexpr IndexSetting kDipoleModeSetting{&Settings::dipoleMode, choices::kDipoleModes,
                                                 modeIndex(DipoleMode::kVertical)};
inline constexpr IndexSetting kLineSequenceSetting{&Settings::lineSequence, choices::kLineSequences,
                                                   0};
inline constexpr IndexSetting kLineDirectionSetting{&Settings::lineDirection,
                                                    choices::kLineDirections, 1};
inline constexpr IndexSetting kGridScaleSetting{&Settings::gridScale, choices::kGridScales, 0};

inline constexpr std::array<const IndexSetting*, 15> kIndexSettings = {
    &kInstrumentVariantSetting, &kDistanceUnitsSetting, &kAudioSetting,     &kPauseKeySetting,
    &kGpsEnabledSetting,        &kGpsBaudSetting,       &kGpsParitySetting, &kGpsDataBitsSetting,
    &kGpsStopBitsSetting,       &kSurveyModeSetting,    &kComponentSetting, &kDipoleModeSetting,
    &kLineSequenceSetting,      &kLineDirectionSetting, &kGridScaleSetting};

// The stored index when it names an item, else nullopt. The GPS line settings
// use this: an unknown index leaves the port's own value rather than guess.
std::optional<std::int32_t> validIndex(const Settings& settings, const IndexSetting& setting);

// The index the program acts on: the stored one, or the fallback.
std::int32_t effectiveIndex(const Settings& settings, const IndexSetting& setting);

// The survey mode the program acts on: the stored one, or Auto.
SurveyMode effectiveSurveyMode(const Settings& settings);

// The item text of the effective index (for status texts and file headers).
std::string_view effectiveText(const Settings& settings, const IndexSetting& setting);

// "COM1:" for index 0. Any index gives a name, so a port index outside the
// list names a port that the port map does not have, and opening it fails with
// the usual message instead of opening some other port.
std::string comPortName(std::int32_t index);

// Pen width in pixels: 1..4, whatever the file held (0 or 40 would draw
// nothing useful or cover the whole profile).
std::int32_t effectiveTraceThickness(std::int32_t stored);

// Samples averaged into one Manual reading: 1..100, as Survey Setup clamps;
// 0 would divide by zero and a huge count would never complete a reading.
std::int32_t effectiveSamplesPerReading(std::int32_t stored);

}  // namespace gc40
