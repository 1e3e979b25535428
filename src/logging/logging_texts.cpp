#include "logging/logging_texts.h"

#include "base/number_text.h"
#include "logging/run_state.h"

namespace gc40 {
namespace {

constexpr std::size_t kFileNameShown = 8;

std::string leftAligned(std::string text, std::size_t width) {
  if (text.size() < width) text.append(width - text.size(), ' ');
  return text;
}

}  // namespace

std::string_view stateText(std::int32_t loggingState) {
  switch (loggingState) {
    case kStandByState:
      return "Stand By";
    case kLoggingState:
      return "Logging";
    default:
      return "Monitor";
  }
}

std::string fileFieldText(std::string_view baseName) {
  return "File:" + std::string(baseName.substr(0, kFileNameShown));
}

std::string stationText(double station) { return leftAligned(formatFixed(station, 2), 11); }

std::string sampleText(std::int32_t sample, std::int32_t samplesPerReading) {
  return "Sample " + leftAligned(formatInteger(sample), 3) + " of " +
         leftAligned(formatInteger(samplesPerReading), 3);
}

}  // namespace gc40
