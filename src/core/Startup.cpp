#include "core/Startup.h"

#include "core/Capture.h"
#include "core/Commands.h"
#include "core/Defaults.h"
#include "core/FileCommands.h"
#include "core/HardwareAddress.h"
#include "core/Paths.h"
#include "core/Preferences.h"
#include "core/RateRules.h"
#include "core/SceneSetup.h"
#include "files/Paths.h"
#include "files/SettingsWriter.h"
#include "hw/sim/SimSpec.h"
#include "state/Catalogue.h"
#include "state/Model.h"

namespace zu {
namespace {

constexpr int kSeriesDace = 1;
constexpr int kSeriesPerch = 5;
constexpr std::uint8_t kIsa = 8;
constexpr std::int32_t kUsb = 9;
constexpr std::uint16_t kUsbIndex = 7;
constexpr std::int32_t kLargestIndex = 9;
constexpr std::uint8_t kUsbFound = 15;

void BeginState(InstrumentState& state) {
    state.Identity.HwAddressMenu = 1;
    state.Identity.OsFamily = 2;
    state.Timing.ScreenZoom = 1;
}

void IdentifySystem(App& app) {
    constexpr std::uint32_t kConsumerFamily = 1;
    constexpr std::uint32_t kNtFamily = 2;
    if (app.Platform.PlatformId != kNtFamily && app.Platform.PlatformId != kConsumerFamily) {
        app.Host.Message("OS type not detected. Call Ostrand", "ERROR");
        app.Host.EndProcess(1);
    }
    app.State.Identity.OsFamily = app.Platform.PlatformId == kNtFamily ? 0 : 1;
    SetupOSFunctions(app.Hardware, app.State.Identity.OsFamily);
}

void BeginIdentity(InstrumentState& state) {
    state.Identity.Version = Series(state.Identity.ModelSeries).VersionText;
    state.Identity.Emulated = 1;  // until a board is proved
    BuildFileNames(state);
}

/// The connection of the last run, or the USB that the command line forces.
StoredConnection RecallConnection(App& app) {
    IdentityRecord& identity = app.State.Identity;
    StoredConnection stored = ReadStoredConnection(app.State);
    if (app.State.Command.CmdPid != 0) stored = {true, true, kUsb, kUsbIndex};
    if (const auto simulated = ParseSimulate(app.State.Command.Simulate)) {
        const SimConnection connection = ConnectionOf(*simulated);
        stored = {true, true, connection.ComMode, connection.AddressIndex};
    }
    identity.ComMode = stored.ComMode;
    const bool inTable = stored.Address >= 0 && stored.Address <= kLargestIndex;
    identity.AddressIndex = inTable ? static_cast<std::uint16_t>(stored.Address) : std::uint16_t{0};
    if (identity.ComMode == kUsb) identity.AddressIndex = kUsbIndex;
    return stored;
}

/// False when USB was stored and no USB instrument is there; the ISA addresses stand in then.
bool UsbAnswers(App& app) {
    IdentityRecord& identity = app.State.Identity;
    if (identity.ModelSeries == kSeriesPerch || identity.ComMode != kUsb) return true;
    if (UsbDetect(app.Hardware) >= kUsbFound) return true;
    identity.ComMode = kIsa;
    identity.AddressIndex = 0;
    SetupIO(app.Hardware, app.State, 0, kIsa);
    return false;
}

/// Probes the stored address, twice when a board answers.
bool ProbeStored(App& app) {
    IdentityRecord& identity = app.State.Identity;
    if (UsbAnswers(app)) return FindStoredBoard(app.Hardware, app.State, identity.AddressIndex) != 0;
    identity.FoundTable[identity.AddressIndex] = 0;
    return false;
}

void DetectInstrument(App& app) {
    if (StartsAsViewer(app.State.Command) && app.State.Command.Simulate.empty()) return;
    const StoredConnection stored = RecallConnection(app);
    const bool any = stored.HasMode || stored.HasAddress;
    const bool both = stored.HasMode && stored.HasAddress;
    if (any) SelectConnection(app);
    if (both && ProbeStored(app)) return;
    if (!both) SelectFirstConnection(app);
    AskForAddress(app);
}

void SettleModel(App& app) {
    TakeBoardAddress(app.State.Identity);
    InitDefaults(app);
}

/// The one way in which a script can ask whether an instrument is connected.
void AnswerScript(App& app) {
    if (app.State.Command.CmdReturnZuStat == 0) return;
    const bool found = app.State.Identity.Emulated == 0;
    app.Host.PrintLine(found ? "ZU found" : "ZU NOT found");
    app.Host.EndProcess(found ? 1 : 0);
}

void RestoreWindows(App& app) {
    if (app.State.Command.NoIoSwitch != 0) app.Removed.set(Index(CommandId::IdentifyAnalyzer));
    app.Shell.Open(WindowId::Cursor);
    LoadPreferences(app);
    ComputeGroupWidths(app.State);
}

void OpenTiming(App& app) {
    if (app.State.Windows.TimingStat == 0) app.Shell.Open(WindowId::Timing);
}

/// The default data file, else the settings of older programs, else a Timing window of the defaults.
bool LoadDefaultFile(App& app) {
    const FileRecord& files = app.State.Files;
    if (LoadFile(app, "ZU", files.DefaultDataFile, false) != LoadStatus::FailedSilently) return true;
    if (LoadFile(app, "INI", files.SettingsSlot[0], false) == LoadStatus::Loaded) {
        app.Host.Message("Old format default settings file found. A new format file will be created. ",
                         "Note:");
        SaveSettingsFile(app.State, app.Host, files.DefaultDataFile);
        return true;
    }
    OpenTiming(app);
    return false;
}

/// Loads a file that the command line names and puts its name in the title.
bool LoadNamedFile(App& app, std::string_view type, const std::string& name) {
    if (LoadFile(app, type, name, false) == LoadStatus::FailedSilently) {
        app.Host.Message(name, "Error: File did not load");
        return false;
    }
    app.Host.SetWindowTitle(name);
    return true;
}

std::string_view TypeOfDocument(const std::string& name) {
    const std::string extension = ExtensionOf(name);
    if (extension == "INI") return "INI";
    if (extension == "ZXT") return "ZXT";
    return extension == "CSV" ? "CSV" : "ZU";
}

bool LoadDocument(App& app, const std::string& name) {
    if (!LoadNamedFile(app, TypeOfDocument(name), name)) return false;
    RememberFile(app.State.Files, name);
    return true;
}

void LoadStartFile(App& app) {
    const CommandOptions& options = app.State.Command;
    bool loaded = false;
    if (!options.CmdLoadFile.empty()) {
        loaded = LoadNamedFile(app, "ZU", options.CmdLoadFile);
    } else if (!options.DocumentFile.empty()) {
        loaded = LoadDocument(app, options.DocumentFile);
    } else if (!options.Scene.empty()) {
        OpenTiming(app);
    } else {
        loaded = LoadDefaultFile(app);
    }
    if (!options.CmdCsvFile.empty()) LoadNamedFile(app, "CSV", options.CmdCsvFile);
    if (loaded || app.State.Identity.Emulated != 0) return;
    // A board knows only the depths of its modes, not the one that the record starts with.
    SetMemoryMode(app, -1, app.State.Memory.HardwareMode);
}

void OfferModelMenu(App& app) {
    RefreshAll(app);
    OfferModelChoices(app);
    app.Shell.UpdateMenus();
    app.Shell.UpdateBars();
}

void StartWork(App& app) {
    const CommandOptions& options = app.State.Command;
    const bool live = app.Simulated != nullptr && ShowSceneNamed(app, options.Scene);
    if (live) app.State.Capture.CaptureMode = 0;
    if (!options.CmdLoadFile.empty()) app.Host.SetWindowTitle(options.CmdLoadFile);
    if (live || options.CmdAutoGo != 0) Go(app);
}

void PowerDown(App& app) {
    const IdentityRecord& identity = app.State.Identity;
    const bool driven = identity.OsFamily != 0 || DriverOpen(app.Hardware);
    if (identity.ModelSeries == kSeriesPerch || (identity.ModelSeries == kSeriesDace && driven)) {
        ZUPower(app.Hardware);
    }
}

/// A viewer was opened for one file or model, and a scene for a look at it: both leave what the bench keeps
/// from run to run alone.
void Autosave(App& app) {
    const FileRecord& files = app.State.Files;
    const CommandOptions& options = app.State.Command;
    if (files.AutosaveData == 0 || StartsAsViewer(options) || !options.Scene.empty()) return;
    WriteDataFile(app.State, app.Host, files.DefaultDataFile);
}

}  // namespace

void OfferModelChoices(App& app) {
    MarkAllRates(app.State.Clock);
    MarkRowRates(app.State.Clock, app.State.Identity.HardwareType);
    app.Removed |= RemovedCommands(app.State);
}

void StartInstrument(App& app) {
    BeginState(app.State);
    IdentifySystem(app);
    BeginIdentity(app.State);
    DetectInstrument(app);
    SettleModel(app);
}

void RunStartupSequence(App& app) {
    StartInstrument(app);
    AnswerScript(app);
    RestoreWindows(app);
    LoadStartFile(app);
    ReadFileTypes(app.State);
    OfferModelMenu(app);
    StartWork(app);
}

void Shutdown(App& app) {
    Autosave(app);
    app.State.Capture.CaptureState = 0;
    StopPollingWhenIdle(app);
    app.State.Buffer.Free();
    SavePreferences(app);
    PowerDown(app);
    CloseHardware(app.Hardware);
}

}  // namespace zu
