#include "core/Preferences.h"

#include <algorithm>
#include <array>

#include "core/DialogSizes.h"
#include "core/Frame.h"
#include "files/AtomicFile.h"
#include "files/Decimal.h"
#include "files/Ini.h"

namespace zu {
namespace {

constexpr std::int32_t kWindowMinimum = 50;
constexpr std::array<std::string_view, 5> kFileTypes{"ZU", "INI", "I2C", "PRN", "ZXT"};

/// One window's section: "def", rectangle, and "stat" where the window has one.
struct WindowBlock {
    std::string_view Section;
    WindowId Window;
    std::int32_t WindowRecord::*Valid;
    WindowRect WindowRecord::*Rect;
    std::int32_t WindowRecord::*Stat;  ///< null: the pattern editor is never reopened
    std::int32_t StatDefault = 0;
    bool OwnDefault = false;  ///< a missing edge is taken from kSerialDefault, not from the present value
};
constexpr WindowRect kSerialDefault{0, 0, 400, 200};

constexpr std::array kFirstWindows{
    WindowBlock{"Timing DLG", WindowId::Timing, &WindowRecord::TimingRectValid, &WindowRecord::TimingRect,
                &WindowRecord::TimingStat, 1},
    WindowBlock{"PG DLG", WindowId::Pattern, &WindowRecord::PatternRectValid, &WindowRecord::PatternRect,
                nullptr},
    WindowBlock{"Threshold", WindowId::Threshold, &WindowRecord::ThresholdRectValid,
                &WindowRecord::ThresholdRect, &WindowRecord::ThresholdStat},
    WindowBlock{"Statelist DLG", WindowId::StateList, &WindowRecord::StateRectValid, &WindowRecord::StateRect,
                &WindowRecord::StateStat},
};
constexpr std::array kSerialWindows{
    WindowBlock{"Serial DLG", WindowId::Serial, &WindowRecord::SerialRectValid, &WindowRecord::SerialRect,
                &WindowRecord::SerialStat, 0, true},
    WindowBlock{"SPIRect DLG", WindowId::Spi, &WindowRecord::SpiRectValid, &WindowRecord::SpiRect,
                &WindowRecord::SpiStat, 0, true},
};

WindowRect ReadRect(const IniFile& ini, std::string_view section, const WindowRect& absent) {
    return {ini.Number(section, "left", absent.Left), ini.Number(section, "top", absent.Top),
            ini.Number(section, "right", absent.Right), ini.Number(section, "bottom", absent.Bottom)};
}

void WriteRect(IniFile& ini, std::string_view section, const WindowRect& rect) {
    ini.Set(section, "left", rect.Left);
    ini.Set(section, "top", rect.Top);
    ini.Set(section, "right", rect.Right);
    ini.Set(section, "bottom", rect.Bottom);
}

void ReadWindow(App& app, const IniFile& ini, const WindowBlock& block) {
    WindowRecord& windows = app.State.Windows;
    windows.*block.Valid = ini.Number(block.Section, "def", 0);
    if (windows.*block.Valid != 0) {
        const WindowRect absent = block.OwnDefault ? kSerialDefault : windows.*block.Rect;
        windows.*block.Rect = SanitiseRect(ReadRect(ini, block.Section, absent), kWindowMinimum,
                                           kWindowMinimum, app.State.Screen);
    }
    if (block.Stat == nullptr || ini.Number(block.Section, "stat", block.StatDefault) == 0) return;
    windows.*block.Stat = 0;
    app.Shell.Open(block.Window);
}

void WriteWindow(IniFile& ini, const WindowRecord& windows, const WindowBlock& block) {
    ini.Set(block.Section, "def", windows.*block.Valid);
    WriteRect(ini, block.Section, windows.*block.Rect);
    if (block.Stat != nullptr) ini.Set(block.Section, "stat", windows.*block.Stat);
}

std::string Numbered(std::string_view name, std::size_t number) {
    return std::string(name) + std::to_string(number);
}

std::string TextOf(const IniFile& ini, std::string_view key) {
    return std::string(ini.Find("File", key).value_or(std::string_view()));
}

/// Only one of the two automatic saves has an effect: the one of settings and data wins.
void ReadAutosave(FileRecord& files, const IniFile& ini) {
    files.Autosave = static_cast<std::uint8_t>(ini.Number("File", "Autosave", 1));
    files.AutosaveData = static_cast<std::uint8_t>(ini.Number("File", "AutosaveData", 1));
    if (files.Autosave != 0 && files.AutosaveData != 0) files.Autosave = 0;
}

void ReadPlaces(InstrumentState& state, const IniFile& ini) {
    FileRecord& files = state.Files;
    state.Windows.DialogSizes = ParseDialogSizes(ini.Find("Dialogs", "Sizes").value_or(std::string_view()));
    files.LastFolder = TextOf(ini, "LastFolder");
    for (std::size_t i = 0; i < files.RecentFiles.size(); ++i) {
        files.RecentFiles[i] = TextOf(ini, Numbered("Recent", i + 1));
    }
}

void WritePlaces(IniFile& ini, const InstrumentState& state) {
    const FileRecord& files = state.Files;
    const auto& sizes = state.Windows.DialogSizes;
    if (!sizes.empty()) ini.Set("Dialogs", "Sizes", FormatDialogSizes(sizes));
    ini.Set("File", "LastFolder", files.LastFolder);
    for (std::size_t i = 0; i < files.RecentFiles.size(); ++i) {
        ini.Set("File", Numbered("Recent", i + 1), files.RecentFiles[i]);
    }
}

void WriteFileKeys(IniFile& ini, const FileRecord& files) {
    ini.Set("File", "DefSaveType", files.DefSaveType);
    ini.Set("File", "DefLoadType", files.DefLoadType);
    ini.Set("File", "DataLogCnt", files.DataLogCnt);
}

void WriteAll(IniFile& ini, const InstrumentState& state) {
    const WindowRecord& windows = state.Windows;
    WriteFileKeys(ini, state.Files);
    for (const WindowBlock& block : kFirstWindows) WriteWindow(ini, windows, block);
    ini.Set("Status", "Last Window selected", windows.LastWindow);
    WriteRect(ini, "Main", windows.MainRect);
    ini.Set("File", "Autosave", state.Files.Autosave);
    ini.Set("File", "AutosaveData", state.Files.AutosaveData);
    ini.Set("Cursor DLG", "mode", state.Cursors.CursorDlgMode);
    for (const WindowBlock& block : kSerialWindows) WriteWindow(ini, windows, block);
    ini.Set("Serial DLG", "Transfers", state.Serial.TransfersShown);
    for (std::size_t i = 0; i < state.Cursors.CursorMath.size(); ++i) {
        ini.Set("Cursor DLG", Numbered("Math", i + 1), state.Cursors.CursorMath[i]);
    }
    WritePlaces(ini, state);
    if (state.Identity.Emulated != 0) return;  // the last board's connection stays
    ini.Set("Hardware", "Address", state.Identity.AddressIndex);
    ini.Set("Hardware", "ComMode", state.Identity.ComMode);
}

bool IsPresent(const IniFile& ini, std::string_view key) {
    const auto text = ini.Find("Hardware", key);
    return text && !text->empty();
}

}  // namespace

void LoadPreferences(App& app) {
    constexpr std::array<std::int32_t, 5> kMathDefaults{0, 3, 6, 8, 9};
    InstrumentState& state = app.State;
    const IniFile ini = IniFile::Load(state.Files.PreferencesFile);
    state.Files.DataLogCnt = ini.Number("File", "DataLogCnt", 0);
    for (const WindowBlock& block : kFirstWindows) ReadWindow(app, ini, block);
    ReadAutosave(state.Files, ini);
    state.Cursors.CursorDlgMode = static_cast<std::int8_t>(ini.Number("Cursor DLG", "mode", 1));
    state.Windows.LastWindow = static_cast<std::uint8_t>(ini.Number("Status", "Last Window selected", 1));
    state.Serial.TransfersShown = static_cast<std::uint8_t>(ini.Number("Serial DLG", "Transfers", 1) != 0);
    for (const WindowBlock& block : kSerialWindows) ReadWindow(app, ini, block);
    for (std::size_t i = 0; i < kMathDefaults.size(); ++i) {
        state.Cursors.CursorMath[i] = ini.Number("Cursor DLG", Numbered("Math", i + 1), kMathDefaults[i]);
    }
    ReadPlaces(state, ini);
}

void SavePreferences(App& app) {
    const std::string& name = app.State.Files.PreferencesFile;
    IniFile ini = IniFile::Load(name);
    WriteAll(ini, app.State);
    const std::string error = WriteWholeFile(name, ini.Text());
    if (!error.empty()) app.Host.Remark(error);
}

WindowRect ReadMainRect(const InstrumentState& state, WindowRect fallback) {
    return ReadRect(IniFile::Load(state.Files.PreferencesFile), "Main", fallback);
}

void RememberMainMove(App& app, std::int32_t x, std::int32_t y) {
    if (app.MainMovesToIgnore > 0) {
        --app.MainMovesToIgnore;
        return;
    }
    WindowRect& rect = app.State.Windows.MainRect;
    rect.Left = x;
    rect.Top = std::max(y - kFrameOffset, 0);
}

void RememberMainSize(App& app, std::int32_t width, std::int32_t height) {
    WindowRect& rect = app.State.Windows.MainRect;
    rect.Right = rect.Left + width;
    rect.Bottom = rect.Top + height + kFrameOffset;
}

WindowRect MainClientRect(const WindowRect& stored) {
    return {stored.Left, stored.Top + kFrameOffset, stored.Right, stored.Bottom};
}

StoredConnection ReadStoredConnection(const InstrumentState& state) {
    const IniFile ini = IniFile::Load(state.Files.PreferencesFile);
    StoredConnection stored;
    stored.ComMode = ini.Number("Hardware", "ComMode", 0);
    stored.Address = ini.Number("Hardware", "Address", 0);
    stored.HasMode = IsPresent(ini, "ComMode") && stored.ComMode != 0;
    stored.HasAddress = IsPresent(ini, "Address");
    return stored;
}

std::string CheckedFileType(std::string_view type) {
    std::string upper = UpperCase(type);
    const bool known = std::find(kFileTypes.begin(), kFileTypes.end(), upper) != kFileTypes.end();
    return known ? upper : "ZU";
}

void ReadFileTypes(InstrumentState& state) {
    const IniFile ini = IniFile::Load(state.Files.PreferencesFile);
    state.Files.DefSaveType = CheckedFileType(TextOf(ini, "DefSaveType"));
    state.Files.DefLoadType = CheckedFileType(TextOf(ini, "DefLoadType"));
}

}  // namespace zu
