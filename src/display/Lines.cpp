#include "display/Lines.h"

#include <algorithm>
#include <cmath>

namespace zu {
namespace {

constexpr std::int32_t kLargeMinimum = 19;  // 21 on a large screen
constexpr std::int32_t kLargeMinimumLarge = 21;
constexpr std::int32_t kSmallMinimum = 7;
constexpr int kTallestStyle = 11;  // the one style above 5 that no minimum touches
constexpr std::int8_t kFirstSpiMode = 3;
constexpr std::int8_t kLastSpiMode = 6;

std::size_t At(std::int32_t index) {
    return static_cast<std::size_t>(index);
}

std::int32_t LeastHeight(int style, const Metrics& metrics) {
    if (style == kSmallStyle) return kSmallMinimum;
    if (style < kFirstTimingStyle || style >= kTallestStyle) return 1;
    return metrics.LargeScreen ? kLargeMinimumLarge : kLargeMinimum;
}

}  // namespace

std::int32_t LineCount(const InstrumentState& state) {
    return std::clamp(state.Timing.TimingLines, 0, kMaxLines);
}

std::int32_t FirstLine(const InstrumentState& state) {
    return std::max(state.Timing.TimingChPos, 0);
}

DisplayLine LineAt(const InstrumentState& state, std::int32_t index) {
    DisplayLine line;
    if (index < 0 || index >= kLineSlots) return line;
    const TimingRecord& timing = state.Timing;
    line.Source = timing.LineSource[At(index)];
    line.Kind = KindOfSource(line.Source);
    const int style = timing.LineStyle[At(index)];
    line.Style = style < static_cast<int>(kLineStyles.size()) ? style : kNormalStyle;
    const int extra = timing.LineMode[At(index)];
    if (extra > 0 && extra < static_cast<int>(kLineModeTexts.size()))
        line.Extra = static_cast<LineExtra>(extra);
    return line;
}

std::int32_t GroupSize(const GroupRecord& group) {
    return std::clamp(group.Size, 0, kGroupSlots);
}

bool IsSpiGroup(const InstrumentState& state, std::int32_t numberOrSource) {
    std::int32_t number =
        numberOrSource >= kFirstGroupLine ? numberOrSource - kFirstGroupLine : numberOrSource;
    number = std::max(number, 0);
    if (number > kGroupCount) number = kGroupCount - 1;
    if (number == kGroupCount) return false;  // one past the table is let through by the test above
    const std::int8_t mode = state.Groups[At(number)].Mode;
    return mode >= kFirstSpiMode && mode <= kLastSpiMode;
}

int CountSpiGroups(const InstrumentState& state) {
    int count = 0;
    for (int group = 0; group < kGroupCount; ++group) count += IsSpiGroup(state, group) ? 1 : 0;
    return count;
}

std::int32_t StyleHeight(int style, const Metrics& metrics) {
    const auto known = style >= 0 && style < static_cast<int>(kLineStyles.size()) ? style : kNormalStyle;
    const std::int32_t pixels = kLineStyles[At(known)].Height;
    if (pixels == 0) return TextRowHeight(metrics);
    return std::max(kRowPad + pixels, LeastHeight(known, metrics));
}

bool LineShown(const InstrumentState& state, std::int32_t index) {
    const DisplayLine line = LineAt(state, index);
    if (line.Kind != LineKind::Channel || line.Source >= state.Shape.TotalChannels) return true;
    return GetBufLenFull(state.Buffer.BufLen, line.Source / 8) > 0;
}

std::int32_t RowHeight(const InstrumentState& state, std::int32_t index, const Metrics& metrics) {
    if (!LineShown(state, index)) return 0;
    const DisplayLine line = LineAt(state, index);
    // A spacer's number must not reach the SPI test, which would take it for the last group.
    if (line.Kind == LineKind::Group && IsSpiGroup(state, line.Source)) return kSpiRowHeight;
    return StyleHeight(line.Style, metrics);
}

double VerticalScale(int style, std::int32_t groupSize) {
    if (style < kFirstTimingStyle || style >= static_cast<int>(kLineStyles.size())) return 1.0;
    const double divisor = kLineStyles[At(style)].Divisor;
    // From 32 channels on the value stays at 31 bits and the divisor is halved.
    if (groupSize >= kGroupValueBits) return std::ldexp(1.0, kGroupValueBits - 1) / (divisor / 2);
    return std::ldexp(1.0, std::max(groupSize, 0)) / divisor;
}

FontId StyleFont(int style) {
    if (style == kSmallStyle) return FontId::Small;
    return style >= kFirstTimingStyle ? FontId::Large : FontId::Text;
}

}  // namespace zu
