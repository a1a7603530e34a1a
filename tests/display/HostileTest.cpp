// Any integer in any field that a file can bring in: the view paints and works without a wild access.
#include <cstdlib>
#include <gtest/gtest.h>

#include "display/Lines.h"
#include "support/TimingFixture.h"
#include "support/ViewHost.h"

namespace zu {
namespace {

using test::Random;

constexpr int kRows[] = {0, 5, 9, 13, 15, 16, 18, 24, 25, 27};

/// Rounds per model; ZU_ROUNDS asks for more.
int Rounds(int usual) {
    const char* asked = std::getenv("ZU_ROUNDS");
    return asked == nullptr ? usual : std::atoi(asked);
}

/// Numbers that files of all sorts bring: small ones, limits, anything.
std::int32_t Number(Random& random, std::int32_t usual) {
    switch (random.Below(6)) {
        case 0: {
            constexpr std::int32_t kLimits[] = {INT32_MIN, INT32_MIN + 1, -1, 0, 1, INT32_MAX - 1, INT32_MAX};
            return kLimits[random.Below(7)];
        }
        case 1:
            return random.Any();
        case 2:
            return -random.Below(usual);
        default:
            return random.Below(usual);
    }
}
std::int8_t Byte(Random& random, std::int32_t usual) {
    return static_cast<std::int8_t>(random.OneIn(4) ? random.Any() : random.Below(usual));
}
std::uint8_t Unsigned(Random& random, std::int32_t usual) {
    return static_cast<std::uint8_t>(random.OneIn(4) ? random.Any() : random.Below(usual));
}

void ScribbleTiming(InstrumentState& state, Random& random) {
    TimingRecord& timing = state.Timing;
    constexpr std::int32_t kZooms[] = {50, 25, 10, 5, 2, 1, -1, -2, -4, -10, -40, -400, -4000};
    timing.ScreenZoom = random.OneIn(3) ? Number(random, 5000) : kZooms[random.Below(13)];
    timing.ZoomOrigin = Byte(random, 6);
    timing.TimingGrid = static_cast<std::uint8_t>(random.OneIn(20) ? random.Any() : 0);
    timing.TimingDataPos = Number(random, 9000);
    timing.TimingChPos = random.OneIn(3) ? Number(random, 300) : 0;
    timing.TimingLines = random.OneIn(3) ? Number(random, 400) : random.Below(30);
    for (auto& column : timing.TimingDisp) {
        column = {Unsigned(random, 17), Unsigned(random, 12), Byte(random, 18)};
        if (random.OneIn(3)) column.Type = 0;
    }
    for (auto& source : timing.LineSource)
        source = random.OneIn(3) ? Number(random, 240) : 160 + random.Below(30);
    for (auto& style : timing.LineStyle) style = Unsigned(random, 13);
    for (auto& mode : timing.LineMode) mode = Byte(random, 7);
    for (auto& at : state.Cursors.Cur) at = Number(random, 9000);
    state.Cursors.CursorDlgMode = Byte(random, 2);
}

void ScribbleGroups(InstrumentState& state, Random& random) {
    for (GroupRecord& group : state.Groups) {
        group.Size = random.OneIn(3) ? Number(random, 200) : random.Below(20);
        group.Mode = Byte(random, 8);
        group.TwosComplement = Byte(random, 2);
        const bool sane = random.OneIn(2);
        for (auto& channel : group.Channels) channel = sane ? random.Below(24) : Number(random, 170);
    }
    for (auto& entry : state.Translate.Entry) {
        if (!random.OneIn(100)) continue;
        entry = {std::string_view("1X"), std::string_view("label"), Number(random, 3), 2,
                 static_cast<std::uint32_t>(random.Any())};
    }
    state.Translate.TranslateCount = Number(random, 20);
    for (auto& entry : state.Trigger.SeqList) entry = Number(random, 18);
    for (auto& mode : state.Trigger.ModeList) mode = Number(random, 2);
}

void ScribbleSamples(InstrumentState& state, Random& random) {
    state.Clock.ClockType = Unsigned(random, 6);
    state.Clock.ClockRate = Unsigned(random, 36);
    state.Memory.DisplayLen = random.OneIn(3) ? Number(random, 9000) : 8192;
    state.Identity.Emulated = Unsigned(random, 3);
    for (std::size_t pod = 0; pod < kMaxPods; ++pod) {
        const std::int32_t most =
            std::min<std::int32_t>(8192, static_cast<std::int32_t>(state.Buffer.Room(static_cast<int>(pod))));
        state.Buffer.BufLen[pod] = random.OneIn(5) ? 0 : random.OneIn(3) ? random.Below(most + 1) : most;
        state.Pods.HardwarePod[pod] = Byte(random, 5);
        state.Pods.AdjAddr[pod] = random.OneIn(2) ? Number(random, 9000) : 0;
        if (!random.OneIn(4)) continue;
        const int step = 1 + random.Below(3000);
        test::FillPod(state, static_cast<int>(pod), [&](std::int32_t i) { return i / step * 37; });
    }
    for (auto* lines : {&state.Serial.SpiSI, &state.Serial.SpiSO}) {
        for (auto& entries : *lines) {
            entries.assign(static_cast<std::size_t>(random.OneIn(3) ? random.Below(9000) : 8192), 0);
            if (entries.empty() || random.OneIn(2)) continue;
            for (int i = 0; i < 300; ++i) {
                entries[static_cast<std::size_t>(random.Below(static_cast<std::int64_t>(entries.size())))] =
                    static_cast<std::uint16_t>(random.Any());
            }
        }
    }
}

void Scribble(InstrumentState& state, Random& random) {
    ScribbleTiming(state, random);
    ScribbleGroups(state, random);
    ScribbleSamples(state, random);
}

ViewGeom AnyGeometry(Random& random) {
    constexpr std::int32_t kSizes[] = {-50, 0, 1, 37, 149, 150, 151, 400, 1024};
    ViewGeom geom{kSizes[random.Below(9)], kSizes[random.Below(9)]};
    if (random.OneIn(30)) geom.Width = 3000 + random.Below(6000);
    return geom;
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
