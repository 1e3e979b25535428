#pragma once
// What the simulated instrument sends: 13-byte records ('T', status byte, two
// 5-character values, CR), with the presses, drop-outs and line noise a real
// cable brings, each record paired with the time until the next one is due.

#include <chrono>
#include <cstdint>
#include <optional>
#include <random>
#include <string>

#include "gc40-sim/chunk_source.h"

namespace gc40 {

enum class ValuePattern { kConstant, kRamp, kWalk, kSequence };

inline constexpr int kValueFieldWidth = 5;
inline constexpr std::uint8_t kTriggerBit = 64;

struct InstrumentOptions {
  ValuePattern pattern = ValuePattern::kWalk;
  // Raw value texts as the instrument sends them; constant sends both, ramp and
  // walk start from their numbers, ramp and sequence keep the second.
  std::string firstValue = "-0120";
  std::string secondValue = "00040";
  std::uint8_t status = 32;  // vertical dipole, range code 0
  std::uint32_t seed = 1;
  int triggerEvery = 0;   // 0: never pressed
  int triggerLength = 4;  // about a third of a second of thumb on the button
  int junkEvery = 0;      // 0: a clean line
  bool lineFeed = false;
  std::chrono::milliseconds period{91};
  int dropoutEvery = 0;                              // 0: never silent
  std::chrono::milliseconds dropout{3000};           // longer than the logger needs to call it lost
  std::optional<std::int64_t> count = std::nullopt;  // records to send; unlimited when empty
};

// The generator's state between records.
struct InstrumentStream {
  InstrumentOptions options;
  std::int64_t index = 0;  // records made so far
  std::int32_t first = 0;  // ramp and walk values
  std::int32_t second = 0;
  std::mt19937 walkRandom;
  std::mt19937 junkRandom;
};

InstrumentStream startInstrumentStream(const InstrumentOptions& options);

// The two 5-character value texts of a record.
struct ValueTexts {
  std::string first;
  std::string second;
};

// The next record with any junk before it and line feed after it; nullopt once
// `count` records have been made. `values`, when given, replace the pattern's.
std::optional<Chunk> nextInstrumentChunk(InstrumentStream& stream,
                                         const std::optional<ValueTexts>& values = std::nullopt);

// The texts a logger reads back as `conductivity` (mS/m) and `inphase` (ppt)
// under `status` (its range and channel flag), to the nearest step the range
// allows, with the logger set to both components and the standard meter.
ValueTexts valueTextsFor(std::uint8_t status, double conductivity, double inphase);

// A whole number in exactly five characters as the instrument writes it
// ("00042", "-0120"); beyond -9999..99999 it sticks at the nearer end.
std::string formatValueField(std::int64_t value);

// The bounds the walk keeps to. The scale factors are negative, so -4000..0 is
// 0 to full scale on the 10, 100 and 1000 ranges; the inphase stays within
// +-5 ppt.
inline constexpr std::int32_t kWalkFirstMin = -4000;
inline constexpr std::int32_t kWalkFirstMax = 0;
inline constexpr std::int32_t kWalkSecondMin = -2000;
inline constexpr std::int32_t kWalkSecondMax = 2000;

}  // namespace gc40
