#include "core/FileCommands.h"

#include <algorithm>
#include <array>
#include <optional>

#include "core/Capture.h"
#include "core/Paths.h"
#include "core/RateRules.h"
#include "files/Decimal.h"
#include "files/Ini.h"
#include "files/Paths.h"
#include "files/SettingsReader.h"
#include "files/SettingsWriter.h"
#include "files/Translate.h"
#include "serial/SpiDecoder.h"

namespace zu {
namespace {

constexpr std::size_t kLongestName = 500;
constexpr int kPerchSmallA = 25;
constexpr std::string_view kAnyDataFile = "*.ZU";

struct FilterRow {
    std::string_view Type;
    std::string_view Filters;
};
// One order for each type, the first row for every other.
constexpr std::array kOpenFilters{
    FilterRow{"ZU",
              "Data File (*.ZU)|*.zu|Settings File (*.INI)|*.INI|Comma Sep [data] (*.CSV)|*.csv|"
              "Translate table (*.ZXT)|*.ZXT||"},
    FilterRow{"INI",
              "Settings File (*.INI)|*.INI|Data File (*.ZU)|*.zu|Comma Sep [data] (*.CSV)|*.csv|"
              "Translate table (*.ZXT)|*.ZXT||"},
    FilterRow{"CSV",
              "Comma Sep [data] (*.CSV)|*.csv|Data File (*.ZU)|*.zu|Settings File (*.INI)|*.INI|"
              "Translate table (*.ZXT)|*.ZXT||"},
    FilterRow{"ZXT",
              "Translate table (*.ZXT)|*.ZXT|Data File (*.ZU)|*.zu|Settings File (*.INI)|*.INI|"
              "Comma Sep [data] (*.CSV)|*.csv||"},
};
constexpr std::array kSaveFilters{
    FilterRow{"ZU", "Data File (*.ZU)|*.zu|Settings File (*.INI)|*.INI|Translate table (*.ZXT)|*.ZXT||"},
    FilterRow{"INI", "Settings File (*.INI)|*.INI|Data File (*.ZU)|*.zu|Translate table (*.ZXT)|*.ZXT||"},
    FilterRow{"ZXT", "Translate table (*.ZXT)|*.ZXT|Data File (*.ZU)|*.zu|Settings File (*.INI)|*.INI||"},
};
constexpr std::array<std::string_view, 4> kOpenTypes{"CSV", "ZU", "INI", "ZXT"};
constexpr std::array<std::string_view, 6> kSaveTypes{"INI", "ZXT", "ZU", "CSV", "PRN", "I2C"};

template <std::size_t Size>
bool Contains(const std::array<std::string_view, Size>& types, std::string_view type) {
    return std::find(types.begin(), types.end(), type) != types.end();
}

template <std::size_t Size>
const FilterRow& FiltersFor(const std::array<FilterRow, Size>& rows, std::string_view type) {
    for (const FilterRow& row : rows) {
        if (row.Type == type) return row;
    }
    return rows[0];
}

FileRequest RequestFor(const FileRecord& files, bool save) {
    const FilterRow& row =
        save ? FiltersFor(kSaveFilters, files.DefSaveType) : FiltersFor(kOpenFilters, files.DefLoadType);
    FileRequest request;
    request.Save = save;
    request.InitialName = JoinPath(files.LastFolder, kAnyDataFile);
    request.Filters = row.Filters;
    request.DefaultExtension = row.Type;
    return request;
}

/// Open flags of the windows that a settings file decides on.
struct OpenWindow {
    WindowId Window;
    std::int32_t WindowRecord::*Flag;
    std::string_view Section;
};
constexpr OpenWindow kTimingWindow{WindowId::Timing, &WindowRecord::TimingStat, "TimingWin"};
constexpr OpenWindow kStateWindow{WindowId::StateList, &WindowRecord::StateStat, "StateWin"};
constexpr OpenWindow kSerialWindow{WindowId::Serial, &WindowRecord::SerialStat, "SerialWin"};

/// What is asked of the settings file before and after its settings are read.
class LoadOfSettings {
  public:
    LoadOfSettings(App& app, const std::string& path, bool quiet)
        : app_(app), path_(path), quiet_(quiet), ini_(IniText::Load(path)) {}

