#include "display/Search.h"

#include <algorithm>
#include <bit>
#include <vector>

#include "display/SearchScan.h"
#include "state/SampleView.h"
#include "trigger/TrigCells.h"

namespace zu {
namespace {

constexpr std::int64_t kBlock = 64;

/// Bits [from, to) of a block.
std::uint64_t BlockBits(std::int64_t from, std::int64_t to) {
    const std::int64_t low = std::clamp<std::int64_t>(from, 0, kBlock);
    const std::int64_t high = std::clamp<std::int64_t>(to, 0, kBlock);
    if (low >= high) return 0;
    return ~std::uint64_t{0} >> (kBlock - (high - low)) << low;
}

/// Runs `matches(base)` over the blocks that touch a span, in one direction; each answers with the bits of
/// the samples from `base` on that match.
template <typename Matches>
std::optional<std::int64_t> FindInBlocks(SearchSpan span, bool forward, Matches&& matches) {
    span.First = std::max<std::int64_t>(span.First, 0);
    if (span.First >= span.End) return std::nullopt;
    const std::int64_t first = span.First / kBlock;
    const std::int64_t last = (span.End - 1) / kBlock;
    for (std::int64_t step = 0; step <= last - first; ++step) {
        const std::int64_t base = (forward ? first + step : last - step) * kBlock;
        std::uint64_t found = matches(base);
        if (found == 0) continue;
        found &= BlockBits(span.First - base, span.End - base);
        if (found == 0) continue;
        return base + (forward ? std::countr_zero(found) : 63 - std::countl_zero(found));
    }
    return std::nullopt;
}

/// One pod that a word asks something of.
struct PodTest {
    SampleView View;
    std::int64_t Whole = 0;  ///< samples that are shown and stored
    PodPattern Pattern;
    std::uint8_t Mask = 0;
    std::uint8_t Value = 0;

    /// Samples from `base` on that pass.
    [[nodiscard]] std::uint64_t Pass(std::int64_t base) const {
        if (base + kBlock <= Whole) return scan::Equal64(View.Data + base, Mask, Value);
        std::uint64_t pass = 0;
        for (std::int64_t i = 0; i < kBlock; ++i) {
            const bool passes = !View.Has(base + i) || Pattern.Matches(View.At(base + i));
            pass |= std::uint64_t{passes} << i;
        }
        return pass;
    }
};

std::vector<PodTest> BuildTests(const InstrumentState& state, const PodPatterns& patterns) {
    std::vector<PodTest> tests;
    for (int pod = 0; pod < kMaxPods; ++pod) {
        const PodPattern& pattern = patterns[static_cast<std::size_t>(pod)];
        const auto mask = static_cast<std::uint8_t>(~pattern.DontCare);
        const SampleView view = BindPod(state, pod);
        if (mask == 0 || view.Shown <= 0) continue;
        tests.push_back({view, std::min(view.Shown, view.Stored), pattern, mask,
                         static_cast<std::uint8_t>(pattern.Care & mask)});
    }
    return tests;
}

/// Levels of one channel, 64 samples at a time.
struct ChannelLevels {
    SampleView View;
    std::uint8_t Mask = 0;

