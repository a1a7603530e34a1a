#include "display/GroupScan.h"

#include <algorithm>
#include <limits>

#include "display/Lines.h"
#include "state/SampleView.h"

namespace zu {
namespace {

using WordExtent = GroupScan::WordExtent;
constexpr std::int64_t kBlock = 16;
constexpr std::int64_t kChunk = 256;  // samples that are looked at as one where nothing moves

#if defined(__SSE2__)

__m128i Load(const std::uint8_t* at) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
}

template <typename Lane>
void TakeLanes(WordExtent& extent, __m128i lanes, std::uint32_t flip) {
    std::array<Lane, 16 / sizeof(Lane)> each;
    std::memcpy(each.data(), &lanes, sizeof lanes);
    for (const Lane lane : each) extent.Take((lane ^ flip) & std::numeric_limits<Lane>::max());
}

/// Bytes under a mask, their sign bit turned over by `bias`.
std::int64_t ByteExtent(WordExtent& extent, const GroupPart& part, std::uint32_t bias, std::int64_t from,
                        std::int64_t to) {
    if (to - from < kBlock) return from;
    const __m128i mask = _mm_set1_epi8(static_cast<char>(part.Mask));
    const __m128i flip = _mm_set1_epi8(static_cast<char>(bias));
    __m128i least = _mm_set1_epi8(-1);
    __m128i most = _mm_setzero_si128();
    const auto words = [&](std::int64_t at) {
        return _mm_xor_si128(_mm_and_si128(Load(part.Run.Data + at), mask), flip);
    };
    for (; to - from >= 2 * kBlock; from += 2 * kBlock) {
        const __m128i a = words(from);
        const __m128i b = words(from + kBlock);
        least = _mm_min_epu8(least, _mm_min_epu8(a, b));
        most = _mm_max_epu8(most, _mm_max_epu8(a, b));
    }
    for (; to - from >= kBlock; from += kBlock) {
        least = _mm_min_epu8(least, words(from));
        most = _mm_max_epu8(most, words(from));
    }
    TakeLanes<std::uint8_t>(extent, least, 0);
    TakeLanes<std::uint8_t>(extent, most, 0);
    return from;
}

/// Words of two pods, the first one the low byte. The comparison is of signed words, hence the second flip.
std::int64_t PairExtent(WordExtent& extent, const GroupPart& low, const GroupPart& high, std::uint32_t bias,
                        std::int64_t from, std::int64_t to) {
    constexpr std::uint32_t kSign = 0x8000;
    if (to - from < kBlock) return from;
    const __m128i mask = _mm_set1_epi8(static_cast<char>(high.Mask));
    const __m128i flip = _mm_set1_epi16(static_cast<short>(bias ^ kSign));
    __m128i least = _mm_set1_epi16(std::numeric_limits<short>::max());
    __m128i most = _mm_set1_epi16(std::numeric_limits<short>::min());
    const auto take = [&](__m128i words) {
        words = _mm_xor_si128(words, flip);
        least = _mm_min_epi16(least, words);
        most = _mm_max_epi16(most, words);
    };
    for (; to - from >= kBlock; from += kBlock) {
        const __m128i lows = Load(low.Run.Data + from);
        const __m128i highs = _mm_and_si128(Load(high.Run.Data + from), mask);
        take(_mm_unpacklo_epi8(lows, highs));
        take(_mm_unpackhi_epi8(lows, highs));
    }
    TakeLanes<std::uint16_t>(extent, least, kSign);
    TakeLanes<std::uint16_t>(extent, most, kSign);
    return from;
}

/// First block that holds a sample at which some but not all bits are 1, or the rest that is no whole block.
std::int64_t SkipAgreeing(const std::vector<GroupPart>& parts, std::int64_t from, std::int64_t to) {
    const __m128i zero = _mm_setzero_si128();
    for (; to - from >= kBlock; from += kBlock) {
        __m128i none = _mm_set1_epi8(-1);
        __m128i all = none;
        for (const GroupPart& part : parts) {
            const __m128i mask = _mm_set1_epi8(static_cast<char>(part.Mask));
            const __m128i bits = _mm_and_si128(Load(part.Run.Data + from), mask);
            none = _mm_and_si128(none, _mm_cmpeq_epi8(bits, zero));
            all = _mm_and_si128(all, _mm_cmpeq_epi8(bits, mask));
        }
        if (_mm_movemask_epi8(_mm_or_si128(none, all)) != 0xFFFF) break;
    }
    return from;
}

#else

std::int64_t ByteExtent(WordExtent&, const GroupPart&, std::uint32_t, std::int64_t from, std::int64_t) {
    return from;
}
std::int64_t PairExtent(WordExtent&, const GroupPart&, const GroupPart&, std::uint32_t, std::int64_t from,
                        std::int64_t) {
    return from;
}
std::int64_t SkipAgreeing(const std::vector<GroupPart>&, std::int64_t from, std::int64_t) {
    return from;
}

#endif

/// Whether a part's bits are the group's bits from `first` on, in their order.
bool InOrder(const GroupPart& part, unsigned first) {
    for (unsigned byte = 0; byte < part.Word.size(); ++byte) {
        if (part.Word[byte] != (byte & part.Mask) << first) return false;
    }
    return true;
}

}  // namespace

