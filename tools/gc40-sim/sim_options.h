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

namespace gc40 {

// At least one of the two links; each has a device of its own.
struct SimOptions {
  std::filesystem::path link;     // the instrument's
  std::filesystem::path gpsLink;  // the GPS receiver's
  std::chrono::milliseconds settle{100};
  InstrumentOptions instrument;
  NmeaReplayOptions nmea;
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
