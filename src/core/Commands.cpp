#include "core/Commands.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "core/Capture.h"
#include "core/FileCommands.h"
#include "core/HardwareAddress.h"
#include "core/MemoryMenu.h"
#include "core/RateRules.h"
#include "core/SceneSetup.h"
#include "serial/SpiDecoder.h"

namespace zu {
namespace {

constexpr int kPerchWideB = 27;
constexpr int kCode400MHz = 2;

// Entries whose window or work the program does not have yet.
constexpr std::array kNotOffered{
    CommandId::FileExport,     CommandId::FilePrint,   CommandId::DataLog,        CommandId::DataLogSettings,
    CommandId::ClockExternal,  CommandId::TriggerWord, CommandId::PodSetup,       CommandId::ThresholdVoltage,
    CommandId::PatternVoltage, CommandId::PatternEdit, CommandId::TranslateTable, CommandId::WindowPattern,
    CommandId::HelpContents,
};

/// A window's command and open flag.
struct WindowRow {
    CommandId Command;
    WindowId Window;
    std::int32_t WindowRecord::*Flag;
};
constexpr std::array kWindows{
    WindowRow{CommandId::WindowTiming, WindowId::Timing, &WindowRecord::TimingStat},
    WindowRow{CommandId::WindowStateList, WindowId::StateList, &WindowRecord::StateStat},
    WindowRow{CommandId::WindowSerial, WindowId::Serial, &WindowRecord::SerialStat},
    WindowRow{CommandId::WindowSpi, WindowId::Spi, &WindowRecord::SpiStat},
    WindowRow{CommandId::WindowCursor, WindowId::Cursor, &WindowRecord::CursorDlgStat},
    WindowRow{CommandId::WindowPattern, WindowId::Pattern, &WindowRecord::PatEditStat},
    WindowRow{CommandId::ThresholdVoltage, WindowId::Threshold, &WindowRecord::ThresholdStat},
};

const WindowRow* WindowOf(CommandId id) {
    const auto* row = std::find_if(kWindows.begin(), kWindows.end(),
                                   [id](const WindowRow& window) { return window.Command == id; });
    return row == kWindows.end() ? nullptr : row;
}

/// Places of a command in the families; -1 where it does not belong.
struct Family {
    explicit Family(CommandId id)
        : LoadSlot(FamilyIndex(id, CommandId::LoadSlot0, CommandId::LoadSlotLast)),
          SaveSlot(FamilyIndex(id, CommandId::SaveSlot0, CommandId::SaveSlotLast)),
          CaptureMode(FamilyIndex(id, CommandId::CaptureMode0, CommandId::CaptureModeLast)),
          Rate(FamilyIndex(id, CommandId::Rate0, CommandId::RateLast)),
          Memory(FamilyIndex(id, CommandId::Memory0, CommandId::MemoryLast)),
          Zoom(FamilyIndex(id, CommandId::Zoom0, CommandId::ZoomLast)),
          Scene(FamilyIndex(id, CommandId::Scene0, CommandId::SceneLast)),
          Clock(ClockTypeOf(id)) {}

