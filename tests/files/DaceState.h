#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "support/StartState.h"

namespace zu::test {

/// A state in which every field that tests/data/files/dace.ini holds differs from its start value.
class DaceState {
  public:
    static std::unique_ptr<InstrumentState> Make() {
        auto state = StartState(16, 1);
        Files(*state);
        Timing(*state);
        Windows(*state);
        Trigger(*state);
        ClockAndSearch(*state);
        Groups(*state);
        Hardware(*state);
        Editor(*state);
        Table(state->Translate);
        return state;
    }

  private:
    static void Files(InstrumentState& state) {
        FileRecord& file = state.Files;
        file.DataLogFileName = "run 7";
        file.DataLogFormat = "CSV";
        file.DataLog = 1;
        file.ExportG = -3;
        file.ExportB = 0;
        file.ExportS = 2;
        file.ExportE = 1;
        file.ExportZU = 0;
        file.ExportPG = 1;
        file.GlitchLen = 3;
        file.PulseLen = 4;
    }

    static void Timing(InstrumentState& state) {
        TimingRecord& timing = state.Timing;
        timing.ZoomOrigin = -2;
        timing.TimingDataPos = 1234;
        timing.TimingGrid = 0;
        timing.TimingDispInfoType = 2;
        for (std::uint8_t i = 0; i < kTimingColumns; ++i) {
            timing.TimingDisp[i] = {static_cast<std::uint8_t>(8 - i), i, static_cast<std::int8_t>(i + 1)};
        }
        timing.TimingChPos = 5;
        timing.ScreenZoom = -4;
        for (unsigned i = 0; i < 24; ++i) state.Channels.ChannelColor[i] = MakeRgb(i, 2 * i, 3 * i);
        timing.TimingLines = 4;
        timing.LineSource = {0, 160, 23, 195};
        timing.LineStyle = {5, 0, 11, 6};
        timing.LineMode = {0, 2, 5, -1};
    }

    static void Windows(InstrumentState& state) {
        state.Windows.TimingStat = 1;
        state.Windows.SerialStat = 1;
        state.StateList.StateDataPos = -7;
        state.StateList.StateGroupPos = 3;
        state.StateList.StateDisp = 2;
        state.Serial.SerialMode = 2;
        state.Serial.SerialGroup = 4;
        state.Cursors.CursorDlgMode = 0;
        state.Cursors.Cur = {10, 20, -30, 40, 50, 60, 11, 21, -29, 41, 51, 61};
        for (unsigned i = 0; i < kCursorSlots; ++i)
            state.Cursors.CursorColor[i] = MakeRgb(255 - i, i, 10 * i);
        for (std::size_t i = 0; i < kGroupCount; ++i) {
            state.StateList.ScreenL[i] = static_cast<std::int8_t>(29 - i);
            state.StateList.ScreenF[i] = static_cast<std::int8_t>(i % 5);
        }
    }

    static void SetEntry(TrigWordTable::Entry& entry, std::string_view text) {
        entry.fill('\0');
        std::copy(text.begin(), text.end(), entry.begin());
    }

    static void Trigger(InstrumentState& state) {
        TriggerRecord& trigger = state.Trigger;
        state.Capture.ClearBufferOnGo = 0;
        trigger.TrigWordEditGroupBase = 3;
        state.Capture.CaptureLoopMode = 1;
        trigger.TrigLevelsMatchWizard = 0;
        state.Pods.AdjAddr = {11, 22, -33};
        SetEntry(trigger.TrigWord.Board[0][0], "XXXXXXXX XXXXXXXX XXXXXXXX XXXXXX01");
        SetEntry(trigger.TrigWord.Board[0][15], "1XXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX");
        trigger.TrigWordName[0] = "first word";
        trigger.SeqList = {1, 16};
        trigger.TrigMatchMode[0] = 0;
        trigger.TrigComment[0] = "starts here";
        trigger.TrigComment[7] = "; [odd] = text";
        trigger.EdgeList16[1] = 0;
        trigger.ElseList[0] = 3;
        trigger.CountList[0] = 1048575;
        trigger.ModeList[1] = 1;
        trigger.TrigDelayRateList[0] = 24;
        trigger.TrigDelayRateList[15] = -5;
        trigger.TrigCnt = 200;
        trigger.TrigCntMd = 2;
        for (std::uint16_t i = 0; i < kThresholds; ++i) {
            state.Pods.ThrHd[i] = static_cast<std::uint16_t>(100 + i);
            state.Pods.PatGenV[i] = static_cast<std::uint16_t>(65535 - i);
        }
    }