    [[nodiscard]] std::uint64_t At(std::int64_t base) const {
        if (base + kBlock <= View.Stored) return scan::WideLevels(View.Data + base, Mask);
        std::uint64_t levels = 0;
        for (std::int64_t i = 0; i < kBlock && base + i < View.Stored; ++i) {
            levels |= std::uint64_t{(View.At(base + i) & Mask) != 0} << i;
        }
        return levels;
    }
};

/// One character of a serial pattern that asks for a level.
struct LevelTest {
    unsigned Offset = 0;
    std::uint64_t Flip = 0;  ///< all ones for "0"
};

/// A serial pattern of up to 64 characters.
struct LevelPattern {
    std::vector<LevelTest> First;  ///< what rules most places out
    std::uint64_t Care = 0;        ///< characters that ask for a level
    std::uint64_t High = 0;        ///< those that ask for a high one
};

/// Moves the first two neighbours that are alike, or that are not, to a place in the list.
void BringForward(std::vector<LevelTest>& tests, std::size_t to, bool alike) {
    for (std::size_t i = to; i + 1 < tests.size(); ++i) {
        if ((tests[i].Flip == tests[i + 1].Flip) != alike) continue;
        std::swap(tests[i], tests[to]);
        std::swap(tests[i + 1], tests[to + 1]);
        return;
    }
}

/// A quiet line hardly ever passes a change, a clock hardly ever the lack of one: both are asked first.
LevelPattern BuildLevelPattern(std::string_view text) {
    constexpr std::size_t kFirstTests = 8;
    LevelPattern pattern;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '0' && text[i] != '1') continue;
        const std::uint64_t bit = std::uint64_t{1} << i;
        pattern.Care |= bit;
        if (text[i] == '1') pattern.High |= bit;
        pattern.First.push_back({static_cast<unsigned>(i), text[i] == '0' ? ~std::uint64_t{0} : 0});
    }
    BringForward(pattern.First, 0, false);
    BringForward(pattern.First, 2, true);
    pattern.First.resize(std::min(pattern.First.size(), kFirstTests));
    return pattern;
}

/// Bits [from, from + 64) of low and, behind it, high; `from` is below 64.
std::uint64_t Window(std::uint64_t low, std::uint64_t high, unsigned from) {
    return low >> from | high << 1U << (63U - from);
}

/// Places among the 64 of `low` at which the pattern stands; `high` holds the 64 samples that follow.
std::uint64_t PlacesThatPass(const LevelPattern& pattern, std::uint64_t low, std::uint64_t high) {
    std::uint64_t pass = ~std::uint64_t{0};
    for (const LevelTest& test : pattern.First) {
        pass &= Window(low, high, test.Offset) ^ test.Flip;
        if (pass == 0) return 0;
    }
    if (std::popcount(pattern.Care) == std::ssize(pattern.First)) return pass;
    for (std::uint64_t rest = pass; rest != 0; rest &= rest - 1) {
        const std::uint64_t window = Window(low, high, static_cast<unsigned>(std::countr_zero(rest)));
        if (((window ^ pattern.High) & pattern.Care) != 0) pass ^= rest & (~rest + 1);
    }
    return pass;
}

std::int32_t& ActivePosition(InstrumentState& state) {
    return state.Windows.ActiveView == 0 ? state.Timing.TimingDataPos : state.StateList.StateDataPos;
}

bool IsSerial(const InstrumentState& state) {
    return state.Search.SearchMode == 'S';
}

std::int64_t LengthOfPod(const InstrumentState& state, int pod) {
    return BindPod(state, pod).Shown;
}

/// Stores what was found.
bool MoveActiveView(InstrumentState& state, std::optional<std::int64_t> found) {
    if (!found) return false;
    ActivePosition(state) = static_cast<std::int32_t>(*found);
    return true;
}

}  // namespace

PodPatterns BuildPodPatterns(const InstrumentState& state) {
    PodPatterns patterns;
    for (int channel = 0; channel < kMaxChannels; ++channel) {
        PodPattern& pattern = patterns[static_cast<std::size_t>(channel / 8)];
        const auto bit = static_cast<std::uint8_t>(1U << static_cast<unsigned>(channel % 8));
        const auto cell = CellOfChannel(state, channel);
        const char c = cell ? NormalCell(state.Search.SearchWd[static_cast<std::size_t>(cell->Board)]
                                                              [static_cast<std::size_t>(cell->Position)])
                            : 'X';
        if (c == '1' || c == 'X') pattern.Care = static_cast<std::uint8_t>(pattern.Care | bit);
        if (c == 'X') pattern.DontCare = static_cast<std::uint8_t>(pattern.DontCare | bit);
    }
    return patterns;
}

