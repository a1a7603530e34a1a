#pragma once

#include <memory>
#include <random>
#include <span>
#include <string>

#include "files/SettingsKeys.h"
#include "support/StartState.h"

namespace zu::test {

/// States with random contents.
class RandomState {
  public:
    /// Whether only values are drawn that the format brings back as they are.
    enum class Values : std::uint8_t { Kept, Any };

    RandomState(unsigned seed, Values values) : random_(seed), any_(values == Values::Any) {}

    std::unique_ptr<InstrumentState> Make(int row, int series) {
        auto state = StartState(row, series);
        Numbers(*state);
        Files(*state);
        Timing(*state);
        Views(*state);
        Trigger(*state);
        Clock(*state);
        Groups(*state);
        Pods(*state);
        Table(state->Translate);
        return state;
    }

  private:
    std::int64_t Between(std::int64_t low, std::int64_t high) {
        return std::uniform_int_distribution<std::int64_t>(low, high)(random_);
    }
    bool OneIn(int n) { return Between(1, n) == 1; }

    /// Small and extreme numbers as often as all others. No -1, which 32 bits do not bring back.
    std::int32_t Number32() {
        std::int64_t value = Between(INT32_MIN, INT32_MAX);
        if (OneIn(3)) value = Between(-3, 300);
        if (OneIn(10)) value = OneIn(2) ? INT32_MIN : INT32_MAX;
        return static_cast<std::int32_t>(value == -1 && !any_ ? -2 : value);
    }
    std::uint8_t Byte() { return static_cast<std::uint8_t>(Between(0, 255)); }
    Rgb Color() { return static_cast<Rgb>(Between(0, 0xFFFFFF)); }

    /// Any bytes but NUL and LF, brackets and equal signs among them.
    std::string Text(std::size_t longest, std::size_t shortest = 0) {
        constexpr std::string_view kOdd = "[]=;\r \"'%,\t\xFF";
        std::string text(static_cast<std::size_t>(Between(static_cast<std::int64_t>(shortest),
                                                          static_cast<std::int64_t>(longest))),
                         ' ');
        for (char& c : text) {
            c = OneIn(4) ? kOdd[static_cast<std::size_t>(Between(0, 11))]
                         : static_cast<char>(Between(1, 255));
            if (c == '\n') c = 'n';
        }
        return text;
    }

    void Numbers(InstrumentState& state) {
        const std::span<const keys::NumberKey> kTables[] = {
            keys::kFile,       keys::kTimingWin, keys::kTimingWinRest, keys::kStateWin,  keys::kSerialWin,
            keys::kCursorDlg,  keys::kTrigger,   keys::kTriggerCount,  keys::kClock,     keys::kSearch,
            keys::kSearchRest, keys::kPattern,   keys::kScreen,        keys::kGlitch,    keys::kPulse,
            keys::kHardware,   keys::kPrint,     keys::kCapture,       keys::kPatEditor,
        };
        for (const auto table : kTables) {
            for (const keys::NumberKey& key : table) {
                if (key.Use == keys::Use::Both) key.Set(state, keys::Narrow(key.Type, Number32()));
            }
        }
        if (any_) return;
        state.Files.ExportZU = static_cast<std::int8_t>(Between(0, 1));
        state.Files.ExportPG = static_cast<std::int8_t>(1 - state.Files.ExportZU);
        state.Serial.SerialMode = static_cast<std::int8_t>(Between(0, 2));
        if (state.Clock.ClockType == 4) state.Clock.ClockType = 5;
        if (OneIn(2)) state.Timing.TimingDispInfoType = 2;
    }

    void Files(InstrumentState& state) {
        state.Files.DataLogFileName = Text(498);
        state.Files.DataLogFormat = Text(4);
    }

    void Timing(InstrumentState& state) {
        TimingRecord& timing = state.Timing;
        for (TimingColumn& column : timing.TimingDisp) {
            column = {Byte(), Byte(), static_cast<std::int8_t>(Byte())};
        }
        timing.TimingLines = static_cast<std::int32_t>(Between(0, kMaxLines));
        for (std::size_t i = 0; i < kMaxLines; ++i) {
            std::int32_t source = Number32();
            // Lines of channels that the model lacks shorten the list with every load.
            if (source >= state.Shape.TotalChannels && source < kFirstGroupLine) source = kFirstGroupLine;
            timing.LineSource[i] = source;
            timing.LineStyle[i] = Byte();
            timing.LineMode[i] = static_cast<std::int8_t>(Byte());
        }
    }

