#pragma once
// The one settings record: all configuration and the survey state that the
// screens share. The application owns one and passes it by reference.

#include <array>
#include <cstdint>
#include <string>

#include "settings/modes.h"

namespace gc40 {

using Colorref = std::uint32_t;  // 0x00BBGGRR

inline constexpr int kTraceCount = 8;
inline constexpr std::size_t kSurveyLineMaxLength = 24;
inline constexpr float kRecordPeriodMs = 91.0f;  // one instrument output cycle

struct Settings {
  // Instrument and logger (Logger Setup).
  std::int32_t instrumentVariant = 0;  // 0 Standard, 1 Short
  std::int32_t instrumentPort = 0;     // 0..11 = COM1:..COM12:
  std::int32_t distanceUnits = 0;      // 0 meters, 1 feet
  std::int32_t audioEnabled = 1;       // 0 No, 1 Yes
  std::int32_t pauseKey = 0;           // 0 any key, 1 space, 2 Enter, 3 P

  // GPS (Set GPS Port).
  std::int32_t gpsEnabled = 0;
  std::int32_t gpsPort = 1;       // COM2:
  std::int32_t gpsBaudIndex = 1;  // 9600
  std::int32_t gpsParity = 0;
  std::int32_t gpsDataBitsIndex = 1;  // 8 bits
  std::int32_t gpsStopBitsIndex = 0;  // 1 stop bit

  // Survey (Survey Setup).
  SurveyMode surveyMode = SurveyMode::kAuto;
  SurveyMode surveyModeSetting = SurveyMode::kAuto;
  float readingInterval = 0.2f;         // seconds between Auto readings
  std::int32_t samplesPerReading = 10;  // Manual averaging, 1..100
  Component component = Component::kBoth;
  DipoleMode dipoleMode = DipoleMode::kVertical;
  std::u16string surveyLine = u"0";
  float surveyLineValue = 0.0f;
  float lineIncrement = 1.0f;
  std::int32_t lineSequence = 0;   // 0 Alternate, 1 One Way
  std::int32_t lineDirection = 1;  // 0 West, 1 South, 2 North, 3 East
  double startStation = 0.0;
  double currentStation = 0.0;  // station the next reading gets
  float stationIncrement = 1.0f;
  float stationIncrementAuto = 1.0f;
  float stationIncrementWheel = 0.2f;
  float stationIncrementManual = 2.0f;
  // 0: the next reading is taken at currentStation; 1: advance first.
  std::int32_t stationAdvance = 0;

  // Live profile display (Display Options, Enter Scale).
  std::array<std::int32_t, kTraceCount> traceVisible = {1, 1, 1, 1, 1, 1, 1, 1};
  std::array<std::int32_t, kTraceCount> traceThickness = {2, 2, 2, 2, 1, 1, 1, 1};
  std::array<Colorref, kTraceCount> traceColour = {0xFF0000, 0x00FF00, 0x0000FF, 0xFF00FF,
                                                   0x000000, 0x00FFFF, 0xFF00FF, 0x00FF00};
  std::int32_t gridScale = 0;  // 0 Conductivity, 1 Inphase
  float conductivityScaleMin = 0.0f;
  float conductivityScaleMax = 500.0f;
  float inphaseScaleMin = -25.0f;
  float inphaseScaleMax = 25.0f;
  std::int32_t plotHeight = 180;
  float conductivityPixelsPerUnit = 0.36f;
  float inphasePixelsPerUnit = 3.6f;

  // Storage and screen.
  std::int32_t useStorageFolder = 1;
  std::int32_t portraitScreen = 0;

  // Reading timing, derived from readingInterval.
  float recordPeriodMs = kRecordPeriodMs;
  std::int32_t cyclesPerReading = 2;
  std::int32_t readingsPerSecondWhole = 5;

  bool operator==(const Settings&) const = default;
};

// Derives cyclesPerReading and readingsPerSecondWhole from readingInterval.
void computeSamplesPerReading(Settings& settings);

// Derive the pixels-per-unit factors of the profile from the scales. Equal
// minimum and maximum give an infinite factor; whoever maps values to pixels
// must cope with that.
void recomputeConductivityScale(Settings& settings);
void recomputeInphaseScale(Settings& settings);
void recomputeScaleFactors(Settings& settings);  // both

// The station step remembered for a survey mode; nullptr for an unknown mode.
float* perModeStationIncrement(Settings& settings, SurveyMode mode);

}  // namespace gc40
