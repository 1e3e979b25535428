#pragma once
// Wide (UTF-16) text to and from the 8-bit text that files and serial ports
// carry. The 8-bit side is Windows-1252, the code page of the data files.

#include <string>
#include <string_view>

namespace gc40 {

// Every byte has a wide form; the five bytes that Windows-1252 leaves
// undefined map to the control characters of the same value, so the
// conversion back gives the same bytes.
std::u16string windows1252ToWide(std::string_view text);

// A character with no Windows-1252 form becomes '?' (one per character, so a
// surrogate pair gives one '?').
std::string wideToWindows1252(std::u16string_view text);

// UTF-8 (file names here) to wide text. A byte that is not part of a
// well-formed sequence, and a character beyond the 16-bit range (none has an
// 8-bit form), becomes '?'.
std::u16string utf8ToWide(std::string_view text);

// Wide text to UTF-8 (the terminal's); half a surrogate pair becomes '?'.
std::string wideToUtf8(std::u16string_view text);

// At most maxUnits UTF-16 units from the start, never ending in half a pair.
std::u16string_view leadingUnits(std::u16string_view text, std::size_t maxUnits);

}  // namespace gc40
