#include "core/CommandTable.h"

#include <array>

#include "hw/sim/SimScenes.h"

namespace zu {
namespace {

struct CommandRow {
    CommandId Id;
    CommandTraits Traits;
};

constexpr std::array kPlainRows{
    CommandRow{CommandId::FileOpen, {"&Open...", "Ctrl+O", "Load a data, settings, CSV or translate file"}},
    CommandRow{CommandId::FileSave,
               {"&Save...", "Ctrl+S", "Save data and settings, settings, or the translate table"}},
    CommandRow{LoadSlotCommand(0), {"Load &default settings", "Ctrl+0", "Load the default settings"}},
    CommandRow{LoadSlotCommand(1), {"Load Settings 1", "Ctrl+1", "Load quick settings 1"}},
    CommandRow{LoadSlotCommand(2), {"Load Settings &2", "Ctrl+2", "Load quick settings 2"}},
    CommandRow{LoadSlotCommand(3), {"Load Settings &3", "Ctrl+3", "Load quick settings 3"}},
    CommandRow{LoadSlotCommand(4), {"Load Settings &4", "Ctrl+4", "Load quick settings 4"}},
    CommandRow{LoadSlotCommand(5), {"Load Settings &5", "Ctrl+5", "Load quick settings 5"}},
    CommandRow{SaveSlotCommand(0), {"Save &default settings", "Ctrl+Shift+0", "Save the default settings"}},
    CommandRow{SaveSlotCommand(1), {"Save Settings &1", "Ctrl+Shift+1", "Save quick settings 1"}},
    CommandRow{SaveSlotCommand(2), {"Save Settings &2", "Ctrl+Shift+2", "Save quick settings 2"}},
    CommandRow{SaveSlotCommand(3), {"Save Settings &3", "Ctrl+Shift+3", "Save quick settings 3"}},
    CommandRow{SaveSlotCommand(4), {"Save Settings &4", "Ctrl+Shift+4", "Save quick settings 4"}},
    CommandRow{SaveSlotCommand(5), {"Save Settings &5", "Ctrl+Shift+5", "Save quick settings 5"}},
    CommandRow{CommandId::FileExport, {"&Export...", "Ctrl+E", "Write samples or decoded events as text"}},
    CommandRow{CommandId::FilePrint, {"&Print...", "Ctrl+P", "Print a view"}},
    CommandRow{CommandId::DataLog, {"Data Log", "Ctrl+L", "Write every capture to a numbered file"}},
    CommandRow{CommandId::DataLogSettings,
               {"Data Log settings", "Ctrl+Shift+L", "Name, format and counter of the data log"}},
    CommandRow{CommandId::AutosaveData,
               {"&Auto save settings and data", "", "Keep settings and data from one run to the next"}},
    CommandRow{CommandId::FileExit, {"E&xit", "Ctrl+Q", "End the program"}},

    CommandRow{CommandId::Go, {"&Go", "F5", "Start capturing; the key stops a running capture"}},
    CommandRow{CommandId::Stop, {"&Stop", "Shift+F5", "Stop capturing"}},
    CommandRow{CommandId::End, {"&End", "F6", "End the wait for a trigger and show what the memory holds"}},
    CommandRow{CaptureModeCommand(0), {"&Normal (w/trigger)", "", "Capture on each trigger until stopped"}},
    CommandRow{CaptureModeCommand(1), {"&Single (w/trigger)", "", "Capture once"}},
    CommandRow{CaptureModeCommand(2), {"&Auto", "", "Capture on each trigger; force one when none comes"}},
    CommandRow{CaptureModeCommand(3),
               {"One Shot (w/o trigger)", "", "Capture once without waiting for a trigger"}},
    CommandRow{CaptureModeCommand(4),
               {"Continuous Pattern Generator output", "", "Let the pattern generator run on its own"}},
    CommandRow{CommandId::TriggerMode, {"Trigger mode", "M", "Step through Normal, Single and Auto"}},
    CommandRow{CommandId::LoopNormal, {"Normal (Lower CPU usage)", "", "Poll the instrument by a timer"}},
    CommandRow{CommandId::LoopFaster, {"Faster (High CPU usage)", "", "Poll the instrument without a rest"}},
    CommandRow{CommandId::ClearBufferOnGo,
               {"Clear buffer on Go", "", "Set all samples to 0 when a capture starts"}},
    CommandRow{CommandId::ClearDataBuffer, {"Clear data buffer", "Ctrl+Del", "Set all samples to 0 now"}},
    CommandRow{CommandId::TriggerWord, {"Trigger &word...", "W", "Edit trigger words and levels"}},
    CommandRow{CommandId::TriggerOut, {"Trigger out enabled", "", "Drive the trigger output"}},

    CommandRow{CommandId::ReplayFile,
               {"&Replay file...", "", "Let the simulated instrument see what a data file or dump recorded"}},

    CommandRow{CommandId::RateUp, {"Rate &up", "Shift+R", "Next higher sample rate"}},
    CommandRow{CommandId::RateDown, {"Rate &down", "R", "Next lower sample rate"}},
    CommandRow{CommandId::ClockInternal, {"&Internal", "Ctrl+I", "Sample by the internal clock"}},
    CommandRow{CommandId::ClockExtRising,
               {"Ext. Clock[0] &Rising", "", "Sample on the rising edge of external clock 0"}},
    CommandRow{CommandId::ClockExtFalling,
               {"Ext. Clock[0] &Falling", "", "Sample on the falling edge of external clock 0"}},
    CommandRow{CommandId::ClockExternal,
               {"&External ....", "Ctrl+Shift+I", "Sample by a qualified external clock"}},
    CommandRow{CommandId::ClockOr,
               {"Ext. Clock[0] or Ext. Clock[1]", "", "Sample by two external clocks joined by or"}},
    CommandRow{CommandId::ClockNor,
               {"Ext. Clock[0] nor Ext. Clock[1]", "", "Sample by two external clocks joined by nor"}},
    CommandRow{CommandId::ClockAnd,
               {"Ext. Clock[0] and Ext. Clock[1]", "", "Sample by two external clocks joined by and"}},
    CommandRow{CommandId::ClockNand,
               {"Ext. Clock[0] nand Ext. Clock[1]", "", "Sample by two external clocks joined by nand"}},
    CommandRow{
        CommandId::ClockFallingRising,
        {"Ext. Clock[0] Falling && [1] Rising", "", "Sample on falling clock 0 and on rising clock 1"}},
    CommandRow{
        CommandId::ClockRisingFalling,
        {"Ext. Clock[0] Rising && [1] Falling", "", "Sample on rising clock 0 and on falling clock 1"}},

    CommandRow{MemoryCommand(0), {"Small memory", "", "Short captures that read out quickly"}},
    CommandRow{MemoryCommand(1), {"Large Memory", "", "Captures of the full depth"}},
    CommandRow{MemoryCommand(2), {"", "", ""}},
    CommandRow{MemoryCommand(3),
               {"Large memory (No Pattern Generator)", "", "Twice the depth, without pattern generator"}},
    CommandRow{MemoryCommand(4), {"Small memory x2", "", "Short captures at twice the depth"}},
    CommandRow{MemoryCommand(5), {"Large memory x2", "", "Full captures at twice the depth"}},
    CommandRow{MemoryCommand(6), {"Small memory x4", "", "Short captures at four times the depth"}},
    CommandRow{MemoryCommand(7), {"Large memory x4", "", "Full captures at four times the depth"}},
    CommandRow{MemoryCommand(8), {"Small memory x1", "", "Short captures at the plain depth"}},
    CommandRow{MemoryCommand(9), {"Large memory x1", "", "Full captures at the plain depth"}},
    CommandRow{MemoryCommand(10), {"Small memory x3", "", "Short captures at three times the depth"}},
    CommandRow{MemoryCommand(11), {"Large memory x3", "", "Full captures at three times the depth"}},

    CommandRow{CommandId::PodSetup, {"Pod mode &setup....", "Ctrl+Shift+P", "What each pod does"}},
    CommandRow{CommandId::ThresholdVoltage,
               {"&Threshold voltage...", "Ctrl+Shift+V", "Voltage at which the inputs switch"}},
    CommandRow{CommandId::PatternVoltage,
               {"Pattern Generator output voltage...", "", "Voltage of generating pods"}},
    CommandRow{CommandId::PatternEditOld,
               {"&Edit Pattern Generator data", "", "Copy ranges of pattern data"}},
    CommandRow{CommandId::PatternEdit, {"&Edit Pattern Generator data", "", "Draw and fill pattern data"}},
    CommandRow{CommandId::PatternBackground,
               {"Background (Pattern Generator)", "", "Background of the pattern editor"}},
    CommandRow{CommandId::HardwareAddress,
               {"&Hardware address...", "Ctrl+Shift+H", "Find the instrument or choose emulation"}},
    CommandRow{CommandId::BoardStatus,
               {"&Board status", "Ctrl+B", "Model, depth and buffers of the instrument"}},
    CommandRow{
        CommandId::RegisterTrace,
        {"Register trac&e...", "Ctrl+Shift+R", "Watch what is written to the instrument and read from it"}},

    CommandRow{CommandId::GroupSetup, {"&Group define...", "Ctrl+Shift+G", "Bundle channels to groups"}},
    CommandRow{CommandId::ChannelSetup,
               {"&Channel names...", "Ctrl+Shift+N", "Names, colours and inversion of channels"}},
    CommandRow{CommandId::TimingSetup, {"T&iming setup...", "Ctrl+Shift+M", "Lines of the Timing view"}},
    CommandRow{CommandId::StateListSetup,
               {"State&list setup...", "Ctrl+Shift+S", "Columns of the Statelist"}},
    CommandRow{CommandId::InsertGroup, {"I&nsert group...", "Ctrl+Ins", "Show a group in the Timing view"}},
    CommandRow{CommandId::InsertSpacer,
               {"Insert s&pacer", "Shift+Ins", "Put a spacer line into the Timing view"}},
    CommandRow{CommandId::Search, {"&Search...", "Ctrl+F", "Find a word or a serial pattern"}},
    CommandRow{CommandId::SearchForward, {"Search &forward", "F3", "Go on to the next match"}},
    CommandRow{CommandId::SearchBackward, {"Search &backward", "Shift+F3", "Go back to the match before"}},
    CommandRow{CommandId::GoTo, {"Go &to...", "Ctrl+G", "Go to a sample, a time or a cursor"}},
    CommandRow{CommandId::TranslateTable,
               {"T&ranslate table...", "Ctrl+Shift+X", "Texts shown for data values"}},

    CommandRow{CommandId::ZoomIn, {"Zoom &in", "+", "Show less time in more detail"}},
    CommandRow{CommandId::ZoomOut, {"Zoom &out", "-", "Show more time in less detail"}},
    CommandRow{CommandId::TimingGrid, {"&Grid", "G", "Grid lines and time per division"}},

    CommandRow{CommandId::SerialTransfers,
               {"I2C t&ransfers", "Ctrl+T", "Show each I2C transfer as one line beside its start"}},

    CommandRow{Plus(CommandId::ScreenColor0, 0), {"&Text...", "", "Colour of texts"}},
    CommandRow{Plus(CommandId::ScreenColor0, 1), {"&Background...", "", "Background of captured samples"}},
    CommandRow{Plus(CommandId::ScreenColor0, 2), {"&Grid...", "", "Colour of grid, overview and spacers"}},
    CommandRow{Plus(CommandId::ScreenColor0, 3),
               {"&Pattern background...", "", "Background of generated patterns"}},
    CommandRow{Plus(CommandId::CursorColor0, 0), {"Cursor &A...", "", "Colour of cursor A"}},
    CommandRow{Plus(CommandId::CursorColor0, 1), {"Cursor B...", "", "Colour of cursor B"}},
    CommandRow{Plus(CommandId::CursorColor0, 2), {"Cursor &C...", "", "Colour of cursor C"}},
    CommandRow{Plus(CommandId::CursorColor0, 3), {"Cursor &D...", "", "Colour of cursor D"}},
    CommandRow{Plus(CommandId::CursorColor0, 4), {"T&rigger cursor...", "", "Colour of the trigger cursor"}},

    CommandRow{CommandId::WindowTiming, {"&Timing", "Alt+1", "Open or close the Timing window"}},
    CommandRow{CommandId::WindowStateList, {"&Statelist", "Alt+2", "Open or close the Statelist"}},
    CommandRow{CommandId::WindowSerial, {"Se&rial", "Alt+3", "Open or close the serial window"}},
    CommandRow{CommandId::WindowSpi, {"S&PI", "Alt+4", "Open or close the SPI window"}},
    CommandRow{CommandId::WindowCursor, {"&Cursor", "Alt+5", "Open or close the cursor window"}},
    CommandRow{CommandId::WindowPattern, {"Pattern &editor", "Alt+6", "Open or close the pattern editor"}},
    CommandRow{CommandId::WindowTile, {"Ti&le", "Shift+F4", "Place the windows side by side"}},
    CommandRow{CommandId::WindowCascade, {"C&ascade", "Shift+F6", "Place the windows one behind the other"}},

    CommandRow{CommandId::HelpContents, {"&Contents", "F1", "Read the user guide"}},
    CommandRow{CommandId::HelpKeys, {"&Keyboard", "Shift+F1", "All keys on one sheet"}},
    CommandRow{CommandId::IdentifyAnalyzer, {"Identify Analyzer", "", ""}},
    CommandRow{CommandId::About, {"&About...", "", "Version of the program"}},

    CommandRow{CommandId::TestTdsSearch, {"tds search", "", ""}},
    CommandRow{CommandId::TestBuildData, {"Build test data from file", "", ""}},
    CommandRow{CommandId::Test2, {"test2", "", ""}},
    CommandRow{CommandId::TestPulseWidth, {"Pulse width (avg,shortest + longest)", "", ""}},
    CommandRow{CommandId::TestTenCaptures, {"10 captures", "", ""}},
};

static_assert(kSimScenes.size() == kSceneCount);
static_assert(kPlainRows.size() + kRateCodes + kZoomSteps + kSceneCount == kCommandCount,
              "every command has one row");

constexpr std::array<CommandTraits, kCommandCount> BuildTable() {
    std::array<CommandTraits, kCommandCount> table{};
    for (const CommandRow& row : kPlainRows) table[Index(row.Id)] = row.Traits;
    for (int code = 0; code < kRateCodes; ++code) {
        table[Index(RateCommand(code))] = {kRates[static_cast<std::size_t>(code)].MenuText, "",
                                           "Sample at this rate of the internal clock"};
    }
    for (int step = 0; step < kZoomSteps; ++step) {
        table[Index(ZoomCommand(step))] = {kZoomTable[static_cast<std::size_t>(step)].MenuText, "",
                                           "Samples to pixels of the Timing view"};
    }
    for (int scene = 0; scene < kSceneCount; ++scene) {
        table[Index(SceneCommand(scene))] = {kSimScenes[static_cast<std::size_t>(scene)].Description, "",
                                             "Connect these signals to the simulated instrument"};
    }
    return table;
}

constexpr std::array<CommandTraits, kCommandCount> kTable = BuildTable();

struct ClockRow {
    CommandId Id;
    int Type;
};
constexpr std::array kClockTypes{
    ClockRow{CommandId::ClockInternal, 0},
    ClockRow{CommandId::ClockExtRising, 1},
    ClockRow{CommandId::ClockExtFalling, 2},
    ClockRow{CommandId::ClockExternal, 3},
    ClockRow{CommandId::ClockOr, 9},
    ClockRow{CommandId::ClockNor, 10},
    ClockRow{CommandId::ClockAnd, 11},
    ClockRow{CommandId::ClockNand, 12},
    ClockRow{CommandId::ClockFallingRising, 13},
    ClockRow{CommandId::ClockRisingFalling, 14},
};

}  // namespace

const CommandTraits& Traits(CommandId id) {
    static constexpr CommandTraits kNone{};
    return Index(id) < kTable.size() ? kTable[Index(id)] : kNone;
}

int ClockTypeOf(CommandId id) {
    for (const ClockRow& row : kClockTypes) {
        if (row.Id == id) return row.Type;
    }
    return -1;
}

}  // namespace zu
