#pragma once
// The simulator's command line.

#include <chrono>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "gc40-sim/instrument_records.h"

namespace gc40 {

struct SimOptions {
  std::filesystem::path link;
  std::chrono::milliseconds settle{100};
  InstrumentOptions instrument;
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
