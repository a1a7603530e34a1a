#include "display/GoTo.h"

#include <array>
#include <cctype>
#include <charconv>
#include <cmath>
#include <string>

#include "display/TimeText.h"

namespace zu {
namespace {

struct TimeUnit {
    std::string_view Name;
    double Ns;
};
constexpr std::array<TimeUnit, 6> kUnits{{
    {"ns", 1},
    {"us", 1e3},
    {"ms", 1e6},
    {"s", 1e9},
    {"min", 6e10},
    {"hour", 3.6e12},
}};
constexpr std::string_view kCursorNames = "abcdt";

/// Lower case, without blanks and the commas of long numbers.
std::string Plain(std::string_view text) {
    std::string plain;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (std::isspace(byte) == 0 && c != ',') plain += static_cast<char>(std::tolower(byte));
    }
    return plain;
}

/// A number of samples or a time, without a sign.
std::optional<double> ParseDistance(std::string_view text, double rate) {
    if (text.empty() || (std::isdigit(static_cast<unsigned char>(text[0])) == 0 && text[0] != '.')) return {};
    double value = 0;
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
    if (error != std::errc{} || !std::isfinite(value)) return {};
    const std::string_view unit(end, static_cast<std::size_t>(text.data() + text.size() - end));
    if (unit.empty()) return value == std::floor(value) ? std::optional(value) : std::nullopt;
    for (const TimeUnit& each : kUnits) {
        if (unit == each.Name && rate > 0) return std::round(value * each.Ns / rate);
    }
    return {};
}

}  // namespace

std::optional<std::int64_t> ParseGoTo(const InstrumentState& state, std::string_view text,
                                      std::int64_t here) {
    constexpr double kMost = 1e15;
    const std::string plain = Plain(text);
    std::string_view rest = plain;
    if (rest.empty()) return {};
    std::int64_t from = 0;
    const std::size_t cursor = kCursorNames.find(rest[0]);
    if (cursor != std::string_view::npos) {
        from = state.Cursors.Cur[cursor];
        rest.remove_prefix(1);
        if (rest.empty()) return from;
    }
    const bool minus = rest[0] == '-';
    const bool relative = minus || rest[0] == '+';
    if (cursor != std::string_view::npos && !relative) return {};
    if (relative) rest.remove_prefix(1);
    if (relative && cursor == std::string_view::npos) from = here;
    const auto distance = ParseDistance(rest, RateOf(state));
    if (!distance || *distance > kMost) return {};
    const auto samples = static_cast<std::int64_t>(*distance);
    return from + (minus ? -samples : samples);
}

}  // namespace zu
