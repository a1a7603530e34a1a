#include "display/Edges.h"

#include <algorithm>

#include "display/ByteScan.h"
#include "display/Lines.h"

namespace zu {

RowSignal::RowSignal(const InstrumentState& state, std::int32_t source) {
    if (const int group = GroupOfSource(source); group >= 0) {
        const GroupRecord& record = state.Groups[static_cast<std::size_t>(group)];
        for (std::int32_t i = 0; i < GroupSize(record); ++i)
            Add(state, record.Channels[static_cast<std::size_t>(i)]);
    } else if (KindOfSource(source) == LineKind::Channel) {
        Add(state, source);
    }
    length_ = parts_.empty() ? 0 : INT32_MAX;
    for (const Part& part : parts_) length_ = std::min<std::int64_t>(length_, part.View.Shown);
}

void RowSignal::Add(const InstrumentState& state, std::int32_t channel) {
    if (channel < 0 || channel >= std::min(state.Shape.TotalChannels, kMaxChannels)) return;
    const SampleView view = BindChannel(state, channel);
    const auto mask = static_cast<std::uint8_t>(1U << (static_cast<unsigned>(channel) % 8));
    const auto same = std::find_if(parts_.begin(), parts_.end(),
                                   [&](const Part& part) { return part.View.Data == view.Data; });
    if (same == parts_.end()) {
        parts_.push_back({view, mask});
    } else {
        same->Mask = static_cast<std::uint8_t>(same->Mask | mask);
    }
}

std::optional<std::int64_t> RowSignal::Next(std::int64_t from) const {
    if (from < 0 || from >= length_) return std::nullopt;
    std::int64_t first = length_;
    for (const Part& part : parts_) {
        const ByteRun run{part.View.Data, part.View.Stored};
        first = std::min(first, run.Differs(from, first, part.Mask, run.At(from, part.Mask)));
    }
    return first < length_ ? std::optional(first) : std::nullopt;
}

std::optional<std::int64_t> RowSignal::Begin(std::int64_t from) const {
    if (from < 0 || from >= length_) return std::nullopt;
    std::int64_t last = 0;
    for (const Part& part : parts_) {
        const ByteRun run{part.View.Data, part.View.Stored};
        last = std::max(last, run.BeginOf(from, last, part.Mask));
    }
    return last > 0 ? std::optional(last) : std::nullopt;
}

std::optional<std::int64_t> RowSignal::Nearest(std::int64_t at, std::int64_t reach) const {
    const auto before = Begin(at);
    const auto after = Next(at);
    const bool early = before && at - *before <= reach;
    const bool late = after && *after - at <= reach;
    if (early && (!late || at - *before <= *after - at)) return before;
    return late ? after : std::nullopt;
}

}  // namespace zu