    void Views(InstrumentState& state) {
        for (std::int32_t& position : state.Cursors.Cur) position = Number32();
        for (Rgb& color : state.Cursors.CursorColor) color = Color();
        for (Rgb& color : state.Screen.ScreenColor) color = Color();
        for (Rgb& color : state.Channels.ChannelColor) color = Color();
        for (std::size_t i = 0; i < kGroupCount; ++i) {
            state.StateList.ScreenL[i] = static_cast<std::int8_t>(Byte());
            state.StateList.ScreenF[i] = static_cast<std::int8_t>(Byte());
        }
        for (std::size_t i = 0; i < kMaxChannels; ++i) {
            state.Channels.ChannelName[i] = Text(OneIn(20) ? 230 : 12);
            state.Channels.ChannelInvert[i] = static_cast<std::int8_t>(Byte());
        }
        state.Search.SearchWord = Text(64);
        for (auto& entry : state.Search.SearchWd) SetEntry(entry, Text(45));
    }

    static void SetEntry(TrigWordTable::Entry& entry, std::string_view text) {
        entry.fill('\0');
        std::copy(text.begin(), text.end(), entry.begin());
    }

    void Trigger(InstrumentState& state) {
        TriggerRecord& trigger = state.Trigger;
        const auto boards = static_cast<std::size_t>(state.Shape.WordsPerTrig);
        for (std::size_t word = 0; word < kTrigWords; ++word) {
            if (OneIn(3)) continue;
            for (std::size_t board = 0; board < boards; ++board) {
                TrigWordTable::Entry& entry = trigger.TrigWord.Board[board][word];
                for (char& c : entry) c = c == 'X' && !OneIn(3) ? (OneIn(2) ? '0' : '1') : c;
            }
            trigger.TrigWordName[word] = Text(14);
        }
        for (std::size_t i = 0; i < kTrigWords; ++i) {
            if (OneIn(2)) trigger.TrigComment[i] = Text(79, 1);
        }
        Lists(trigger);
    }

    void Lists(TriggerRecord& trigger) {
        // Twelve digits and their commas fill the field through which a list is read.
        const std::size_t entries = any_ ? kTrigListSlots : 12;
        for (auto* list : {&trigger.SeqList, &trigger.ElseList, &trigger.CountList, &trigger.ModeList,
                           &trigger.TrigDelayRateList}) {
            for (std::size_t i = 0; i < entries; ++i) {
                (*list)[i] = any_ ? Number32() : static_cast<std::int32_t>(Between(0, 9));
            }
        }
        for (auto* list : {&trigger.EdgeList16, &trigger.TrigMatchMode}) {
            for (std::size_t i = 0; i < entries; ++i) {
                (*list)[i] = static_cast<std::uint8_t>(any_ ? Byte() : Between(0, 1));
            }
        }
    }

    void Clock(InstrumentState& state) {
        state.Clock.ClockRate = static_cast<std::uint8_t>(Between(0, any_ ? 255 : 34));
        for (auto& word : state.Clock.ClockExt) {
            std::string text = Text(8);
            if (!any_) text.resize(9, 'x');
            word = text;
        }
    }

    void Groups(InstrumentState& state) {
        for (GroupRecord& group : state.Groups) {
            group.Size = static_cast<std::int32_t>(OneIn(3) ? 0 : Between(1, OneIn(5) ? 160 : 8));
            group.Name = Text(15);
            for (std::int32_t& channel : group.Channels) channel = Number32();
            group.Color = Color();
            group.TwosComplement = static_cast<std::int8_t>(Byte());
            group.CsActiveHigh = Byte();
            group.BitOrder = Number32();
            group.Mode = static_cast<std::int8_t>(Byte());
        }
    }

    void Pods(InstrumentState& state) {
        for (std::size_t i = 0; i < static_cast<std::size_t>(state.Shape.PodCount); ++i) {
            state.Pods.HardwarePod[i] = static_cast<std::int8_t>(OneIn(4) ? Byte() : Between(0, 4));
            state.Pods.AdjAddr[i] = state.Pods.HardwarePod[i] == 1 ? 0 : Number32();
        }
        for (std::size_t i = 0; i < kThresholds; ++i) {
            state.Pods.ThrHd[i] = static_cast<std::uint16_t>(Between(0, 65535));
            state.Pods.PatGenV[i] = static_cast<std::uint16_t>(Between(0, 65535));
        }
        state.Pods.PatGenV[0] = static_cast<std::uint16_t>(Between(14, 101));
    }

    void Table(TranslateRecord& table) {
        const auto used = static_cast<std::size_t>(Between(0, OneIn(4) ? kTranslateEntries : 5));
        for (std::size_t i = 0; i < used; ++i) {
            if (any_ && OneIn(10)) continue;  // a gap
            table.Entry[i].Bit = Text(32, 1);
            table.Entry[i].Stg = Text(19);
            table.Entry[i].Skip = OneIn(3) ? -1 : Number32();
        }
    }

    std::mt19937 random_;
    bool any_;
};

}  // namespace zu::test