GroupScan::GroupScan(const InstrumentState& state, const GroupRecord& group) {
    const std::int32_t size = GroupSize(group);
    bits_ = std::min(size, kGroupValueBits);
    if (group.TwosComplement != 0 && bits_ > 0) bias_ = 1U << static_cast<unsigned>(bits_ - 1);
    length_ = stored_ = size > 0 ? INT32_MAX : 0;
    for (std::int32_t bit = 0; bit < size; ++bit) {
        Add(state, group.Channels[static_cast<std::size_t>(bit)], bit);
    }
    order_ = OrderOfParts();
}

void GroupScan::Add(const InstrumentState& state, std::int32_t channel, std::int32_t bit) {
    const bool known = channel >= 0 && channel < state.Shape.TotalChannels;
    const SampleView view = known ? BindChannel(state, channel) : SampleView{};
    length_ = std::min<std::int64_t>(length_, view.Shown);
    stored_ = std::min<std::int64_t>(stored_, view.Stored);
    any_ = std::max<std::int64_t>(any_, view.Stored);
    if (view.Data == nullptr) return;
    auto part = std::find_if(parts_.begin(), parts_.end(),
                             [&](const GroupPart& other) { return other.Run.Data == view.Data; });
    if (part == parts_.end()) {
        part = parts_.insert(parts_.end(), GroupPart{{view.Data, view.Stored}, 0, {}});
    }
    const unsigned mask = 1U << (static_cast<unsigned>(channel) % 8);
    part->Mask = static_cast<std::uint8_t>(part->Mask | mask);
    if (bit >= kGroupValueBits) return;
    for (unsigned byte = 0; byte < part->Word.size(); ++byte) {
        if ((byte & mask) != 0) part->Word[byte] |= 1U << static_cast<unsigned>(bit);
    }
}

std::uint32_t GroupScan::WordAt(std::int64_t i) const {
    std::uint32_t word = 0;
    for (const GroupPart& part : parts_) word |= part.Word[part.Run.At(i, 0xFF)];
    return word;
}

std::int64_t GroupScan::Number(std::uint32_t biased) const {
    return std::int64_t{biased} - bias_;
}

std::int64_t GroupScan::At(std::int64_t i) const {
    return Number(WordAt(i) ^ bias_);
}

bool GroupScan::DisagreesAt(std::int64_t i) const {
    bool any = false;
    bool all = true;
    for (const GroupPart& part : parts_) {
        const std::uint8_t bits = part.Run.At(i, part.Mask);
        any = any || bits != 0;
        all = all && bits == part.Mask;
    }
    return any && !all;
}

bool GroupScan::Disagrees(std::int64_t from, std::int64_t to) const {
    if (from < std::min(stored_, to)) from = SkipAgreeing(parts_, from, std::min(stored_, to));
    for (; from < std::min(any_, to); ++from) {
        if (DisagreesAt(from)) return true;
    }
    return false;
}

GroupScan::Order GroupScan::OrderOfParts() const {
    if (parts_.size() == 1 && InOrder(parts_[0], 0)) return Order::OneByte;
    const bool two =
        parts_.size() == 2 && parts_[0].Mask == 0xFF && InOrder(parts_[0], 0) && InOrder(parts_[1], 8);
    return two ? Order::TwoBytes : Order::Mixed;
}

void GroupScan::TakeMixed(WordExtent& extent, std::int64_t from, std::int64_t to) const {
    const bool quiet = std::all_of(parts_.begin(), parts_.end(), [&](const GroupPart& part) {
        return (part.Run.Changes(from, to, part.Run.At(from, 0xFF)) & part.Mask) == 0;
    });
    if (quiet) to = from + 1;
    for (; from < to; ++from) extent.Take(WordAt(from) ^ bias_);
}

GroupScan::Extent GroupScan::ExtentOf(std::int64_t from, std::int64_t to) const {
    WordExtent extent;
    const std::int64_t real = std::min(stored_, to);
    if (from < real && order_ == Order::OneByte) from = ByteExtent(extent, parts_[0], bias_, from, real);
    if (from < real && order_ == Order::TwoBytes) {
        from = PairExtent(extent, parts_[0], parts_[1], bias_, from, real);
    }
    for (std::int64_t next = from; from < std::min(any_, to); from = next) {
        next = std::min({from + kChunk, any_, to});
        TakeMixed(extent, from, next);
    }
    if (to > any_) extent.Take(bias_);
    return {Number(extent.Least), Number(extent.Most)};
}

}  // namespace zu
