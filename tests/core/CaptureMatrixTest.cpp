// Whole captures in every way of storing samples: what stands in the buffers, where the trigger stands, and
// what the instrument was told.
#include "StorageCase.h"

namespace zu {
namespace {

using test::StorageBench;
using test::StorageCase;

class CaptureMatrix : public testing::TestWithParam<StorageCase> {};
INSTANTIATE_TEST_SUITE_P(Cases, CaptureMatrix, testing::ValuesIn(test::kStorageCases), test::StorageName);

/// Load of the position counter for a cursor. It counts up to its overflow at 2^18.
std::uint32_t PositionLoad(const StorageCase& c, std::int64_t cursor) {
    const std::int64_t after = c.Depth() / 2 - c.TriggerIndex(cursor) / (2 * c.Phases());
    return static_cast<std::uint32_t>((std::int64_t{1} << 18) - after);
}

TEST_P(CaptureMatrix, TwoInARowShowTheSignals) {
    StorageBench bench(GetParam());
    for (int again = 0; again < 2; ++again) {
        ASSERT_TRUE(bench.Run()) << bench.Status();
        const std::int64_t at = GetParam().TriggerIndex(bench.Cursor());
        bench.ExpectSamples(at, StorageBench::kValue);
        bench.ExpectAlignment(bench.Alignment(at));
        EXPECT_EQ(BindPod(*bench.State, 0).At(bench.Cursor()), StorageBench::kValue);
        EXPECT_EQ(BindPod(*bench.State, 0).At(bench.Cursor() - 1), StorageBench::kValue - 1);
    }
    EXPECT_TRUE(bench.Sim().Complaints().empty()) << bench.Sim().Complaints().front();
    EXPECT_TRUE(bench.Host.Boxes.empty()) << bench.Host.Boxes.front().Text;
}

TEST_P(CaptureMatrix, TheInstrumentHasPeriodPositionAndThresholds) {
    StorageBench bench(GetParam());
    bench.SetCursor(1234);
    Go(bench.App);
    const SimClock clock = bench.Sim().SampleClock();
    if (GetParam().ClockType == 1 || GetParam().ClockType == 2) {
        EXPECT_EQ(clock.Source, SimClockSource::External);
        EXPECT_EQ(clock.Falling, GetParam().ClockType == 2);
    } else {
        EXPECT_DOUBLE_EQ(clock.PeriodNs / GetParam().Phases(), GetParam().PeriodNs());
    }
    EXPECT_EQ(bench.Sim().Position(), PositionLoad(GetParam(), 1234));
    EXPECT_EQ(bench.Sim().Depth(), GetParam().Depth());
    for (int board = 0; board < bench.State->Shape.WordsPerTrig; ++board) {
        for (int group = 0; group < 3; ++group) {
            EXPECT_EQ(bench.Sim().Board(board).Threshold(group), 20 + 7 * (3 * board + group))
                << "board " << board << " group " << group;
        }
    }
    Stop(bench.App);
    // The latched type runs past the selector that holds all others.
    const auto held = GetParam().ClockType == 5 ? SimClockSource::Fixed : SimClockSource::Stopped;
    EXPECT_EQ(bench.Sim().SampleClock().Source, held);
}

TEST_P(CaptureMatrix, TheTriggerStandsAtItsCursor) {
    const int last = StorageBench(GetParam()).State->Memory.DisplayLen - 3;
    for (const int cursor : {0, 1, 10, 8000, last}) {
        SCOPED_TRACE(cursor);
        // A memory that passes through a faster clock when armed shows what came before at that clock.
        if (GetParam().Rate == 27 && GetParam().Mode == 3 && cursor > 10) continue;
        StorageBench bench(GetParam());
        bench.SetCursor(cursor);
        ASSERT_TRUE(bench.Run()) << bench.Status();
        const std::int64_t at = GetParam().TriggerIndex(cursor);
        bench.ExpectAlignment(bench.Alignment(at));
        bench.ExpectSamples(at, StorageBench::kValue);
        if (HasFailure()) return;
    }
}

/// One case of each storage on each kind of board.
constexpr StorageCase kOneOfEach[] = {{15, 0, 5}, {13, 3, 6}, {14, 0, 1}, {12, 0, 4}, {5, 0, 8},
                                      {2, 0, 4},  {3, 0, 3},  {4, 0, 1},  {11, 1, 9}};

TEST(CaptureMatrixCables, CarryEveryStorage) {
    using enum SimCable;
    for (const StorageCase& c : kOneOfEach) {
        for (const SimCable cable : {Isa, Byte, Epp, Epp16, Epp32, Usb}) {
            for (const bool direct : {false, true}) {
                SCOPED_TRACE(testing::PrintToString(c) + " " + std::string(SimCableName(cable)));
                StorageBench bench(c, cable, direct);
                ASSERT_TRUE(bench.Run()) << bench.Status();
                const std::int64_t at = c.TriggerIndex(bench.Cursor());
                bench.ExpectAlignment(bench.Alignment(at));
                bench.ExpectSamples(at, StorageBench::kValue);
                if (HasFailure()) return;
            }
        }
    }
}

}  // namespace
}  // namespace zu
