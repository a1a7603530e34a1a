#include "core/SceneSetup.h"

#include <algorithm>

#include "core/Capture.h"
#include "core/RateRules.h"
#include "core/Replay.h"
#include "display/Lines.h"
#include "hw/sim/SimInstrument.h"
#include "hw/sim/SimScenes.h"
#include "state/Model.h"
#include "trigger/TrigCells.h"

namespace zu {
namespace {

constexpr std::int8_t kI2c = 1;
constexpr std::int8_t kMicrowire = 2;
constexpr std::int8_t kFirstSpi = 3;
constexpr int kReplayed = -1;
constexpr int kHexStyle = 0;
constexpr int kTallStyle = 8;  // 32 pixels
constexpr std::size_t kFewChannels = 8;

constexpr std::int32_t kTriggerShare = 10;  // the trigger stands a tenth into the memory
constexpr std::int32_t kLeadPixels = 60;    // of which so much is seen
constexpr std::int32_t kCursorPixels = 120;

/// Colours that are told apart on a white ground; a group and its channels share one.
constexpr std::array<Rgb, 5> kColors{MakeRgb(0, 70, 180), MakeRgb(0, 120, 60), MakeRgb(170, 60, 0),
                                     MakeRgb(130, 0, 130), MakeRgb(60, 60, 60)};

void NameChannels(InstrumentState& state, const SimScene& scene) {
    ResetChannelNames(state);
    state.Channels.ChannelColor.fill(kColors.back());
    for (const SimSceneChannel& channel : scene.Channels) {
        state.Channels.ChannelName[channel.Channel] = channel.Name;
    }
}

/// One group at most can be the one that the serial window decodes; others of its kind are plain.
std::int8_t TakeRole(SerialRecord& serial, int group, std::int8_t mode) {
    if (mode != kI2c && mode != kMicrowire) return mode;
    if (serial.SerialMode != 0) return 0;
    serial.SerialMode = mode;
    serial.SerialGroup = group;
    return mode;
}

void SetGroups(InstrumentState& state, const SimScene& scene) {
    ResetGroups(state);
    state.Serial.SerialMode = 0;
    for (std::size_t i = 0; i < scene.Groups.size(); ++i) {
        const SimSceneGroup& from = scene.Groups[i];
        GroupRecord& group = state.Groups[i];
        group = GroupRecord{};
        group.Name = from.Name;
        group.Size = from.Size;
        group.Color = kColors[i % (kColors.size() - 1)];
        group.Mode = TakeRole(state.Serial, static_cast<int>(i), from.Mode);
        for (std::size_t slot = 0; slot < from.Size; ++slot) {
            group.Channels[slot] = from.Channels[slot];
            state.Channels.ChannelColor[from.Channels[slot]] = group.Color;
        }
    }
    ComputeGroupWidths(state);
}

void AddLine(TimingRecord& timing, std::int32_t source, int style) {
    const auto line = static_cast<std::size_t>(timing.TimingLines++);
    timing.LineSource[line] = source;
    timing.LineStyle[line] = static_cast<std::uint8_t>(style);
    timing.LineMode[line] = 0;
}

bool InAnyGroup(const SimScene& scene, std::uint8_t channel) {
    return std::any_of(scene.Groups.begin(), scene.Groups.end(), [channel](const SimSceneGroup& group) {
        const auto end = group.Channels.begin() + group.Size;
        return std::find(group.Channels.begin(), end, channel) != end;
    });
}

/// The value of an I2C or Microwire group tells nothing, and the line of an SPI group shows its channels.
void AddGroup(TimingRecord& timing, const SimSceneGroup& group, std::int32_t number, int style) {
    if (group.Mode == 0 || group.Mode >= kFirstSpi) AddLine(timing, kFirstGroupLine + number, kHexStyle);
    if (group.Mode >= kFirstSpi) return;
    for (std::size_t slot = 0; slot < group.Size; ++slot) AddLine(timing, group.Channels[slot], style);
}

/// The groups with their channels, then the channels on their own; few lines are tall ones.
void SetLines(InstrumentState& state, const SimScene& scene) {
    TimingRecord& timing = state.Timing;
    const int style = scene.Channels.size() <= kFewChannels ? kTallStyle : kNormalStyle;
    timing.TimingLines = 0;
    timing.TimingChPos = 0;
    for (std::size_t i = 0; i < scene.Groups.size(); ++i) {
        AddGroup(timing, scene.Groups[i], static_cast<std::int32_t>(i), style);
    }
    for (const SimSceneChannel& channel : scene.Channels) {
        if (!InAnyGroup(scene, channel.Channel)) AddLine(timing, channel.Channel, style);
    }
}

/// One level: the moment at which the scene's levels meet.
void SetTrigger(InstrumentState& state, const SimScene& scene) {
    TriggerRecord& trigger = state.Trigger;
    SetAllWord(state, 'X', 0);
    for (const SimSceneLevel& level : scene.Trigger) {
        SetCharOfChannel(state, level.Channel, 0, level.High ? '1' : '0');
    }
    trigger.SeqList.fill(0);
    trigger.SeqList[0] = 1;
    trigger.EdgeList16[0] = 0;
    trigger.TrigMatchMode[0] = 1;
    trigger.LevelCount = 1;
    trigger.CurrentLevel = 0;
    trigger.TrigCnt = 1;
    trigger.TrigCntMd = 3;
}

/// The trigger near the left edge, the cursors in a row behind it.
void SetView(InstrumentState& state, const SimScene& scene) {
    state.Timing.ScreenZoom = scene.Zoom;
    const std::int32_t trigger = state.Memory.BufferLen / kTriggerShare;
    const auto samples = [&scene](std::int32_t pixels) {
        return scene.Zoom > 0 ? pixels / scene.Zoom : pixels * -scene.Zoom;
    };
    auto& cursors = state.Cursors.Cur;
    cursors[kCursorT] = trigger;
    for (int i = 0; i < kCursorT; ++i) {
        cursors[static_cast<std::size_t>(i)] = trigger + samples(kCursorPixels * (i + 1));
    }
    state.Timing.TimingDataPos = std::max(0, trigger - samples(kLeadPixels));
}

void ShowAll(App& app) {
    RefreshAll(app);
    app.Shell.UpdateMenus();
    app.Shell.UpdateBars();
}

}  // namespace

bool ShowScene(App& app, int scene) {
    if (app.Simulated == nullptr || scene < 0 || scene >= static_cast<int>(kSimScenes.size())) return false;
    const SimScene& shown = kSimScenes[static_cast<std::size_t>(scene)];
    {
        const CapturePause pause(app);
        app.Simulated->Connect(MakeSimScene(shown.Name));
        app.Scene = scene;
        NameChannels(app.State, shown);
        SetGroups(app.State, shown);
        SetLines(app.State, shown);
        SetTrigger(app.State, shown);
        SetRate(app, shown.RateCode);
        SetView(app.State, shown);
        ShowAll(app);
    }
    return true;
}

bool ShowSceneNamed(App& app, std::string_view name) {
    const SimScene* scene = FindSimScene(name);
    return scene != nullptr && ShowScene(app, static_cast<int>(scene - kSimScenes.data()));
}

bool ReplayFile(App& app, const std::string& path) {
    if (app.Simulated == nullptr) return false;
    Replay replay = LoadReplay(app.Host, path);
    if (replay.Signals == nullptr) return false;
    const CapturePause pause(app);
    app.Simulated->Connect(std::move(replay.Signals));
    app.Scene = kReplayed;
    const std::size_t named = std::min<std::size_t>(replay.ChannelNames.size(), kMaxChannels);
    for (std::size_t channel = 0; channel < named; ++channel) {
        const std::string& name = replay.ChannelNames[channel];
        if (!name.empty()) app.State.Channels.ChannelName[channel] = name;
    }
    ShowAll(app);
    return true;
}

void ReplayCommand(App& app) {
    const CapturePause pause(app);
    FileRequest request;
    request.InitialName = app.State.Files.LastFolder;
    request.Filters = "Recordings (*.zu *.vcd)|*.zu;*.vcd||";
    const auto chosen = app.Host.ChooseFile(request);
    if (chosen) ReplayFile(app, *chosen);
}

}  // namespace zu
