#include "display/GroupScan.h"

#include <algorithm>

#include "display/Lines.h"
#include "state/SampleView.h"

namespace zu {
namespace {

constexpr std::int64_t kChunk = 256;  // samples that are looked at as one where nothing moves

#if defined(__SSE2__)

constexpr std::int64_t kBlock = 16;

__m128i Load(const std::uint8_t* at) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
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

std::int64_t SkipAgreeing(const std::vector<GroupPart>&, std::int64_t from, std::int64_t) {
    return from;
}

#endif

}  // namespace

GroupScan::GroupScan(const InstrumentState& state, const GroupRecord& group, bool shuffles) {
    const std::int32_t size = GroupSize(group);
    bits_ = std::min(size, kGroupValueBits);
    if (group.TwosComplement != 0 && bits_ > 0) bias_ = 1U << static_cast<unsigned>(bits_ - 1);
    length_ = stored_ = size > 0 ? INT32_MAX : 0;
    for (std::int32_t bit = 0; bit < size; ++bit) {
        Add(state, group.Channels[static_cast<std::size_t>(bit)], bit);
    }
    if (!parts_.empty() && shuffles) shuffles_.emplace(parts_, bits_);
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

void GroupScan::TakeWords(WordExtent& extent, std::int64_t from, std::int64_t to) const {
    const bool quiet = std::all_of(parts_.begin(), parts_.end(), [&](const GroupPart& part) {
        return (part.Run.Changes(from, to, part.Run.At(from, 0xFF)) & part.Mask) == 0;
    });
    if (quiet) to = from + 1;
    for (; from < to; ++from) extent.Take(WordAt(from) ^ bias_);
}

GroupScan::Extent GroupScan::ExtentOf(std::int64_t from, std::int64_t to) const {
    WordExtent extent;
    const std::int64_t real = std::min(stored_, to);
    if (shuffles_ && from < real) from = shuffles_->Take(extent, bias_, from, real);
    for (std::int64_t next = from; from < std::min(any_, to); from = next) {
        next = std::min({from + kChunk, any_, to});
        TakeWords(extent, from, next);
    }
    if (to > any_) extent.Take(bias_);
    return {Number(extent.Least), Number(extent.Most)};
}

}  // namespace zu