std::optional<std::int64_t> FindWord(const InstrumentState& state, const PodPatterns& patterns,
                                     SearchSpan span, bool forward) {
    const std::vector<PodTest> tests = BuildTests(state, patterns);
    return FindInBlocks(span, forward, [&tests](std::int64_t base) {
        std::uint64_t pass = ~std::uint64_t{0};
        for (const PodTest& test : tests) {
            pass &= test.Pass(base);
            if (pass == 0) break;
        }
        return pass;
    });
}

std::string SerialPattern(const InstrumentState& state) {
    std::string pattern;
    for (const char c : state.Search.SearchWord.View()) {
        if (IsCell(c)) pattern += NormalCell(c);
    }
    return pattern;
}

std::optional<std::int64_t> FindBits(const InstrumentState& state, int channel, std::string_view pattern,
                                     SearchSpan span, bool forward) {
    if (channel < 0 || channel >= state.Shape.TotalChannels) return std::nullopt;
    const SampleView view = BindChannel(state, channel);
    if (view.Data == nullptr || pattern.empty() || pattern.size() > 64) return std::nullopt;
    const auto bit = static_cast<std::uint8_t>(1U << static_cast<unsigned>(channel % 8));
    const ChannelLevels levels{view, bit};
    const LevelPattern wanted = BuildLevelPattern(pattern);
    span.End -= static_cast<std::int64_t>(pattern.size()) - 1;
    std::int64_t known = -1;  // base of the levels that the last block left over
    std::uint64_t kept = 0;
    return FindInBlocks(span, forward, [&](std::int64_t base) {
        const std::int64_t other = forward ? base : base + kBlock;
        const std::uint64_t held = known == other ? kept : levels.At(other);
        const std::uint64_t fresh = levels.At(forward ? base + kBlock : base);
        known = forward ? base + kBlock : base;
        kept = fresh;
        return forward ? PlacesThatPass(wanted, held, fresh) : PlacesThatPass(wanted, fresh, held);
    });
}

bool SearchForward(InstrumentState& state) {
    const std::int64_t length = LengthOfPod(state, 0);
    std::int64_t start = std::max(ActivePosition(state), 0);
    if (start + 1 < length - 1) ++start;
    // The last sample is never tested.
    if (!IsSerial(state)) {
        return MoveActiveView(state, FindWord(state, BuildPodPatterns(state), {start, length - 1}, true));
    }
    std::string pattern = SerialPattern(state);
    std::reverse(pattern.begin(), pattern.end());
    const std::int64_t end = LengthOfPod(state, state.Search.SearchCh / 8) - 1;
    auto found = FindBits(state, state.Search.SearchCh, pattern, {start, end}, true);
    if (found) *found += static_cast<std::int64_t>(pattern.size());
    return MoveActiveView(state, found);
}

bool SearchBackward(InstrumentState& state) {
    const std::int64_t start = std::max(ActivePosition(state), 0);
    // Sample 0 is never tested, and the walk begins inside the data.
    if (!IsSerial(state)) {
        const SearchSpan span{1, std::min(start, LengthOfPod(state, 0))};
        return MoveActiveView(state, FindWord(state, BuildPodPatterns(state), span, false));
    }
    // The pattern is reversed and so is the walk: in the order of samples it stands as it is typed.
    const std::int64_t end = std::min(start, LengthOfPod(state, state.Search.SearchCh / 8));
    auto found = FindBits(state, state.Search.SearchCh, SerialPattern(state), {1, end}, false);
    if (found) *found -= 1;
    return MoveActiveView(state, found);
}

bool SearchOrBeep(InstrumentState& state, Host& host, bool forward) {
    const bool found = forward ? SearchForward(state) : SearchBackward(state);
    if (!found) host.Beep();
    return found;
}

}  // namespace zu
