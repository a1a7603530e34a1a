// Every kind of trigger in every way of storing samples.
#include "StorageCase.h"

namespace zu {
namespace {

using test::StorageBench;
using test::StorageCase;

constexpr int kValue = StorageBench::kValue;

class TriggerMatrix : public testing::TestWithParam<StorageCase> {
  protected:
    TriggerMatrix() : Bench(GetParam()) {}
    /// Captures; the trigger's sample is the `after`-th behind the begin of the value on pod 0, the search
    /// finds sample `found` relative to the trigger's.
    void Expect(int value, int after, int found) {
        ASSERT_TRUE(Bench.Run()) << Bench.Status();
        const std::int64_t at = GetParam().TriggerIndex(Bench.Cursor());
        Bench.ExpectSamples(at - after, value);
        Bench.ExpectAlignment(Bench.Alignment(at + found));
    }
    /// Samples that follow one another, from any point on.
    void ExpectAnyRun() {
        ASSERT_TRUE(Bench.Run()) << Bench.Status();
        Bench.ExpectAlignment(0);
        const std::span<const std::uint8_t> samples = Bench.State->Buffer.Samples(0);
        std::size_t first = 2;  // the first change, which gives the phase of the steps
        while (first < samples.size() && samples[first] == samples[first - 1]) ++first;
        const bool changesClock = GetParam().Rate == 27 && GetParam().Mode == 3;
        if (!changesClock) return Bench.ExpectSamples(static_cast<std::int64_t>(first), samples[first]);
        for (std::size_t i = 2; i < samples.size(); ++i)
            ASSERT_LE((samples[i] - samples[i - 1]) & 0xFF, 1) << i;
    }

    StorageBench Bench;
};
INSTANTIATE_TEST_SUITE_P(Cases, TriggerMatrix, testing::ValuesIn(test::kStorageCases), test::StorageName);

TEST_P(TriggerMatrix, FallingEdgeIsTheEndOfTheMatch) {
    Bench.State->Trigger.EdgeList16[0] = 1;
    Expect(kValue + 1, 0, 0);
}

TEST_P(TriggerMatrix, OfTwoLevelsTheLastTriggers) {
    Bench.AddLevel(5, 0x90);
    Expect(0x90, 0, 0);
}

TEST_P(TriggerMatrix, TheSecondLevelWaitsForTheFirst) {
    Bench.AddLevel(9, kValue - 1);  // came just before, so another round of the counter must pass
    Expect(kValue - 1, 0, 0);
}

TEST_P(TriggerMatrix, OccurrencesAreCounted) {
    for (const int count : {1, 2, 5}) {
        Bench.State->Trigger.TrigCntMd = 2;
        Bench.State->Trigger.TrigCnt = static_cast<std::uint8_t>(count);
        Expect(kValue, 0, 0);
        EXPECT_EQ(Bench.Sim().TriggerCount(), 256 - count);
        if (HasFailure()) return;
    }
}

TEST_P(TriggerMatrix, ADurationIsFoundAtItsBegin) {
    Bench.State->Trigger.TrigCntMd = 0;
    Bench.State->Trigger.TrigCnt = 3;
    Expect(kValue, 2, -2);
}

TEST_P(TriggerMatrix, AShortDurationEndsInTime) {
    Bench.State->Trigger.TrigCntMd = 1;
    Bench.State->Trigger.TrigCnt = 4;
    Expect(kValue, 3, -3);
}

TEST_P(TriggerMatrix, TheDurationOfNoMatchIsAddedToWhatIsFound) {
    Bench.State->Trigger.EdgeList16[0] = 1;
    Bench.State->Trigger.TrigCntMd = 0;
    Bench.State->Trigger.TrigCnt = 5;
    Expect(kValue + 1, 4, 1);
}

TEST_P(TriggerMatrix, WordsOfNothingCaptureAtOnce) {
    SetAllWord(*Bench.State, 'X', 0);
    ExpectAnyRun();
}

TEST_P(TriggerMatrix, AnEmptySequenceCapturesAtOnce) {
    Bench.State->Trigger.SeqList.fill(0);
    ExpectAnyRun();
}

TEST_P(TriggerMatrix, AnyBitAlternatesTheEdge) {
    // Both bits low is the one state that "any of them high" excludes.
    SetAllWord(*Bench.State, 'X', 0);
    for (const int bit : {0, 1}) SetCharOfChannel(*Bench.State, bit, 0, '1');
    Bench.State->Trigger.TrigMatchMode[0] = 0;
    for (const int edge : {1, 0}) {
        ASSERT_TRUE(Bench.Run()) << Bench.Status();
        EXPECT_EQ(Bench.State->Trigger.EdgeList16[0], edge);
        const std::int64_t at = GetParam().TriggerIndex(Bench.Cursor());
        const std::span<const std::uint8_t> samples = Bench.State->Buffer.Samples(0);
        if (at >= static_cast<std::int64_t>(samples.size())) continue;
        const int now = samples[static_cast<std::size_t>(at)] & 3;
        const int before = samples[static_cast<std::size_t>(at) - 1] & 3;
        EXPECT_EQ(edge == 1 ? before : now, 0);
        EXPECT_NE(edge == 1 ? now : before, 0);
    }
}

}  // namespace
}  // namespace zu
