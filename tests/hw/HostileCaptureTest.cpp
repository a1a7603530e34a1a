#include <memory>
#include <random>

#include "ArmScript.h"
#include "hw/Arming.h"
#include "hw/ReadOut.h"
#include "state/Model.h"

namespace zu::test {
namespace {

/// A host that never lets anybody wait.
struct HastyHost : ScriptedHost {
    void WaitNanoseconds(double) override {}
    bool Ask(std::string_view, std::string_view) override { return Ticks % 2 == 0; }
};

/// Answers noise and fills every byte that is asked for.
struct NoisyOps : RegisterOps {
    explicit NoisyOps(unsigned seed) : Random(seed) {}
    std::mt19937 Random;
    std::int64_t Writes = 0;
    std::int64_t Bytes = 0;
    void RegWrite(std::uint16_t, std::uint16_t, std::uint8_t) override { ++Writes; }
    std::uint8_t RegRead(std::uint16_t, std::uint16_t) override {
        return static_cast<std::uint8_t>(Random());
    }
    void RegReadBlock(std::uint16_t, std::uint16_t, std::int32_t count, std::uint8_t* buffer) override {
        for (std::int32_t i = 0; i < count; ++i) buffer[i] = static_cast<std::uint8_t>(i);
        Bytes += std::max(count, 0);
    }
};

template <typename Integer>
Integer Any(std::mt19937& random) {
    static constexpr std::int64_t kCorners[] = {0,   1,   2,   3,   4,  5,  15,        16,       17,
                                                127, 128, 255, 256, -1, -2, INT32_MAX, INT32_MIN};
    if (random() % 3 == 0) return static_cast<Integer>(random());
    return static_cast<Integer>(kCorners[random() % std::size(kCorners)]);
}

template <typename Range>
void Scramble(Range& range, std::mt19937& random) {
    for (auto& value : range) value = Any<std::decay_t<decltype(value)>>(random);
}

void ScrambleTrigger(InstrumentState& state, std::mt19937& random) {
    Scramble(state.Trigger.SeqList, random);
    Scramble(state.Trigger.EdgeList16, random);
    Scramble(state.Trigger.TrigMatchMode, random);
    state.Trigger.TrigCnt = Any<std::uint8_t>(random);
    state.Trigger.TrigCntMd = Any<std::int8_t>(random);
    state.Cursors.Cur[kCursorT] = Any<std::int32_t>(random);
    for (auto& board : state.Trigger.TrigWord.Board) {
        for (auto& entry : board) Scramble(entry, random);
    }
}

void ScrambleInstrument(InstrumentState& state, std::mt19937& random) {
    state.Identity.HardwareType = static_cast<std::uint8_t>(random() % 2 == 0 ? random() % 28 : random());
    state.Identity.ComMode = random() % 2 == 0 ? 9 : Any<std::int32_t>(random);
    state.Identity.HwPort = Any<std::uint16_t>(random);
    state.Shape.WordsPerTrig = Any<std::int32_t>(random);
    state.Shape.BufStep = random() % 2 == 0 ? 5 : Any<std::int32_t>(random);
    state.Shape.PodCount = Any<std::int8_t>(random);
    state.Shape.ChPerSlice = Any<std::int32_t>(random) % 1000;
    state.Memory.HardwareMode =
        random() % 2 == 0 ? static_cast<std::int8_t>(random() % 4) : Any<std::int8_t>(random);
    state.Clock.ClockType = random() % 2 == 0 ? std::uint8_t{0} : Any<std::uint8_t>(random);
    state.Clock.ClockRate =
        random() % 2 == 0 ? static_cast<std::uint8_t>(random() % 7) : Any<std::uint8_t>(random);
    state.Clock.ClockEdge = Any<std::uint8_t>(random);
    state.Pattern.PatternOutputMode = Any<std::int8_t>(random);
    state.Pattern.PatDirty = Any<std::uint8_t>(random);
    state.Pods.ReprogramFlag = Any<std::uint8_t>(random);
    Scramble(state.Pods.ThrHd, random);
    Scramble(state.Pods.PatGenV, random);
    Scramble(state.Channels.ChannelInvert, random);
    if (random() % 2 == 0) Scramble(state.Pods.HardwarePod, random);
}

/// Lengths that fit the memory most of the time, and any integer otherwise.
void ScrambleLengths(InstrumentState& state, std::mt19937& random) {
    const auto room = static_cast<std::int32_t>(state.Buffer.Room(4));
    for (std::int32_t& length : state.Buffer.BufLen) {
        length = random() % 8 == 0 ? Any<std::int32_t>(random) : static_cast<std::int32_t>(random() % 300);
        // A download sends every byte of a length; keep it a test, not an hour.
        if (state.Pattern.PatDirty != 0) length = std::min(length, 2 * room / 100);
    }
}

class AnyState : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(Seeds, AnyState, testing::Range(1, 9));

TEST_P(AnyState, ArmsAndReadsOutWithinItsMemory) {
    std::mt19937 random(static_cast<unsigned>(GetParam()));
    HastyHost host;
    HardwareSession hardware(host);
    NoisyOps ops(static_cast<unsigned>(GetParam()));
    hardware.Ops = &ops;
    for (int round = 0; round < 500; ++round) {
        const auto state = std::make_unique<InstrumentState>();
        state->Identity.Emulated = 0;
        ScrambleInstrument(*state, random);
        ScrambleTrigger(*state, random);
        if (random() % 16 != 0) {
            for (std::int32_t& length : state->Buffer.BufLen)
                length = static_cast<std::int32_t>(random() % 200);
            state->Buffer.Allocate();
        }
        ScrambleLengths(*state, random);
        hardware.PodRegsDirect = Any<std::uint8_t>(random);
        const CompiledTrigWords words = PrepareTriggerWords(*state);
        const std::uint8_t answer = StartCapture(hardware, *state, words);
        EXPECT_LE(answer, 1);
        EXPECT_LE(GetTrigStat(hardware), 3);
        ForceTrigger(hardware);
        EXPECT_EQ(EndCapture(hardware, *state, words), 1);
        StopPatternGen(hardware, *state);
    }
    EXPECT_GT(ops.Writes, 100000);
    EXPECT_GT(ops.Bytes, 0);
    hardware.Ops = &NullRegisterOps();
}

TEST(AnyModel, EveryRowArmsAtEveryRateAndMode) {
    HastyHost host;
    HardwareSession hardware(host);
    NoisyOps ops(3);
    hardware.Ops = &ops;
    for (int row = 0; row < 28; ++row) {
        const auto state = std::make_unique<InstrumentState>();
        ChangeModel(*state, row);
        state->Identity.Emulated = 0;
        state->Trigger.SeqList[0] = 1;
        // Only the lengths of a model: its memory would take the test too long to read.
        for (std::int32_t& length : state->Buffer.BufLen) length = std::min(length, 1000);
        for (int rate = 0; rate < 36; ++rate) {
            for (int mode = 0; mode < 12; mode += rate < 7 ? 1 : 5) {
                state->Clock.ClockRate = static_cast<std::uint8_t>(rate);
                state->Memory.HardwareMode = static_cast<std::int8_t>(mode);
                const CompiledTrigWords words = PrepareTriggerWords(*state);
                EXPECT_EQ(StartCapture(hardware, *state, words), 1);
                EXPECT_EQ(EndCapture(hardware, *state, words), 1);
            }
        }
    }
    hardware.Ops = &NullRegisterOps();
}

}  // namespace
}  // namespace zu::test