    /// False when the user refuses a file of other hardware. A file that cannot be opened changes nothing.
    bool Run() {
        if (!ini_) {
            ReadSettings(app_.State, app_.Host, path_, quiet_);
            return true;
        }
        before_ = app_.State.Windows;
        if (IsOtherHardware() && Refused()) {
            ApplyPresentMode();
            return false;
        }
        ReadSettings(app_.State, app_.Host, *ini_);
        SetPatternScale(app_.State.Pattern);
        ApplyPresentMode();
        for (const OpenWindow& window : {kTimingWindow, kStateWindow, kSerialWindow}) ReadFlag(window);
        Reconcile(kSerialWindow);
        DropPatternPods(app_.State);
        Reconcile(kTimingWindow);
        Reconcile(kStateWindow);
        return true;
    }

  private:
    [[nodiscard]] bool IsOtherHardware() const {
        const auto type = ini_->Number("Hardware", "Type");
        return type && static_cast<std::uint8_t>(*type) != app_.State.Identity.HardwareType;
    }

    bool Refused() {
        return app_.Host.Ask("The settings file does not match the installed hardware. Abort load?",
                             "Warning");
    }

    void ApplyPresentMode() {
        const MemoryRecord& memory = app_.State.Memory;
        SetMemoryMode(app_, memory.HardwareMux, memory.HardwareMode);
    }

    static void SetPatternScale(PatternRecord& pattern) {
        if (pattern.PatZoom < 0) {
            pattern.PatZoomScale = -static_cast<double>(pattern.PatZoom);
        } else {
            pattern.PatZoomScale = 1.0 / std::max(pattern.PatZoom, 1);
        }
    }

    void ReadFlag(const OpenWindow& window) {
        const auto open = ini_->Int32(window.Section, "Stat");
        if (open) app_.State.Windows.*window.Flag = *open;
    }

    /// Opens or closes a window whose flag the file has changed, through its own command.
    void Reconcile(const OpenWindow& window) {
        std::int32_t& flag = app_.State.Windows.*window.Flag;
        const bool was = before_.*window.Flag != 0;
        const bool wanted = flag != 0;
        if (was == wanted) return;
        flag = before_.*window.Flag;
        if (wanted) {
            app_.Shell.Open(window.Window);
        } else {
            app_.Shell.Close(window.Window);
        }
    }

    /// This model drives no patterns, whatever the file says.
    static void DropPatternPods(InstrumentState& state) {
        if (state.Identity.HardwareType != kPerchSmallA) return;
        for (std::size_t pod = 0; pod < 3; ++pod) {
            if (IsPatternMode(state.Pods.HardwarePod[pod])) state.Pods.HardwarePod[pod] = 0;
        }
    }

    App& app_;
    const std::string& path_;
    bool quiet_;
    std::optional<IniText> ini_;
    WindowRecord before_;
};

DataFileHooks HooksFor(App& app) {
    DataFileHooks hooks;
    hooks.ApplyMemoryMode = [&app](int mux, int mode) { SetMemoryMode(app, mux, mode); };
    hooks.LoadCsv = [&app](const std::string&) {
        app.Host.Message("This version does not read CSV files.", "File not loaded");
    };
    hooks.DecodeSerial = [&app] { DecodeSerialGroup(app.State); };
    hooks.RedrawWindows = [&app] {
        RefreshAll(app);
        RedrawIfOpen(app, WindowId::Pattern);
    };
    return hooks;
}

LoadStatus LoadTranslate(App& app, const std::string& path, bool showErrors) {
    if (LoadTranslateFile(app.State.Translate, path)) return LoadStatus::Loaded;
    if (!showErrors) return LoadStatus::FailedSilently;
    app.Host.Remark("Could not open " + path + ".");
    return LoadStatus::Failed;
}

LoadStatus LoadByType(App& app, std::string_view type, const std::string& path, bool showErrors) {
    if (type == "ZXT") return LoadTranslate(app, path, showErrors);
    return ReadDataFile(app.State, app.Host, path, std::string(type), !showErrors, HooksFor(app));
}

void ClearPatternAlignment(PodRecord& pods) {
    for (std::size_t pod = 0; pod < pods.HardwarePod.size(); ++pod) {
        if (IsPatternMode(pods.HardwarePod[pod])) pods.AdjAddr[pod] = 0;
    }
}

/// A wait cursor for the length of a scope.
class Busy {
  public:
    explicit Busy(Shell& shell) : shell_(shell) { shell_.SetBusy(true); }
    ~Busy() { shell_.SetBusy(false); }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;

