#include <algorithm>
#include <memory>
#include <numeric>
#include <random>

#include "ArmScript.h"
#include "MemoryFake.h"
#include "hw/Deinterleave.h"
#include "hw/ReadOut.h"

namespace zu::test {
namespace {

using Lengths = std::array<std::int32_t, 5>;

constexpr std::uint8_t kOld = 0xA5;  // in the buffers before a read-out

/// A sample that tells its pod and index apart from its neighbours.
std::uint8_t Sample(int pod, std::int64_t index) {
    const auto mixed = static_cast<std::uint64_t>(index + 1000) * 0x9E3779B97F4A7C15ULL +
                       static_cast<std::uint64_t>(pod) * 0xC2B2AE3D27D4EB4FULL;
    return static_cast<std::uint8_t>(mixed >> 56);
}

/// What a read-out works on: every block of five with the same lengths, all buffers filled with kOld.
struct ReadBench : ArmBench {
    ReadBench(const ArmCase& c, const Lengths& lengths) : ArmBench(c) {
        State.Buffer.BufLen.fill(*std::max_element(lengths.begin(), lengths.end()));
        State.Buffer.Allocate();
        for (int pod = 0; pod < kMaxPods; ++pod) {
            const auto p = static_cast<std::size_t>(pod);
            State.Buffer.BufLen[p] = lengths[p % 5];
            if (pod % 5 == 0) std::fill_n(State.Buffer.Pod[p], State.Buffer.Room(pod), kOld);
        }
        State.Shape.PodCount = static_cast<std::int8_t>(5 * c.Boards);
    }
    std::vector<std::uint8_t> Bytes(int pod, std::size_t count) {
        const std::uint8_t* bytes = State.Buffer.Pod[static_cast<std::size_t>(pod)];
        return {bytes, bytes + count};
    }
};

// ---- traces ----

void CheckTrace(const ArmCase& c, const Lengths& lengths) {
    SCOPED_TRACE(c.Name());
    ReadBench bench(c, lengths);
    ScriptReadOut(bench, c);
    EXPECT_EQ(EndCapture(bench.Hardware, bench.State, bench.Words), 1);
    bench.Compare();
}

struct Instrument {
    int Type;
    bool Direct;
};
constexpr Instrument kInstruments[] = {{0, false},  {1, false},  {3, true},  {5, false},  {5, true},
                                       {6, false},  {6, true},   {7, false}, {7, true},   {8, true},
                                       {10, false}, {11, true},  {13, true}, {14, false}, {15, true},
                                       {15, false}, {16, false}, {20, true}};

TEST(ReadOutTrace, EveryInstrumentRateAndMode) {
    for (const Instrument& instrument : kInstruments) {
        for (const int boards : {1, 2, 4}) {
            for (const int rate : {1, 2, 3, 4, 5, 6}) {
                for (const int mode : {0, 1, 3}) {
                    ArmCase c;
                    c.Type = instrument.Type;
                    c.Direct = instrument.Direct;
                    c.Boards = boards;
                    c.Rate = rate;
                    c.Mode = mode;
                    CheckTrace(c, {64, 40, 33, 7, 20});
                    if (HasFailure()) return;
                }
            }
        }
    }
}

TEST(ReadOutTrace, ExternalClocksReadPlainly) {
    for (const int type : {5, 15}) {
        for (const int clockType : {1, 2, 3, 5, 7}) {
            for (const int rate : {1, 3, 5}) {
                ArmCase c;
                c.Type = type;
                c.ClockType = clockType;
                c.Rate = rate;
                c.Mode = 3;
                CheckTrace(c, {64, 40, 33, 7, 20});
            }
        }
    }
}

TEST(ReadOutTrace, PatternPodsAreLeftOut) {
    for (const Instrument& instrument : kInstruments) {
        for (const int output : {0, 1, 2}) {
            for (const int rate : {1, 3, 5}) {
                ArmCase c;
                c.Type = instrument.Type;
                c.Direct = instrument.Direct;
                c.OutputMode = output;
                c.Rate = rate;
                c.Pods[0] = 1;
                c.Pods[2] = 2;
                c.Pods[4] = output == 1 ? 0 : 1;
                c.Pods[13] = 3;
                CheckTrace(c, {16, 16, 16, 16, 16});
            }
        }
    }
}

TEST(ReadOutTrace, PodsOutOfUseAreLeftOutInEveryMode) {
    for (const Instrument& instrument : kInstruments) {
        for (const int rate : {1, 3, 5}) {
            for (std::size_t pod = 0; pod < 5; ++pod) {
                ArmCase c;
                c.Type = instrument.Type;
                c.Direct = instrument.Direct;
                c.Boards = 1;
                c.Rate = rate;
                c.Pods[pod] = pod % 2 == 0 ? 3 : 4;
                CheckTrace(c, {64, 64, 64, 64, 64});
            }
        }
    }
}

TEST(ReadOutTrace, EmptyBuffersStillGetTheirBracket) {
    for (const int type : {5, 15}) {
        for (const int rate : {1, 3, 5}) {
            ArmCase c;
            c.Type = type;
            c.Rate = rate;
            CheckTrace(c, {64, 0, 64, 0, 64});
            CheckTrace(c, {0, 0, 0, 0, 0});
        }
    }
}

TEST(ReadOutTrace, Rate1With8000SamplesReadsFourTimes2000) {
    ArmCase c;
    c.Boards = 1;
    c.Rate = 1;
    ReadBench bench(c, {8000, 0, 8000, 0, 8000});
    EndCapture(bench.Hardware, bench.State, bench.Words);
    std::size_t blocks = 0;
    for (std::size_t at = 0; (at = bench.Ops.Text.find("B 0230 2000\n", at)) != std::string::npos; ++at)
        ++blocks;
    EXPECT_EQ(blocks, 12U);
    for (const int pod : {0, 2, 4}) EXPECT_EQ(bench.Bytes(pod, 1)[0], kOld) << "index 0 of pod " << pod;
    EXPECT_EQ(std::count(bench.Ops.Text.begin(), bench.Ops.Text.end(), 'B'), 12);
}

// ---- samples ----

struct ModeCase {
    int Rate;
    int Mode;
    MemoryFake::Fill Fill;
    bool Swapped;
};

/// The bytes that a pod of a board should hold, from what the memories held.
using Expectation = std::function<std::uint8_t(int lane, int pod, std::size_t index)>;

void CheckSamples(const ArmCase& c, const Lengths& lengths, const ModeCase& mode,
                  const Expectation& expected) {
    SCOPED_TRACE(testing::Message() << c.Name() << " lengths " << lengths[0] << " " << lengths[4]);
    ReadBench bench(c, lengths);
    const bool laterWrites = c.Type >= 6 && c.Type <= 15;
    const bool banks = c.Type >= 11 ? c.Type <= 15 : (c.Type == 6 || c.Type == 7) && c.Direct;
    MemoryFake memory(laterWrites, banks, mode.Fill, mode.Swapped, Sample);
    bench.Hardware.Ops = &memory;
    EndCapture(bench.Hardware, bench.State, bench.Words);
    EXPECT_EQ(memory.ClosedReads, 0);
    for (int pod = 0; pod < 5 * c.Boards; ++pod) {
        const auto length = static_cast<std::size_t>(lengths[static_cast<std::size_t>(pod % 5)]);
        const std::vector<std::uint8_t> bytes = bench.Bytes(pod, length);
        for (std::size_t i = 0; i < length; ++i) {
            ASSERT_EQ(bytes[i], expected(pod % 5, pod, i)) << "pod " << pod << " sample " << i;
        }
    }
    bench.Hardware.Ops = &NullRegisterOps();
}

std::vector<Lengths> UniformLengths(std::initializer_list<std::int32_t> sizes) {
    std::vector<Lengths> all;
    for (const std::int32_t size : sizes) {
        Lengths lengths{};
        lengths.fill(size);
        all.push_back(lengths);
    }
    return all;
}

bool ReadsBanks(const Instrument& instrument) {
    if (instrument.Type >= 11 && instrument.Type <= 15) return true;
    return instrument.Direct && (instrument.Type == 6 || instrument.Type == 7);
}

class EveryBoard : public testing::TestWithParam<Instrument> {
  protected:
    [[nodiscard]] ArmCase Case(const ModeCase& mode) const {
        ArmCase c;
        c.Type = GetParam().Type;
        c.Direct = GetParam().Direct;
        c.Rate = mode.Rate;
        c.Mode = mode.Mode;
        return c;
    }
};
INSTANTIATE_TEST_SUITE_P(All, EveryBoard, testing::ValuesIn(kInstruments), [](const auto& param) {
    return "Type" + std::to_string(param.param.Type) + (param.param.Direct ? "Direct" : "Serial");
});

TEST_P(EveryBoard, PlainSamples) {
    const ModeCase mode{5, 0, MemoryFake::Fill::Plain, false};
    for (const Lengths& lengths : UniformLengths({1000, 17, 1, 0})) {
        CheckSamples(Case(mode), lengths, mode,
                     [](int, int pod, std::size_t i) { return Sample(pod, static_cast<std::int64_t>(i)); });
    }
}

TEST_P(EveryBoard, QuadSamples) {
    const ModeCase mode{1, 1, MemoryFake::Fill::Quad, false};
    const bool banks = ReadsBanks(GetParam());
    for (const std::int32_t n : {1000, 999, 64, 67, 16, 4, 3, 1}) {
        const auto quarter = static_cast<std::size_t>(n / 4);
        const Expectation later = [&](int, int pod, std::size_t i) {
            return i == 0 || i > 4 * quarter ? kOld : Sample(pod, static_cast<std::int64_t>(i));
        };
        const Expectation earlier = [&](int lane, int pod, std::size_t i) {
            if (lane == 0) return later(lane, pod, i);
            const bool repeated = i / 4 + 4 < quarter;  // pod 4 at the base rate, each byte four times
            return repeated ? Sample(pod, static_cast<std::int64_t>(i / 4 * 4)) : kOld;
        };
        const Lengths lengths = banks ? Lengths{n, 0, n, 0, n} : Lengths{n, 0, 0, 0, n};
        CheckSamples(Case(mode), lengths, mode, banks ? later : earlier);
    }
}

TEST_P(EveryBoard, DualSamples) {
    const bool banks = ReadsBanks(GetParam());
    const ModeCase modes[] = {{3, 0, MemoryFake::Fill::Dual, true},  {4, 1, MemoryFake::Fill::Dual, true},
                              {3, 3, MemoryFake::Fill::Dual, true},  {5, 3, MemoryFake::Fill::Dual, true},
                              {6, 3, MemoryFake::Fill::Dual, false}, {34, 3, MemoryFake::Fill::Dual, false}};
    for (const ModeCase& mode : modes) {
        for (const std::int32_t n : {1000, 999, 64, 66, 8, 4, 2, 1}) {
            const auto half = static_cast<std::size_t>(n / 2);
            const Expectation later = [&](int, int pod, std::size_t i) {
                const bool read = i > 0 && (mode.Mode != 3 || i <= 2 * half);
                return read ? Sample(pod, static_cast<std::int64_t>(i)) : kOld;
            };
            const Expectation earlier = [&](int lane, int pod, std::size_t i) {
                if (lane < 2) return i < 2 * half ? Sample(pod, static_cast<std::int64_t>(i)) : kOld;
                const bool repeated = i / 2 + 2 < half;
                return repeated ? Sample(pod, static_cast<std::int64_t>(i / 2 * 2)) : kOld;
            };
            const Lengths lengths = banks ? Lengths{n, n, n, n, n} : Lengths{n, n, 0, 0, n};
            CheckSamples(Case(mode), lengths, mode, banks ? later : earlier);
        }
    }
}

TEST_P(EveryBoard, APodOutOfUseKeepsItsBytes) {
    const ModeCase mode{5, 0, MemoryFake::Fill::Plain, false};
    for (const int podMode : {1, 2, 3, 4, -1}) {
        ArmCase c = Case(mode);
        c.Pods[0] = c.Pods[3] = c.Pods[19] = podMode;
        CheckSamples(c, {100, 100, 100, 100, 100}, mode, [](int, int pod, std::size_t i) {
            const bool kept = pod == 0 || pod == 3 || pod == 19;
            return kept ? kOld : Sample(pod, static_cast<std::int64_t>(i));
        });
    }
}

TEST(ReadOut, EarlierQuadDropsThePhaseOfAPodOutOfUse) {
    const ModeCase mode{1, 0, MemoryFake::Fill::Quad, false};
    for (int dropped = 1; dropped < 4; ++dropped) {
        ArmCase c;
        c.Type = 5;
        c.Rate = 1;
        c.Boards = 1;
        c.Pods[static_cast<std::size_t>(dropped)] = 3;
        CheckSamples(c, {64, 0, 0, 0, 0}, mode, [dropped](int, int pod, std::size_t i) {
            const bool missing = i == 0 || static_cast<int>((4 - i % 4) % 4) == dropped;
            return missing ? kOld : Sample(pod, static_cast<std::int64_t>(i));
        });
    }
}

TEST(ReadOut, EarlierDualDropsThePhaseOfAPodOutOfUse) {
    const ModeCase mode{3, 0, MemoryFake::Fill::Dual, false};
    for (int dropped = 0; dropped < 4; ++dropped) {
        ArmCase c;
        c.Type = 5;
        c.Rate = 3;
        c.Boards = 1;
        c.Pods[static_cast<std::size_t>(dropped)] = 3;
        CheckSamples(c, {64, 64, 0, 0, 0}, mode, [dropped](int lane, int pod, std::size_t i) {
            const bool ofLane = dropped % 2 == lane;
            const bool ofPhase = (i % 2 == 0) == (dropped >= 2);
            return ofLane && ofPhase ? kOld : Sample(pod, static_cast<std::int64_t>(i));
        });
    }
}

TEST(ReadOut, ADeadInstrumentLeavesPlainBuffers) {
    for (const int type : {5, 15}) {
        ArmCase c;
        c.Type = type;
        ReadBench bench(c, {100, 100, 100, 100, 100});
        MemoryFake memory(type == 15, type == 15, MemoryFake::Fill::Plain, false, Sample);
        memory.Dead = true;
        bench.Hardware.Ops = &memory;
        EXPECT_EQ(EndCapture(bench.Hardware, bench.State, bench.Words), 1);
        for (int pod = 0; pod < kMaxPods; ++pod)
            EXPECT_EQ(bench.Bytes(pod, 100), std::vector<std::uint8_t>(100, kOld));
        bench.Hardware.Ops = &NullRegisterOps();
    }
}

TEST(ReadOut, TheStepOf166CountsSixLengthsABoard) {
    ArmCase c;
    c.Rate = 1;
    ReadBench bench(c, {40, 44, 48, 52, 56});
    bench.State.Shape.BufStep = 0xA6;
    EndCapture(bench.Hardware, bench.State, bench.Words);
    // Pods 0, 2, 4 of board b have the lengths of entries 6b, 6b + 2, 6b + 4; the last lie outside the table.
    const int expected[4][3] = {{10, 12, 14}, {11, 13, 10}, {12, 14, 11}, {13, 0, 0}};
    std::string blocks;
    std::istringstream trace(bench.Ops.Text);
    for (std::string line; std::getline(trace, line);) {
        if (line[0] == 'B') blocks += line.substr(2) + ";";
    }
    std::string wanted;
    for (int b = 0; b < 4; ++b) {
        for (const int count : expected[b]) {
            for (int k = 0; k < 4; ++k) {
                std::array<char, 32> text{};
                std::snprintf(text.data(), text.size(), "%04x %d;", 0x230 + 0x400 * b, count);
                wanted += text.data();
            }
        }
    }
    EXPECT_EQ(blocks, wanted);
}

// ---- joining phases ----

TEST(Deinterleave, AgreesWithAByteAtATime) {
    for (std::size_t count = 0; count < 200; ++count) {
        std::array<std::vector<std::uint8_t>, 4> phases;
        std::array<const std::uint8_t*, 4> pointers{};
        for (std::size_t p = 0; p < 4; ++p) {
            for (std::size_t i = 0; i < count; ++i)
                phases[p].push_back(Sample(static_cast<int>(p), static_cast<std::int64_t>(i)));
            pointers[p] = phases[p].data();
        }
        std::vector<std::uint8_t> four(4 * count + 1, kOld);
        JoinFourPhases(pointers, count, four.data());
        std::vector<std::uint8_t> two(2 * count + 1, kOld);
        JoinTwoPhases(pointers[0], pointers[1], count, two.data());
        for (std::size_t i = 0; i < 4 * count; ++i) ASSERT_EQ(four[i], phases[i % 4][i / 4]) << count;
        for (std::size_t i = 0; i < 2 * count; ++i) ASSERT_EQ(two[i], phases[i % 2][i / 2]) << count;
        EXPECT_EQ(four.back(), kOld);
        EXPECT_EQ(two.back(), kOld);
    }
}

TEST(Deinterleave, SinglePhasesAndRepeatsStopAtTheEnd) {
    const std::array<std::uint8_t, 4> bytes{1, 2, 3, 4};
    std::array<std::uint8_t, 9> out{};
    StorePhase(bytes, 2, 3, out);
    EXPECT_EQ(out, (std::array<std::uint8_t, 9>{0, 0, 1, 0, 0, 2, 0, 0, 3}));
    out.fill(0);
    RepeatSamples(bytes, 4, out);
    EXPECT_EQ(out, (std::array<std::uint8_t, 9>{1, 1, 1, 1, 2, 2, 2, 2, 0}));
}

// ---- inversion ----

TEST(ReadOut, InvertedChannelsTurnInEveryPodAndInEmulationToo) {
    for (const int emulated : {0, 1, 2}) {
        ArmCase c;
        c.Boards = 2;
        c.Pods[3] = 1;
        c.Pods[4] = 4;
        ReadBench bench(c, {20, 20, 20, 20, 20});
        bench.State.Identity.Emulated = static_cast<std::uint8_t>(emulated);
        for (const std::size_t channel : {0U, 7U, 25U, 32U, 39U, 79U, 80U, 159U}) {
            bench.State.Channels.ChannelInvert[channel] = -1;
        }
        MemoryFake memory(true, true, MemoryFake::Fill::Plain, false, Sample);
        bench.Hardware.Ops = &memory;
        EndCapture(bench.Hardware, bench.State, bench.Words);
        const std::array<int, 20> flipped{0x81, 0, 0, 0x02, 0x81, 0, 0, 0, 0, 0x80};  // none behind pod 9
        for (int pod = 0; pod < kMaxPods; ++pod) {
            const bool read = emulated == 0 && pod < 10 && pod != 3 && pod != 4;
            const std::vector<std::uint8_t> bytes = bench.Bytes(pod, 20);
            for (std::size_t i = 0; i < 20; ++i) {
                const int raw = read ? Sample(pod, static_cast<std::int64_t>(i)) : kOld;
                EXPECT_EQ(bytes[i], raw ^ flipped[static_cast<std::size_t>(pod)]) << pod << " " << i;
            }
        }
        EXPECT_EQ(memory.Blocks, emulated == 0 ? 8 : 0);
        bench.Hardware.Ops = &NullRegisterOps();
    }
}

TEST(ReadOut, EmulationLeavesTheAlignment) {
    ArmCase c;
    ReadBench bench(c, {20, 20, 20, 20, 20});
    bench.State.Identity.Emulated = 1;
    bench.State.Pods.AdjAddr.fill(77);
    EndCapture(bench.Hardware, bench.State, bench.Words);
    EXPECT_EQ(bench.Ops.Text, "");
    for (const std::int32_t adjust : bench.State.Pods.AdjAddr) EXPECT_EQ(adjust, 77);
}

// ---- where a sample is ----

TEST(PodSample, IsInThePodOrAtTheStartOfTheFirst) {
    CaptureBuffer buffer;
    EXPECT_EQ(PodSample(buffer, 20, 4, 5, 0, 0), nullptr);
    buffer.BufLen.fill(100);
    buffer.Allocate();
    const std::uint8_t* first = buffer.Pod[0];
    EXPECT_EQ(PodSample(buffer, 20, 4, 5, 0, 7), first + 7);
    EXPECT_EQ(PodSample(buffer, 20, 4, 5, 19, 99), buffer.Pod[19] + 99);
    EXPECT_EQ(PodSample(buffer, 20, 4, 5, 19, 100), first) << "behind the samples";
    EXPECT_EQ(PodSample(buffer, 20, 4, 5, 3, -1), first);
    EXPECT_EQ(PodSample(buffer, 20, 4, 5, -1, 0), first);
    EXPECT_EQ(PodSample(buffer, 20, 4, 5, 20, 0), first);
    EXPECT_EQ(PodSample(buffer, 5, 4, 5, 5, 0), first) << "a pod that the model does not have";
    EXPECT_EQ(PodSample(buffer, 20, 1, 5, 5, 0), first) << "a board that is not there";
    EXPECT_EQ(PodSample(buffer, INT32_MAX, INT32_MAX, INT32_MAX, INT32_MAX, INT32_MAX), first);
    buffer.BufLen[2] = INT32_MAX;
    EXPECT_EQ(PodSample(buffer, 20, 4, 5, 2, INT32_MAX - 1), first) << "behind the memory";
}

}  // namespace
}  // namespace zu::test
