#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "display/Zoom.h"
#include "state/Limits.h"
#include "state/Rates.h"

namespace zu {

inline constexpr int kMemoryModes = 12;      ///< memory modes 0..11
inline constexpr int kSettingsSlots = 6;     ///< default settings and quick settings 1 to 5
inline constexpr int kCaptureModeCount = 5;  ///< Normal, Single, Auto, One Shot, Continuous
inline constexpr int kZoomSteps = static_cast<int>(kZoomTable.size());  ///< rows of the zoom menu

inline constexpr int kSceneCount = 8;  ///< signals of the simulated instrument

/// Every command of menu, toolbar and keys. Families are contiguous: `Rate0` + code and so on.
enum class CommandId : std::uint8_t {
    FileOpen,
    FileSave,
    LoadSlot0,
    LoadSlotLast = LoadSlot0 + kSettingsSlots - 1,
    SaveSlot0,
    SaveSlotLast = SaveSlot0 + kSettingsSlots - 1,
    FileExport,
    FilePrint,
    DataLog,
    DataLogSettings,
    AutosaveData,
    FileExit,

    Go,
    Stop,
    End,
    CaptureMode0,
    CaptureModeLast = CaptureMode0 + kCaptureModeCount - 1,
    TriggerMode,
    LoopNormal,
    LoopFaster,
    ClearBufferOnGo,
    ClearDataBuffer,
    TriggerWord,
    TriggerOut,
    Scene0,
    SceneLast = Scene0 + kSceneCount - 1,
    ReplayFile,

    Rate0,
    RateLast = Rate0 + kRateCodes - 1,
    RateUp,
    RateDown,
    ClockInternal,
    ClockExtRising,
    ClockExtFalling,
    ClockExternal,
    ClockOr,
    ClockNor,
    ClockAnd,
    ClockNand,
    ClockFallingRising,
    ClockRisingFalling,

    Memory0,
    MemoryLast = Memory0 + kMemoryModes - 1,

    PodSetup,
    ThresholdVoltage,
    PatternVoltage,
    PatternEditOld,
    PatternEdit,
    PatternBackground,
    HardwareAddress,
    BoardStatus,
    RegisterTrace,

    GroupSetup,
    ChannelSetup,
    TimingSetup,
    StateListSetup,
    InsertGroup,
    InsertSpacer,
    Search,
    SearchForward,
    SearchBackward,
    GoTo,
    TranslateTable,

    Zoom0,
    ZoomLast = Zoom0 + kZoomSteps - 1,
    ZoomIn,
    ZoomOut,
    TimingGrid,
    SerialTransfers,
    ScreenColor0,
    ScreenColorLast = ScreenColor0 + 3,
    CursorColor0,
    CursorColorLast = CursorColor0 + kCursorT,

    WindowTiming,
    WindowStateList,
    WindowSerial,
    WindowSpi,
    WindowCursor,
    WindowPattern,
    WindowTile,
    WindowCascade,

    HelpContents,
    HelpKeys,
    IdentifyAnalyzer,
    About,

    // Entries for the makers of the program; every model removes them.
    TestTdsSearch,
    TestBuildData,
    Test2,
    TestPulseWidth,
    TestTenCaptures,

    Count
};

inline constexpr std::size_t kCommandCount = static_cast<std::size_t>(CommandId::Count);
using CommandSet = std::bitset<kCommandCount>;

constexpr std::size_t Index(CommandId id) {
    return static_cast<std::size_t>(id);
}
/// The command `offset` places behind `first`.
constexpr CommandId Plus(CommandId first, int offset) {
    return static_cast<CommandId>(static_cast<int>(first) + offset);
}
/// Place of `id` in the family first..last, or -1 when it does not belong to it.
constexpr int FamilyIndex(CommandId id, CommandId first, CommandId last) {
    return id >= first && id <= last ? static_cast<int>(id) - static_cast<int>(first) : -1;
}
constexpr CommandId RateCommand(int code) {
    return Plus(CommandId::Rate0, code);
}
constexpr CommandId MemoryCommand(int mode) {
    return Plus(CommandId::Memory0, mode);
}
constexpr CommandId SceneCommand(int scene) {
    return Plus(CommandId::Scene0, scene);
}
constexpr CommandId CaptureModeCommand(int mode) {
    return Plus(CommandId::CaptureMode0, mode);
}
constexpr CommandId LoadSlotCommand(int slot) {
    return Plus(CommandId::LoadSlot0, slot);
}
constexpr CommandId SaveSlotCommand(int slot) {
    return Plus(CommandId::SaveSlot0, slot);
}
constexpr CommandId ZoomCommand(int step) {
    return Plus(CommandId::Zoom0, step);
}

/// What a command looks like before the state has a say.
struct CommandTraits {
    std::string_view Text;  ///< menu text with "&" before the mnemonic
    std::string_view Key;   ///< default key, as "Ctrl+O"; empty = none
    std::string_view Hint;  ///< sentence for the status bar
};

/// Traits of a command; empty texts for a value outside the enumeration.
const CommandTraits& Traits(CommandId id);

/// Clock type that a clock command selects; -1 when `id` is no clock command.
int ClockTypeOf(CommandId id);

}  // namespace zu
