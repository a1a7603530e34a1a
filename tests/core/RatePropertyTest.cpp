// No sequence of changes leads out of the buffers.
#include <gtest/gtest.h>
#include <random>

#include "core/MemoryMenu.h"
#include "core/RateRules.h"
#include "support/Bench.h"

namespace zu {
namespace {

using test::Bench;

class RandomChanges {
  public:
    explicit RandomChanges(unsigned seed) : random_(seed) {}

    void Step(Bench& bench) {
        InstrumentState& state = *bench.State;
        switch (Number(0, 9)) {
            case 0:
                return ChangeModel(state, Number(0, 27));
            case 1:
            case 2:
                return SetRate(bench.App, Number(-1, 35));
            case 3:
                return SetClockType(bench.App, Number(0, 15));
            case 4:
                return SetInternalClock(bench.App);
            case 5:
            case 6:
                return SetMemoryMode(bench.App, Number(-2, 3), Number(-1, 12));
            case 7:
                state.Pods.HardwarePod[static_cast<std::size_t>(Number(0, 19))] =
                    static_cast<std::int8_t>(Number(-1, 5));
                return;
            case 8:
                state.Clock.ClockRate = static_cast<std::uint8_t>(Number(0, 255));
                return CorrectRate(bench.App);
            default:
                return Number(0, 1) == 0 ? RateUp(bench.App) : RateDown(bench.App);
        }
    }

  private:
    int Number(int from, int to) { return std::uniform_int_distribution<int>(from, to)(random_); }

    std::mt19937 random_;
};

void ExpectInsideTheRoom(const Bench& bench) {
    const InstrumentState& state = *bench.State;
    for (int i = 0; i < kMaxPods; ++i) {
        const std::int32_t length = GetBufLenFull(state.Buffer.BufLen, i);
        ASSERT_GE(length, 0);
        ASSERT_LE(static_cast<std::size_t>(length), state.Buffer.Room(i));
        ASSERT_TRUE(i < state.Shape.BufCount || length == 0);
    }
    ASSERT_GE(state.Serial.SerialEvents.size(), static_cast<std::size_t>(state.Memory.DisplayLen));
    ASSERT_GE(GetRateNS(state.Clock.ClockType, state.Clock.ClockRate), 0);
}

class ChangesInAnyOrder : public testing::TestWithParam<unsigned> {};

TEST_P(ChangesInAnyOrder, StayInsideTheBuffers) {
    constexpr int kSteps = 400;
    Bench bench;
    RandomChanges changes(GetParam());
    for (int step = 0; step < kSteps; ++step) {
        changes.Step(bench);
        ExpectInsideTheRoom(bench);
        if (HasFatalFailure()) FAIL() << "step " << step;
        MemoryMenuTexts(*bench.State);
        StatusMemoryText(*bench.State);
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, ChangesInAnyOrder, testing::Range(1U, 9U));

/// The layouts of two buffers never overlap in the rows that have a shape.
TEST(Layouts, GiveEveryBufferItsOwnBytes) {
    for (int row = 0; row < 28; ++row) {
        if (row >= 20 && row <= 23) continue;
        Bench bench;
        bench.UseRow(row);
        for (int mux = 0; mux <= 2; ++mux) {
            for (int mode = 0; mode < 12; ++mode) {
                for (const int code : {0, 1, 2, 3, 4, 5}) {
                    bench.State->Clock.ClockRate = static_cast<std::uint8_t>(code);
                    SetMemoryMode(bench.App, mux, mode);
                    for (std::size_t i = 0; i + 1 < kMaxPods; ++i) {
                        if (i % 5 == 4 || bench.State->Buffer.BufLen[i + 1] == 0) continue;
                        ASSERT_LE(bench.State->Buffer.Pod[i] + bench.State->Buffer.BufLen[i],
                                  bench.State->Buffer.Pod[i + 1])
                            << row << " " << mux << " " << mode << " " << code << " " << i;
                    }
                }
            }
        }
    }
}

}  // namespace
}  // namespace zu
