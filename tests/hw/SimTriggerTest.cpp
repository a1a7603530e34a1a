#include <array>
#include <gtest/gtest.h>
#include <random>

#include "SimHand.h"

// The trigger of the simulated instrument against an evaluator that looks at every sample by itself.

namespace zu::test {
namespace {

constexpr int kLength = 3000;
constexpr int kTail = 300;  // the last sample, held: longer than any count

/// Bytes that are given sample by sample; held at both ends.
class ListStimulus : public SimStimulus {
  public:
    std::array<std::vector<std::uint8_t>, kSimPods> Pods;
    SimTicks Step = 100;

    SimRun At(int pod, SimTicks time) override {
        const auto& list = Pods[static_cast<std::size_t>(pod)];
        if (list.empty()) return {};
        if (time < 0) return {list.front(), 0};
        const auto last = static_cast<SimTicks>(list.size()) - 1;
        const SimTicks i = std::min(time / Step, last);
        return {list[static_cast<std::size_t>(i)], i == last ? kForever : (i + 1) * Step};
    }
    [[nodiscard]] std::uint8_t Byte(int pod, int sample) const {
        const auto& list = Pods[static_cast<std::size_t>(pod)];
        return list.empty() ? std::uint8_t{0} : list[static_cast<std::size_t>(std::min(sample, kLength - 1))];
    }
};

/// A word: each pod compared under a mask.
struct Word {
    std::array<std::uint8_t, kSimPods> Mask{};
    std::array<std::uint8_t, kSimPods> Value{};
};

struct Trial {
    SimTraits Traits;
    int Phases = 1;
    std::shared_ptr<ListStimulus> Signals = std::make_shared<ListStimulus>();
    std::vector<Word> Words;  ///< the last one on page 15
    SimTriggerKind Kind = SimTriggerKind::Events;
    int Count = 1;
    bool Inverted = false;
};

bool Active(const Trial& trial, const Word& word, int sample) {
    for (int pod = 0; pod < trial.Traits.Boards * kSimLanes; ++pod) {
        const auto p = static_cast<std::size_t>(pod);
        if ((trial.Signals->Byte(pod, sample) & word.Mask[p]) != word.Value[p]) return trial.Inverted;
    }
    return !trial.Inverted;
}

/// First sample from `from` on that is active behind one, not before `from`, that is not; -1 without one.
int Event(const Trial& trial, const Word& word, int from) {
    for (int i = from + 1; i < kLength + kTail; ++i) {
        if (Active(trial, word, i) && !Active(trial, word, i - 1)) return i;
    }
    return -1;
}

/// Length of the active state that begins at a sample.
int LengthFrom(const Trial& trial, const Word& word, int begin) {
    int end = begin;
    while (end < kLength + kTail && Active(trial, word, end)) ++end;
    return end - begin;
}

/// The sample at which the trigger falls, -1 if it does not.
int TriggerSample(const Trial& trial) {
    int from = 0;
    for (std::size_t level = 0; level + 1 < trial.Words.size(); ++level) {
        const int event = Event(trial, trial.Words[level], from);
        if (event < 0) return -1;
        from = event + 1;
    }
    const Word& last = trial.Words.back();
    int events = 0;
    for (int event = Event(trial, last, from); event >= 0; event = Event(trial, last, event)) {
        const int length = LengthFrom(trial, last, event);
        const bool ends = event + length < kLength + kTail;
        if (trial.Kind == SimTriggerKind::Events && ++events == trial.Count) return event;
        if (trial.Kind == SimTriggerKind::Lasts && length >= trial.Count) return event + trial.Count - 1;
        if (trial.Kind == SimTriggerKind::EndsWithin && ends && length <= trial.Count) return event + length;
    }
    return -1;
}

class Dice {
  public:
    explicit Dice(unsigned seed) : random_(seed) {}
    int operator()(int choices) { return static_cast<int>(random_() % static_cast<unsigned>(choices)); }
    std::uint8_t Byte() { return static_cast<std::uint8_t>((*this)(256)); }