    static void ClockAndSearch(InstrumentState& state) {
        state.Clock.ClockExt[0] = "01XX10XXX";
        state.Clock.ClockExt[15] = "0011";
        state.Clock.ClockRate = 34;
        state.Clock.ClockType = 3;
        state.Clock.ClockEdge = 1;
        SearchRecord& search = state.Search;
        search.SearchBase = 0;
        search.SearchCh = -1;
        search.SearchWord = "01X";
        search.SearchLen = 3;
        search.SearchMode = 'S';
        SetEntry(search.SearchWd[0], "0XXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX");
        SetEntry(search.SearchWd[1], "1XXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX");
        SetEntry(search.SearchWd[2], "0XXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX");
        SetEntry(search.SearchWd[3], "1XXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX");
        state.Pattern.PatternOutputMode = 2;
    }

    static void Groups(InstrumentState& state) {
        for (GroupRecord& group : state.Groups) group.Size = 0;
        GroupRecord& bus = state.Groups[0];
        bus.Name = "bus";
        bus.Size = 3;
        bus.Channels = {2, 1, 0};
        bus.Color = MakeRgb(1, 2, 3);
        bus.TwosComplement = 1;
        GroupRecord& spi = state.Groups[29];
        spi.Name = "SPI flash, U3";
        spi.Mode = 6;
        spi.Size = 4;
        spi.Channels = {20, 21, 22, 23};
        spi.Color = MakeRgb(0, 128, 255);
        spi.BitOrder = 1;
        spi.CsActiveHigh = 1;
        for (std::size_t i = 0; i < 24; ++i) {
            state.Channels.ChannelName[i] = "line " + std::to_string(i);
            state.Channels.ChannelInvert[i] = static_cast<std::int8_t>(i % 2);
        }
    }

    static void Hardware(InstrumentState& state) {
        state.Memory.HardwareMode = 1;
        state.Memory.HardwareMux = -1;
        state.Pods.HardwarePod = {0, 1, 2};
        state.Print = {
            .PrintMode = 2, .PrintRange = 1, .PrintStart = 17, .PrintEnd = 1700, .PrintColorMd = 0};
        state.Capture.CaptureMode = 4;
    }

    static void Editor(InstrumentState& state) {
        PatternRecord& pattern = state.Pattern;
        pattern.PatInc = 1;
        pattern.PatZoom = -8;
        pattern.PatCountStart = 4000000000U;
        pattern.PatCountEnd = 4294967295U;
        pattern.PatCountDir = 1;
        pattern.PatStep = 3000000000U;
        pattern.PatChStart = -2;
        pattern.PatChEnd = 23;
        pattern.PatAddrStart = 5;
        pattern.PatAddrEnd = 99;
        pattern.PatSpiGroup = 29;
    }

    static void Table(TranslateRecord& table) {
        using namespace std::string_view_literals;
        table.Entry[0] = {"10X"sv, "read"sv, 0, 4, 6};
        table.Entry[2] = {"11111111000000001111111100000000"sv, "nineteen characters"sv, -1, 0, 0};
        table.Entry[512] = {"X"sv, "rest"sv, 3, 0, 0};
        table.TranslateCount = 2;
    }
};

}  // namespace zu::test
