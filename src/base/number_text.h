#pragma once
// Numbers to and from text without the C locale: Qt sets the process locale,
// and a comma where a file wants a point would corrupt the file.

#include <cstdint>
#include <string>
#include <string_view>

namespace gc40 {

// As printf("%.*f", decimals, value) in the "C" locale.
std::string formatFixed(double value, int decimals);

// The same as wide text, for the fields of the dialogs.
std::u16string formatFixedWide(double value, int decimals);

// As printf("%d") / printf("%ld").
std::string formatInteger(std::int64_t value);

// As printf("%0*ld", width, value): zeros between the sign and the digits up
// to `width` characters in all.
std::string formatZeroPadded(std::int64_t value, std::size_t width);

// As printf("%+0*ld", width, value): the same, with a sign on every value.
std::string formatSignedZeroPadded(std::int64_t value, std::size_t width);
// The shortest text that reads back as exactly `value` ("12.5", "0.1").
std::string formatRoundTrip(double value);

// printf's field width: blanks after the text ("%-8s") or before it ("%8s")
// up to `width` characters; a longer text stays whole.
std::string leftAligned(std::string text, std::size_t width);
std::string rightAligned(std::string text, std::size_t width);

// As wcstod/strtod in the "C" locale: leading white space, an optional sign,
// the longest decimal number (or "inf"/"nan") that follows; 0 when none.
// Out of range gives +-infinity or a signed zero, as strtod does.
double parseDecimalPrefix(std::string_view text);
// The same for wide text, as wcstod (only ASCII characters can form a number).
double parseDecimalPrefix(std::u16string_view text);

// As wcstod narrowed to float: how the dialogs read their float fields.
float parseFloatPrefix(std::u16string_view text);

// As atoi/_wtoi: leading white space, optional sign, leading digits; 0 when
// there are none. Saturates at the int32 limits instead of overflowing.
std::int32_t parseIntegerPrefix(std::string_view text);

// Truncation toward zero that is defined for every input: NaN gives 0 and
// values beyond the int32 range saturate (a plain cast would be undefined).
std::int32_t truncateToInt32(double value);

// Narrowing to float that is defined for every input: beyond the float range
// gives +-infinity, as the hardware does.
float narrowToFloat(double value);

}  // namespace gc40
