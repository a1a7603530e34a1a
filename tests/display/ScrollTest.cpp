// Scroll units, codes and what a move may reach.
#include <gtest/gtest.h>

#include "display/Scroll.h"
#include "support/TimingFixture.h"

namespace zu {
namespace {

using test::MakeState;
using test::SetLength;
using test::ShowLines;

constexpr ScrollWindow kWindow{436, 800, {}};

std::int32_t Horizontal(InstrumentState& state, std::int32_t from, ScrollCode code, std::int32_t thumb = 0) {
    state.Timing.TimingDataPos = from;
    ScrollTiming(state, {ScrollAxis::Horizontal, code, thumb}, kWindow);
    return state.Timing.TimingDataPos;
}

std::int32_t Vertical(InstrumentState& state, std::int32_t from, ScrollCode code, std::int32_t thumb = 0) {
    state.Timing.TimingChPos = from;
    ScrollTiming(state, {ScrollAxis::Vertical, code, thumb}, kWindow);
    return state.Timing.TimingChPos;
}

TEST(Scroll, UnitGrowsAt0xFFFFFSamples) {
    EXPECT_EQ(ScrollUnit(0xFFFFE), 32);
    EXPECT_EQ(ScrollUnit(0xFFFFF), 256);
}

TEST(Scroll, RangesCountInUnits) {
    const auto state = MakeState();
    state->Timing.TimingDataPos = 6400;
    state->Timing.TimingChPos = 3;
    EXPECT_EQ(HorizontalRange(*state), (ScrollRange{0, 524288 / 32, 200}));
    EXPECT_EQ(VerticalRange(*state), (ScrollRange{0, 40, 3}));
    SetLength(*state, 2097152);
    EXPECT_EQ(HorizontalRange(*state), (ScrollRange{0, 2097152 / 256, 25}));
}

TEST(Scroll, HorizontalCodes) {
    const auto state = MakeState();
    SetLength(*state, 100000);
    EXPECT_EQ(Horizontal(*state, 5000, ScrollCode::LineBack), 4999);
    EXPECT_EQ(Horizontal(*state, 5000, ScrollCode::LineForward), 5001);
    EXPECT_EQ(Horizontal(*state, 5000, ScrollCode::PageBack), 4800);
    EXPECT_EQ(Horizontal(*state, 5000, ScrollCode::PageForward), 5200);
    EXPECT_EQ(Horizontal(*state, 5000, ScrollCode::Top), 4564) << "by the window's height, not to sample 0";
    EXPECT_EQ(Horizontal(*state, 5000, ScrollCode::Thumb, 100), 3200);
    EXPECT_EQ(Horizontal(*state, 0, ScrollCode::LineBack), 0);
    state->Timing.ScreenZoom = -10;
    EXPECT_EQ(Horizontal(*state, 5000, ScrollCode::PageForward), 7000);
    state->Timing.ScreenZoom = 50;
    EXPECT_EQ(Horizontal(*state, 5000, ScrollCode::PageForward), 5004);
}

TEST(Scroll, TheLastPositionLeavesATenthOfAScreen) {
    const auto state = MakeState();
    SetLength(*state, 100000);
    EXPECT_EQ(Horizontal(*state, 0, ScrollCode::Bottom), 100000 - 80);
    EXPECT_EQ(Horizontal(*state, 99919, ScrollCode::LineForward), 99920);
    EXPECT_EQ(Horizontal(*state, 99920, ScrollCode::LineForward), 99920);
    state->Timing.ScreenZoom = -40;
    EXPECT_EQ(Horizontal(*state, 0, ScrollCode::Bottom), 100000 - 3200);
    state->Timing.ScreenZoom = 50;
    EXPECT_EQ(Horizontal(*state, 0, ScrollCode::Bottom), 100000 - 3) << "16 samples on screen";
    SetLength(*state, 2);
    EXPECT_EQ(Horizontal(*state, 0, ScrollCode::Bottom), 0);
}

TEST(Scroll, VerticalCodes) {
    const auto state = MakeState();
    ASSERT_EQ(LinesThatFit(*state, kWindow), 21) << "(436 - 36) / 19";
    EXPECT_EQ(Vertical(*state, 5, ScrollCode::LineBack), 4);
    EXPECT_EQ(Vertical(*state, 5, ScrollCode::LineForward), 6);
    EXPECT_EQ(Vertical(*state, 15, ScrollCode::PageBack), 5);
    EXPECT_EQ(Vertical(*state, 5, ScrollCode::PageForward), 15);
    EXPECT_EQ(Vertical(*state, 5, ScrollCode::Top), 0);
    EXPECT_EQ(Vertical(*state, 5, ScrollCode::Bottom), 39);
    EXPECT_EQ(Vertical(*state, 5, ScrollCode::Thumb, 17), 17);
    EXPECT_EQ(Vertical(*state, 5, ScrollCode::Thumb, 400), 39);
    EXPECT_EQ(Vertical(*state, 5, ScrollCode::Thumb, -3), 0);
    EXPECT_EQ(Vertical(*state, 0, ScrollCode::LineBack), 0);
}

TEST(Scroll, VerticalMovesPassOverLinesWithoutData) {
    const auto state = MakeState();
    SetBufLenFull(state->Buffer.BufLen, 1, 0);  // lines 8..15
    EXPECT_EQ(Vertical(*state, 7, ScrollCode::LineForward), 16);
    EXPECT_EQ(Vertical(*state, 16, ScrollCode::LineBack), 7);
    EXPECT_EQ(Vertical(*state, 30, ScrollCode::Thumb, 12), 7) << "in the direction of the move";
    EXPECT_EQ(Vertical(*state, 2, ScrollCode::Thumb, 12), 16);
    SetBufLenFull(state->Buffer.BufLen, 0, 0);
    EXPECT_EQ(Vertical(*state, 16, ScrollCode::LineBack), 0) << "line 0 counts as shown";
    SetBufLenFull(state->Buffer.BufLen, 4, 0);
    EXPECT_EQ(Vertical(*state, 31, ScrollCode::LineForward), 39) << "nothing shown behind: the last line";
}

TEST(Scroll, AnyScrollMakesTheViewActive) {
    const auto state = MakeState();
    state->Windows.ActiveView = 1;
    Horizontal(*state, 100, ScrollCode::LineForward);
    EXPECT_EQ(state->Windows.ActiveView, 0);
    state->Windows.ActiveView = 1;
    Vertical(*state, 1, ScrollCode::LineForward);
    EXPECT_EQ(state->Windows.ActiveView, 0);
}

TEST(Scroll, HostilePositionsStayInRange) {
    const auto state = MakeState();
    for (const std::int32_t from : {INT32_MIN, -1, 0, INT32_MAX}) {
        for (int code = 0; code <= 6; ++code) {
            for (const std::int32_t thumb : {INT32_MIN, -1, 0, INT32_MAX}) {
                const std::int32_t at = Horizontal(*state, from, static_cast<ScrollCode>(code), thumb);
                EXPECT_GE(at, 0);
                EXPECT_LT(at, 524288);
                const std::int32_t line = Vertical(*state, from, static_cast<ScrollCode>(code), thumb);
                EXPECT_GE(line, 0);
                EXPECT_LT(line, 40);
            }
        }
    }
    state->Timing.TimingLines = 0;
    EXPECT_EQ(Vertical(*state, 5, ScrollCode::Bottom), 0);
}

}  // namespace
}  // namespace zu
