#pragma once
// What the bench's meter and GPS receiver send. Every record and sentence
// carries its number in its stream, so a lost, doubled or reordered one shows
// in the data file.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace gc40::bench {

// A meter record ('T', status, two 5-digit values, CR) whose two values
// together count readings: "00003" "16800" is reading 316,800.
std::string meterRecord(std::int64_t number);

// The number of a record as the data file holds it (without its CR).
std::optional<std::int64_t> meterRecordNumber(std::string_view instrumentRecord);

inline constexpr int kSentencesPerFix = 5;

// One fix of a 10 Hz receiver: GGA, GSA, RMC, GSV and VTG with their
// checksums and CR LF, the fix's time taken from its number. Each sentence's
// last field is its number in the stream: fix * kSentencesPerFix + place.
std::string gpsFix(std::int64_t fix);

// That number, read back from a recorded sentence.
std::optional<std::int64_t> sentenceNumber(std::string_view sentence);

}  // namespace gc40::bench
