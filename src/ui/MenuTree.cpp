#include "ui/MenuTree.h"

#include <array>

namespace zu {
namespace {

using Kind = MenuRow::Kind;

constexpr MenuRow Begin(std::string_view text) {
    return {Kind::Begin, text};
}
constexpr MenuRow End() {
    return {Kind::End};
}
constexpr MenuRow Line() {
    return {Kind::Separator};
}
constexpr MenuRow Cmd(CommandId id) {
    return {Kind::Commands, {}, id, id};
}
constexpr MenuRow Cmds(CommandId first, CommandId last) {
    return {Kind::Commands, {}, first, last};
}

constexpr std::array kTree{
    Begin("&File"),
    Cmd(CommandId::FileOpen),
    Cmd(CommandId::FileSave),
    Line(),
    Begin("&Load settings"),
    Cmds(CommandId::LoadSlot0, CommandId::LoadSlotLast),
    End(),
    Begin("Sa&ve settings"),
    Cmds(CommandId::SaveSlot0, CommandId::SaveSlotLast),
    End(),
    Line(),
    Cmd(CommandId::FileExport),
    Cmd(CommandId::FilePrint),
    Line(),
    Cmd(CommandId::DataLog),
    Cmd(CommandId::DataLogSettings),
    Cmd(CommandId::AutosaveData),
    Line(),
    MenuRow{Kind::Recent},
    Line(),
    Cmd(CommandId::FileExit),
    End(),

    Begin("&Capture"),
    Cmds(CommandId::Go, CommandId::End),
    Line(),
    Cmds(CommandId::CaptureMode0, CommandId::CaptureModeLast),
    Line(),
    Begin("Trigger &loop..."),
    Cmds(CommandId::LoopNormal, CommandId::LoopFaster),
    End(),
    Cmd(CommandId::TriggerMode),
    Line(),
    Cmd(CommandId::TriggerWord),
    Cmd(CommandId::TriggerOut),
    Line(),
    Cmd(CommandId::ClearBufferOnGo),
    Cmd(CommandId::ClearDataBuffer),
    Line(),
    Begin("S&imulated signals"),
    Cmds(CommandId::Scene0, CommandId::SceneLast),
    Line(),
    Cmd(CommandId::ReplayFile),
    End(),
    End(),

    Begin("C&lock"),
    Cmds(CommandId::ClockInternal, CommandId::ClockExternal),
    Line(),
    Cmds(CommandId::ClockOr, CommandId::ClockRisingFalling),
    End(),

    Begin("&Rate"),
    Cmds(CommandId::RateUp, CommandId::RateDown),
    Line(),
    Cmds(CommandId::Rate0, CommandId::RateLast),
    End(),

    Begin("&Memory"),
    Cmds(CommandId::Memory0, CommandId::MemoryLast),
    End(),

    Begin("&Setup"),
    Cmd(CommandId::PodSetup),
    Cmd(CommandId::ThresholdVoltage),
    Cmd(CommandId::PatternVoltage),
    Line(),
    Cmd(CommandId::ChannelSetup),
    Cmd(CommandId::GroupSetup),
    Cmd(CommandId::TimingSetup),
    Cmd(CommandId::StateListSetup),
    Cmd(CommandId::TranslateTable),
    Line(),
    Cmd(CommandId::HardwareAddress),
    Cmd(CommandId::BoardStatus),
    Cmd(CommandId::RegisterTrace),
    End(),

    Begin("&View"),
    Cmds(CommandId::ZoomIn, CommandId::ZoomOut),
    Begin("&Zoom"),
    Cmds(CommandId::Zoom0, CommandId::ZoomLast),
    End(),
    Cmd(CommandId::TimingGrid),
    Cmd(CommandId::SerialTransfers),
    Begin("&Colors"),
    Cmds(CommandId::ScreenColor0, CommandId::ScreenColorLast),
    Line(),
    Cmds(CommandId::CursorColor0, CommandId::CursorColorLast),
    End(),
    Line(),
    Cmds(CommandId::InsertGroup, CommandId::InsertSpacer),
    Line(),
    Cmds(CommandId::Search, CommandId::GoTo),
    End(),

    Begin("&Pattern"),
    Cmds(CommandId::PatternEditOld, CommandId::PatternBackground),
    End(),

    Begin("&Window"),
    Cmds(CommandId::WindowTiming, CommandId::WindowPattern),
    Line(),
    Cmds(CommandId::WindowTile, CommandId::WindowCascade),
    Line(),
    MenuRow{Kind::Windows},
    End(),

    Begin("&Help"),
    Cmds(CommandId::HelpContents, CommandId::HelpKeys),
    Line(),
    Cmd(CommandId::IdentifyAnalyzer),
    Cmds(CommandId::TestTdsSearch, CommandId::TestTenCaptures),
    Line(),
    Cmd(CommandId::About),
    End(),
};

}  // namespace

std::span<const MenuRow> MenuTree() {
    return kTree;
}

bool IsTabular(CommandId id) {
    return FamilyIndex(id, CommandId::Zoom0, CommandId::ZoomLast) >= 0 ||
           FamilyIndex(id, CommandId::Memory0, CommandId::MemoryLast) >= 0;
}

}  // namespace zu
