#pragma once
// The simulator's command line.

#include <chrono>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "gc40-sim/instrument_records.h"
#include "gc40-sim/nmea_replay.h"
#include "gc40-sim/survey_walk.h"

namespace gc40 {

// At least one of the two links; each has a device of its own.
struct SimOptions {
  std::filesystem::path link;     // the instrument's
  std::filesystem::path gpsLink;  // the GPS receiver's
  std::chrono::milliseconds settle{100};
  InstrumentOptions instrument;
  NmeaReplayOptions nmea;
  // --survey: the meter reads the ground under a walker that the GPS receiver
  // follows, in place of the value pattern and the straight walk.
  bool surveying = false;
  SurveyOptions survey;
  bool help = false;
};

struct SimOptionsError {
  std::string message;
};

// The arguments after the program name.
std::variant<SimOptions, SimOptionsError> parseSimOptions(
    std::span<const std::string_view> arguments);

std::string simUsageText();

}  // namespace gc40
