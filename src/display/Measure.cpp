#include "display/Measure.h"

#include <algorithm>
#include <functional>

#include "display/ByteScan.h"

namespace zu {
namespace {

constexpr int kBlock = 64;

ByteRun RunOf(const SampleView& view) {
    return {view.Data, view.Stored};
}

std::uint8_t MaskOf(int channel) {
    return static_cast<std::uint8_t>(1U << (static_cast<unsigned>(channel) % 8));
}

/// Takes the edges of one channel in their order and sums up phases and periods.
class EdgeSums {
  public:
    explicit EdgeSums(std::int64_t end) : end_(end) {
        sums_.FirstEdge = sums_.LastEdge = end;
        sums_.MinPeriod = end;
    }

    void Take(std::int64_t at, bool rose) {
        if (edges_++ == 0) {
            sums_.FirstEdge = sums_.LastEdge = at;
        } else {
            Phase(at - last_, rose);
            if (edges_ % 2 == 1) Pair(at - last_, at, rose);
        }
        half_ = at - last_;
        last_ = at;
    }
    [[nodiscard]] ChannelMeasure Done() {
        if (sums_.Count > 0) {
            sums_.Period = static_cast<double>((sums_.LastEdge - sums_.FirstEdge) / sums_.Count);
        }
        return sums_;
    }

  private:
    void Phase(std::int64_t width, bool wasLow) {
        ChannelMeasure::Widths& widths = wasLow ? sums_.Low : sums_.High;
        widths.Sum += width;
        ++widths.Count;
        if (widths.Minimum == 0 || width < widths.Minimum) widths.Minimum = width;
        widths.Maximum = std::max(widths.Maximum, width);
    }
    /// The phase that ends at `at` completes the one before it to a period.
    void Pair(std::int64_t width, std::int64_t at, bool wasLow) {
        ++sums_.Count;
        ++sums_.Rising;
        ++sums_.Falling;
        sums_.LastEdge = at;
        (wasLow ? sums_.DutyLow : sums_.DutyHigh) += width;
        (wasLow ? sums_.DutyHigh : sums_.DutyLow) += half_;
        sums_.MinPeriod = std::min(sums_.MinPeriod, half_ + width);
        sums_.MaxPeriod = std::max(sums_.MaxPeriod, half_ + width);
    }

    ChannelMeasure sums_;
    std::int64_t end_ = 0;
    std::int64_t last_ = 0;
    std::int64_t half_ = 0;
    std::uint64_t edges_ = 0;
};

/// Walks the edges of [from, to): 64 levels at a time, so that a busy line costs little more than a quiet
/// one.
template <typename Take>
void WalkEdges(const std::uint8_t* data, std::uint8_t mask, std::int64_t from, std::int64_t to, Take&& take) {
    std::uint64_t carry = (data[from] & mask) != 0 ? 1 : 0;
    std::int64_t at = from;
    for (; to - at >= kBlock; at += kBlock) {
        const std::uint64_t levels = scan::WideLevels(data + at, mask);
        for (std::uint64_t edges = levels ^ (levels << 1 | carry); edges != 0; edges &= edges - 1) {
            const int bit = std::countr_zero(edges);
            take(at + bit, (levels >> bit & 1) != 0);
        }
        carry = levels >> (kBlock - 1);
    }
    for (; at < to; ++at) {
        const std::uint64_t level = (data[at] & mask) != 0 ? 1 : 0;
        if (level != carry) take(at, level != 0);
        carry = level;
    }
}

}  // namespace

Edge FindEdge(const SampleView& view, std::uint8_t mask, std::int64_t from, std::int64_t to) {
    from = std::max<std::int64_t>(from, 0);
    const ByteRun run = RunOf(view);
    const std::uint8_t level = run.At(from, mask);
    const std::int64_t at = run.Differs(from, to, mask, level);
    if (at >= to) return {to, Edge::kNone};
    return {at, static_cast<std::uint8_t>(level == 0 ? 1 : 0)};
}

Edge FindEdgeBack(const SampleView& view, std::uint8_t mask, std::int64_t from, std::int64_t to) {
    to = std::max<std::int64_t>(to, 0);
    from = std::min<std::int64_t>(from, view.Stored);
    if (from <= to || view.Data == nullptr) return {to, Edge::kNone};
    const ByteRun run = RunOf(view);
    const std::uint8_t level = run.At(from, mask);
    const std::uint8_t* found = scan::WideDifferenceBack(view.Data + to, view.Data + from, mask, level);
    if (found == nullptr) return {to, Edge::kNone};
    return {found - view.Data + 1, static_cast<std::uint8_t>(level != 0 ? 1 : 0)};
}

ChannelMeasure MeasureChannel(const SampleView& view, std::uint8_t mask, const SampleRange& range) {
    const std::int64_t end = std::min<std::int64_t>(range.Last, view.Stored);
    EdgeSums sums(end);
    if (range.First >= 0 && range.First < end) {
        WalkEdges(view.Data, mask, range.First, end,
                  [&](std::int64_t at, bool rose) { sums.Take(at, rose); });
    }
    return sums.Done();
}

std::size_t MeasureCache::Hash::operator()(const Key& key) const {
    constexpr std::size_t kPrime = 1000003;
    std::size_t hash = std::hash<const void*>{}(key.Data);
    for (const std::int64_t part :
         {std::int64_t{key.Channel}, std::int64_t{key.Adjust}, key.First, key.Last}) {
        hash = hash * kPrime + static_cast<std::size_t>(part);
    }
    return hash;
}

const ChannelMeasure& MeasureCache::Get(const InstrumentState& state, int channel, const SampleRange& range) {
    // A drag passes through many ranges; what it left behind is dropped in one go.
    constexpr std::size_t kMost = 4096;
    const SampleView view = BindChannel(state, channel);
    const std::int32_t adjust =
        view.Data == nullptr ? 0 : state.Pods.AdjAddr[static_cast<std::size_t>(channel / 8)];
    const Key key{channel, adjust, range.First, range.Last, view.Data};
    if (const auto found = kept_.find(key); found != kept_.end()) return found->second;
    if (kept_.size() >= kMost) kept_.clear();
    ++misses_;
    return kept_.emplace(key, MeasureChannel(view, MaskOf(channel), range)).first->second;
}

}  // namespace zu
