#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zu {

/// Leading decimal number of a text: blanks and tabs, a sign, digits; the rest is ignored. 0 without digits,
/// saturated at the ends of 64 bits.
std::int64_t ParseDecimal(std::string_view text);
/// Same number, saturated to 32 bits instead of cut.
std::int32_t ParseDecimalClamped(std::string_view text);

/// `text` with the ASCII letters a to z in upper case.
std::string UpperCase(std::string_view text);
/// Whether two texts differ at most in the case of ASCII letters.
bool EqualIgnoringCase(std::string_view a, std::string_view b);

}  // namespace zu
