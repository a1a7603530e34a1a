#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "state/InstrumentState.h"

namespace zu::keys {

/// Width of a number in the file; the state's field may be wider or differ in its sign.
enum class Width : std::uint8_t { I8, U8, U16, I16, U32, I32 };

enum class Use : std::uint8_t {
    Both,
    Read,  ///< no writer produces it
    Write  ///< read elsewhere or not at all
};

/// One key that holds one number.
struct NumberKey {
    std::string_view Name;
    Width Type;
    zu::keys::Use Use;
    std::int64_t (*Get)(const InstrumentState&);
    void (*Set)(InstrumentState&, std::int64_t);
};

/// The number as its width holds it.
constexpr std::int64_t Narrow(Width width, std::int64_t value) {
    switch (width) {
        case Width::I8:
            return static_cast<std::int8_t>(value);
        case Width::U8:
            return static_cast<std::uint8_t>(value);
        case Width::I16:
            return static_cast<std::int16_t>(value);
        case Width::U16:
            return static_cast<std::uint16_t>(value);
        case Width::U32:
            return static_cast<std::uint32_t>(value);
        default:
            return static_cast<std::int32_t>(value);
    }
}

/// Key of a field of one of the state's records.
template <auto Record, auto Field>
constexpr NumberKey Of(std::string_view name, Width width, Use use = Use::Both) {
    return {name, width, use,
            [](const InstrumentState& state) -> std::int64_t { return state.*Record.*Field; },
            [](InstrumentState& state, std::int64_t value) {
                auto& field = state.*Record.*Field;
                field = static_cast<std::remove_reference_t<decltype(field)>>(value);
            }};
}

using S = InstrumentState;
using enum Width;

// Every table is in writing order.

inline constexpr std::array kFile{
    Of<&S::Files, &FileRecord::DataLog>("DataLog", U8), Of<&S::Files, &FileRecord::ExportG>("ExportG", I8),
    Of<&S::Files, &FileRecord::ExportB>("ExportB", I8), Of<&S::Files, &FileRecord::ExportS>("ExportS", I8),
    Of<&S::Files, &FileRecord::ExportE>("ExportE", I8), Of<&S::Files, &FileRecord::ExportZU>("ExportZU", I8),
};

inline constexpr std::array kTimingWin{
    Of<&S::Timing, &TimingRecord::ZoomOrigin>("ZoomOrigin", I8),
    Of<&S::Timing, &TimingRecord::TimingDataPos>("DataPos", I32),
    Of<&S::Timing, &TimingRecord::TimingGrid>("Grid", I8),
    Of<&S::Timing, &TimingRecord::TimingDispInfoType>("TimingDispInfoType", I8),
};
// Behind the information columns.
inline constexpr std::array kTimingWinRest{
    Of<&S::Windows, &WindowRecord::TimingStat>("Stat", I32, Use::Write),
    Of<&S::Timing, &TimingRecord::TimingChPos>("ChPos", I32),
};

inline constexpr std::array kStateWin{
    Of<&S::StateList, &StateListRecord::StateDataPos>("DataPos", I32),
    Of<&S::Windows, &WindowRecord::StateStat>("Stat", I32, Use::Write),
    Of<&S::StateList, &StateListRecord::StateGroupPos>("GroupPos", I32),
    Of<&S::StateList, &StateListRecord::StateDisp>("Disp", I8),
};

inline constexpr std::array kSerialWin{
    Of<&S::Serial, &SerialRecord::SerialDataPos>("DataPos", I32, Use::Read),
    Of<&S::Windows, &WindowRecord::SerialStat>("Stat", I32, Use::Write),
    Of<&S::Serial, &SerialRecord::SerialMode>("Mode", I8),
    Of<&S::Serial, &SerialRecord::SerialGroup>("Group", I32),
};

inline constexpr std::array kCursorDlg{
    Of<&S::Cursors, &CursorRecord::CursorDlgMode>("mode", I8),
};

inline constexpr std::array kTrigger{
    Of<&S::Capture, &CaptureRecord::ClearBufferOnGo>("ClearBufferOnGo", I8),
    Of<&S::Trigger, &TriggerRecord::TrigWordEditGroupBase>("TrigWordEditGroupBase", I8),
    Of<&S::Capture, &CaptureRecord::CaptureLoopMode>("CaptureLoopMode", I8),
    Of<&S::Trigger, &TriggerRecord::TrigLevelsMatchWizard>("TrigLevelsMatchWizard", I8),
};
// Behind the level lists.
inline constexpr std::array kTriggerCount{
    Of<&S::Trigger, &TriggerRecord::TrigCnt>("Cnt", U8),
    Of<&S::Trigger, &TriggerRecord::TrigCntMd>("CntMd", I8),
};

inline constexpr std::array kClock{
    Of<&S::Clock, &ClockRecord::ClockType>("Type", U8),
    Of<&S::Clock, &ClockRecord::ClockEdge>("Edge", U8),
};

inline constexpr std::array kSearch{
    Of<&S::Search, &SearchRecord::SearchBase>("Base", I8),
    Of<&S::Search, &SearchRecord::SearchCh>("Ch", I16),
};
// Behind the serial search word.
inline constexpr std::array kSearchRest{
    Of<&S::Search, &SearchRecord::SearchLen>("L", I8),
    Of<&S::Search, &SearchRecord::SearchMode>("M", I8),
};

inline constexpr std::array kPattern{
    Of<&S::Pattern, &PatternRecord::PatternOutputMode>("OutputMode", I8),
};
inline constexpr std::array kScreen{
    Of<&S::Timing, &TimingRecord::ScreenZoom>("Zoom", I32),
};
inline constexpr std::array kGlitch{
    Of<&S::Files, &FileRecord::GlitchLen>("Len", I32),
};
inline constexpr std::array kPulse{
    Of<&S::Files, &FileRecord::PulseLen>("Len", I32),
};

inline constexpr std::array kHardware{
    // Compared when a file is loaded; a file never changes the instrument.
    Of<&S::Identity, &IdentityRecord::HardwareType>("Type", U8, Use::Write),
    Of<&S::Memory, &MemoryRecord::HardwareMode>("Mode", I8),
    Of<&S::Memory, &MemoryRecord::HardwareMux>("Mux", I8),
};

inline constexpr std::array kPrint{
    Of<&S::Print, &PrintRecord::PrintMode>("Mode", I8),
    Of<&S::Print, &PrintRecord::PrintRange>("Range", I8),
    Of<&S::Print, &PrintRecord::PrintStart>("Start", I32),
    Of<&S::Print, &PrintRecord::PrintEnd>("End", I32),
    Of<&S::Print, &PrintRecord::PrintColorMd>("ColorMd", I8),
};

inline constexpr std::array kCapture{
    Of<&S::Capture, &CaptureRecord::CaptureMode>("Mode", I8),
};

inline constexpr std::array kPatEditor{
    Of<&S::Pattern, &PatternRecord::PatInc>("Inc", I8),
    Of<&S::Pattern, &PatternRecord::PatZoom>("Zoom", I32),
    Of<&S::Pattern, &PatternRecord::PatCountStart>("CountStart", U32),
    Of<&S::Pattern, &PatternRecord::PatCountEnd>("CountEnd", U32),
    Of<&S::Pattern, &PatternRecord::PatCountDir>("CountDir", I8),
    Of<&S::Pattern, &PatternRecord::PatStep>("Step", U32),
    Of<&S::Pattern, &PatternRecord::PatChStart>("chstart", I16),
    Of<&S::Pattern, &PatternRecord::PatChEnd>("chend", I16),
    Of<&S::Pattern, &PatternRecord::PatAddrStart>("addrstart", I32),
    Of<&S::Pattern, &PatternRecord::PatAddrEnd>("addrend", I32),
    Of<&S::Pattern, &PatternRecord::PatSpiGroup>("spigroup", I32),
};

/// A key of a list of numbers "1,0,0,".
struct ListKey {
    std::string_view Name;
    std::array<std::int32_t, kTrigListSlots> TriggerRecord::*List;
};
inline constexpr ListKey kSeqList{"SeqList", &TriggerRecord::SeqList};
/// The lists behind EdgeList16.
inline constexpr std::array kLevelLists{
    ListKey{"ElseList", &TriggerRecord::ElseList},
    ListKey{"CountList", &TriggerRecord::CountList},
    ListKey{"ModeList", &TriggerRecord::ModeList},
    ListKey{"TrigDelayRateList", &TriggerRecord::TrigDelayRateList},
};

/// Name of key number `index` of a row of keys: "Color" and 3 give "Color3".
inline std::string Indexed(std::string_view name, int index) {
    return std::string(name) + std::to_string(index);
}
/// Name of a trigger word slice: "w<board>-<word>".
inline std::string SliceName(int board, int word) {
    return "w" + std::to_string(board) + "-" + std::to_string(word);
}
inline std::string GroupSection(int group) {
    return Indexed("Group", group);
}

}  // namespace zu::keys
