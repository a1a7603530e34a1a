// Edge search, the passes over the edges, and what is kept of them.
#include <gtest/gtest.h>

#include "display/Cells.h"
#include "display/Measure.h"
#include "display/TraceLabels.h"
#include "support/TimingFixture.h"

namespace zu {
namespace {

using test::FillPod;
using test::MakeState;
using test::SetLength;

// The passes as they are told, step by step over FindEdge; slow and obvious.
struct Told {
    const SampleView& View;
    std::uint8_t Mask;
    std::int64_t First, End;

    ChannelMeasure FirstPass() const {
        ChannelMeasure m;
        std::int64_t i = Find(First).At;
        std::int64_t total = 0, a = 0, b = 0;
        m.FirstEdge = i;
        m.LastEdge = i;
        while (i < End) {
            const Edge j = Find(i);
            if (j.Level == 0) a = j.At - i;
            if (j.Level == 1) b = j.At - i;
            m.LastEdge = j.At;
            if (j.At >= End) {
                m.LastEdge = i;
                break;
            }
            const Edge k = Find(j.At);
            if (k.At >= End) {
                m.LastEdge = i;
                break;
            }
            m.LastEdge = k.At;
            (k.Level == 0 ? a : b) = k.At - j.At;
            ++m.Count;
            total += a + b;
            i = k.At;
        }
        m.Period = m.Count > 0 ? static_cast<double>(total / m.Count) : 0.0;
        return m;
    }

    PulseWidths SecondPass(ChannelMeasure& m) const {
        PulseWidths pulses;
        pulses.Shortest = End;
        for (std::int64_t i = Find(First).At; i < End;) {
            const Edge j = Find(i);
            if (j.At >= End) break;
            const Edge k = Find(j.At);
            if (k.At >= End) break;
            (j.Level == 0 ? pulses.High : pulses.Low) += j.At - i;
            (k.Level == 0 ? pulses.High : pulses.Low) += k.At - j.At;
            ++pulses.CountLow;
            ++pulses.CountHigh;
            pulses.Shortest = std::min(pulses.Shortest, k.At - i);
            pulses.Longest = std::max(pulses.Longest, k.At - i);
            i = k.At;
        }
        m.DutyLow = pulses.Low;
        m.DutyHigh = pulses.High;
        return pulses;
    }

    void ThirdPass(ChannelMeasure& m) const {
        for (std::int64_t i = Find(First).At; i < End;) {
            const Edge j = Find(i);
            if (j.At >= End) return;
            ChannelMeasure::Widths& w = j.Level == 0 ? m.High : m.Low;
            const std::int64_t width = j.At - i;
            w.Sum += width;
            ++w.Count;
            w.Minimum = w.Minimum == 0 ? width : std::min(w.Minimum, width);
            w.Maximum = std::max(w.Maximum, width);
            i = j.At;
        }
    }

    ChannelMeasure All() const {
        ChannelMeasure m = FirstPass();
        SecondPass(m);
        ThirdPass(m);
        return m;
    }

