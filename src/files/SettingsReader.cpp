#include "files/SettingsReader.h"

#include <algorithm>

#include "files/ClockNote.h"
#include "files/Decimal.h"
#include "files/SettingsInput.h"
#include "files/SettingsTrigger.h"
#include "files/Translate.h"
#include "state/Model.h"
#include "state/Rates.h"

namespace zu {
namespace {

// What changed with which file version.
constexpr std::int32_t kPodModesRenumbered = 184;
constexpr std::int32_t kRateByText = 185;
constexpr std::int32_t kLinesInOneKey = 187;
constexpr std::int32_t kCountedLines = 188;

constexpr int kDisplayColumns = 2;  // TimingDispInfoType of the measured columns
constexpr int kOldLineRows = 230;
constexpr std::uint8_t kUnknownRate = 6;
constexpr int kSerialModes = 3;
constexpr std::size_t kQualifierRead = 8;
constexpr std::size_t kQualifierStored = 9;

template <typename Array>
auto& Slot(Array& array, int index) {
    return array[static_cast<std::size_t>(index)];
}

int Channels(const InstrumentState& state) {
    return std::clamp(state.Shape.TotalChannels, 0, kMaxChannels);
}

void ReadFile(InstrumentState& state, const IniText& ini) {
    const SettingsInput in(ini, "File");
    FileRecord& file = state.Files;
    file.FileVersion = 0;  // a file without the key is the oldest
    in.Number("FileVersion", file.FileVersion);
    in.Text("DataLogFileName", file.DataLogFileName);
    in.Text("DataLogFormat", file.DataLogFormat);
    in.Numbers(state, keys::kFile);
    if (in.Find("ExportZU")) {
        file.ExportZU = file.ExportZU == 1 ? 1 : 0;
        file.ExportPG = file.ExportZU == 1 ? 0 : 1;
    }
    std::int32_t count = file.DataLogCnt;
    const auto stored = in.Find("DataLogSaveCnt");
    if (file.FileVersion < kCountedLines && stored) count = static_cast<std::int32_t>(ParseDecimal(*stored));
    file.DataLogCnt = std::max(file.DataLogCnt, count);
}

/// The four switches of the oldest files: column k shows type k + 1 or nothing.
void ReadColumnSwitches(InstrumentState& state, const SettingsInput& in) {
    constexpr std::array kSwitches{"DispNums", "DispNames", "DispTrigWord", "DispCurVal"};
    state.Timing.TimingDisp.fill({});
    for (std::size_t i = 0; i < kSwitches.size(); ++i) {
        std::int8_t on = 0;
        in.Number(kSwitches[i], on);
        state.Timing.TimingDisp[i].Type = on != 0 ? static_cast<std::uint8_t>(i + 1) : std::uint8_t{0};
    }
}

void ReadOldColumns(InstrumentState& state, const SettingsInput& in) {
    if (state.Timing.TimingDispInfoType != kDisplayColumns) return ReadColumnSwitches(state, in);
    for (int i = 0; i < kTimingColumns; ++i) {
        TimingColumn& column = Slot(state.Timing.TimingDisp, i);
        in.Number(keys::Indexed("TimingDispCol", i), column.Type);
        in.Number(keys::Indexed("TimingDispMeasureRange", i), column.Range);
        in.Number(keys::Indexed("TimingDispColTrigWord", i), column.TrigWord);
    }
}

void ReadColumns(InstrumentState& state, const SettingsInput& in) {
    for (int i = 0; i < kTimingColumns; ++i) {
        const auto value = in.Find(keys::Indexed("TimingDisp", i));
        if (!value) continue;
        const auto [type, range, word] = ParseTuple(*value);
        Slot(state.Timing.TimingDisp, i) = {static_cast<std::uint8_t>(type), static_cast<std::uint8_t>(range),
                                            static_cast<std::int8_t>(word)};
    }
}

/// The oldest display list ends at the first missing source or one with a low byte of 0.
void ReadOldestLines(TimingRecord& timing, const SettingsInput& in) {
    for (int i = 0; i < kOldLineRows; ++i) {
        std::int32_t source = 0;
        in.Number(keys::Indexed("L", i), source);
        if (static_cast<std::uint8_t>(source) == 0) break;
        Slot(timing.LineSource, i) = source;
        std::int8_t style = static_cast<std::int8_t>(Slot(timing.LineStyle, i));
        in.Number(keys::Indexed("S", i), style);
        Slot(timing.LineStyle, i) = static_cast<std::uint8_t>(style);
    }
}

void ReadOldLines(TimingRecord& timing, const SettingsInput& in) {
    if (!in.Find("LS0")) return ReadOldestLines(timing, in);
    for (int i = 0; i < kOldLineRows; ++i) {
        if (const auto line = in.Find(keys::Indexed("LS", i))) {
            const auto [source, style, none] = ParseTuple(*line);
            Slot(timing.LineSource, i) = static_cast<std::int32_t>(source);
            Slot(timing.LineStyle, i) = static_cast<std::uint8_t>(style);
        }
        if (const auto more = in.Find(keys::Indexed("LSExt", i))) {
            Slot(timing.LineMode, i) = static_cast<std::int8_t>(ParseTuple(*more)[0]);
        }
    }
}

void ReadLines(TimingRecord& timing, const SettingsInput& in, int rows) {
    for (int i = 0; i < rows; ++i) {
        const auto line = in.Find(keys::Indexed("LSE", i));
        if (!line) continue;
        const auto [source, style, mode] = ParseTuple(*line);
        Slot(timing.LineSource, i) = static_cast<std::int32_t>(source);
        Slot(timing.LineStyle, i) = static_cast<std::uint8_t>(style);
        Slot(timing.LineMode, i) = static_cast<std::int8_t>(mode);
    }
}

void ReadTimingWin(InstrumentState& state, const IniText& ini) {
    const SettingsInput in(ini, "TimingWin");
    TimingRecord& timing = state.Timing;
    const std::int32_t version = state.Files.FileVersion;
    in.Numbers(state, keys::kTimingWin);
    in.Numbers(state, keys::kTimingWinRest);
    for (int i = 0; i < Channels(state); ++i) {
        in.Color(keys::Indexed("Color", i), Slot(state.Channels.ChannelColor, i));
    }
    in.Number("TimingLines", timing.TimingLines);
    timing.TimingLines = std::clamp(timing.TimingLines, 0, kMaxLines);
    if (version < kLinesInOneKey) {
        ReadOldColumns(state, in);
        ReadOldLines(timing, in);
    } else {
        ReadColumns(state, in);
        if (!in.Find("LSE0")) ReadOldestLines(timing, in);
        ReadLines(timing, in, version < kCountedLines ? kOldLineRows : timing.TimingLines);
    }
}

/// Takes a bus mode over without touching any group.
void ChangeSerialMode(InstrumentState& state, int mode) {
    state.Serial.SerialMode =
        mode >= 0 && mode < kSerialModes ? static_cast<std::int8_t>(mode) : std::int8_t{0};
}

void ReadWindows(InstrumentState& state, const IniText& ini) {
    SettingsInput(ini, "StateWin").Numbers(state, keys::kStateWin);
    const SettingsInput serial(ini, "SerialWin");
    serial.Numbers(state, keys::kSerialWin);
    // The mode counts only as far as the serial view knows it.
    ChangeSerialMode(state, state.Serial.SerialMode);
    SettingsInput(ini, "Cursor DLG").Numbers(state, keys::kCursorDlg);
    const SettingsInput cursor(ini, "Cursor");
    for (int i = 0; i < kCursorSlots; ++i) {
        std::int32_t& position = Slot(state.Cursors.Cur, i);
        cursor.Number(keys::Indexed("Cur", i), position);
        // A painted value that differs makes the cursor window repaint.
        Slot(state.Cursors.Cur, i + kCursorSlots) = static_cast<std::int32_t>(std::int64_t{position} + 1);
    }
    for (int i = 0; i < kCursorSlots; ++i) {
        cursor.Color(keys::Indexed("Color", i), Slot(state.Cursors.CursorColor, i));
    }
}

std::string_view WithoutLeadingBlanks(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}

/// Rate code of a file's rate text: exactly as written, else but for leading blanks, else 50 MSa.
std::uint8_t RateOfText(std::string_view text) {
    for (std::size_t i = 0; i < kRates.size(); ++i) {
        if (kRates[i].FileText == text) return static_cast<std::uint8_t>(i);
    }
    for (std::size_t i = 0; i < kRates.size(); ++i) {
        if (WithoutLeadingBlanks(kRates[i].FileText) == WithoutLeadingBlanks(text)) {
            return static_cast<std::uint8_t>(i);
        }
    }
    return kUnknownRate;
}

void ReadRate(InstrumentState& state, const SettingsInput& in) {
    std::uint8_t& rate = state.Clock.ClockRate;
    if (state.Files.FileVersion >= kRateByText) {
        if (const auto text = in.Find("RateStg")) rate = RateOfText(*text);
    } else if (in.Number("Rate", rate)) {
        ++rate;  // the 1 GSa code came in front since
    }
}

void ReadClock(InstrumentState& state, Host& host, const IniText& ini) {
    const SettingsInput in(ini, "Clock");
    for (int i = 0; i < kQualifierWords; ++i) {
        const auto value = in.Find(keys::Indexed("ext", i));
        if (!value) continue;
        std::string word(value->substr(0, std::min(value->find('\0'), kQualifierRead)));
        word.resize(kQualifierStored, 'x');
        Slot(state.Clock.ClockExt, i) = word;
    }
    ReadRate(state, in);
    in.Numbers(state, keys::kClock);
    ReplaceClockType4(state, host);
}

void ReadSearch(InstrumentState& state, const IniText& ini) {
    const SettingsInput in(ini, "Search");
    in.Numbers(state, keys::kSearch);
    in.Text("SW", state.Search.SearchWord);
    in.Numbers(state, keys::kSearchRest);
    for (int i = 0; i < kMaxBoards; ++i) {
        in.Entry(keys::Indexed("Wd", i), Slot(state.Search.SearchWd, i), kTrigWordText - 1);
    }
    SettingsInput(ini, "Pattern").Numbers(state, keys::kPattern);
}

/// Entries up to the last comma, as many as the group has channels; without any the group is empty.
void ReadGroupChannels(GroupRecord& group, std::string_view list) {
    if (list.empty()) group.Size = 0;
    for (int i = 0; i < group.Size; ++i) {
        const std::size_t comma = list.find(',');
        if (comma == std::string_view::npos) break;
        Slot(group.Channels, i) = static_cast<std::int32_t>(ParseDecimal(list.substr(0, comma)));
        list.remove_prefix(comma + 1);
    }
}

/// Whether the section has a name, by which groups are counted.
bool ReadGroup(GroupRecord& group, const SettingsInput& in, int index) {
    in.Number("M", group.Mode);
    const bool named = in.Text("N", group.Name);
    in.Number("S", group.Size);
    group.Size = std::clamp(group.Size, 0, kGroupSlots);
    ReadGroupChannels(group, in.Find("L").value_or(""));
    in.Color(keys::Indexed("Color", index), group.Color);
    in.Number("B", group.BitOrder);
    in.Number("A", group.CsActiveHigh);
    in.Number("T", group.TwosComplement);
    return named;
}

void ReadGroups(InstrumentState& state, const IniText& ini) {
    ResetGroups(state);
    std::int32_t left = kGroupCount;
    if (SettingsInput(ini, "Group").Number("TotGroups", left)) {
        // Groups that the file does not hold are empty; their channels stay as the default list has them.
        for (GroupRecord& group : state.Groups) group.Size = 0;
    }
    for (int i = 0; i < kGroupCount && left > 0; ++i) {
        const SettingsInput in(ini, keys::GroupSection(i));
        if (in.Present() && ReadGroup(Slot(state.Groups, i), in, i)) --left;
    }
    ComputeGroupWidths(state);
}

void ReadScreen(InstrumentState& state, const IniText& ini) {
    const SettingsInput in(ini, "Screen");
    in.Numbers(state, keys::kScreen);
    for (int i = 0; i < kGroupCount; ++i) {
        in.Number(keys::Indexed("L", i), Slot(state.StateList.ScreenL, i));
        in.Number(keys::Indexed("F", i), Slot(state.StateList.ScreenF, i));
    }
    for (int i = 0; i < static_cast<int>(state.Screen.ScreenColor.size()); ++i) {
        in.Color(keys::Indexed("Color", i), Slot(state.Screen.ScreenColor, i));
    }
    SettingsInput(ini, "Glitch").Numbers(state, keys::kGlitch);
    SettingsInput(ini, "Print").Numbers(state, keys::kPrint);
}

/// Pod modes of the oldest files: logic and pattern were numbered the other way round.
std::int8_t RenumberedPodMode(std::int32_t old) {
    if (old == 0) return 1;
    if (old == 1) return 0;
    if (old == 2) return 3;
    return static_cast<std::int8_t>(old);
}

void ReadOldPods(InstrumentState& state, const SettingsInput& in) {
    for (int i = 0; i < std::min<int>(state.Shape.PodCount, kMaxPods); ++i) {
        std::int32_t mode = 0;
        if (in.Number(keys::Indexed("Pod", i), mode))
            Slot(state.Pods.HardwarePod, i) = RenumberedPodMode(mode);
    }
}

void ReadHardware(InstrumentState& state, const IniText& ini) {
    const SettingsInput in(ini, "Hardware");
    in.Numbers(state, keys::kHardware);
    if (state.Files.FileVersion < kPodModesRenumbered) {
        ReadOldPods(state, in);
    } else {
        for (int i = 0; i < kMaxPods; ++i) {
            in.Number(keys::Indexed("Pod", i), Slot(state.Pods.HardwarePod, i));
        }
    }
    // Mode 1 only; a save and a read-out clear mode 2 as well.
    for (int i = 0; i < kMaxPods; ++i) {
        if (Slot(state.Pods.HardwarePod, i) == 1) Slot(state.Pods.AdjAddr, i) = 0;
    }
}

void ReadChannelData(InstrumentState& state, const IniText& ini) {
    SettingsInput(ini, "Pulse").Numbers(state, keys::kPulse);
    const SettingsInput in(ini, "ChannelData");
    for (int i = 0; i < Channels(state); ++i) {
        in.Text(keys::Indexed("N", i), Slot(state.Channels.ChannelName, i));
        in.Number(keys::Indexed("I", i), Slot(state.Channels.ChannelInvert, i));
    }
}

/// Takes one line off the end for each channel that this model lacks. The count falls and no row moves, so
/// that it is the last rows that go.
void ShortenLines(InstrumentState& state) {
    TimingRecord& timing = state.Timing;
    const int rows = timing.TimingLines;
    for (int i = 0; i < rows; ++i) {
        const std::int32_t source = Slot(timing.LineSource, i);
        const bool missing = source >= state.Shape.TotalChannels && source < kFirstGroupLine;
        if (missing && timing.TimingLines > 1) --timing.TimingLines;
    }
}

}  // namespace

bool ReadSettings(InstrumentState& state, Host& host, const std::string& path, bool quiet) {
    const auto ini = IniText::Load(path);
    if (ini) {
        ReadSettings(state, host, *ini);
    } else if (!quiet) {
        host.Message("Error: File not found.", "");
    }
    return ini.has_value();
}

void ReadSettings(InstrumentState& state, Host& host, const IniText& ini) {
    // Later steps use what earlier ones read: the version, the line count, the pod modes.
    state.Pods.AdjAddr.fill(0);
    ReadFile(state, ini);
    ReadTimingWin(state, ini);
    ReadWindows(state, ini);
    ReadTrigger(state, ini);
    ReadClock(state, host, ini);
    ReadSearch(state, ini);
    ReadGroups(state, ini);
    ReadScreen(state, ini);
    ReadHardware(state, ini);
    ReadChannelData(state, ini);
    ShortenLines(state);
    SettingsInput(ini, "Capture").Numbers(state, keys::kCapture);
    SettingsInput(ini, "PatEditor").Numbers(state, keys::kPatEditor);
    ReadTranslate(state.Translate, ini);
}

}  // namespace zu