  private:
    std::mt19937 random_;
};

/// Few channels move, and not too often, so that words are met.
void DrawSignals(Trial& trial, Dice& dice) {
    trial.Signals->Step = 100 / trial.Phases;
    const int stays = 1 + dice(12);
    for (int pod = 0; pod < trial.Traits.Boards * kSimLanes; ++pod) {
        if (dice(3) == 0) continue;
        const std::uint8_t moving = dice(4) == 0 ? dice.Byte() : static_cast<std::uint8_t>(1U << dice(8));
        const std::uint8_t still = dice.Byte();
        std::vector<std::uint8_t> list(kLength);
        std::uint8_t byte = still;
        for (std::uint8_t& sample : list) {
            if (dice(stays) == 0) {
                byte = static_cast<std::uint8_t>((still & ~moving) | (dice.Byte() & moving));
            }
            sample = byte;
        }
        trial.Signals->Pods[static_cast<std::size_t>(pod)] = std::move(list);
    }
}

/// A word that some sample meets, on few pods.
Word DrawWord(const Trial& trial, Dice& dice) {
    Word word;
    const int sample = dice(kLength);
    for (int pods = dice(4); pods >= 0; --pods) {
        const int pod = dice(trial.Traits.Boards * kSimLanes);
        const auto p = static_cast<std::size_t>(pod);
        word.Mask[p] = dice(2) == 0 ? dice.Byte() : std::uint8_t{0xFF};
        word.Value[p] = static_cast<std::uint8_t>(trial.Signals->Byte(pod, sample) & word.Mask[p]);
    }
    return word;
}

Trial Draw(Dice& dice) {
    Trial trial;
    trial.Traits = {.Later = dice(2) == 0, .LargeMemory = true, .Boards = 1 + dice(4), .Direct = true};
    trial.Phases = 1 << dice(3);
    DrawSignals(trial, dice);
    const int levels = dice(3) == 0 ? 2 + dice(3) : 1;
    for (int i = 0; i < levels; ++i) trial.Words.push_back(DrawWord(trial, dice));
    trial.Kind = static_cast<SimTriggerKind>(dice(3));
    trial.Count = dice(2) == 0 ? 1 + dice(4) : dice(20) == 0 ? 256 : 1 + dice(40);
    trial.Inverted = dice(3) == 0;
    return trial;
}

/// Sets the instrument up by registers and lets it run in pieces. -1 if it does not trigger.
std::int64_t Simulate(const Trial& trial, Dice& dice) {
    SimBench bench(trial.Traits, trial.Signals);
    bench.Sim.SetPollNs(0);
    bench.Phases(trial.Phases);
    for (std::size_t i = trial.Words.size(); i-- > 0;) {
        const Word& word = trial.Words[i];
        bench.Word(16 - static_cast<int>(trial.Words.size() - i), [&word](int pod, std::uint8_t byte) {
            const auto p = static_cast<std::size_t>(pod);
            return (byte & word.Mask[p]) == word.Value[p];
        });
    }
    bench.CountRegister((256 - trial.Count) & 0xFF);
    bench.Inverted(trial.Inverted);
    const bool events = trial.Kind == SimTriggerKind::Events;
    bench.Set(3, 7, events);
    bench.Set(3, 3, !events);
    bench.Set(3, 4, !events);
    const bool within = trial.Kind == SimTriggerKind::EndsWithin;
    bench.Gate(within, within);
    bench.Go();
    const double whole = 10.0 * (kLength + kTail - 1) / trial.Phases;
    double passed = 0;
    while (passed < whole && bench.Status() == 0) {
        const double piece = std::min(whole - passed, 1.0 + dice(4000));
        bench.Sim.Advance(piece);
        passed += piece;
    }
    if (bench.Status() == 0) return -1;
    bench.Stop();
    const SimMemory& memory = *bench.Sim.Acquisition().Captured();
    return memory.First + memory.Trigger;
}

class RandomTrials : public testing::TestWithParam<unsigned> {};
INSTANTIATE_TEST_SUITE_P(Seeds, RandomTrials, testing::Range(1U, 9U));

TEST_P(RandomTrials, TriggerFallsWhereTheSamplesSay) {
    Dice dice(GetParam());
    int triggered = 0;
    for (int i = 0; i < 500; ++i) {
        const Trial trial = Draw(dice);
        const int expected = TriggerSample(trial);
        triggered += expected >= 0 ? 1 : 0;
        ASSERT_EQ(Simulate(trial, dice), expected)
            << "trial " << i << " kind " << static_cast<int>(trial.Kind) << " count " << trial.Count
            << " levels " << trial.Words.size() << " phases " << trial.Phases;
    }
    EXPECT_GT(triggered, 100) << "the trials are worth something";
    EXPECT_LT(triggered, 490);
}

// ---- cases by hand ----

/// One channel of the first pod, drawn as text: '#' high, anything else low.
Trial Line(const std::string& drawing) {
    Trial trial;
    trial.Traits = {.Later = true, .LargeMemory = true, .Boards = 1, .Direct = true};
    std::vector<std::uint8_t> list(kLength, drawing.back() == '#' ? 1 : 0);
    for (std::size_t i = 0; i < drawing.size(); ++i) list[i] = drawing[i] == '#' ? 1 : 0;
    trial.Signals->Pods[0] = std::move(list);
    trial.Words.emplace_back();
    trial.Words[0].Mask[0] = trial.Words[0].Value[0] = 1;
    return trial;
}

struct LineCase {
    const char* Drawing;
    SimTriggerKind Kind;
    int Count;
    bool Inverted;
    int Expected;
};

TEST(SimTriggerCases, OneLine) {
    using Kind = SimTriggerKind;
    const LineCase cases[] = {
        {"..##..", Kind::Events, 1, false, 2},
        {"##..#.", Kind::Events, 1, false, 4},  // active from the start is no event
        {"##....", Kind::Events, 1, false, -1},
        {"..##..", Kind::Events, 1, true, 4},  // the fall
        {"..####", Kind::Events, 1, true, -1},
        {".#.#.#.#", Kind::Events, 3, false, 5},
        {".#.#.#.#", Kind::Events, 5, false, -1},
        {".#.##.####.", Kind::Lasts, 1, false, 1},
        {".#.##.####.", Kind::Lasts, 2, false, 4},
        {".#.##.####.", Kind::Lasts, 4, false, 9},
        {".#.##.####.", Kind::Lasts, 5, false, -1},
        {"####.##.", Kind::Lasts, 2, false, 6},
        {".####.##.", Kind::EndsWithin, 2, false, 8},
        {".####.##.", Kind::EndsWithin, 4, false, 5},
        {"##.###.", Kind::EndsWithin, 2, false, -1},
        {".####.##", Kind::EndsWithin, 3, false, -1},  // does not end
        {"#.###.#", Kind::EndsWithin, 1, true, 2},
    };
    Dice dice(1);
    for (const LineCase& c : cases) {
        Trial trial = Line(c.Drawing);
        trial.Kind = c.Kind;
        trial.Count = c.Count;
        trial.Inverted = c.Inverted;
        EXPECT_EQ(TriggerSample(trial), c.Expected) << c.Drawing << " by the evaluator";
        EXPECT_EQ(Simulate(trial, dice), c.Expected) << c.Drawing << " " << c.Count;
    }
}

TEST(SimTriggerCases, ASequenceNeedsAnInactiveSampleOnEachPage) {
    Dice dice(1);
    Trial trial = Line("..##..##..");
    trial.Words.push_back(trial.Words.front());
    EXPECT_EQ(Simulate(trial, dice), 6) << "the second rise of the same word";
    trial.Words.push_back(trial.Words.front());
    EXPECT_EQ(Simulate(trial, dice), -1);
}

TEST(SimTriggerCases, SixteenLevels) {
    Dice dice(1);
    std::string drawing;
    for (int i = 0; i < 20; ++i) drawing += ".#";
    Trial trial = Line(drawing + ".");
    trial.Words.resize(16, trial.Words.front());
    EXPECT_EQ(Simulate(trial, dice), 31);
}

TEST(SimTriggerCases, AWordOfNoChannelNeverHasAnEvent) {
    Dice dice(1);
    Trial trial = Line(".#.#.#");
    trial.Words.front() = {};
    EXPECT_EQ(Simulate(trial, dice), -1);
    trial.Inverted = true;
    EXPECT_EQ(Simulate(trial, dice), -1);
}

TEST(SimTriggerCases, EveryBoardHasToMatch) {
    Dice dice(1);
    Trial trial = Line(".#.#.#");
    trial.Traits.Boards = 4;
    trial.Signals->Pods[19].assign(kLength, 0);
    trial.Signals->Pods[19][5] = 0x80;
    trial.Words[0].Mask[19] = trial.Words[0].Value[19] = 0x80;
    EXPECT_EQ(Simulate(trial, dice), 5);
}

TEST(SimTriggerCases, PagesBelowTheFirstAreNotLookedAt) {
    auto signals = Line(".#.#").Signals;
    SimBench bench({true, true, 1, true}, signals);
    bench.Word(14, [](int, std::uint8_t) { return false; });  // left over from a longer sequence
    bench.Word(15, [](int pod, std::uint8_t byte) { return pod != 0 || byte == 1; });
    bench.Go();
    EXPECT_TRUE(bench.Wait(20));
}

TEST(SimTriggerCases, ALongWaitIsSearchedInPieces) {
    class Rare : public SimStimulus {
      public:
        SimRun At(int pod, SimTicks time) override {
            if (pod != 0) return {};
            const SimTicks n = FloorDiv(time, 100);
            return {static_cast<std::uint8_t>(n == 1500000 ? 0xFF : n % 2), (n + 1) * 100};
        }
    };
    SimBench bench({true, true, 1, true}, std::make_shared<Rare>());
    bench.Word(15, [](int pod, std::uint8_t byte) { return pod != 0 || byte == 0xFF; });
    bench.Go();
    bench.Sim.Advance(1e8);
    ASSERT_TRUE(bench.Wait(20));
    const SimMemory& memory = *bench.Sim.Acquisition().Captured();
    EXPECT_EQ(memory.Timeline->TimeOf(memory.First + memory.Trigger), 150000000);
}

}  // namespace
}  // namespace zu::test
