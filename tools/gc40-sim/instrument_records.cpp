#include "gc40-sim/instrument_records.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/number_text.h"

namespace gc40 {
namespace {

constexpr std::int32_t kFieldMin = -9999;
constexpr std::int32_t kFieldMax = 99999;
constexpr std::int64_t kSequenceWrap = 100000;
constexpr int kMaxJunkBytes = 8;
constexpr int kWalkFirstStep = 8;
constexpr int kWalkSecondStep = 4;
// Junk has a generator of its own, so switching it on leaves the walk as it was.
constexpr std::uint32_t kJunkSeedSalt = 0x9E3779B9u;
constexpr double kInphaseStep = -0.0025;

// A value text given in code may have any length; the record must not.
std::string fitField(const std::string& text) {
  if (text.size() >= kValueFieldWidth) return text.substr(0, kValueFieldWidth);
  return std::string(kValueFieldWidth - text.size(), ' ') + text;
}

// -limit..limit; plain modulo so a seed walks the same with every standard library.
std::int32_t randomStep(std::mt19937& random, int limit) {
  return static_cast<std::int32_t>(random() % (2u * limit + 1)) - limit;
}

// Bounces off the bounds rather than sticking to them.
std::int32_t walkWithin(std::int32_t value, std::int32_t step, std::int32_t min, std::int32_t max) {
  value += step;
  if (value > max) value = 2 * max - value;
  if (value < min) value = 2 * min - value;
  return std::clamp(value, min, max);
}

bool triggerPressed(const InstrumentOptions& options, std::int64_t index) {
  return options.triggerEvery > 0 && index >= options.triggerEvery &&
         index % options.triggerEvery < options.triggerLength;
}

std::string junkBytes(std::mt19937& random) {
  std::string junk(1 + random() % kMaxJunkBytes, '\0');
  for (char& c : junk) {
    do c = static_cast<char>(random() & 0xFF);
    while (c == '\r');
  }
  return junk;
}

// The status byte taken apart as the logger does it: by subtraction, so that
// 128 alone keeps its top bit and lands on range code 8.
int rangeCode(std::uint8_t status) {
  int n = status;
  if (n > 128) n -= 128;
  for (const int bit : {64, 32, 16, 8})
    if (n >= bit) n -= bit;
  return n;
}

// What one step of the conductivity field is worth on each range code.
double conductivityStep(int code) {
  switch (code) {
    case 0:
    case 6:
      return -0.25;
    case 4:
      return -0.025;
    default:  // 2, the 10 range, and the codes of the finest step
      return -0.0025;
  }
}

ValueTexts nextValueTexts(InstrumentStream& stream) {
  const InstrumentOptions& options = stream.options;
  switch (options.pattern) {
    case ValuePattern::kConstant:
      break;
    case ValuePattern::kRamp: {
      std::string first = formatValueField(stream.first);
      stream.first = stream.first >= kFieldMax ? kFieldMin : stream.first + 1;
      return {first, fitField(options.secondValue)};
    }
    case ValuePattern::kWalk: {
      ValueTexts texts{formatValueField(stream.first), formatValueField(stream.second)};
      stream.first = walkWithin(stream.first, randomStep(stream.walkRandom, kWalkFirstStep),
                                kWalkFirstMin, kWalkFirstMax);
      stream.second = walkWithin(stream.second, randomStep(stream.walkRandom, kWalkSecondStep),
                                 kWalkSecondMin, kWalkSecondMax);
      return texts;
    }
    case ValuePattern::kSequence:
      return {formatValueField(stream.index % kSequenceWrap), fitField(options.secondValue)};
  }
  return {fitField(options.firstValue), fitField(options.secondValue)};
}

}  // namespace

InstrumentStream startInstrumentStream(const InstrumentOptions& options) {
  InstrumentStream stream{.options = options,
                          .walkRandom = std::mt19937(options.seed),
                          .junkRandom = std::mt19937(options.seed ^ kJunkSeedSalt)};
  stream.first = parseIntegerPrefix(options.firstValue);
  stream.second = parseIntegerPrefix(options.secondValue);
  if (options.pattern == ValuePattern::kWalk) {
    stream.first = std::clamp(stream.first, kWalkFirstMin, kWalkFirstMax);
    stream.second = std::clamp(stream.second, kWalkSecondMin, kWalkSecondMax);
  } else {
    stream.first = std::clamp(stream.first, kFieldMin, kFieldMax);
  }
  return stream;
}

std::optional<Chunk> nextInstrumentChunk(InstrumentStream& stream,
                                         const std::optional<ValueTexts>& values) {
  const InstrumentOptions& options = stream.options;
  const std::int64_t index = stream.index;
  if (options.count && index >= *options.count) return std::nullopt;

  Chunk chunk{.bytes = {}, .gapAfter = options.period};
  if (options.junkEvery > 0 && index > 0 && index % options.junkEvery == 0) {
    chunk.bytes = junkBytes(stream.junkRandom);
  }
  const auto [first, second] = values ? *values : nextValueTexts(stream);
  const auto status = static_cast<std::uint8_t>(options.status |
                                                (triggerPressed(options, index) ? kTriggerBit : 0));
  chunk.bytes += 'T';
  chunk.bytes += static_cast<char>(status);
  chunk.bytes += first + second + '\r';
  if (options.lineFeed) chunk.bytes += '\n';
  if (options.dropoutEvery > 0 && (index + 1) % options.dropoutEvery == 0) {
    chunk.gapAfter += options.dropout;
  }
  ++stream.index;
  return chunk;
}

ValueTexts valueTextsFor(std::uint8_t status, double conductivity, double inphase) {
  const double step = conductivityStep(rangeCode(status));
  // Without the channel flag the inphase has a fixed step of its own.
  const double inphaseStep = status % 2 == 1 ? step : kInphaseStep;
  return {formatValueField(std::llround(conductivity / step)),
          formatValueField(std::llround(inphase / inphaseStep))};
}

std::string formatValueField(std::int64_t value) {
  value = std::clamp<std::int64_t>(value, kFieldMin, kFieldMax);
  return formatZeroPadded(value, kValueFieldWidth);
}

}  // namespace gc40
