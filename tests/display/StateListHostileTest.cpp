// Any integer in any field that a file can bring in: the Statelist paints and works, searches end.
#include <cstdlib>
#include <gtest/gtest.h>

#include "display/Search.h"
#include "display/SearchEdits.h"
#include "support/HostileTiming.h"
#include "support/PlainSearch.h"
#include "support/StateListFixture.h"

namespace zu {
namespace {

using test::Byte;
using test::Number;
using test::Random;

constexpr int kRows[] = {0, 5, 9, 13, 15, 16, 18, 24, 25, 27};

/// Rounds per model; ZU_ROUNDS asks for more.
int Rounds(int usual) {
    const char* asked = std::getenv("ZU_ROUNDS");
    return asked == nullptr ? usual : std::atoi(asked);
}

void ScribbleList(InstrumentState& state, Random& random) {
    StateListRecord& list = state.StateList;
    list.StateDataPos = random.OneIn(3) ? Number(random, 9000) : random.Below(8200);
    list.StateGroupPos = random.OneIn(3) ? Number(random, 40) : 0;
    list.StateDisp = Byte(random, 30);
    for (auto& group : list.ScreenL) group = Byte(random, 32);
    for (auto& format : list.ScreenF) format = Byte(random, 6);
    ComputeGroupWidths(state);
    for (auto& width : list.ScreenWidth) width = random.OneIn(20) ? Number(random, 200) : width;
    state.Serial.SerialMode = Byte(random, 3);
    state.Serial.SerialGroup = Number(random, 30);
    state.Serial.SerialEvents.assign(static_cast<std::size_t>(random.Below(9000)), 0);
    for (auto& code : state.Serial.SerialEvents) code = random.OneIn(5) ? test::Unsigned(random, 42) : 0;
    state.Windows.ActiveView = test::Unsigned(random, 2);
}

void ScribbleSearch(InstrumentState& state, Random& random) {
    SearchRecord& search = state.Search;
    search.SearchMode = random.OneIn(2) ? 'S' : Byte(random, 100);
    search.SearchWord = std::string_view(test::AnyText(random, 70));
    if (random.OneIn(2)) {
        std::string pattern;
        for (int i = random.Below(66); i > 0; --i) pattern += "01X"[random.Below(3)];
        search.SearchWord = pattern;
    }
    search.SearchCh = static_cast<std::int16_t>(random.OneIn(3) ? random.Any() : random.Below(24));
    search.SearchBase = Byte(random, 4);
    search.SearchLen = Byte(random, 4);
    for (auto& entry : search.SearchWd) {
        for (auto& c : entry)
            c = random.OneIn(9) ? static_cast<char>(random.Any()) : "01XXXXXXX"[random.Below(9)];
    }
}

class HostileList : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(Rows, HostileList, testing::ValuesIn(kRows));

TEST_P(HostileList, Paints) {
    const auto state = test::MakeState(GetParam());
    Random random(static_cast<unsigned>(100 + GetParam()));
    for (int round = 0; round < Rounds(120); ++round) {
        test::Scribble(*state, random);
        ScribbleList(*state, random);
        const ViewGeom geom = test::AnyGeometry(random);
        RecorderCanvas canvas(geom.Width, geom.Height, Metrics::ForScreen(random.OneIn(2) ? 600 : 1080));
        PaintStateList(*state, {geom.Width, geom.Height, Number(random, 9000), Number(random, 9000)}, canvas);
        for (const auto& op : canvas.Ops()) {
            ASSERT_LE(std::abs(op.Area.Left), 1 << 22);
            ASSERT_LE(std::abs(op.Area.Top), 1 << 22);
            if (op.What != RecorderCanvas::Kind::Text) continue;
            ASSERT_LT(op.Area.Left, std::max(geom.Width, 1));
        }
    }
}

MouseEvent AnyMouse(Random& random) {
    MouseEvent event;
    event.X = random.OneIn(20) ? random.Any() : random.Below(1100) - 20;
    event.Y = random.OneIn(20) ? random.Any() : random.Below(900) - 20;
    event.Button = static_cast<MouseButton>(random.Below(4));
    event.Shift = random.OneIn(5);
    event.Held.A = random.OneIn(20);
    event.Held.T = random.OneIn(20);
    event.Held.Two = random.OneIn(6);
    event.Held.Five = random.OneIn(6);
    return event;
}

void AnyEvent(StateListView& view, Random& random) {
    switch (random.Below(8)) {
        case 0:
        case 1:
            return view.MouseDown(AnyMouse(random));
        case 2:
            return view.MouseUp(AnyMouse(random));
        case 3:
        case 4:
        case 5:
            return view.MouseMove(AnyMouse(random));
        case 6:
            return view.ClearSelection();
        default:
            return view.Scroll({random.OneIn(2) ? ScrollAxis::Horizontal : ScrollAxis::Vertical,
                                static_cast<ScrollCode>(random.Below(7)), Number(random, 1000)});
    }
}

TEST_P(HostileList, Works) {
    const auto state = test::MakeState(GetParam());
    Random random(static_cast<unsigned>(500 + GetParam()));
    test::ListHost host;
    StateListView view(*state, host, Metrics{});
    for (int round = 0; round < Rounds(30); ++round) {
        test::Scribble(*state, random);
        ScribbleList(*state, random);
        const ViewGeom geom = test::AnyGeometry(random);
        view.Resize(geom.Width, geom.Height);
        for (int event = 0; event < 40; ++event) {
            host.Choice = random.Below(20);
            AnyEvent(view, random);
            ASSERT_LE(view.HoverText().size(), 2000U);
        }
        view.ClearSelection();
        ASSERT_FALSE(view.CopyText().empty());
        view.FocusLost();
        RecorderCanvas canvas(geom.Width, geom.Height);
        view.Paint(canvas);
    }
}

TEST_P(HostileList, Searches) {
    const auto state = test::MakeState(GetParam());
    Random random(static_cast<unsigned>(700 + GetParam()));
    for (int round = 0; round < Rounds(40); ++round) {
        test::Scribble(*state, random);
        ScribbleList(*state, random);
        ScribbleSearch(*state, random);
        for (const bool forward : {true, false}) {
            const std::int64_t slow = test::PlainSearch(*state, forward ? 1 : -1).Find();
            const bool found = forward ? SearchForward(*state) : SearchBackward(*state);
            ASSERT_EQ(found, slow >= 0) << "round " << round;
            const std::int32_t at =
                state->Windows.ActiveView == 0 ? state->Timing.TimingDataPos : state->StateList.StateDataPos;
            ASSERT_TRUE(!found || at == slow) << "round " << round;
        }
    }
}

TEST_P(HostileList, EditsTheSearchWord) {
    const auto state = test::MakeState(GetParam());
    Random random(static_cast<unsigned>(800 + GetParam()));
    for (int round = 0; round < Rounds(200); ++round) {
        test::ScribbleTexts(*state, random);
        ScribbleSearch(*state, random);
        SearchWordEdit edit(*state);
        edit.Open();
        edit.SelectBase(random.Below(4));
        edit.Fill(Number(random, 24));
        for (int row = 0; row < SearchRows(*state); ++row) {
            for (const int pod : SearchPods(*state, row)) {
                const std::string text = SearchFieldText(*state, pod);
                ASSERT_LE(static_cast<int>(text.size()), SearchFieldLimit(SearchBaseOf(*state)));
                WriteSearchField(*state, pod, text);
                ASSERT_EQ(SearchFieldText(*state, pod), text) << "what is shown can be stored";
                WriteSearchField(*state, pod, test::AnyText(random, 12));
            }
        }
        WriteSearchField(*state, Number(random, 30), "01");
    }
}

TEST(HostileList, AStateWithoutAModel) {
    const auto state = std::make_unique<InstrumentState>();
    Random random(1);
    for (int round = 0; round < 100; ++round) {
        test::ScribbleGroups(*state, random);
        ScribbleList(*state, random);
        ScribbleSearch(*state, random);
        EXPECT_FALSE(test::PaintList(*state).Canvas.Ops().empty());
        EXPECT_FALSE(SearchForward(*state));
        EXPECT_FALSE(SearchBackward(*state));
    }
}

}  // namespace
}  // namespace zu
