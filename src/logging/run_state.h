#pragma once
// The state of one Monitor/Log run: what the logging screen is doing, and the
// counters behind each reading's record decision.

#include <array>
#include <cstdint>

#include "logging/command_keys.h"
#include "settings/settings.h"

namespace gc40 {

// manualTriggerLatch values.
inline constexpr std::int32_t kLatchSkip = 0;    // do not record this reading
inline constexpr std::int32_t kLatchRecord = 1;  // record this reading
inline constexpr std::int32_t kLatchHeld = -1;   // trigger still held since the last recording

// One flag per profile trace: 1 when the trace has a point to join the next to.
using TraceFlags = std::array<std::int32_t, kTraceCount>;

struct LoggingRunState {
  LoggingState loggingState = LoggingState::kMonitor;
  std::int32_t keysActive = 0;  // 1 while the window is in use; keys are ignored otherwise
  // The run's own copy of surveyMode: Manual averaging switches it to Auto
  // while it collects samples, so they are taken without the trigger.
  SurveyMode surveyMode = SurveyMode::kAuto;
  std::int32_t manualTriggerLatch = kLatchSkip;
  std::int32_t readingsAtStation = 0;  // recorded since the station last advanced
  std::int32_t readingsPerStation = 1;
  std::int32_t stationStarted =
      0;  // 0 until the first group after opening, New Line or New Station
  std::int32_t beepCounter = 0;
  std::int32_t beepInterval = 1;
  std::int32_t averagingActive = 0;  // 1: each trigger records the average of samplesPerReading
  std::int32_t averageSampleIndex = 0;
  // Raw first and second value fields, decoded conductivity and inphase.
  std::array<float, 4> averageSums{};
  float averagedRaw1 = 0;
  float averagedRaw2 = 0;
  std::int32_t selectedButton = 0;  // Enter activates this button of the visible group
  std::int32_t buttonCount = kMonitorButtonCount;
  TraceFlags traceContinues{};

  bool operator==(const LoggingRunState&) const = default;
};

// The run state a Monitor/Log start leaves: counters cleared, the run in
// Monitor with the configured survey mode, Manual averaging on when each
// reading takes two samples or more, one beep per station.
LoggingRunState startingRunState(const Settings& settings, std::int32_t readingsPerStation);

}  // namespace gc40