    int LoadSlot, SaveSlot, CaptureMode, Rate, Memory, Zoom, Scene, Clock;
};

void Check(CommandState& entry, bool checked) {
    entry.Checkable = true;
    entry.Checked = checked;
}

void QueryRate(const InstrumentState& state, int code, CommandState& entry) {
    constexpr int kLatched = 5;  // the external type that samples at code 5
    const int type = state.Clock.ClockType;
    const bool current = type == 0 && code == state.Clock.ClockRate;
    Check(entry, current || (type == kLatched && code == 5));
    if (!RateEntryEnabled(state.Identity.HardwareType, code)) {
        entry.Enabled = false;
        entry.WhyNot = "This model does not sample at this rate";
    }
    if (code == kCode400MHz && state.Identity.HardwareType == kPerchWideB) entry.Text += " (16 Channel)";
}

void QueryMemory(const InstrumentState& state, int mode, CommandState& entry) {
    const MemoryEntry memory = MemoryMenuTexts(state)[static_cast<std::size_t>(mode)];
    entry.Text = memory.Text;
    entry.Enabled = entry.Enabled && memory.Enabled;
    Check(entry, memory.Checked);
}

void QueryFamilies(const InstrumentState& state, const Family& family, CommandState& entry) {
    if (family.CaptureMode >= 0) Check(entry, family.CaptureMode == state.Capture.CaptureMode);
    if (family.Rate >= 0) QueryRate(state, family.Rate, entry);
    if (family.Memory >= 0) QueryMemory(state, family.Memory, entry);
    if (family.Clock >= 0) Check(entry, family.Clock == state.Clock.ClockType);
    if (family.Zoom >= 0) {
        const std::int32_t zoom = kZoomTable[static_cast<std::size_t>(family.Zoom)].Zoom;
        Check(entry, zoom == state.Timing.ScreenZoom);
    }
}

void QuerySwitches(const InstrumentState& state, CommandId id, CommandState& entry) {
    if (id == CommandId::AutosaveData) Check(entry, state.Files.AutosaveData != 0);
    if (id == CommandId::DataLog) Check(entry, state.Files.DataLog != 0);
    if (id == CommandId::LoopNormal) Check(entry, state.Capture.CaptureLoopMode == 0);
    if (id == CommandId::LoopFaster) Check(entry, state.Capture.CaptureLoopMode != 0);
    if (id == CommandId::ClearBufferOnGo) Check(entry, state.Capture.ClearBufferOnGo != 0);
    if (id == CommandId::TriggerOut) Check(entry, state.Trigger.TrigOut != 0);
    if (id == CommandId::TimingGrid) Check(entry, state.Timing.TimingGrid != 0);
    if (id == CommandId::SerialTransfers) Check(entry, state.Serial.TransfersShown != 0);
    if (const WindowRow* window = WindowOf(id)) Check(entry, state.Windows.*window->Flag != 0);
}

bool OfSimulation(CommandId id) {
    return id == CommandId::ReplayFile || FamilyIndex(id, CommandId::Scene0, CommandId::SceneLast) >= 0;
}

/// Whether Stop has anything to end: a capture, the tick that emulation leaves behind, a pattern output.
bool CanStop(const App& app) {
    const InstrumentState& state = app.State;
    constexpr int kPatternsOnly = 4;
    const auto& modes = state.Pods.HardwarePod;
    const bool gives =
        std::any_of(modes.begin(), modes.end(), [](int mode) { return mode == 1 || mode == 2; });
    const bool patterns = state.Capture.CaptureMode == kPatternsOnly || gives;
    return state.Capture.CaptureState != 0 || app.Poll.TimerRunning ||
           (patterns && state.Identity.Emulated == 0);
}

std::string_view WhyNoTransfers(const InstrumentState& state) {
    constexpr std::int8_t kI2c = 1;
    if (state.Serial.SerialMode != kI2c) return "Define an I2C group first";
    return state.Windows.SerialStat != 0 ? std::string_view() : "Open the serial window first";
}

/// Why a command has nothing to work on at this moment; empty when it can run.
std::string_view WhyNotNow(const App& app, CommandId id) {
    const InstrumentState& state = app.State;
    const bool running = state.Capture.CaptureState != 0;
    if (!IsOffered(id)) return "Not in this version";
    if (id == CommandId::Stop && !CanStop(app)) return "Nothing runs that could be stopped";
    if (id == CommandId::End && !running) return "No capture runs that could be ended";
    // Detection would stop a running capture.
    if (id == CommandId::HardwareAddress && running) return "Stop the capture first";
    if (id == CommandId::SerialTransfers) return WhyNoTransfers(state);
    const bool steps = id == CommandId::RateUp || id == CommandId::RateDown;
    if (steps && state.Clock.ClockType != 0) return "An external clock sets the rate";
    return {};
}

bool RunFamily(App& app, const Family& family) {
    if (family.LoadSlot >= 0) {
        LoadSlot(app, family.LoadSlot);
    } else if (family.SaveSlot >= 0) {
        SaveSlot(app, family.SaveSlot);
    } else if (family.CaptureMode >= 0) {
        SetCaptureMode(app, family.CaptureMode);
    } else if (family.Rate >= 0) {
        SetRate(app, family.Rate);
    } else if (family.Memory >= 0) {
        SetMemoryMode(app, -1, family.Memory);
        app.Shell.UpdateBars();
    } else if (family.Scene >= 0) {
        ShowScene(app, family.Scene);
    } else if (family.Clock > 0) {
        SetClockType(app, family.Clock);
    } else if (family.Clock == 0) {
        SetInternalClock(app);
    } else {
        return false;
    }
    return true;
}

void Toggle(std::uint8_t& flag) {
    flag = flag == 0 ? 1 : 0;
}

void ToggleGrid(App& app) {
    Toggle(app.State.Timing.TimingGrid);
    RedrawIfOpen(app, WindowId::Timing);
}

void ToggleTransfers(App& app) {
    Toggle(app.State.Serial.TransfersShown);
    RedrawIfOpen(app, WindowId::Serial);
}

void ToggleAutosaveData(FileRecord& files) {
    Toggle(files.AutosaveData);
    if (files.AutosaveData != 0) files.Autosave = 0;
}

/// Decodes what a window lists. While it was closed, samples may have come that nobody decoded.
void DecodeFor(InstrumentState& state, WindowId window) {
    if (window == WindowId::Serial) DecodeSerialGroup(state);
    if (window == WindowId::Spi) DecodeSPI(state);
}

void ToggleWindow(App& app, const WindowRow& window) {
    if (app.State.Windows.*window.Flag != 0) {
        app.Shell.Close(window.Window);
    } else {
        DecodeFor(app.State, window.Window);
        app.Shell.Open(window.Window);
    }
}

void SetLoopMode(App& app, std::uint8_t mode) {
    {
        const CapturePause pause(app);
        app.State.Capture.CaptureLoopMode = mode;
    }
    StopPollingWhenIdle(app);
}

/// A command that stands alone.
struct SingleRow {
    CommandId Command;
    void (*Run)(App&);
};
constexpr std::array kSingles{
    SingleRow{CommandId::FileOpen, OpenCommand},
    SingleRow{CommandId::FileSave, SaveCommand},
    SingleRow{CommandId::AutosaveData, [](App& app) { ToggleAutosaveData(app.State.Files); }},
    SingleRow{CommandId::Go, Go},
    SingleRow{CommandId::Stop, Stop},
    SingleRow{CommandId::End, End},
    SingleRow{CommandId::TriggerMode, CycleCaptureMode},
    SingleRow{CommandId::LoopNormal, [](App& app) { SetLoopMode(app, 0); }},
    SingleRow{CommandId::LoopFaster, [](App& app) { SetLoopMode(app, 1); }},
    SingleRow{CommandId::ClearBufferOnGo, [](App& app) { Toggle(app.State.Capture.ClearBufferOnGo); }},
    SingleRow{CommandId::ClearDataBuffer, ClearDataBuffer},
    SingleRow{CommandId::TriggerOut, [](App& app) { SetTrigOut(app, app.State.Trigger.TrigOut == 0); }},
    SingleRow{CommandId::ReplayFile, ReplayCommand},
    SingleRow{CommandId::RateUp, RateUp},
    SingleRow{CommandId::RateDown, RateDown},
    SingleRow{CommandId::HardwareAddress, ChangeHardwareAddress},
    SingleRow{CommandId::BoardStatus,
              [](App& app) { app.Host.Message(BoardStatusText(app.State), "status"); }},
    SingleRow{CommandId::TimingGrid, ToggleGrid},
    SingleRow{CommandId::SerialTransfers, ToggleTransfers},
    // The entry is there for the switch that keeps it, and does nothing.
    SingleRow{CommandId::IdentifyAnalyzer, [](App&) {}},
};

bool RunSingle(App& app, CommandId id) {
    for (const SingleRow& row : kSingles) {
        if (row.Command != id) continue;
        row.Run(app);
        return true;
    }
    return false;
}

}  // namespace

bool IsOffered(CommandId id) {
    return std::find(kNotOffered.begin(), kNotOffered.end(), id) == kNotOffered.end();
}

void PrepareMenu(App& app) {
    CorrectRate(app);
}

CommandState QueryCommand(const App& app, CommandId id) {
    CommandState entry;
    if (Index(id) >= kCommandCount) return {true, false, false, false, {}, {}};
    entry.Removed = app.Removed.test(Index(id)) || (OfSimulation(id) && app.Simulated == nullptr);
    entry.WhyNot = WhyNotNow(app, id);
    entry.Enabled = !entry.Removed && entry.WhyNot.empty();
    entry.Text = Traits(id).Text;
    const Family family(id);
    QueryFamilies(app.State, family, entry);
    if (family.Scene >= 0) Check(entry, family.Scene == app.Scene);
    QuerySwitches(app.State, id, entry);
    return entry;
}

bool RunCommand(App& app, CommandId id) {
    if (!QueryCommand(app, id).Enabled) return false;
    if (const WindowRow* window = WindowOf(id)) {
        ToggleWindow(app, *window);
        return true;
    }
    return RunFamily(app, Family(id)) || RunSingle(app, id);
}

void CycleCaptureMode(App& app) {
    SetCaptureMode(app, (app.State.Capture.CaptureMode + 1) % 3);
}

void SetCaptureMode(App& app, int mode) {
    if (mode < 0 || mode >= kCaptureModeCount) return;
    {
        const CapturePause pause(app);
        app.State.Capture.CaptureMode = static_cast<std::uint8_t>(mode);
        app.Shell.UpdateBars();
    }
    StopPollingWhenIdle(app);
}

std::string AboutText(const InstrumentState& state) {
    std::string text = state.Identity.Version;
    if (state.Command.CmdPid == 0) return text;
    std::array<char, 16> pid{};
    std::snprintf(pid.data(), pid.size(), " (PID_%.4X)", static_cast<unsigned>(state.Command.CmdPid));
    return text + pid.data();
}

}  // namespace zu
