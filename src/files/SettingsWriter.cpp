#include "files/SettingsWriter.h"

#include <algorithm>
#include <initializer_list>
#include <span>

#include "files/AtomicFile.h"
#include "files/ClockNote.h"
#include "files/SettingsKeys.h"
#include "files/Translate.h"
#include "state/Catalogue.h"
#include "state/Rates.h"

namespace zu {
namespace {

constexpr int kDisplayColumns = 2;  // TimingDispInfoType of the measured columns

template <typename Array>
auto& Slot(Array& array, int index) {
    return array[static_cast<std::size_t>(index)];
}

/// The text under construction.
class IniWriter {
  public:
    void Section(std::string_view name) { text_.append("\r\n[").append(name).append("]\r\n"); }
    void Text(std::string_view key, std::string_view value) {
        text_.append(key).append("=").append(value).append("\r\n");
    }
    void Number(std::string_view key, std::int64_t value) { Text(key, std::to_string(value)); }
    /// "1,2,3"
    void Tuple(std::string_view key, std::initializer_list<std::int64_t> values) {
        std::string text;
        for (const std::int64_t value : values)
            text.append(text.empty() ? "" : ",").append(std::to_string(value));
        Text(key, text);
    }
    /// "1,2,3,"
    template <typename Values>
    void List(std::string_view key, const Values& values, int count) {
        std::string text;
        for (int i = 0; i < count; ++i) text.append(std::to_string(Slot(values, i))).append(",");
        Text(key, text);
    }
    void Color(std::string_view key, Rgb color) { Tuple(key, {Red(color), Green(color), Blue(color)}); }
    void Numbers(const InstrumentState& state, std::span<const keys::NumberKey> table) {
        for (const keys::NumberKey& key : table) {
            if (key.Use != keys::Use::Read) Number(key.Name, keys::Narrow(key.Type, key.Get(state)));
        }
    }
    void Append(std::string_view text) { text_.append(text); }
    std::string Take() { return std::move(text_); }

