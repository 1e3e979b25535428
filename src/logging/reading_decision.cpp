#include "logging/reading_decision.h"

#include <algorithm>

#include "base/number_text.h"

namespace gc40 {
namespace {

// Instrument record: byte 0 'T', byte 1 status, bytes 2-6 and 7-11 the two
// value fields.
constexpr std::size_t kStatusOffset = 1;
constexpr std::size_t kFirstValueOffset = 2;
constexpr std::size_t kSecondValueOffset = 7;
constexpr std::size_t kValueWidth = 5;
constexpr std::size_t kPaddedLength = 13;
constexpr int kTriggerBit = 64;
constexpr int kTopBit = 128;
constexpr std::int32_t kFirstRepeat = 2;
constexpr std::int32_t kLastRepeat = 6;

std::string_view untilNul(std::string_view text) { return text.substr(0, text.find('\0')); }

// A value field as atof reads it; a NUL inside ends it.
float rawField(std::string_view record, std::size_t offset) {
  const std::string_view field = offset < record.size() ? record.substr(offset, kValueWidth) : "";
  return narrowToFloat(parseDecimalPrefix(untilNul(field)));
}

// As sprintf into the middle of the record: the text lands at `offset`, and
// what runs past the end of the record is lost.
void writeOver(std::string& text, std::size_t offset, std::string_view value) {
  if (offset >= text.size()) return;
  const std::size_t length = std::min(value.size(), text.size() - offset);
  text.replace(offset, length, value.substr(0, length));
}

std::string rawAverageText(float average) {
  return formatSignedZeroPadded(truncateToInt32(average), kValueWidth);
}

// Only the slots the reading was filed in carry its values.
void fileAverages(const DecodedReading& reading, FiledValues& filed) {
  if (filed.verticalConductivityValid == 1) filed.verticalConductivity = reading.conductivity;
  if (filed.horizontalConductivityValid == 1) filed.horizontalConductivity = reading.conductivity;
  if (filed.verticalInphaseValid == 1) filed.verticalInphase = reading.inphase;
  if (filed.horizontalInphaseValid == 1) filed.horizontalInphase = reading.inphase;
}

}  // namespace

bool triggerPressed(std::string_view record) {
  int status =
      kStatusOffset < record.size() ? static_cast<unsigned char>(record[kStatusOffset]) : 0;
  if (status >= kTopBit) status -= kTopBit;
  return status >= kTriggerBit;
}

std::int32_t nextTriggerLatch(std::int32_t latch, bool pressed, SurveyMode surveyMode) {
  const bool manual = surveyMode == SurveyMode::kManual;
  if (!pressed) return manual ? kLatchSkip : kLatchRecord;
  return manual && latch != kLatchSkip ? kLatchHeld : kLatchRecord;
}

AverageProgress addAverageSample(LoggingRunState& state, std::int32_t samplesPerReading,
                                 std::string_view record, DecodedReading& reading,
                                 FiledValues& filed) {
  state.surveyMode = SurveyMode::kAuto;
  ++state.averageSampleIndex;
  const AverageProgress progress{state.averageSampleIndex,
                                 state.averageSampleIndex >= samplesPerReading};
  auto& sums = state.averageSums;
  sums[0] += rawField(record, kFirstValueOffset);
  sums[1] += rawField(record, kSecondValueOffset);
  sums[2] += reading.conductivity;
  sums[3] += reading.inphase;
  if (!progress.complete) return progress;
  const auto count = static_cast<float>(state.averageSampleIndex);
  state.averagedRaw1 = sums[0] / count;
  state.averagedRaw2 = sums[1] / count;
  reading.conductivity = sums[2] / count;
  reading.inphase = sums[3] / count;
  fileAverages(reading, filed);
  sums = {};
  state.averageSampleIndex = 0;
  state.surveyMode = SurveyMode::kManual;
  return progress;
}

std::string recordedRecordText(std::string_view record,
                               const std::optional<std::array<float, 2>>& rawAverages,
                               std::int32_t readingsAtStation) {
  const std::string_view received = untilNul(record);
  std::string text(received.substr(0, kPaddedLength));
  text.resize(kPaddedLength, ' ');
  if (rawAverages) {
    writeOver(text, kFirstValueOffset, rawAverageText((*rawAverages)[0]));
    if (received.size() > kSecondValueOffset) {
      writeOver(text, kSecondValueOffset, rawAverageText((*rawAverages)[1]));
    }
  }
  if (readingsAtStation >= kFirstRepeat && readingsAtStation <= kLastRepeat) {
    text[0] = static_cast<char>('0' + readingsAtStation);
  }
  return text;
}

bool countTowardBeep(LoggingRunState& state, bool audioEnabled) {
  if (!audioEnabled) return false;
  if (++state.beepCounter < state.beepInterval) return false;
  state.beepCounter = 0;
  return true;
}

void advanceStation(LoggingRunState& state, Settings& settings) {
  if (state.readingsAtStation >= state.readingsPerStation) {
    if (state.stationStarted == 1) settings.currentStation += double{settings.stationIncrement};
    state.readingsAtStation = 0;
  }
  state.stationStarted = 1;
}

}  // namespace gc40
