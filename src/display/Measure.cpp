#include "display/Measure.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdio>
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

/// Ors of x shifted by 1 to n; from 64 on nothing is left of x.
std::uint64_t Smear(std::uint64_t x, std::int64_t n) {
    if (n < 1) return 0;
    n = std::min<std::int64_t>(n, kBlock);
    std::uint64_t smeared = x << 1;
    for (std::int64_t have = 1; have < n;) {
        const std::int64_t step = std::min(have, n - have);
        smeared |= smeared << step;
        have += step;
    }
    return smeared;
}

/// Whether x has n ones in a row.
bool HasRun(std::uint64_t x, std::int64_t n) {
    if (n > kBlock) return false;
    for (std::int64_t have = 1; have < n && x != 0;) {
        const std::int64_t step = std::min(have, n - have);
        x &= x >> step;
        have += step;
    }
    return x != 0;
}

/// Sums up the phases of one channel from its edges, 64 samples at a time. A busy line costs little more than
/// a quiet one: single edges are looked at only where a phase may be the shortest or longest so far.
class PhaseSums {
  public:
    /// Levels of the samples [at, at + count); bit i of `edges` is set where sample at + i differs from the
    /// one before it.
    void Take(std::int64_t at, std::uint64_t levels, std::uint64_t edges) {
        if (edges != 0) TakeEdges(at, levels, edges);
        ones_ += std::popcount(levels);
    }
    [[nodiscard]] ChannelMeasure Done(std::int64_t end) const;

  private:
    void TakeEdges(std::int64_t at, std::uint64_t levels, std::uint64_t edges);
    void TakePhases(std::int64_t at, std::uint64_t levels, std::uint64_t edges);
    void TakePhase(std::int64_t width, bool one);
    [[nodiscard]] bool MayBreakRecords(std::uint64_t levels, std::uint64_t edges) const;
    [[nodiscard]] ChannelMeasure::Widths WidthsOf(bool one, std::int64_t sum) const;

    std::int64_t edges_ = 0;
    std::int64_t first_ = 0;  ///< first edge, last edge and the one before it
    std::int64_t last_ = 0;
    std::int64_t before_ = 0;
    bool firstOne_ = false;  ///< level after the first edge
    std::int64_t ones_ = 0;  ///< samples at 1 up to here, to the first edge and to the last one
    std::int64_t onesAtFirst_ = 0;
    std::int64_t onesAtLast_ = 0;
    std::int64_t least_[2] = {};  ///< by level; 0 = unset
    std::int64_t most_[2] = {};
};

void PhaseSums::TakePhase(std::int64_t width, bool one) {
    const std::size_t level = one ? 1 : 0;
    if (least_[level] == 0 || width < least_[level]) least_[level] = width;
    if (width > most_[level]) most_[level] = width;
}

void PhaseSums::TakePhases(std::int64_t at, std::uint64_t levels, std::uint64_t edges) {
    std::int64_t last = at + std::countr_zero(edges);
    for (edges &= edges - 1; edges != 0; edges &= edges - 1) {
        const int bit = std::countr_zero(edges);
        TakePhase(at + bit - last, (levels >> bit & 1) == 0);
        last = at + bit;
    }
}

bool PhaseSums::MayBreakRecords(std::uint64_t levels, std::uint64_t edges) const {
    constexpr int kFewEdges = 4;  // cheaper to look at than to rule out
    if (least_[0] == 0 || least_[1] == 0 || std::popcount(edges) <= kFewEdges) return true;
    const std::uint64_t rising = edges & levels;
    const std::uint64_t falling = edges & ~levels;
    if ((Smear(rising, least_[1] - 1) & falling) != 0 || (Smear(falling, least_[0] - 1) & rising) != 0)
        return true;
    return HasRun(levels, most_[1] + 1) || HasRun(~levels, most_[0] + 1);
}

void PhaseSums::TakeEdges(std::int64_t at, std::uint64_t levels, std::uint64_t edges) {
    const int lowest = std::countr_zero(edges);
    const int highest = kBlock - 1 - std::countl_zero(edges);
    const auto onesBelow = [&](int bit) {
        return ones_ + std::popcount(levels & ((std::uint64_t{1} << bit) - 1));
    };
    if (edges_ == 0) {
        first_ = at + lowest;
        firstOne_ = (levels >> lowest & 1) != 0;
        onesAtFirst_ = onesBelow(lowest);
    } else {
        TakePhase(at + lowest - last_, (levels >> lowest & 1) == 0);
    }
    if (lowest != highest && MayBreakRecords(levels, edges)) TakePhases(at, levels, edges);
    const std::uint64_t rest = edges & ~(std::uint64_t{1} << highest);
    before_ = rest == 0 ? last_ : at + kBlock - 1 - std::countl_zero(rest);
    last_ = at + highest;
    onesAtLast_ = onesBelow(highest);
    edges_ += std::popcount(edges);
}

