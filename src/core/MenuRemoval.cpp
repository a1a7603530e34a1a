// What the model takes away from the menu for good.
#include <algorithm>
#include <array>

#include "core/Commands.h"
#include "core/RateRules.h"

namespace zu {
namespace {

constexpr CommandId kDeep = MemoryCommand(3);
constexpr CommandId kNoEntry = CommandId::Count;

// Entries that no instrument of this build offers. The doubled small memory mode never had an entry.
constexpr std::array kAlwaysRemoved{
    CommandId::PatternEditOld,
    CommandId::PatternBackground,
    CommandId::ClockOr,
    CommandId::ClockNor,
    CommandId::ClockAnd,
    CommandId::ClockNand,
    CommandId::ClockFallingRising,
    CommandId::ClockRisingFalling,
    CommandId::TriggerOut,
    CaptureModeCommand(3),
    CaptureModeCommand(4),
    CommandId::TestTdsSearch,
    CommandId::TestBuildData,
    CommandId::Test2,
    CommandId::TestPulseWidth,
    CommandId::TestTenCaptures,
    MemoryCommand(2),
};

/// What a group of rows lacks.
struct RemovalRow {
    std::array<int, 8> Rows;  ///< -1 = none
    std::array<CommandId, 9> Entries;
    bool AllX;  ///< all "x" memory entries too
};

constexpr RemovalRow Row(std::array<int, 8> rows, bool allX, std::array<CommandId, 9> entries) {
    return {rows, entries, allX};
}
constexpr std::array<CommandId, 9> List(CommandId a = kNoEntry, CommandId b = kNoEntry,
                                        CommandId c = kNoEntry) {
    return {a, b, c, kNoEntry, kNoEntry, kNoEntry, kNoEntry, kNoEntry, kNoEntry};
}

constexpr std::array kRemovals{
    Row({0, 3, 4, 5, 8, 9, 10, -1}, true, List(kDeep, CommandId::PatternVoltage)),
    Row({1, 2, 6, 7, -1, -1, -1, -1}, true, List(kDeep, CommandId::PatternVoltage)),
    Row({11, 12, -1, -1, -1, -1, -1, -1}, true, List(kDeep)),
    Row({13, 14, 15, 20, 21, 22, 23, 24}, true, List()),
    Row({16, 17, -1, -1, -1, -1, -1, -1}, true,
        List(kDeep, CommandId::PatternVoltage, CommandId::ClockExternal)),
    Row({18, -1, -1, -1, -1, -1, -1, -1}, false,
        {MemoryCommand(8), MemoryCommand(9), MemoryCommand(10), MemoryCommand(11), MemoryCommand(6),
         MemoryCommand(7), kDeep, CommandId::PodSetup, CommandId::PatternVoltage}),
    Row({19, -1, -1, -1, -1, -1, -1, -1}, false,
        {MemoryCommand(8), MemoryCommand(9), MemoryCommand(10), MemoryCommand(11), kDeep, CommandId::PodSetup,
         CommandId::PatternVoltage, kNoEntry, kNoEntry}),
    Row({25, 26, -1, -1, -1, -1, -1, -1}, false,
        {MemoryCommand(1), MemoryCommand(9), MemoryCommand(5), MemoryCommand(11), MemoryCommand(7),
         MemoryCommand(10), MemoryCommand(6), CommandId::ClockExternal, kDeep}),
    Row({27, -1, -1, -1, -1, -1, -1, -1}, false, List(CommandId::ClockExternal, kDeep)),
};

void Remove(CommandSet& removed, CommandId id) {
    if (id != kNoEntry) removed.set(Index(id));
}

void RemoveByRow(CommandSet& removed, int row) {
    constexpr int kFirstX = 4;
    for (const RemovalRow& removal : kRemovals) {
        if (std::find(removal.Rows.begin(), removal.Rows.end(), row) == removal.Rows.end()) continue;
        for (const CommandId id : removal.Entries) Remove(removed, id);
        for (int mode = kFirstX; removal.AllX && mode < kMemoryModes; ++mode) {
            Remove(removed, MemoryCommand(mode));
        }
    }
}

void RemoveRates(CommandSet& removed, int row) {
    ClockRecord clock;
    MarkAllRates(clock);
    MarkRowRates(clock, row);
    for (int code = 0; code < kRateCodes; ++code) {
        if (clock.RateAvail[static_cast<std::size_t>(code)] == 255) Remove(removed, RateCommand(code));
    }
}

}  // namespace

CommandSet RemovedCommands(const InstrumentState& state) {
    const int row = state.Identity.HardwareType;
    CommandSet removed;
    for (const CommandId id : kAlwaysRemoved) Remove(removed, id);
    RemoveByRow(removed, row);
    RemoveRates(removed, row);
    return removed;
}

}  // namespace zu
