#pragma once
// NMEA 0183 lines as the logger judges them: the checksum test and the field
// extraction used for GGA and GSA.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace gc40 {

// The exclusive-or of the characters after the first one ("$") up to, not
// including, the first "*" (or the end of the line).
std::uint8_t nmeaChecksum(std::string_view line);

// Whether the hexadecimal number after the last "*" (read as strtoul reads
// base 16, stopping at the first character that is not part of it) equals
// nmeaChecksum. A line without "*" has no valid checksum.
bool nmeaChecksumValid(std::string_view line);

// Field n of a sentence: field 1 is the text before the first separator (the
// name with its "$"); field n > 1 lies between separators n-1 and n, or runs
// to the end (checksum tail included) when separator n-1 is the last one.
// nullopt when separator n-1 does not exist; an empty field is found empty.
std::optional<std::string_view> getField(std::string_view text, int n, char separator = ',');

// "*hh": a sentence's body with its checksum tail, for those who make lines.
std::string nmeaChecksumTail(std::string_view line);

}  // namespace gc40
