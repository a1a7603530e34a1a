#include <algorithm>
#include <map>
#include <random>
#include <set>

#include "ArmScript.h"
#include "hw/PositionCounter.h"
#include "hw/Thresholds.h"
#include "hw/TriggerCompile.h"

namespace zu::test {
namespace {

// ---- the trigger tables ----

/// Compiles alone and compares the trace; returns the result.
int CheckCompile(const ArmCase& c) {
    SCOPED_TRACE(c.Name());
    ArmBench bench(c);
    const int expected = ScriptCompile(bench.Expected, c);
    const CaptureSetup setup = CaptureSetupOf(bench.State);
    Registers registers(bench.Hardware, setup.Base, setup.HardwareType);
    const TriggerKind kind = CompileTrigger(bench.Hardware, registers, setup, bench.State, bench.Words);
    bench.Compare();
    EXPECT_EQ(static_cast<int>(kind), expected);
    return static_cast<int>(kind);
}

/// The table of a board as the trace of a compile with one level stores it.
std::array<int, 256> TableOf(const ArmCase& c, int board) {
    ArmBench bench(c);
    std::array<int, 256> table{};
    int address = -1;
    bench.Ops.Watch = [&](std::uint16_t port, std::uint8_t value) {
        const int offset = port - kTraceAddress - 0x400 * board;
        if (offset == 10) address = value;
        // An entry is taken while bit 1 is low.
        if (offset == 4 && address >= 0 && value % 8 == 1)
            table[static_cast<std::size_t>(address)] = value >> 3;
    };
    const CaptureSetup setup = CaptureSetupOf(bench.State);
    Registers registers(bench.Hardware, setup.Base, setup.HardwareType);
    CompileTrigger(bench.Hardware, registers, setup, bench.State, bench.Words);
    return table;
}

ArmCase OneWord(const std::string& cells) {
    ArmCase c;
    c.Boards = 1;
    c.Word(0, 0, cells);
    return c;
}

TEST(TriggerTables, LanesStandRightToLeftAndBitsToo) {
    // Only lane 0's lowest channel, only lane 4's highest.
    const auto low = TableOf(OneWord("XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXX1"), 0);
    const auto high = TableOf(OneWord("0XXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX"), 0);
    for (int a = 0; a < 256; ++a) {
        const auto i = static_cast<std::size_t>(a);
        EXPECT_EQ(low[i], a % 2 == 1 ? 0x1F : 0x1E) << a;
        EXPECT_EQ(high[i], a < 128 ? 0x1F : 0x0F) << a;
    }
}

TEST(TriggerTables, AnyBitComplementsTheWord) {
    ArmCase c = OneWord("XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX XXXXXX01");
    c.MatchMode = 0;
    const auto table = TableOf(c, 0);
    for (int a = 0; a < 256; ++a) EXPECT_EQ(table[static_cast<std::size_t>(a)] & 1, a % 4 == 2 ? 1 : 0) << a;
}

TEST(TriggerTables, BlankingOfTheFastRates) {
    const std::map<int, std::map<int, int>> blankedByRate{
        {15, {{0, 0}, {1, 0x0A}, {2, 0x0A}, {3, 0}, {4, 0}, {5, 0}}},
        {11, {{1, 0x0A}, {2, 0x0A}, {3, 0}, {4, 0}, {5, 0}}},
        {10, {{0, 0}, {1, 0x0E}, {2, 0x0E}, {3, 0x0C}, {4, 0x0C}, {5, 0}}},
        {1, {{1, 0x0E}, {2, 0x0E}, {3, 0x0C}, {4, 0x0C}, {5, 0}}},
        {16, {{1, 0x0E}, {2, 0x0E}, {3, 0x0C}, {4, 0x0C}, {5, 0}}}};
    for (const auto& [type, rates] : blankedByRate) {
        for (const auto& [rate, blanked] : rates) {
            for (const int clockType : {0, 1, 3, 5}) {
                ArmCase c = OneWord("11111111 11111111 11111111 11111111 11111111");
                c.Type = type;
                c.Rate = rate;
                c.ClockType = clockType;
                const bool internalOnly = type >= 11 && type <= 15;
                const int open = internalOnly && clockType != 0 ? 0 : blanked;
                EXPECT_EQ(TableOf(c, 0)[0], open) << type << " rate " << rate << " clock " << clockType;
                EXPECT_EQ(CheckCompile(c), 1);
            }
        }
    }
}

TEST(TriggerTables, AWordOfBlankedLanesAlone) {
    ArmCase c = OneWord("XXXXXXXX XXXXXXXX XXXXXXXX 11111111 XXXXXXXX");
    c.Rate = 1;
    EXPECT_EQ(CheckCompile(c), 2);
    c.Rate = 3;
    EXPECT_EQ(CheckCompile(c), 1);
    c.Type = 5;
    c.Rate = 2;
    EXPECT_EQ(CheckCompile(c), 2);
}

TEST(TriggerTables, PagesRunDownFromTheLastLevel) {
    ArmCase c = OneWord("1XXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX");
    c.Sequence = {0, 3, 0, 0, 1, 1};
    ArmBench bench(c);
    std::vector<int> pages;
    bench.Ops.Watch = [&](std::uint16_t port, std::uint8_t value) {
        if (port == kTraceAddress + 7) pages.push_back(value);
    };
    const CaptureSetup setup = CaptureSetupOf(bench.State);
    Registers registers(bench.Hardware, setup.Base, setup.HardwareType);
    CompileTrigger(bench.Hardware, registers, setup, bench.State, bench.Words);
    EXPECT_EQ(pages, (std::vector<int>{15, 14, 13, 255}));
}

TEST(TriggerTables, EmptySequenceLeavesTheTablesUntouched) {
    ArmCase c;
    c.Sequence = {};
    EXPECT_EQ(CheckCompile(c), 2);
    ArmBench bench(c);
    int tableWrites = 0;
    bench.Ops.Watch = [&](std::uint16_t port, std::uint8_t) { tableWrites += port % 16 == 10 ? 1 : 0; };
    const CaptureSetup setup = CaptureSetupOf(bench.State);
    Registers registers(bench.Hardware, setup.Base, setup.HardwareType);
    CompileTrigger(bench.Hardware, registers, setup, bench.State, bench.Words);
    EXPECT_EQ(tableWrites, 0);
}

TEST(TriggerTables, AWordOfDontCaresAlone) {
    ArmCase c;
    EXPECT_EQ(CheckCompile(c), 2);
    c.Word(0, 3, "XXXXXXXX XXXXXXXX XXXXXXX0 XXXXXXXX XXXXXXXX");
    EXPECT_EQ(CheckCompile(c), 1);
}

TEST(TriggerTables, OneConstrainedLevelAmongFreeOnesCounts) {
    ArmCase c;
    c.Sequence = {1, 2, 1};
    c.Word(1, 0, "XXXXXXXX XXXXXXXX XXXXXXX0 XXXXXXXX XXXXXXXX");
    EXPECT_EQ(CheckCompile(c), 1);
}

TEST(TriggerTables, FiveWritesATimes256ALevelAndBoard) {
    for (const int boards : {1, 2, 4}) {
        for (const int levels : {1, 3, 16}) {
            ArmCase c;
            c.Boards = boards;
            c.Sequence.assign(static_cast<std::size_t>(levels), 1);
            ArmBench bench(c);
            int writes = 0;
            int strobes = 0;
            bench.Ops.Watch = [&](std::uint16_t port, std::uint8_t) {
                const int offset = port % 16;
                writes += offset == 0 || offset == 4 || offset == 10 ? 1 : 0;
            };
            const CaptureSetup setup = CaptureSetupOf(bench.State);
            Registers registers(bench.Hardware, setup.Base, setup.HardwareType);
            CompileTrigger(bench.Hardware, registers, setup, bench.State, bench.Words);
            strobes = static_cast<int>(std::count(bench.Ops.Text.begin(), bench.Ops.Text.end(), 'R'));
            EXPECT_EQ(writes, boards * (1 + levels * (256 * 5 + 5)));
            EXPECT_EQ(strobes, 3 + 9 * levels + 1 + 9);
        }
    }
}

TEST(TriggerTables, CountsOfEveryMode) {
    for (int mode = -1; mode <= 4; ++mode) {
        for (const int count : {0, 1, 2, 3, 51, 127, 128, 129, 254, 255}) {
            ArmCase c;
            c.Boards = 1;
            c.Sequence = {};
            c.CountMode = mode;
            c.Count = count;
            ArmBench bench(c);
            int loaded = -1;
            bench.Ops.Watch = [&](std::uint16_t port, std::uint8_t value) {
                if (port == kTraceAddress + 7) loaded = value;
            };
            const CaptureSetup setup = CaptureSetupOf(bench.State);
            Registers registers(bench.Hardware, setup.Base, setup.HardwareType);
            CompileTrigger(bench.Hardware, registers, setup, bench.State, bench.Words);
            const int expected = mode == 3 ? 255 : count == 0 ? 0 : 256 - count;
            EXPECT_EQ(loaded, expected) << mode << " " << count;
            CheckCompile(c);
        }
    }
}

TEST(TriggerTables, RandomSequencesWordsAndBoards) {
    std::mt19937 random(20);
    const std::string alphabet = "01XX x-";
    for (int round = 0; round < 150; ++round) {
        ArmCase c;
        c.Type = static_cast<int>(random() % 21);
        c.Direct = random() % 2 != 0;
        c.Boards = static_cast<int>(1 + random() % 4);
        c.Rate = static_cast<int>(random() % 7);
        c.Mode = static_cast<int>(random() % 4);
        c.ClockType = random() % 3 == 0 ? static_cast<int>(random() % 8) : 0;
        c.MatchMode = static_cast<int>(random() % 2);
        c.CountMode = static_cast<int>(random() % 4);
        c.Count = static_cast<int>(random() % 256);
        c.Sequence.assign(16, 0);
        for (int& entry : c.Sequence) entry = random() % 3 == 0 ? static_cast<int>(random() % 18) : 0;
        for (int w = 0; w < 16; ++w) {
            for (int b = 0; b < 4; ++b) {
                std::string cells = kAnyCells;
                for (char& cell : cells) {
                    if (random() % 6 == 0) cell = alphabet[random() % alphabet.size()];
                }
                c.Word(w, b, cells);
            }
        }
        CheckCompile(c);
    }
}

// ---- the position counter ----

TEST(Position, TracesOverTheWholeRange) {
    const std::set<int> positions{0,      1,      2,    3,    7,      10,      100,     2014,      4029,
                                  4060,   4076,   4077, 8000, 8191,   8192,    16383,   32767,     65535,
                                  131071, 262143, -1,   -500, 524287, 2097149, 4194301, INT32_MAX, INT32_MIN};
    for (const int type : {1, 5, 13, 16}) {
        for (const int mode : {0, 1, 2, 3, 7}) {
            for (const int rate : {1, 4, 5}) {
                for (const int position : positions) {
                    ArmCase c;
                    c.Type = type;
                    c.Mode = mode;
                    c.Rate = rate;
                    c.Position = position;
                    SCOPED_TRACE(c.Name());
                    ArmBench bench(c);
                    ScriptPosition(bench.Expected, c, position);
                    const CaptureSetup setup = CaptureSetupOf(bench.State);
                    Registers registers(bench.Hardware, setup.Base, setup.HardwareType);
                    LoadPosition(registers, setup, setup.Position);
                    bench.Compare();
                    if (testing::Test::HasFailure()) return;
                }
            }
        }
    }
}

/// The setup of a case.
CaptureSetup SetupOf(int type, int mode, int clockType, int rate, bool patterns = false) {
    CaptureSetup setup;
    setup.HardwareType = static_cast<std::uint8_t>(type);
    setup.HardwareMode = static_cast<std::uint8_t>(mode);
    setup.ClockType = static_cast<std::uint8_t>(clockType);
    setup.ClockRate = static_cast<std::uint8_t>(rate);
    setup.HavePatterns = patterns;
    const bool plain = clockType != 0 || patterns;
    setup.Memory = plain                                 ? Interleave::Plain
                   : rate == 1 || rate == 2              ? Interleave::Quad
                   : rate == 3 || rate == 4 || mode == 3 ? Interleave::Dual
                                                         : Interleave::Plain;
    return setup;
}

TEST(Position, ValuesByHand) {
    struct Row {
        CaptureSetup Setup;
        std::int32_t Position;
        std::int64_t Value;
    };
    const Row rows[] = {
        {SetupOf(15, 0, 0, 1), 0, 0x3F008},          // 0x40 >> 3
        {SetupOf(15, 0, 0, 3), 0, 0x3F008},          // 0x20 >> 2
        {SetupOf(15, 3, 0, 5), 0, 0x30008},          // 0x20 >> 2
        {SetupOf(15, 0, 0, 5), 0, 0x3F008},          // 0x10 >> 1
        {SetupOf(15, 0, 1, 1), 0, 0x3F008},          // 0x10 >> 1
        {SetupOf(15, 0, 0, 1, true), 0, 0x3F020},    // 0x40 >> 1: patterns change the shift alone
        {SetupOf(15, 3, 0, 5, true), 0, 0x30010},    // 0x20 >> 1
        {SetupOf(1, 3, 0, 5), 100, 33},              // no limit and no offset
        {SetupOf(5, 2, 0, 5), 100, 58},              //
        {SetupOf(13, 2, 0, 5), 100, 0x3003A},        //
        {SetupOf(15, 0, 0, 5), 8172, 0x3FFFE},       // 0xFFE exactly
        {SetupOf(15, 0, 0, 5), 8174, 0x3FFFE},       // one above
        {SetupOf(15, 0, 0, 5), 8170, 0x3FFFD},       // one below
        {SetupOf(12, 1, 0, 5), 32748, 0x3FFFE},      //
        {SetupOf(12, 1, 0, 5), 32746, 0x3FFFD},      //
        {SetupOf(10, 1, 0, 5), 131052, 0x3FFFE},     //
        {SetupOf(10, 1, 0, 5), 131050, 0x3FFFD},     //
        {SetupOf(16, 1, 0, 5), 131054, 65535},       // a type without large memory
        {SetupOf(0, 1, 0, 5), 10, 13},               //
        {SetupOf(15, 0, 0, 5), INT32_MAX, 0x3FFFE},  //
        {SetupOf(1, 7, 0, 5), INT32_MAX, 0x40000007},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(PositionValue(row.Setup, row.Position), row.Value)
            << int{row.Setup.HardwareType} << " mode " << int{row.Setup.HardwareMode} << " rate "
            << int{row.Setup.ClockRate} << " position " << row.Position;
    }
}

TEST(Position, TheLeadingBitStandsForElevenOnes) {
    // 0x3F7FF ends in eleven ones.
    for (const auto& [position, leading] :
         {std::pair{2 * 0x7FF - 16, 8}, {2 * 0x7FE - 16, 0}, {2 * 0x800 - 16, 0}}) {
        ArmCase c;
        c.Position = position;
        ArmBench bench(c);
        std::vector<int> bits;
        bench.Ops.Watch = [&](std::uint16_t port, std::uint8_t value) {
            if (port == kTraceAddress + 4) bits.push_back(value & 8);
        };
        const CaptureSetup setup = CaptureSetupOf(bench.State);
        Registers registers(bench.Hardware, setup.Base, setup.HardwareType);
        LoadPosition(registers, setup, setup.Position);
        ASSERT_EQ(bits.size(), 19U);
        EXPECT_EQ(bits[0], leading) << position;
    }
}

// ---- thresholds ----

TEST(ThresholdTrace, EveryFamilyAndBoardCount) {
    for (int type = 0; type <= 20; ++type) {
        for (const bool direct : {false, true}) {
            for (const int boards : {1, 2, 3, 4}) {
                for (const int mode : {0, 1, 3, -1}) {
                    ArmCase c;
                    c.Type = type;
                    c.Direct = direct;
                    c.Boards = boards;
                    for (const std::size_t pod : {2U, 5U, 9U, 14U, 15U}) c.Pods[pod] = mode;
                    SCOPED_TRACE(c.Name());
                    ArmBench bench(c);
                    ScriptThresholds(bench.Expected, c, bench.State);
                    const CaptureSetup setup = CaptureSetupOf(bench.State);
                    Registers registers(bench.Hardware, setup.Base, setup.HardwareType);
                    LoadThresholds(registers, setup, bench.State);
                    bench.Compare();
                    if (testing::Test::HasFailure()) return;
                }
            }
        }
    }
}

/// The sixteen bits of the first converter word.
int FirstDacWord(std::uint16_t level) {
    ArmCase c;
    c.Boards = 1;
    ArmBench bench(c);
    bench.State.Pods.ThrHd[0] = level;
    int word = 0;
    int bits = 0;
    int data = 0;
    int clock = 0;
    bench.Ops.Watch = [&](std::uint16_t port, std::uint8_t value) {
        if (port == kTraceAddress + 4) data = value >> 3 & 1;
        if (port != kTraceAddress + 6) return;
        if (clock == 0 && (value & 2) != 0 && bits++ < 16) word = word * 2 + data;
        clock = value & 2;
    };
    const CaptureSetup setup = CaptureSetupOf(bench.State);
    Registers registers(bench.Hardware, setup.Base, setup.HardwareType);
    LoadThresholds(registers, setup, bench.State);
    return word;
}

TEST(ThresholdTrace, TheLowByteGoesOutInverted) {
    EXPECT_EQ(FirstDacWord(0), 0x4FF);
    EXPECT_EQ(FirstDacWord(100), 0x49B);
    EXPECT_EQ(FirstDacWord(0xFF), 0x400);
    EXPECT_EQ(FirstDacWord(0x1234), 0x4CB);
}

}  // namespace
}  // namespace zu::test
