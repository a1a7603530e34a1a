#include "files/Decimal.h"

#include <algorithm>
#include <limits>

namespace zu {
namespace {

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

char Upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
}

}  // namespace

std::int64_t ParseDecimal(std::string_view text) {
    constexpr std::int64_t kLowest = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t kHighest = std::numeric_limits<std::int64_t>::max();
    std::size_t i = 0;
    while (i < text.size() && IsBlank(text[i])) ++i;
    const bool negative = i < text.size() && text[i] == '-';
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) ++i;
    std::int64_t value = 0;  // grows downward, where there is one more number
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
        const int digit = text[i] - '0';
        if (value < (kLowest + digit) / 10) return negative ? kLowest : kHighest;
        value = value * 10 - digit;
    }
    if (negative) return value;
    return value == kLowest ? kHighest : -value;
}

std::int32_t ParseDecimalClamped(std::string_view text) {
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(ParseDecimal(text), INT32_MIN, INT32_MAX));
}

std::string UpperCase(std::string_view text) {
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), Upper);
    return upper;
}

bool EqualIgnoringCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return Upper(x) == Upper(y); });
}

}  // namespace zu