  private:
    Shell& shell_;
};

}  // namespace

void RememberFile(FileRecord& files, const std::string& path) {
    files.LastFolder = FolderOfFile(path);
    auto& recent = files.RecentFiles;
    auto known = std::find(recent.begin(), recent.end(), path);
    if (known == recent.end()) {
        known = recent.end() - 1;
        *known = path;
    }
    std::rotate(recent.begin(), known, known + 1);
}

LoadStatus LoadFile(App& app, std::string_view type, const std::string& name, bool showErrors) {
    CapturePause pause(app);
    app.Host.SetWindowTitle(name);
    app.State.Pattern.PatDirty = 1;
    const std::string path = ResolveExisting(name);
    if (type == "ZU" || type == "INI") {
        const bool wanted = LoadOfSettings(app, path, !showErrors).Run();
        StopPollingWhenIdle(app);
        if (!wanted) return LoadStatus::Loaded;
    }
    const LoadStatus status = LoadByType(app, type, path, showErrors);
    DecodeSPI(app.State);
    RedrawIfOpen(app, WindowId::Spi);
    if (showErrors) app.Shell.UpdateBars();
    return status;
}

void SaveFile(App& app, const std::string& name, std::string_view type) {
    CapturePause pause(app);
    const Busy busy(app.Shell);
    const std::string kind = UpperCase(type);
    ClearPatternAlignment(app.State.Pods);
    if (name.size() > kLongestName) {
        app.Host.Message("File name error: call Ostrand", "Internal Error:");
        app.Host.EndProcess(0);
    }
    if (kind == "INI" || kind == "ZU") app.Host.SetWindowTitle(name);
    if (kind == "INI") {
        SaveSettingsFile(app.State, app.Host, name);
    } else if (kind == "ZU") {
        WriteDataFile(app.State, app.Host, name);
    } else if (kind == "ZXT") {
        if (SaveTranslateFile(app.State.Translate, app.Host, name)) app.Host.SetWindowTitle(name);
    } else {
        app.Host.Remark("This version does not write " + kind + " files.");
    }
}

void OpenByName(App& app, const std::string& name) {
    const std::string type = ExtensionOf(name);
    if (!Contains(kOpenTypes, type)) {
        app.Host.Message("Incorrect file type", "File not loaded");
        return;
    }
    app.State.Files.DefLoadType = type;
    RememberFile(app.State.Files, name);
    LoadFile(app, type, name, true);
}

void OpenCommand(App& app) {
    const CapturePause pause(app);
    const auto chosen = app.Host.ChooseFile(RequestFor(app.State.Files, false));
    if (chosen) OpenByName(app, *chosen);
}

void SaveCommand(App& app) {
    const CapturePause pause(app);
    const auto chosen = app.Host.ChooseFile(RequestFor(app.State.Files, true));
    if (!chosen) return;
    const std::string type = ExtensionOf(*chosen);
    if (!Contains(kSaveTypes, type)) {
        app.Host.SetWindowTitle(*chosen);  // nothing is written
        return;
    }
    app.State.Files.DefSaveType = type;
    RememberFile(app.State.Files, *chosen);
    SaveFile(app, *chosen, type);
}

void LoadSlot(App& app, int slot) {
    if (slot < 0 || slot >= kSettingsSlots) return;
    LoadFile(app, "INI", app.State.Files.SettingsSlot[static_cast<std::size_t>(slot)], true);
}

void SaveSlot(App& app, int slot) {
    if (slot < 0 || slot >= kSettingsSlots) return;
    const CapturePause pause(app);
    const Busy busy(app.Shell);
    SaveSettingsFile(app.State, app.Host, app.State.Files.SettingsSlot[static_cast<std::size_t>(slot)]);
}

}  // namespace zu
