// Any integer in any field that a file can bring in: the view paints and works without a wild access.
#include <cstdlib>
#include <gtest/gtest.h>

#include "display/Lines.h"
#include "support/HostileTiming.h"
#include "support/TimingFixture.h"
#include "support/ViewHost.h"

namespace zu {
namespace {

using test::AnyGeometry;
using test::Number;
using test::Random;
using test::Scribble;
using test::ScribbleGroups;
using test::ScribbleTiming;

constexpr int kRows[] = {0, 5, 9, 13, 15, 16, 18, 24, 25, 27};

/// Rounds per model; ZU_ROUNDS asks for more.
int Rounds(int usual) {
    const char* asked = std::getenv("ZU_ROUNDS");
    return asked == nullptr ? usual : std::atoi(asked);
}

void ExpectDrawable(const RecorderCanvas& canvas) {
    // A canvas can take any of these; a window system's coordinates end far beyond.
    constexpr std::int32_t kFar = 1 << 22;
    for (const auto& op : canvas.Ops()) {
        ASSERT_LT(std::abs(op.Area.Left), kFar);
        ASSERT_LT(std::abs(op.Area.Top), kFar);
        for (const Point& point : op.Points) {
            ASSERT_LT(std::abs(point.X), kFar);
            ASSERT_LT(std::abs(point.Y), kFar);
        }
        ASSERT_LE(op.Points.size(), 13500U);
    }
}

class HostileState : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(Rows, HostileState, testing::ValuesIn(kRows));

TEST_P(HostileState, Paints) {
    const auto state = test::MakeState(GetParam());
    Random random(static_cast<unsigned>(100 + GetParam()));
    const auto scratch = std::make_unique<PaintScratch>();
    for (int round = 0; round < Rounds(250); ++round) {
        Scribble(*state, random);
        scratch->Measures.Invalidate();
        const ViewGeom geom = AnyGeometry(random);
        RecorderCanvas canvas(geom.Width, geom.Height, Metrics::ForScreen(random.OneIn(2) ? 600 : 1080));
        canvas.SetMono(random.OneIn(4));
        const auto cursors = state->Cursors.Cur;
        PaintTiming(*state, geom, canvas, *scratch);
        ASSERT_GE(state->Timing.TimingDataPos, 0);
        ASSERT_EQ(state->Cursors.Cur, cursors);
        ExpectDrawable(canvas);
        ASSERT_FALSE(HasFatalFailure()) << "round " << round;
    }
}

MouseEvent AnyMouse(Random& random) {
    MouseEvent event;
    event.X = random.OneIn(20) ? random.Any() : random.Below(1100) - 20;
    event.Y = random.OneIn(20) ? random.Any() : random.Below(900) - 20;
    event.Button = static_cast<MouseButton>(random.Below(4));
    event.Ctrl = random.OneIn(5);
    event.Shift = random.OneIn(5);
    event.Alt = random.OneIn(5);
    event.Held.A = random.OneIn(20);
    event.Held.T = random.OneIn(20);
    event.Held.Two = random.OneIn(6);
    event.Held.Five = random.OneIn(6);
    return event;
}

void AnyEvent(TimingView& view, Random& random) {
    switch (random.Below(12)) {
        case 0:
        case 1:
            return view.MouseDown(AnyMouse(random));
        case 2:
            return view.MouseUp(AnyMouse(random));
        case 3:
        case 4:
            return view.MouseMove(AnyMouse(random));
        case 5:
            return view.DoubleClick(AnyMouse(random));
        case 6:
            return view.Scroll({random.OneIn(2) ? ScrollAxis::Horizontal : ScrollAxis::Vertical,
                                static_cast<ScrollCode>(random.Below(7)), Number(random, 1000)});
        case 7:
            return view.Command(static_cast<TimingCommand>(random.Below(5)));
        case 8:
            return view.SelectZoom(Number(random, 100));
        case 9:
            return view.ZoomAt(Number(random, 1000), random.OneIn(2));
        case 10:
            return view.PanBy(Number(random, 500));
        default:
            return view.GoTo(Number(random, 9000));
    }
}

TEST_P(HostileState, Works) {
    const auto state = test::MakeState(GetParam());
    Random random(static_cast<unsigned>(500 + GetParam()));
    test::ViewHost host;
    const auto view = std::make_unique<TimingView>(*state, host, Metrics{});
    for (int round = 0; round < Rounds(40); ++round) {
        Scribble(*state, random);
        const ViewGeom geom = AnyGeometry(random);
        view->Resize(geom.Width, geom.Height);
        view->DataChanged();
        for (int event = 0; event < 40; ++event) {
            host.Choice = random.Below(20);
            AnyEvent(*view, random);
            ASSERT_LE(view->HoverText().size(), 2000U);
        }
        view->FocusLost();
        RecorderCanvas canvas(geom.Width, geom.Height);
        view->Paint(canvas);
        ExpectDrawable(canvas);
    }
}

TEST(HostileState, AStateWithoutAModelPaints) {
    const auto state = std::make_unique<InstrumentState>();
    Random random(1);
    for (int round = 0; round < 100; ++round) {
        ScribbleTiming(*state, random);
        ScribbleGroups(*state, random);
        EXPECT_FALSE(test::Paint(*state, 800, 400).Canvas.Ops().empty());
    }
}

}  // namespace
}  // namespace zu
