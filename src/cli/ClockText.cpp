#include "cli/ClockText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "cli/TerminalText.h"
#include "core/Commands.h"
#include "core/MemoryMenu.h"
#include "core/RateRules.h"
#include "state/Rates.h"

namespace zu {
namespace {

constexpr double kTolerance = 0.01;  // "31.2k" is the rate of 32 us

struct Unit {
    std::string_view Text;
    double Ns;  ///< of one unit
    bool Frequency;
};
constexpr std::array kUnits{
    Unit{"ns", 1, false},    Unit{"us", 1e3, false},   Unit{"ms", 1e6, false},   Unit{"s", 1e9, false},
    Unit{"hz", 1e9, true},   Unit{"khz", 1e6, true},   Unit{"mhz", 1e3, true},   Unit{"ghz", 1, true},
    Unit{"sa/s", 1e9, true}, Unit{"ksa/s", 1e6, true}, Unit{"msa/s", 1e3, true}, Unit{"gsa/s", 1, true},
    Unit{"k", 1e6, true},    Unit{"m", 1e3, true},
};

std::string Lower(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return lower;
}

/// Period in nanoseconds.
std::optional<double> ParsePeriod(std::string_view text) {
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || !std::isfinite(number) || number <= 0) return std::nullopt;
    const std::string unit = Lower(Trimmed(text.substr(static_cast<std::size_t>(end - text.data()))));
    for (const Unit& known : kUnits) {
        if (unit == known.Text) return known.Frequency ? known.Ns / number : known.Ns * number;
    }
    return std::nullopt;
}

bool Offered(const InstrumentState& state, int code) {
    return state.Clock.RateAvail[static_cast<std::size_t>(code)] == 1 &&
           RateEntryEnabled(state.Identity.HardwareType, code);
}

std::string OfferedModes(const App& app) {
    std::string modes;
    for (int mode = 0; mode < kMemoryModes; ++mode) {
        const CommandState entry = QueryCommand(app, MemoryCommand(mode));
        if (!entry.Enabled) continue;
        modes += (modes.empty() ? "" : ", ") + std::to_string(mode) + " (" + Squeezed(entry.Text) + ")";
    }
    return modes;
}

}  // namespace

std::optional<int> ParseRate(std::string_view text) {
    const auto period = ParsePeriod(Trimmed(text));
    if (!period) return std::nullopt;
    for (int code = 1; code < kRateCodes; ++code) {  // code 0 is another name of 10 ns
        const double known = kRates[static_cast<std::size_t>(code)].PeriodNs;
        if (std::abs(*period / known - 1) < kTolerance) return code;
    }
    return std::nullopt;
}

std::optional<std::string> ApplyRate(App& app, std::string_view text) {
    const auto code = ParseRate(text);
    if (!code || !Offered(app.State, *code)) {
        return "no rate " + std::string(text) + "; there are " + OfferedRates(app);
    }
    SetRate(app, *code);
    if (app.State.Clock.ClockRate == *code) return std::nullopt;
    return "the rate " + std::string(text) + " does not go with the other settings";
}

std::optional<std::string> ApplyMemoryMode(App& app, int mode) {
    const bool known = mode >= 0 && mode < kMemoryModes;
    if (!known || !QueryCommand(app, MemoryCommand(mode)).Enabled) {
        return "no memory mode " + std::to_string(mode) + " at this rate; there are " + OfferedModes(app);
    }
    SetMemoryMode(app, -1, mode);
    if (app.State.Memory.HardwareMode == mode) return std::nullopt;
    return "the memory mode " + std::to_string(mode) + " does not go with the other settings";
}

std::string OfferedRates(const App& app) {
    std::string rates;
    for (int code = 1; code < kRateCodes; ++code) {
        if (!Offered(app.State, code)) continue;
        rates += (rates.empty() ? "" : ", ") + Squeezed(kRates[static_cast<std::size_t>(code)].MenuText);
    }
    return rates;
}

}  // namespace zu
