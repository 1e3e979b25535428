#pragma once
// What happens to one complete instrument reading: whether the trigger is
// down, whether the reading is recorded, Manual averaging, the text that goes
// into the "T" record, and the station and beep counts.

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "instrument/reading_decoder.h"
#include "logging/run_state.h"
#include "settings/settings.h"

namespace gc40 {

// The instrument's trigger (or wheel) mark: bit 6 of the status byte, bit 7
// dropped.
bool triggerPressed(std::string_view record);

// The next manualTriggerLatch. In Manual mode a press records one reading,
// the first in which it is seen, and a held trigger records no more; in Auto
// and Wheel every reading is recorded.
std::int32_t nextTriggerLatch(std::int32_t latch, bool pressed, SurveyMode surveyMode);

struct AverageProgress {
  std::int32_t sample = 0;  // 1 .. samplesPerReading
  bool complete = false;
};

// Adds one sample to the Manual average. The first switches the run to Auto
// so that the next samples come without the trigger. The last replaces the
// reading's values (and what is filed under its dipole) by the averages,
// keeps the raw-field averages, clears the sums and returns the run to Manual.
AverageProgress addAverageSample(LoggingRunState& state, std::int32_t samplesPerReading,
                                 std::string_view record, DecodedReading& reading,
                                 FiledValues& filed);

// The instrument record as it is recorded: cut at a NUL and padded with spaces
// to 13; with raw averages, those written over the two value fields as
// "%+05d" (the second only when the record reaches that field); the repeat
// number 2..6 within the station in place of the "T".
std::string recordedRecordText(std::string_view record,
                               const std::optional<std::array<float, 2>>& rawAverages,
                               std::int32_t readingsAtStation);

// Counts a recorded reading toward the beep; true when it is time to beep.
bool countTowardBeep(LoggingRunState& state, bool audioEnabled);

// Once a recorded reading is counted in readingsAtStation: a completed group
// starts the count again and moves the station on by stationIncrement, except
// the first group after the window opens, a New Line or a New Station, which
// leaves the station where it was.
void advanceStation(LoggingRunState& state, Settings& settings);

}  // namespace gc40
