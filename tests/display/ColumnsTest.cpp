// Column types, ranges, layout and the samples that a measurement covers.
#include <gtest/gtest.h>

#include "display/Columns.h"
#include "support/TimingFixture.h"

namespace zu {
namespace {

using test::MakeState;
using test::SetLength;
using test::ShowColumns;

struct TypeRow {
    std::size_t Type;
    const char* ListText;
    const char* Header;
    std::int32_t Width;
};
constexpr TypeRow kTypes[] = {
    {0, "Off", "", 0},
    {1, "Chan Num", "Num", 3},
    {2, "Chan Name", "Name", 15},
    {3, "Trig Word", "", 2},
    {4, "Cursor Values", "", 5},
    {5, "Count", "Count", 8},
    {6, "Duty Cycle Falling", "Duty \\/", 7},
    {7, "Duty Cycle Rising", "Duty /\\", 7},
    {8, "Frequency", "Freq.", 12},
    {9, "Period", "Period", 15},
    {10, "Avg Width(0)", "Avg Width0", 12},
    {11, "Avg Width(1)", "Avg Width1", 12},
    {12, "Min Width(0)", "Min Width0", 12},
    {13, "Min Width(1)", "Min Width1", 12},
    {14, "Max Width(0)", "Max Width0", 12},
    {15, "Max Width(1)", "Max Width1", 12},
};

class EachType : public testing::TestWithParam<TypeRow> {};
INSTANTIATE_TEST_SUITE_P(Columns, EachType, testing::ValuesIn(kTypes));

TEST_P(EachType, HasItsTextsAndWidth) {
    const TypeRow& row = GetParam();
    EXPECT_EQ(kColumnTypes[row.Type].ListText, row.ListText);
    EXPECT_EQ(kColumnTypes[row.Type].Header, row.Header);
    EXPECT_EQ(kColumnTypes[row.Type].Width, row.Width);
    EXPECT_EQ(IsMeasurement(static_cast<ColumnType>(row.Type)), row.Type >= 5);
}

struct RangeRow {
    std::uint8_t Range;
    const char* Text;
    std::int64_t First;
    std::int64_t Last;
};
// Cursors A to T at 100, 220, 350, 490, 640; the buffer has 1000 samples.
constexpr RangeRow kRangeRows[] = {
    {0, "Buffer", 0, 1000},  {1, "A to B", 100, 220}, {2, "B to C", 220, 350},  {3, "C to D", 350, 490},
    {4, "A to D", 100, 490}, {5, "B to D", 220, 490}, {6, "A to T", 100, 640},  {7, "B to T", 220, 640},
    {8, "C to T", 350, 640}, {9, "D to T", 490, 640}, {10, "A to C", 100, 350},
};

std::unique_ptr<InstrumentState> RangeState() {
    auto state = MakeState();
    SetLength(*state, 1000);
    const std::int32_t at[] = {100, 220, 350, 490, 640};
    std::copy(std::begin(at), std::end(at), state->Cursors.Cur.begin());
    return state;
}

class EachRange : public testing::TestWithParam<RangeRow> {};
INSTANTIATE_TEST_SUITE_P(Columns, EachRange, testing::ValuesIn(kRangeRows));

TEST_P(EachRange, HasItsTextAndCursors) {
    const RangeRow& row = GetParam();
    const auto state = RangeState();
    ShowColumns(*state, {{5, row.Range, 0}});
    EXPECT_EQ(RangeOfColumn(*state, 0).Text, row.Text);
    EXPECT_EQ(RangeBounds(*state, 0, 0), (SampleRange{row.First, row.Last}));
}

TEST(RangeBounds, CrossedCursorsMeasureTheSameSamples) {
    const auto state = RangeState();
    ShowColumns(*state, {{5, 1, 0}});
    std::swap(state->Cursors.Cur[0], state->Cursors.Cur[1]);
    EXPECT_EQ(RangeBounds(*state, 0, 0), (SampleRange{100, 220}));
}

TEST(RangeBounds, BoundsStayInsideThePod) {
    const auto state = RangeState();
    ShowColumns(*state, {{5, 1, 0}});
    state->Cursors.Cur[0] = -50;
    state->Cursors.Cur[1] = 5000;
    EXPECT_EQ(RangeBounds(*state, 0, 0), (SampleRange{0, 1000}));
    state->Pods.AdjAddr[0] = 30;
    EXPECT_EQ(RangeBounds(*state, 0, 0), (SampleRange{0, 970}));
    state->Pods.AdjAddr[0] = -30;
    EXPECT_EQ(RangeBounds(*state, 0, 0), (SampleRange{0, 1000}));
    EXPECT_EQ(RangeBounds(*state, -1, 0), (SampleRange{0, 1000})) << "no column: the whole buffer";
    EXPECT_EQ(RangeBounds(*state, 0, 25), (SampleRange{0, 0})) << "no such pod";
    state->Timing.TimingDisp[0].Range = 11;
    EXPECT_EQ(RangeBounds(*state, 0, 0), (SampleRange{0, 1000})) << "an unknown range is the buffer";
}

TEST(Layout, ColumnsFollowEachOtherWithOneCharacterBetween) {
    const auto state = MakeState();
    ShowColumns(*state, {{0, 0, 0}, {2, 0, 0}, {3, 0, 0}, {4, 0, 0}});
    const ColumnLayout layout = LayoutColumns(*state, 6);
    EXPECT_EQ(layout.Columns[0], (ColumnSpan{0, 0}));
    EXPECT_EQ(layout.Columns[1], (ColumnSpan{0, 90}));
    EXPECT_EQ(layout.Columns[2], (ColumnSpan{96, 108}));
    EXPECT_EQ(layout.Columns[3], (ColumnSpan{114, 144}));
    EXPECT_EQ(layout.Columns[4], (ColumnSpan{150, 150}));
    EXPECT_EQ(layout.DataLeft, 150);
    EXPECT_EQ(layout.NameEnd, 156);
}

TEST(Layout, NoColumnsLeaveTheWholeWidth) {
    const auto state = MakeState();
    ShowColumns(*state, {{16, 0, 0}, {255, 0, 0}});
    EXPECT_EQ(LayoutColumns(*state, 6).DataLeft, 0) << "unknown types are off";
    EXPECT_EQ(TypeOfColumn(*state, -1), ColumnType::Off);
    EXPECT_EQ(TypeOfColumn(*state, 8), ColumnType::Off);
}

TEST(Layout, AllColumns) {
    const auto state = MakeState();
    ShowColumns(*state, {{1}, {2}, {3}, {4}, {5}, {6}, {8}, {9}});
    // 3 + 15 + 2 + 5 + 8 + 7 + 12 + 15 characters and eight gaps.
    EXPECT_EQ(LayoutColumns(*state, 6).DataLeft, (67 + 8) * 6);
}

}  // namespace
}  // namespace zu