  private:
    Edge Find(std::int64_t from) const {
        const bool level = (View.At(from) & Mask) != 0;
        std::int64_t i = from;
        while (i < End && ((View.At(i) & Mask) != 0) == level) ++i;
        return i < End ? Edge{i, static_cast<std::uint8_t>(!level)} : Edge{End, 255};
    }
};

void ExpectSame(const ChannelMeasure& got, const ChannelMeasure& want) {
    EXPECT_EQ(got.Count, want.Count);
    EXPECT_EQ(got.FirstEdge, want.FirstEdge);
    EXPECT_EQ(got.LastEdge, want.LastEdge);
    EXPECT_EQ(got.Period, want.Period);
    EXPECT_EQ(got.DutyLow, want.DutyLow);
    EXPECT_EQ(got.DutyHigh, want.DutyHigh);
    const auto same = [](const ChannelMeasure::Widths& a, const ChannelMeasure::Widths& b) {
        EXPECT_EQ(a.Sum, b.Sum);
        EXPECT_EQ(a.Count, b.Count);
        EXPECT_EQ(a.Minimum, b.Minimum);
        EXPECT_EQ(a.Maximum, b.Maximum);
    };
    same(got.Low, want.Low);
    same(got.High, want.High);
}

std::string Cell(const InstrumentState& state, ColumnType type, const ChannelMeasure& measure) {
    return MeasurementText(state, type, measure);
}

TEST(FindEdge, GivesTheFirstSampleOfAnotherLevel) {
    const auto state = MakeState();
    SetLength(*state, 1000);
    test::SetHigh(*state, 3, 200, 300);
    const SampleView view = BindChannel(*state, 3);
    EXPECT_EQ(FindEdge(view, 8, 0, 1000).At, 200);
    EXPECT_EQ(FindEdge(view, 8, 0, 1000).Level, 1);
    EXPECT_EQ(FindEdge(view, 8, 200, 1000).At, 300);
    EXPECT_EQ(FindEdge(view, 8, 200, 1000).Level, 0);
    EXPECT_EQ(FindEdge(view, 8, 300, 1000).At, 1000);
    EXPECT_EQ(FindEdge(view, 8, 300, 1000).Level, 255) << "the end was reached";
    EXPECT_EQ(FindEdge(view, 8, 0, 200).Level, 255) << "the end is exclusive";
    EXPECT_EQ(FindEdge(view, 8, 500, 100).At, 100) << "an empty range answers its end";
    EXPECT_EQ(FindEdgeBack(view, 8, 250, 0).At, 200);
    EXPECT_EQ(FindEdgeBack(view, 8, 250, 0).Level, 1);
    EXPECT_EQ(FindEdgeBack(view, 8, 150, 0).Level, 255);
    EXPECT_EQ(FindEdgeBack(view, 8, 999, 0).At, 300);
}

TEST(Measure, EqualsThePassesAsTold) {
    test::Random random(5);
    const auto state = MakeState();
    for (int round = 0; round < 400; ++round) {
        const std::int32_t length = 1 + random.Below(3000);
        SetLength(*state, length);
        const std::int32_t rarity = 1 + random.Below(random.OneIn(2) ? 60 : 3);
        const std::int32_t steady = random.OneIn(3) ? 1 + random.Below(9) : 0;
        int value = 0;
        FillPod(*state, 0,
                [&](std::int32_t) { return value ^= random.OneIn(rarity) ? 1 << random.Below(8) : 0; });
        if (steady > 0) {
            // A clock whose phases hardly ever break a record.
            FillPod(*state, 0, [&](std::int32_t i) {
                return (i / steady % 3 == 0 ? 0xFF : 0) ^ (random.OneIn(200) ? 0xFF : 0);
            });
        }
        state->Pods.AdjAddr[0] = random.Below(200);
        const SampleView view = BindPod(*state, 0);
        SampleRange range{random.Below(length), random.Below(length + 1)};
        range.Last = std::min<std::int64_t>({range.Last, view.Stored, view.Shown});
        for (const int channel : {0, 5, 7}) {
            const auto mask = static_cast<std::uint8_t>(1 << channel);
            const std::int64_t last = std::max(range.First, range.Last);
            const Told told{view, mask, range.First, last};
            if (range.First >= range.Last) continue;
            ExpectSame(MeasureChannel(view, mask, range), told.All());
            ChannelMeasure unused;
            const PulseWidths want = told.SecondPass(unused);
            const PulseWidths got = MeasurePulses(view, mask, range);
            EXPECT_EQ(got.CountLow, want.CountLow);
            EXPECT_EQ(got.CountHigh, want.CountHigh);
            EXPECT_EQ(got.Shortest, want.Shortest);
            EXPECT_EQ(got.Longest, want.Longest);
            if (testing::Test::HasFailure()) FAIL() << "round " << round << " channel " << channel;
        }
    }
}

TEST(Measure, ShortPhasesBehindLongOnes) {
    const auto state = MakeState();
    SetLength(*state, 4000);
    for (const std::int32_t longest : {60, 63, 64, 65, 66, 67, 127, 128, 129, 130, 131, 700}) {
        for (const std::int32_t shortest : {1, 2, 7, 12}) {
            FillPod(*state, 0, [&](std::int32_t i) {
                return (i < 4 * longest ? i / longest : (i - 4 * longest) / shortest) & 1;
            });
            const SampleView view = BindChannel(*state, 0);
            SCOPED_TRACE(longest * 1000 + shortest);
            ExpectSame(MeasureChannel(view, 1, {0, 4000}), Told{view, 1, 0, 4000}.All());
        }
    }
}

TEST(Measure, NoEdgeInRange) {
    const auto state = MakeState();
    SetLength(*state, 1000);
    const ChannelMeasure none = MeasureChannel(BindChannel(*state, 0), 1, {0, 1000});
    EXPECT_EQ(Cell(*state, ColumnType::Count, none), "0");
    EXPECT_EQ(Cell(*state, ColumnType::Period, none), "0");
    EXPECT_EQ(Cell(*state, ColumnType::DutyFalling, none), "-");
    EXPECT_EQ(Cell(*state, ColumnType::DutyRising, none), "-");
    EXPECT_EQ(Cell(*state, ColumnType::Frequency, none), "-N/A-");
    for (int type = 10; type <= 15; ++type) EXPECT_EQ(Cell(*state, static_cast<ColumnType>(type), none), "-");
    EXPECT_EQ(none.Period, 0);
}

TEST(Measure, AnEmptyRangeAndAnAbsentPodCountNothing) {
    const auto state = MakeState();
    SetLength(*state, 1000);
    FillPod(*state, 0, [](std::int32_t i) { return i & 1; });
    EXPECT_EQ(MeasureChannel(BindChannel(*state, 0), 1, {500, 500}).Count, 0);
    EXPECT_EQ(MeasureChannel(BindChannel(*state, 0), 1, {500, -3}).Count, 0);
    EXPECT_EQ(MeasureChannel(SampleView{}, 1, {0, 1000}).Count, 0);
}

// Channel 0: high 4 of every 10 samples.
std::unique_ptr<InstrumentState> Clocked(std::int32_t length) {
    auto state = MakeState();
    SetLength(*state, length);
    FillPod(*state, 0, [](std::int32_t i) { return i % 10 >= 3 && i % 10 < 7 ? 1 : 0; });
    return state;
}

TEST(Measure, AFinalHalfPeriodIsIgnored) {
    const auto state = Clocked(1000);
    // Edges at 3, 7, 13, 17, 23, 27: two periods and a half from the first edge on.
    const ChannelMeasure m = MeasureChannel(BindChannel(*state, 0), 1, {0, 28});
    EXPECT_EQ(m.Count, 2);
    EXPECT_EQ(m.FirstEdge, 3);
    EXPECT_EQ(m.LastEdge, 23);
    EXPECT_EQ(m.Period, 10);
    EXPECT_EQ(m.DutyHigh, 8);
    EXPECT_EQ(m.DutyLow, 12);
    EXPECT_EQ(m.High.Count, 3) << "widths take the last whole phase";
    EXPECT_EQ(m.Low.Count, 2);
    EXPECT_EQ(Cell(*state, ColumnType::Count, m), "2");
    EXPECT_EQ(Cell(*state, ColumnType::Period, m), "100ns");
    EXPECT_EQ(Cell(*state, ColumnType::Frequency, m), "10.000MHz");
    EXPECT_EQ(Cell(*state, ColumnType::DutyFalling, m), "60.00%");
    EXPECT_EQ(Cell(*state, ColumnType::DutyRising, m), "40.00%");
    EXPECT_EQ(Cell(*state, ColumnType::AvgWidth0, m), "60ns");
    EXPECT_EQ(Cell(*state, ColumnType::AvgWidth1, m), "40ns");
    EXPECT_EQ(Cell(*state, ColumnType::MinWidth0, m), "60ns");
    EXPECT_EQ(Cell(*state, ColumnType::MaxWidth1, m), "40ns");
}

TEST(Measure, WithoutTimeItCountsSamples) {
    const auto state = Clocked(1000);
    const ChannelMeasure m = MeasureChannel(BindChannel(*state, 0), 1, {0, 28});
    state->Cursors.CursorDlgMode = 0;
    EXPECT_EQ(Cell(*state, ColumnType::Period, m), "10.00Sa");
    EXPECT_EQ(Cell(*state, ColumnType::AvgWidth0, m), "6.00Sa");
    EXPECT_EQ(Cell(*state, ColumnType::Frequency, m), "-N/A-") << "a frequency needs time";
    state->Cursors.CursorDlgMode = 1;
    state->Clock.ClockType = 1;
    EXPECT_EQ(Cell(*state, ColumnType::Period, m), "10.00Sa");
    EXPECT_EQ(Cell(*state, ColumnType::Frequency, m), "-N/A-");
}

TEST(Measure, PeriodOfUnevenPeriodsIsCutInTimeAndExactInSamples) {
    const auto state = MakeState();
    ChannelMeasure m;
    m.Count = 3;
    m.FirstEdge = 100;
    m.LastEdge = 110;
    EXPECT_EQ(Cell(*state, ColumnType::Period, m), "30ns");
    state->Cursors.CursorDlgMode = 0;
    EXPECT_EQ(Cell(*state, ColumnType::Period, m), "3.33Sa");
}

struct FrequencyCase {
    double Hertz;
    const char* Three;
    const char* One;
};
constexpr FrequencyCase kFrequencies[] = {
    {12.5e6, "12.500MHz", " 12.5MHz"}, {1e6, "1000.000KHz", "1000.0KHz"}, {1500, "1.500KHz", "  1.5KHz"},
    {1000, "1000.000Hz", "1000.0Hz"},  {0.5, "0.500Hz", "  0.5Hz"},       {0.0005, "0.500mHz", "  0.5mHz"},
    {2e-7, "0.200uHz", "  0.2uHz"},    {5e-10, "0.500nHz", "  0.5nHz"},
};

TEST(Measure, FrequencyUnits) {
    for (const FrequencyCase& c : kFrequencies) {
        EXPECT_EQ(FrequencyText(c.Hertz, 3), c.Three);
        EXPECT_EQ(FrequencyText(c.Hertz, 1), c.One);
    }
}

TEST(PulseWidth, MessageOfChannel0OverTheRangeOfColumn0) {
    const auto state = Clocked(1000);
    test::ShowColumns(*state, {{5, 1, 0}});
    state->Cursors.Cur[0] = 0;
    state->Cursors.Cur[1] = 28;
    const auto message = PulseWidthMessage(*state);
    ASSERT_TRUE(message);
    EXPECT_EQ(message->Title, "avg");
    EXPECT_EQ(message->Text,
              "ch(0) avg pulse width(0)=6.000000 avg pulse width(1)=4.000000 Count(0)=2,Count(1)=2, "
              "Short=10,Long=10");
    state->Cursors.Cur[1] = 8;
    EXPECT_FALSE(PulseWidthMessage(*state)) << "no whole period, no message";
}

TEST(PulseWidth, AveragesAreCut) {
    const auto state = MakeState();
    SetLength(*state, 100);
    for (const int at : {10, 20, 31}) test::SetHigh(*state, 0, at, at + 4);
    const auto message = PulseWidthMessage(*state);
    ASSERT_TRUE(message);
    EXPECT_EQ(message->Text,
              "ch(0) avg pulse width(0)=6.000000 avg pulse width(1)=4.000000 Count(0)=2,Count(1)=2, "
              "Short=10,Long=11")
        << "13 / 2 is 6";
}

TEST(MeasureCache, MeasuresOnceWhatDidNotChange) {
    const auto state = Clocked(1000);
    MeasureCache cache;
    EXPECT_EQ(cache.Get(*state, 0, {0, 1000}).Count, 99);
    EXPECT_EQ(cache.Misses(), 1U);
    cache.Get(*state, 0, {0, 1000});
    EXPECT_EQ(cache.Misses(), 1U);
    cache.Get(*state, 0, {0, 500});
    cache.Get(*state, 1, {0, 1000});
    EXPECT_EQ(cache.Misses(), 3U);
    state->Pods.AdjAddr[0] = 5;
    EXPECT_EQ(cache.Get(*state, 0, {0, 995}).FirstEdge, 2);
    EXPECT_EQ(cache.Misses(), 4U);
    cache.Invalidate();
    cache.Get(*state, 0, {0, 500});
    EXPECT_EQ(cache.Misses(), 5U);
}

}  // namespace
}  // namespace zu
