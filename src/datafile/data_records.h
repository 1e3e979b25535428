#pragma once
// The records of a survey data file (.R40), formed as bytes. Every record is
// 23 characters of 8-bit text and a line feed; numbers stand right-aligned in
// fixed-width fields. A value wider than its field pushes what follows to the
// right and the record's tail is cut, so the line feed always stays at 23.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "base/local_time.h"
#include "settings/settings.h"

namespace gc40 {

inline constexpr std::size_t dataRecordLength = 24;
using DataRecord = std::array<char, dataRecordLength>;

// Type letters (position 0). The identification record starts with the "G"
// of its identifier.
namespace recordLetter {
inline constexpr char kIdentification = 'G';
inline constexpr char kFileName = 'H';
inline constexpr char kLine = 'L';
inline constexpr char kLineStart = 'B';
inline constexpr char kLineAttributes = 'A';
inline constexpr char kDateTime = 'Z';
inline constexpr char kReading = 'T';
inline constexpr char kStation = 'S';
inline constexpr char kTimeMark = '*';
inline constexpr char kComment = 'C';
inline constexpr char kEvent = 'X';
inline constexpr char kGpsValid = '@';
inline constexpr char kGpsValidContinuation = '#';
inline constexpr char kGpsInvalid = '?';
inline constexpr char kGpsInvalidContinuation = '"';
inline constexpr char kGpsTime = '!';
}  // namespace recordLetter

inline constexpr std::string_view kStandardVariantText = "GC40STD ";
inline constexpr std::string_view kShortVariantText = "GC40SX  ";
inline constexpr std::string_view kFirmwareText = "W211";
inline constexpr std::string_view kGroundText = "GRD";
inline constexpr std::string_view kGpsText = "GPS";
inline constexpr std::string_view kDirectionLetters = "WSNE";  // by lineDirection
inline constexpr std::size_t kInstrumentRecordLength = 12;
inline constexpr std::size_t kBaseNameFieldLength = 9;
inline constexpr std::size_t kLineNameLength = 8;
inline constexpr std::size_t kTextFieldLength = 11;
inline constexpr std::size_t kGpsPieceLength = 22;

DataRecord formatIdentificationRecord(const Settings& settings);
// baseName is 8-bit text.
DataRecord formatFileNameRecord(const Settings& settings, std::string_view baseName);
// "L", "B", "A", "Z": the block that starts a survey line.
std::array<DataRecord, 4> formatLineBlock(const Settings& settings, const LocalTime& now);
DataRecord formatStationRecord(double station, const LocalTime& now);
// instrumentRecord: the 12-byte record as the instrument sent it.
DataRecord formatReadingRecord(std::string_view instrumentRecord, std::uint32_t tick);
DataRecord formatTimeMark(const LocalTime& now, std::uint32_t tick);
// "C" comments and "X" events.
DataRecord formatTextRecord(std::u16string_view text, char typeLetter, std::uint32_t tick);
// The pieces of one GPS line, then its "!" record.
std::vector<DataRecord> formatGpsRecords(std::string_view sentence, std::uint32_t tick,
                                         char firstLetter, char continuationLetter);

}  // namespace gc40
