#pragma once
// The texts of the logging screen's status display, each in its fixed
// printf-style shape but made without the C locale.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "instrument/reading_decoder.h"
#include "settings/modes.h"

namespace gc40 {

inline constexpr std::string_view kGpsDisabledText = "GPS  Input  disabled";
inline constexpr std::string_view kStationLabel = "Stn:";
inline constexpr std::string_view kManualStationLabel = "S  :";
inline constexpr std::string_view kLineLabel = "Line:";
inline constexpr std::string_view kPleaseWaitText = "Please Wait...";

// "Stand By", "Monitor", "Logging"; empty for anything else.
std::string_view stateText(LoggingState loggingState);

// "File:" and the first 8 characters of the data file's base name.
std::u16string fileText(std::u16string_view baseName);

// "Auto", "Wheel", "Manual"; empty for an unknown mode.
std::string_view triggerModeText(SurveyMode surveyMode);

// "%3d%%" of the charge; "AC" on a machine without a battery.
std::string batteryText(std::optional<int> percent);

// "%-11.2f" of the station.
std::string stationText(double station);

// "%1d" of the readings recorded at this station.
std::string countText(std::int32_t readingsAtStation);

// "Mode:V", "Mode:H", "Mode:B" for the survey's dipole mode; a damaged
// setting shows a blank after the colon.
std::string dipoleModeText(DipoleMode dipoleMode);

// The value fields of one reading. The conductivity field is empty unless the
// component is Both: an Inphase survey carries no conductivity.
std::string conductivityText(const DecodedReading& reading, Component component, bool portrait);
std::string inphaseText(const DecodedReading& reading, bool portrait);

// The reading's dipole ('V' vertical, anything else horizontal) and range.
std::string dipoleRangeText(const DecodedReading& reading, bool portrait);

// "Sample %-3d of %-3d" while a Manual average is collected.
std::string averagingText(std::int32_t sampleIndex, std::int32_t samplesPerReading);

// "M" while the trigger is pressed, except in Manual mode while logging, where
// the trigger records readings and a mark would only flicker; else a blank.
std::string_view triggerIndicatorText(bool triggerPressed, SurveyMode surveyMode,
                                      LoggingState loggingState);

// The battery is asked again once more than three minutes have passed since
// it was last drawn, across the tick counter's wrap.
bool batteryRefreshDue(std::uint32_t nowTick, std::uint32_t lastDrawnTick);

}  // namespace gc40
