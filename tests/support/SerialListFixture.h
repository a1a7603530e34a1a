#pragma once

#include <memory>
#include <string>
#include <vector>

#include "display/SerialListView.h"
#include "support/ScriptedHost.h"
#include "support/TimingFixture.h"

namespace zu::test {

inline constexpr std::int32_t kSerialRow = 12;  ///< pixels of a row on a small screen

/// 200 samples shown plainly by their numbers, all cursors out of the way.
inline std::unique_ptr<InstrumentState> MakePlainSamples() {
    auto state = MakeState(13);
    SetLength(*state, 200);
    state->Cursors.Cur.fill(1000);
    state->Cursors.CursorDlgMode = 0;
    state->Serial.SerialEvents.assign(200, 0);
    for (auto* lines : {&state->Serial.SpiSI, &state->Serial.SpiSO}) {
        for (auto& words : *lines) words.assign(200, 0);
    }
    return state;
}

/// A start, the byte 0x50 with its acknowledge, and a stop, at every tenth sample from 10 on.
inline std::unique_ptr<InstrumentState> MakeSerialState() {
    auto state = MakePlainSamples();
    state->Serial.SerialMode = 1;
    std::size_t at = 10;
    for (const int code : {1, 3, 4, 3, 4, 3, 3, 3, 3, 15, 2}) {
        state->Serial.SerialEvents[at] = static_cast<std::uint8_t>(code);
        at += 10;
    }
    state->Serial.SerialFirst = 10;
    state->Serial.SerialLast = 110;
    return state;
}

inline void PutSpiByte(InstrumentState& state, std::size_t slot, std::size_t start, unsigned si,
                       unsigned so) {
    state.Serial.SpiSI[slot][start] = static_cast<std::uint16_t>(0x100 | si);
    state.Serial.SpiSO[slot][start] = static_cast<std::uint16_t>(0x100 | so);
    state.Serial.SpiSI[slot][start + 7] = state.Serial.SpiSO[slot][start + 7] = 0x1400;
}

/// Slot 0 "FLASH" on channels 0 to 3 with bytes at 20 and 40, slot 1 on 8 to 11 with bytes at 40 and 60.
inline std::unique_ptr<InstrumentState> MakeSpiState() {
    auto state = MakePlainSamples();
    for (GroupRecord& group : state->Groups) group.Mode = 0;
    for (const int slot : {0, 1}) {
        GroupRecord& group = state->Groups[static_cast<std::size_t>(slot) + 1];
        group.Mode = 3;
        group.Size = 4;
        for (int lane = 0; lane < 4; ++lane) {
            group.Channels[static_cast<std::size_t>(lane)] = 8 * slot + lane;
        }
    }
    state->Groups[1].Name = std::string_view("FLASH");
    state->Channels.ChannelName[1] = std::string_view("MOSI");
    state->Channels.ChannelName[2] = std::string_view("MISO");
    PutSpiByte(*state, 0, 20, 0x9F, 0xFF);
    PutSpiByte(*state, 0, 40, 0x0A, 0x05);
    PutSpiByte(*state, 1, 40, 0x01, 0x02);
    PutSpiByte(*state, 1, 60, 0x03, 0x04);
    state->Serial.SpiFirst = 20;
    state->Serial.SpiLast = 60;
    return state;
}

/// A window that writes down what a list's logic asks of it.
class SerialWindow final : public SerialViewHost {
  public:
    int Invalidations = 0;
    int Refreshes = 0;
    int Followers = 0;
    int Setups = 0;
    int GroupSetups = 0;
    std::vector<std::int32_t> Centered;
    std::vector<MenuSpec> Menus;
    int Choice = 0;  ///< answer to Popup

    void Invalidate() override { ++Invalidations; }
    void RefreshAll() override { ++Refreshes; }
    void RedrawFollowers() override { ++Followers; }
    void CenterTiming(std::int32_t sample) override { Centered.push_back(sample); }
    int Popup(const MenuSpec& menu, std::int32_t, std::int32_t) override {
        Menus.push_back(menu);
        return Choice;
    }
    void OpenSetup() override { ++Setups; }
    void OpenGroupSetup() override { ++GroupSetups; }
};

/// A press in the middle of row `row` of events, 0 the first.
inline MouseEvent OnRow(std::int32_t row, MouseButton button = MouseButton::Left) {
    MouseEvent event;
    event.X = 50;
    event.Y = (row + 1) * kSerialRow + kSerialRow / 2;
    event.Button = button;
    return event;
}

/// Colour in which the text at a point is drawn.
inline Rgb TextColorAt(const RecorderCanvas& canvas, std::int32_t x, std::int32_t y) {
    Rgb color = 0;
    for (const auto& op : canvas.Ops()) {
        if (op.What == RecorderCanvas::Kind::TextColor) color = op.Color;
        if (op.What == RecorderCanvas::Kind::Text && op.Area.Left == x && op.Area.Top == y) return color;
    }
    return 0xFFFFFFFF;
}

}  // namespace zu::test
