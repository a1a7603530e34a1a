#include "display/Hover.h"

#include <array>
#include <cstdio>
#include <optional>

#include "display/Edges.h"
#include "display/GroupValue.h"
#include "display/Lines.h"
#include "display/TimeText.h"
#include "display/TraceLabels.h"

namespace zu {
namespace {

std::string SpanText(const InstrumentState& state, std::int64_t samples) {
    if (TimeKnown(state)) return TimeText(samples, RateOf(state), kTimeRateUnit);
    return std::to_string(samples) + "Sa";
}

/// The pulse around a sample and the period that it is part of.
struct Pulse {
    std::optional<std::int64_t> Begin;
    std::optional<std::int64_t> End;
    std::optional<std::int64_t> Period;
};

Pulse PulseAt(const RowSignal& signal, std::int64_t sample) {
    Pulse pulse{signal.Begin(sample), signal.Next(sample), {}};
    if (!pulse.Begin || !pulse.End) return pulse;
    if (const auto next = signal.Next(*pulse.End)) {
        pulse.Period = *next - *pulse.Begin;
    } else if (const auto before = signal.Begin(*pulse.Begin - 1)) {
        pulse.Period = *pulse.End - *before;
    }
    return pulse;
}

std::string PeriodText(const InstrumentState& state, std::int64_t width, std::int64_t period, bool level) {
    std::array<char, 32> duty{};
    const std::int64_t high = level ? width : period - width;
    std::snprintf(duty.data(), duty.size(), "%.2f%%",
                  100.0 * static_cast<double>(high) / static_cast<double>(period));
    std::string text = ", period " + SpanText(state, period);
    if (RateOf(state) > 0)
        text += ", " + FrequencyText(1e9 / (static_cast<double>(period) * RateOf(state)), 3);
    return text + ", duty " + duty.data();
}

std::string ChannelText(const InstrumentState& state, std::int32_t channel, std::int64_t sample,
                        const Pulse& pulse) {
    const bool level = (BindChannel(state, channel).At(sample) >> (channel % 8) & 1) != 0;
    std::string text(state.Channels.ChannelName[static_cast<std::size_t>(channel)].View());
    text += level ? ": 1" : ": 0";
    if (!pulse.Begin || !pulse.End) return text;
    const std::int64_t width = *pulse.End - *pulse.Begin;
    text += " for " + SpanText(state, width);
    return pulse.Period ? text + PeriodText(state, width, *pulse.Period, level) : text;
}

std::string GroupLine(const InstrumentState& state, int group, std::int64_t sample, const Pulse& pulse) {
    const GroupRecord& record = state.Groups[static_cast<std::size_t>(group)];
    const GroupValue value = GroupReader(state, record).At(sample);
    std::string text(record.Name.View());
    text += ": " + GroupText(state, record, value, GroupFormat::Hex) + " (" +
            std::to_string(GroupNumber(record, value)) + ")";
    if (pulse.Begin && pulse.End) text += " for " + SpanText(state, *pulse.End - *pulse.Begin);
    return text;
}

std::string DistanceText(const InstrumentState& state, std::int64_t samples) {
    std::string text = (samples < 0 ? "" : "+") + std::to_string(samples);
    if (RateOf(state) > 0) text += " (" + TimeText(samples, RateOf(state), kTimeRateUnit) + ")";
    return text;
}

}  // namespace

std::string HoverText(const InstrumentState& state, std::int32_t source, std::int64_t sample) {
    const RowSignal signal(state, source);
    if (sample < 0 || sample >= signal.Length()) return {};
    const Pulse pulse = PulseAt(signal, sample);
    const int group = GroupOfSource(source);
    return group < 0 ? ChannelText(state, source, sample, pulse) : GroupLine(state, group, sample, pulse);
}

std::string SampleHoverText(const InstrumentState& state, std::int64_t sample) {
    constexpr std::string_view kCursorLetters = "ABCDT";
    std::string text = "Sample " + std::to_string(sample);
    if (RateOf(state) > 0) text += " (" + TimeText(sample, RateOf(state), kTimeRateUnit) + ")";
    for (std::size_t cursor = 0; cursor < kCursorLetters.size(); ++cursor) {
        text += "\nfrom ";
        text += kCursorLetters[cursor];
        text += ": " + DistanceText(state, sample - state.Cursors.Cur[cursor]);
    }
    return text;
}

}  // namespace zu