  private:
    std::string text_;
};

int Channels(const InstrumentState& state) {
    return std::clamp(state.Shape.TotalChannels, 0, kMaxChannels);
}

int Pods(const InstrumentState& state) {
    return std::clamp<int>(state.Shape.PodCount, 0, kMaxPods);
}

void WriteFile(IniWriter& out, const InstrumentState& state, const LocalTime& now) {
    out.Section("File");
    const auto n = [](int value) { return std::to_string(value); };
    out.Text("DateTime", n(now.Month) + "/" + n(now.Day) + "/" + n(now.Year) + " at " + n(now.Hour) + ":" +
                             n(now.Minute) + ":" + n(now.Second));
    const std::string_view model = Series(state.Identity.ModelSeries).ModelKey;
    if (!model.empty()) out.Text("Model", model);
    out.Number("FileVersion", 192);
    out.Text("Version", state.Identity.Version);
    out.Text("DataLogFileName", state.Files.DataLogFileName.View());
    out.Text("DataLogFormat", state.Files.DataLogFormat.View());
    out.Numbers(state, keys::kFile);
}

void WriteTimingWin(IniWriter& out, const InstrumentState& state) {
    const TimingRecord& timing = state.Timing;
    out.Section("TimingWin");
    out.Numbers(state, keys::kTimingWin);
    for (int i = 0; i < kTimingColumns && timing.TimingDispInfoType == kDisplayColumns; ++i) {
        const TimingColumn& column = Slot(timing.TimingDisp, i);
        out.Tuple(keys::Indexed("TimingDisp", i), {static_cast<std::int8_t>(column.Type),
                                                   static_cast<std::int8_t>(column.Range), column.TrigWord});
    }
    out.Numbers(state, keys::kTimingWinRest);
    for (int i = 0; i < Channels(state); ++i) {
        out.Color(keys::Indexed("Color", i), Slot(state.Channels.ChannelColor, i));
    }
    out.Number("TimingLines", timing.TimingLines);
    for (int i = 0; i < std::min(timing.TimingLines, kMaxLines); ++i) {
        out.Tuple(keys::Indexed("LSE", i),
                  {Slot(timing.LineSource, i), Slot(timing.LineStyle, i), Slot(timing.LineMode, i)});
    }
}

void WriteWindows(IniWriter& out, const InstrumentState& state) {
    out.Section("StateWin");
    out.Numbers(state, keys::kStateWin);
    out.Section("SerialWin");
    out.Numbers(state, keys::kSerialWin);
    out.Section("Cursor DLG");
    out.Numbers(state, keys::kCursorDlg);
    out.Section("Cursor");
    for (int i = 0; i < kCursorSlots; ++i) out.Number(keys::Indexed("Cur", i), Slot(state.Cursors.Cur, i));
    for (int i = 0; i < kCursorSlots; ++i) {
        out.Color(keys::Indexed("Color", i), Slot(state.Cursors.CursorColor, i));
    }
}

std::string_view SliceText(const TriggerRecord& trigger, int board, int word) {
    const TrigWordTable::Entry& entry = Slot(Slot(trigger.TrigWord.Board, board), word);
    return {entry.begin(), std::find(entry.begin(), entry.end(), '\0')};
}

/// Slices that say anything of a word, all names behind all slices. TotTrigWords counts the slices.
void WriteTrigWords(IniWriter& out, const InstrumentState& state) {
    std::array<bool, kTrigWords> used{};
    int slices = 0;
    const int boards = std::clamp(state.Shape.WordsPerTrig, 1, kMaxBoards);
    for (int word = 0; word < kTrigWords; ++word) {
        for (int board = 0; board < boards; ++board) {
            const std::string_view text = SliceText(state.Trigger, board, word);
            if (text.find_first_of("01") == std::string_view::npos) continue;
            out.Text(keys::SliceName(board, word), text);
            Slot(used, word) = true;
            ++slices;
        }
    }
    for (int word = 0; word < kTrigWords; ++word) {
        if (!Slot(used, word)) continue;
        out.Text(keys::Indexed("N", word), Slot(state.Trigger.TrigWordName, word).View());
    }
    out.Number("TotTrigWords", slices);
}

void WriteLevels(IniWriter& out, const TriggerRecord& trigger) {
    out.List("SeqList", trigger.SeqList, kTrigWords);
    out.List("TrigMatchMode", trigger.TrigMatchMode, kTrigWords);
    int comments = 0;
    for (int i = 0; i < kTrigWords; ++i) {
        if (Slot(trigger.TrigComment, i).Empty()) continue;
        out.Text(keys::Indexed("C", i), Slot(trigger.TrigComment, i).View());
        ++comments;
    }
    out.Number("TotTrigComments", comments);
    out.List("EdgeList16", trigger.EdgeList16, kTrigWords);
    for (const keys::ListKey& key : keys::kLevelLists) out.List(key.Name, trigger.*key.List, kTrigWords);
}

void WriteTrigger(IniWriter& out, const InstrumentState& state) {
    out.Section("Trigger");
    out.Numbers(state, keys::kTrigger);
    for (int i = 0; i < Pods(state); ++i)
        out.Number(keys::Indexed("AdjAddr", i), Slot(state.Pods.AdjAddr, i));
    WriteTrigWords(out, state);
    WriteLevels(out, state.Trigger);
    out.Numbers(state, keys::kTriggerCount);
    for (int i = 0; i < kThresholds; ++i) {
        out.Number(keys::Indexed("ThrHd", i), Slot(state.Pods.ThrHd, i));
        out.Number(keys::Indexed("PatGenV", i), Slot(state.Pods.PatGenV, i));
    }
}

std::string_view RateFileText(std::uint8_t code) {
    return code < kRates.size() ? kRates[code].FileText : std::string_view{};
}

void WriteClock(IniWriter& out, InstrumentState& state, Host& host) {
    const ClockRecord& clock = state.Clock;
    out.Section("Clock");
    for (int i = 0; i < kQualifierWords; ++i) {
        out.Text(keys::Indexed("ext", i), Slot(clock.ClockExt, i).View());
    }
    out.Number("Rate", clock.ClockRate);
    out.Text("RateStg", RateFileText(clock.ClockRate));
    out.Numbers(state, keys::kClock);
    // The file keeps the 4 that is gone from the state.
    ReplaceClockType4(state, host);
}

void WriteSearch(IniWriter& out, const InstrumentState& state) {
    out.Section("Search");
    out.Numbers(state, keys::kSearch);
    out.Text("SW", state.Search.SearchWord.View());
    out.Numbers(state, keys::kSearchRest);
    for (int i = 0; i < kMaxBoards; ++i) {
        const TrigWordTable::Entry& entry = Slot(state.Search.SearchWd, i);
        out.Text(keys::Indexed("Wd", i), {entry.begin(), std::find(entry.begin(), entry.end(), '\0')});
    }
    out.Section("Pattern");
    out.Numbers(state, keys::kPattern);
}

void WriteGroup(IniWriter& out, const GroupRecord& group, int index) {
    out.Section(keys::GroupSection(index));
    out.Number("M", group.Mode);
    out.Text("N", group.Name.View());
    out.Number("S", group.Size);
    out.List("L", group.Channels, std::min(group.Size, kGroupSlots));
    out.Color(keys::Indexed("Color", index), group.Color);
    out.Number("B", group.BitOrder);
    out.Number("A", group.CsActiveHigh);
    out.Number("T", group.TwosComplement);
}

void WriteGroups(IniWriter& out, const InstrumentState& state) {
    int total = 0;
    for (int i = 0; i < kGroupCount; ++i) {
        if (Slot(state.Groups, i).Size <= 0) continue;
        WriteGroup(out, Slot(state.Groups, i), i);
        ++total;
    }
    out.Section("Group");
    out.Number("TotGroups", total);
}

void WriteChannelData(IniWriter& out, const InstrumentState& state) {
    out.Section("ChannelData");
    for (int i = 0; i < Channels(state); ++i) {
        out.Text(keys::Indexed("N", i), Slot(state.Channels.ChannelName, i).View());
    }
    for (int i = 0; i < Channels(state); ++i) {
        out.Number(keys::Indexed("I", i), Slot(state.Channels.ChannelInvert, i));
    }
}

void WriteScreen(IniWriter& out, const InstrumentState& state) {
    out.Section("Screen");
    out.Numbers(state, keys::kScreen);
    for (int i = 0; i < kGroupCount; ++i) {
        out.Number(keys::Indexed("L", i), Slot(state.StateList.ScreenL, i));
        out.Number(keys::Indexed("F", i), Slot(state.StateList.ScreenF, i));
    }
    for (int i = 0; i < static_cast<int>(state.Screen.ScreenColor.size()); ++i) {
        out.Color(keys::Indexed("Color", i), Slot(state.Screen.ScreenColor, i));
    }
    out.Section("Glitch");
    out.Numbers(state, keys::kGlitch);
    out.Section("Pulse");
    out.Numbers(state, keys::kPulse);
}

void WriteHardware(IniWriter& out, const InstrumentState& state) {
    out.Section("Hardware");
    out.Numbers(state, keys::kHardware);
    for (int i = 0; i < Pods(state); ++i)
        out.Number(keys::Indexed("Pod", i), Slot(state.Pods.HardwarePod, i));
    out.Section("Print");
    out.Numbers(state, keys::kPrint);
    out.Section("Capture");
    out.Numbers(state, keys::kCapture);
    out.Section("PatEditor");
    out.Numbers(state, keys::kPatEditor);
}

}  // namespace

std::string SettingsText(InstrumentState& state, Host& host) {
    IniWriter out;
    WriteFile(out, state, host.Now());
    WriteTimingWin(out, state);
    WriteWindows(out, state);
    WriteTrigger(out, state);
    WriteClock(out, state, host);
    WriteSearch(out, state);
    WriteGroups(out, state);
    WriteChannelData(out, state);
    WriteScreen(out, state);
    WriteHardware(out, state);
    out.Append(TranslateText(state.Translate));
    return out.Take();
}

bool SaveSettingsFile(InstrumentState& state, Host& host, const std::string& path) {
    AtomicFile file(path);
    // A file that does not open leaves the state alone, the clock type too.
    if (!file.Error().empty()) return FinishSave(file, host);
    const std::string text = SettingsText(state, host);
    file.Append(text);
    return FinishSave(file, host);
}

}  // namespace zu