ChannelMeasure::Widths PhaseSums::WidthsOf(bool one, std::int64_t sum) const {
    const std::int64_t phases = edges_ - 1;
    const std::size_t level = one ? 1 : 0;
    return {sum, one == firstOne_ ? (phases + 1) / 2 : phases / 2, least_[level], most_[level]};
}

ChannelMeasure PhaseSums::Done(std::int64_t end) const {
    ChannelMeasure sums;
    sums.FirstEdge = sums.LastEdge = end;
    if (edges_ == 0) return sums;
    const std::int64_t high = onesAtLast_ - onesAtFirst_;
    const std::int64_t low = last_ - first_ - high;
    sums.High = WidthsOf(true, high);
    sums.Low = WidthsOf(false, low);
    sums.Count = static_cast<std::int32_t>((edges_ - 1) / 2);
    // A last phase without its partner is no part of a period.
    const bool odd = (edges_ - 1) % 2 != 0;
    const std::int64_t spare = odd ? last_ - before_ : 0;
    sums.FirstEdge = first_;
    sums.LastEdge = last_ - spare;
    sums.DutyHigh = high - (firstOne_ ? spare : 0);
    sums.DutyLow = low - (firstOne_ ? 0 : spare);
    const std::int64_t period = sums.Count > 0 ? (sums.LastEdge - sums.FirstEdge) / sums.Count : 0;
    sums.Period = static_cast<double>(period);
    return sums;
}

/// Calls take(at, levels, edges) for all of [from, to), 64 samples at a time.
template <typename Take>
void WalkLevels(const std::uint8_t* data, std::uint8_t mask, std::int64_t from, std::int64_t to,
                Take&& take) {
    std::uint64_t before = (data[from] & mask) != 0 ? 1 : 0;
    std::int64_t at = from;
    for (; to - at >= kBlock; at += kBlock) {
        const std::uint64_t levels = scan::WideLevels(data + at, mask);
        take(at, levels, levels ^ (levels << 1 | before));
        before = levels >> (kBlock - 1);
    }
    std::uint64_t levels = 0;
    for (std::int64_t i = at; i < to; ++i) levels |= std::uint64_t{(data[i] & mask) != 0} << (i - at);
    const std::uint64_t real = (std::uint64_t{1} << (to - at)) - 1;
    take(at, levels, (levels ^ (levels << 1 | before)) & real);
}

/// Shortest and longest of the periods that a duty is taken over.
class PeriodExtent {
  public:
    PulseWidths Sums;

    void Take(std::int64_t at) {
        ++edges_;
        if (edges_ == 1) start_ = at;
        if (edges_ == 1 || edges_ % 2 == 0) return;
        Sums.Shortest = std::min(Sums.Shortest, at - start_);
        Sums.Longest = std::max(Sums.Longest, at - start_);
        start_ = at;
    }

  private:
    std::int64_t edges_ = 0;
    std::int64_t start_ = 0;
};

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
    PhaseSums sums;
    if (range.First >= 0 && range.First < end) {
        WalkLevels(view.Data, mask, range.First, end,
                   [&](std::int64_t at, std::uint64_t levels, std::uint64_t edges) {
                       sums.Take(at, levels, edges);
                   });
    }
    return sums.Done(end);
}

PulseWidths MeasurePulses(const SampleView& view, std::uint8_t mask, const SampleRange& range) {
    const std::int64_t end = std::min<std::int64_t>({range.Last, view.Stored, view.Shown});
    const ChannelMeasure measure = MeasureChannel(view, mask, {range.First, end});
    PeriodExtent periods;
    periods.Sums = {measure.DutyLow, measure.DutyHigh, measure.Count, measure.Count, end, 0};
    if (range.First >= 0 && range.First < end) {
        WalkLevels(view.Data, mask, range.First, end,
                   [&](std::int64_t at, std::uint64_t, std::uint64_t edges) {
                       for (; edges != 0; edges &= edges - 1) periods.Take(at + std::countr_zero(edges));
                   });
    }
    return periods.Sums;
}

std::optional<PulseMessage> PulseWidthMessage(const InstrumentState& state) {
    constexpr int kChannel = 0;
    const PulseWidths widths = MeasurePulses(BindChannel(state, kChannel), 1, RangeBounds(state, 0, 0));
    if (widths.CountLow + widths.CountHigh < 1) return std::nullopt;
    const std::int64_t low = widths.Low / widths.CountLow;  // cut to whole samples
    const std::int64_t high = widths.High / widths.CountHigh;
    std::array<char, 256> text{};
    std::snprintf(
        text.data(), text.size(),
        "ch(%d) avg pulse width(0)=%f avg pulse width(1)=%f Count(0)=%ld,Count(1)=%ld, Short=%d,Long=%d",
        kChannel, static_cast<double>(low), static_cast<double>(high), static_cast<long>(widths.CountLow),
        static_cast<long>(widths.CountHigh), static_cast<int>(widths.Shortest),
        static_cast<int>(widths.Longest));
    return PulseMessage{text.data(), "avg"};
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
