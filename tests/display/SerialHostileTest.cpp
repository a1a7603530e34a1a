// Any integer in any field that a file can bring in, and any event in the maps: the lists of decoded traffic
// paint and work.
#include <cstdlib>
#include <gtest/gtest.h>

#include "display/SerialView.h"
#include "display/SpiView.h"
#include "support/HostileTiming.h"
#include "support/SerialListFixture.h"

namespace zu::test {
namespace {

/// Rounds of a test; ZU_ROUNDS asks for more.
int Rounds(int usual) {
    const char* asked = std::getenv("ZU_ROUNDS");
    return asked == nullptr ? usual : std::atoi(asked);
}

void ScribbleMaps(InstrumentState& state, Random& random) {
    SerialRecord& serial = state.Serial;
    serial.SerialEvents.assign(static_cast<std::size_t>(random.Below(3000)), 0);
    const std::int32_t spacing = 1 + random.Below(20);
    for (auto& code : serial.SerialEvents) code = random.OneIn(spacing) ? Unsigned(random, 42) : 0;
    for (auto* lines : {&serial.SpiSI, &serial.SpiSO}) {
        for (auto& words : *lines) {
            words.assign(static_cast<std::size_t>(random.Below(3000)), 0);
            for (auto& word : words) {
                word = random.OneIn(spacing) ? static_cast<std::uint16_t>(random.Any()) : 0;
            }
        }
    }
}

void ScribbleSerial(InstrumentState& state, Random& random) {
    ScribbleMaps(state, random);
    SerialRecord& serial = state.Serial;
    serial.SerialMode = Byte(random, 3);
    serial.SerialGroup = Number(random, 30);
    for (auto* number : {&serial.SerialDataPos, &serial.SpiDataPos, &serial.SerialFirst, &serial.SerialLast,
                         &serial.SpiFirst, &serial.SpiLast}) {
        *number = Number(random, 3000);
    }
    for (auto& flag : serial.SerialFilter) flag = static_cast<std::uint8_t>(random.OneIn(3) ? 0 : 1);
    for (auto& flag : serial.SpiShown) flag = static_cast<std::uint8_t>(random.OneIn(3) ? 0 : 1);
    for (auto& group : state.Groups) {
        if (!random.OneIn(8)) continue;
        group.Mode = 3;
        group.Size = 4;
    }
}

void ExpectSaneOps(const RecorderCanvas& canvas) {
    for (const auto& op : canvas.Ops()) {
        ASSERT_LE(std::abs(op.Area.Left), 1 << 22);
        ASSERT_LE(std::abs(op.Area.Top), 1 << 22);
        ASSERT_LE(op.String.size(), 400U);
    }
}

MouseEvent AnyPress(Random& random) {
    MouseEvent event;
    event.X = random.OneIn(20) ? random.Any() : random.Below(1100) - 20;
    event.Y = random.OneIn(20) ? random.Any() : random.Below(900) - 20;
    event.Button = static_cast<MouseButton>(random.Below(4));
    event.Shift = random.OneIn(5);
    event.Held.C = random.OneIn(20);
    return event;
}

void AnyEvent(SerialListView& view, Random& random) {
    switch (random.Below(6)) {
        case 0:
            return view.MouseDown(AnyPress(random));
        case 1:
            return view.MouseUp(AnyPress(random));
        case 2:
        case 3:
            return view.MouseMove(AnyPress(random));
        case 4:
            return random.OneIn(4) ? view.FocusLost() : view.ClearSelection();
        default:
            return view.Scroll({random.OneIn(5) ? ScrollAxis::Horizontal : ScrollAxis::Vertical,
                                static_cast<ScrollCode>(random.Below(7)), Number(random, 1000)});
    }
}

class HostileSerial : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(Rows, HostileSerial, testing::Values(0, 5, 13, 15, 18, 27));

TEST_P(HostileSerial, ListsPaintAndWork) {
    const auto state = MakeState(GetParam());
    Random random(static_cast<unsigned>(40 + GetParam()));
    SerialWindow window;
    ScriptedHost boxes;
    SerialView serial(*state, window, boxes, Metrics{});
    SpiView spi(*state, window, boxes, Metrics{});
    for (int round = 0; round < Rounds(400); ++round) {
        Scribble(*state, random);
        ScribbleSerial(*state, random);
        const ViewGeom geom = AnyGeometry(random);
        for (SerialListView* view :
             {static_cast<SerialListView*>(&serial), static_cast<SerialListView*>(&spi)}) {
            view->Resize(geom.Width, geom.Height);
            for (int event = 0; event < 12; ++event) {
                window.Choice = random.Below(12);
                AnyEvent(*view, random);
            }
            ASSERT_LE(view->HoverText().size(), 2000U);
            ASSERT_FALSE(view->CopyText().empty());
            const ScrollRange range = view->Range();
            ASSERT_LE(range.Minimum, range.Position);
            ASSERT_LE(range.Position, range.Maximum);
        }
        state->Serial.SearchKind = Byte(random, 6);
        serial.Search(random.OneIn(2) ? SearchWay::Next : SearchWay::Prev);
        serial.OpenFilter(0, 0);
        serial.ShowTransfers(random.OneIn(2));
        RecorderCanvas canvas(geom.Width, geom.Height, Metrics::ForScreen(random.OneIn(2) ? 600 : 1080));
        serial.Paint(canvas);
        spi.Paint(canvas);
        ExpectSaneOps(canvas);
    }
}

TEST_P(HostileSerial, ButtonsDecodeAnyGroups) {
    const auto state = MakeState(GetParam());
    Random random(static_cast<unsigned>(60 + GetParam()));
    SerialWindow window;
    ScriptedHost boxes;
    SpiView view(*state, window, boxes, Metrics{});
    SetLength(*state, std::min(state->Memory.BufferLen, 2000));
    for (int round = 0; round < Rounds(40); ++round) {
        ScribbleGroups(*state, random);
        ScribbleSerial(*state, random);
        for (int slot = -1; slot <= kSpiSlots; ++slot) view.PressSlot(slot);
        RecorderCanvas canvas(300, 200);
        view.Paint(canvas);
        ExpectSaneOps(canvas);
    }
}

TEST(HostileSerial, AStateWithoutAModel) {
    const auto state = std::make_unique<InstrumentState>();
    Random random(1);
    SerialWindow window;
    ScriptedHost boxes;
    SerialView serial(*state, window, boxes, Metrics{});
    SpiView spi(*state, window, boxes, Metrics{});
    for (int event = 0; event < 200; ++event) {
        AnyEvent(serial, random);
        AnyEvent(spi, random);
        spi.PressSlot(random.Below(3));
    }
    RecorderCanvas canvas(300, 200);
    serial.Paint(canvas);
    EXPECT_EQ(canvas.TextsAt(0)[0], "Location");
}

}  // namespace
}  // namespace zu::test
