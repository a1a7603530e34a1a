// What a paint has to measure anew: only what depends on what moved.
#include <gtest/gtest.h>

#include "support/TimingFixture.h"
#include "support/ViewHost.h"

namespace zu {
namespace {

constexpr std::uint64_t kLines = 3;
constexpr auto kCount = static_cast<std::uint8_t>(ColumnType::Count);
constexpr auto kPeriod = static_cast<std::uint8_t>(ColumnType::Period);
constexpr std::uint8_t kBuffer = 0;
constexpr std::uint8_t kAToB = 1;

/// Three channels with a count over the buffer and a count and a period from A to B.
class KeptMeasures : public testing::Test {
  protected:
    KeptMeasures() {
        test::SetLength(*state_, 100000);
        test::ShowLines(*state_, {{0}, {1}, {2}});
        test::ShowColumns(*state_, {{kCount, kBuffer}, {kCount, kAToB}, {kPeriod, kAToB}});
        for (int i = 0; i < 100000; i += 20) test::SetHigh(*state_, 1, i, i + 10);
        state_->Cursors.Cur = {1100, 1200, 1300, 1400, 1050, 0};
        state_->Timing.TimingDataPos = 1000;
        view_.Resize(1400, 400);
    }

    /// Walks over samples that the paint of what was asked for took.
    std::uint64_t Paint() {
        const std::uint64_t before = view_.Measured();
        RecorderCanvas canvas(1400, 400);
        view_.Paint(canvas);
        return view_.Measured() - before;
    }
    MouseEvent At(std::int64_t sample, std::int32_t y, MouseButton button = MouseButton::Left) {
        MouseEvent event;
        event.X = static_cast<std::int32_t>(view_.Axis().XOf(sample));
        event.Y = y;
        event.Button = button;
        event.Alt = true;  // no snapping
        return event;
    }
    void Drag(std::int64_t from, std::int64_t to) {
        view_.MouseDown(At(from, 300));
        view_.MouseMove(At(to, 300));
        view_.MouseUp(At(to, 300));
    }

    std::unique_ptr<InstrumentState> state_ = test::MakeState();
    test::ViewHost host_;
    TimingView view_{*state_, host_, Metrics{}};
};

TEST_F(KeptMeasures, ColumnsOverOneRangeShareAWalk) {
    EXPECT_EQ(Paint(), 2 * kLines) << "the buffer, and A to B once for both columns";
    EXPECT_EQ(Paint(), 0U);
}

TEST_F(KeptMeasures, ACursorThatBoundsNoRangeCostsNothing) {
    Paint();
    Drag(1300, 1350);
    ASSERT_EQ(state_->Cursors.Cur[2], 1350);
    EXPECT_EQ(Paint(), 0U);
    Drag(1050, 1020);
    ASSERT_EQ(state_->Cursors.Cur[kCursorT], 1020);
    EXPECT_EQ(Paint(), 0U);
}

TEST_F(KeptMeasures, ACursorThatBoundsARangeCostsThatRangeOnly) {
    Paint();
    Drag(1200, 1250);
    ASSERT_EQ(state_->Cursors.Cur[1], 1250);
    EXPECT_EQ(Paint(), kLines) << "the buffer's counts are kept";
    Drag(1250, 1200);
    EXPECT_EQ(Paint(), 0U) << "the range of before is still known";
}

TEST_F(KeptMeasures, EachMoveOfADragCostsOneRange) {
    Paint();
    view_.MouseDown(At(1100, 300));
    for (int step = 1; step <= 5; ++step) {
        view_.MouseMove(At(1100 - step, 300));
        EXPECT_EQ(Paint(), kLines);
    }
}

TEST_F(KeptMeasures, HoveringMeasuresAndRedrawsNothing) {
    Paint();
    host_.TakeRedraws();
    const std::uint64_t before = view_.Measured();
    for (std::int64_t sample = 1000; sample < 1500; sample += 3) {
        view_.MouseMove(At(sample, 60, MouseButton::None));
        EXPECT_FALSE(view_.HoverText().empty());
    }
    EXPECT_EQ(view_.Measured(), before);
    EXPECT_EQ(host_.TakeRedraws(), 0);
    EXPECT_EQ(Paint(), 0U);
}

TEST_F(KeptMeasures, ZoomsAndScrollsKeepThem) {
    Paint();
    view_.Command(TimingCommand::ZoomOut);
    EXPECT_EQ(Paint(), 0U);
    view_.Scroll({ScrollAxis::Horizontal, ScrollCode::PageForward, 0});
    EXPECT_EQ(Paint(), 0U);
    view_.Scroll({ScrollAxis::Vertical, ScrollCode::LineForward, 0});
    EXPECT_EQ(Paint(), 0U);
}

TEST_F(KeptMeasures, OtherSamplesAreMeasuredAnew) {
    Paint();
    view_.DataChanged();
    EXPECT_EQ(Paint(), 2 * kLines);
}

}  // namespace
}  // namespace zu
