// Texts, enabling and checks of the memory entries, and the texts of the bars.
#include <gtest/gtest.h>
#include <vector>

#include "core/MemoryMenu.h"
#include "state/Model.h"

namespace zu {
namespace {

/// Texts of the small and the large entry.
using Pair = std::pair<std::string_view, std::string_view>;
constexpr Pair kPlain{"Small memory", "Large memory"};

struct MenuCase {
    std::vector<int> Rows;
    Pair Code1, Code3, Code4, Slow;
    int SlowFrom = 5;
    std::string_view Deep{};
};

const std::vector<MenuCase> kCases{
    {{0, 5, 10},
     {"64ch  32ch  32K 500MHz + 32ch   8K 125MHz", "64ch  32ch 512K 500MHz + 32ch 128K 125MHz"},
     {"96ch  32ch  16K 250MHz + 32ch   8K 125MHz", "96ch  32ch 256K 250MHz + 32ch 128K 125MHz"},
     kPlain,
     {"160ch        8K", "160ch      128K"}},
    {{3, 8},
     {"16ch  8ch  32K 500MHz + 8ch   8K 125MHz", "16ch  8ch 512K 500MHz + 8ch 128K 125MHz"},
     {"24ch 16ch  16K 250MHz + 8ch   8K 125MHz", "24ch 16ch 256K 250MHz + 8ch 128K 125MHz"},
     kPlain,
     {"40ch        8K", "40ch      128K"}},
    {{4, 9},
     {"32ch 16ch  32K 500MHz + 16ch   8K 125MHz", "32ch 16ch 512K 500MHz + 16ch 128K 125MHz"},
     {"48ch 32ch  16K 250MHz + 16ch   8K 125MHz", "48ch 32ch 256K 250MHz + 16ch 128K 125MHz"},
     kPlain,
     {"80ch        8K ", "80ch      128K "}},
    {{1, 6, 11},
     kPlain,
     kPlain,
     {"24ch 16ch 16K  200MHz + 8ch  8K 100MHz", "24ch 16ch 64K  200MHz + 8ch 32K 100MHz"},
     {"40ch       8K ", "40ch      32K "}},
    {{2, 7, 12},
     kPlain,
     kPlain,
     {"48ch 32ch 16K  200MHz + 16ch  8K 100MHz", "48ch 32ch 64K  200MHz + 16ch 32K 100MHz"},
     {"80ch       8K", "80ch      32K"}},
    {{13},
     {"24ch 500MHz  32K", "24ch 500MHz 512K"},
     {"40ch        8K", "40ch      128K"},
     {"40ch        8K", "40ch      128K"},
     {"40ch        8K", "40ch      128K"},
     3,
     "40ch      256K (No Pattern Generator)"},
    {{14},
     {"48ch 500MHz  32K", "48ch 500MHz 512K"},
     {"80ch        8K", "80ch      128K"},
     {"80ch        8K", "80ch      128K"},
     {"80ch        8K", "80ch      128K"},
     3,
     "80ch      256K (No Pattern Generator)"},
    {{15},
     {"96ch 500MHz  32K", "96ch 500MHz 512K"},
     {"160ch        8K", "160ch      128K"},
     {"160ch        8K", "160ch      128K"},
     {"160ch        8K", "160ch      128K"},
     3,
     "160ch      256K (No Pattern Generator)"},
    {{16}, kPlain, kPlain, kPlain, {"24ch   2K ", "24ch  32K "}},
    {{17}, kPlain, kPlain, kPlain, {"24ch   2K ", "24ch 128K "}},
    {{20, 21, 22, 23, 24}, kPlain, kPlain, kPlain, kPlain},
};

InstrumentState& StateOf(int row, int type, int code) {
    static InstrumentState state;
    state.Identity.HardwareType = static_cast<std::uint8_t>(row);
    state.Clock.ClockType = static_cast<std::uint8_t>(type);
    state.Clock.ClockRate = static_cast<std::uint8_t>(code);
    return state;
}

Pair Wanted(const MenuCase& c, int code) {
    if (code == 1) return c.Code1;
    if (code == 3) return c.Code3;
    if (code == 4) return c.Code4;
    return code >= c.SlowFrom ? c.Slow : kPlain;
}

TEST(MemoryEntries, SayWhatTheRateGives) {
    for (const MenuCase& c : kCases) {
        for (const int row : c.Rows) {
            for (int code = 0; code < kRateCodes; ++code) {
                const auto entries = MemoryMenuTexts(StateOf(row, 0, code));
                EXPECT_EQ(Pair(entries[0].Text, entries[1].Text), Wanted(c, code)) << row << " " << code;
            }
        }
    }
}

TEST(MemoryEntries, SayTheSlowTextsUnderAnyExternalClock) {
    for (const MenuCase& c : kCases) {
        for (const int row : c.Rows) {
            for (const int type : {1, 3, 5, 14}) {
                for (const int code : {0, 1, 3, 4, 5}) {
                    const auto entries = MemoryMenuTexts(StateOf(row, type, code));
                    EXPECT_EQ(Pair(entries[0].Text, entries[1].Text), c.Slow) << row << " " << type;
                }
            }
        }
    }
}

TEST(MemoryEntries, OfTheDeepModeNeedTheInternalClockAtCode3OrSlower) {
    for (const MenuCase& c : kCases) {
        for (const int row : c.Rows) {
            for (int code = 0; code < kRateCodes; ++code) {
                const MemoryEntry inner = MemoryMenuTexts(StateOf(row, 0, code))[3];
                EXPECT_EQ(inner.Enabled, code >= 3);
                if (code < 3) {
                    EXPECT_EQ(inner.Text.find_first_not_of(' '), std::string_view::npos);
                } else {
                    EXPECT_EQ(inner.Text, c.Deep.empty() ? "Large memory (No Pattern Generator)" : c.Deep);
                }
                const MemoryEntry outer = MemoryMenuTexts(StateOf(row, 1, code))[3];
                EXPECT_FALSE(outer.Enabled);
                EXPECT_EQ(outer.Text.find_first_not_of(' '), std::string_view::npos);
            }
        }
    }
}

TEST(MemoryEntries, AreCheckedByTheMode) {
    InstrumentState& state = StateOf(15, 0, 5);
    for (int mode = 0; mode < kMemoryModes; ++mode) {
        state.Memory.HardwareMode = static_cast<std::int8_t>(mode);
        const auto entries = MemoryMenuTexts(state);
        for (int entry = 0; entry < kMemoryModes; ++entry) {
            EXPECT_EQ(entries[static_cast<std::size_t>(entry)].Checked, entry == mode);
        }
    }
    state.Memory.HardwareMode = 0;
}

void ExpectTexts(int row, int code, const std::vector<std::pair<int, std::string_view>>& texts) {
    const auto entries = MemoryMenuTexts(StateOf(row, 0, code));
    for (const auto& [mode, text] : texts) {
        EXPECT_EQ(entries[static_cast<std::size_t>(mode)].Text, text) << row << " " << mode;
    }
}

TEST(MemoryEntries, OfTheTenchRows) {
    for (const int code : {0, 1, 5, 34}) {
        ExpectTexts(18, code,
                    {{0, "32ch   8K (250MHz max)"},
                     {4, "16ch  16K (500MHz max)"},
                     {1, "32ch   1M (250MHz max)"},
                     {5, "16ch   2M (500MHz max)"},
                     {6, "Small memory x4"}});
        ExpectTexts(19, code,
                    {{0, "32ch   8K (250MHz max)"},
                     {4, "16ch  16K (500MHz max)"},
                     {1, "32ch   1M (250MHz max)"},
                     {5, "16ch   2M (500MHz max)"},
                     {6, "8ch   32K (  1GHz max)"},
                     {7, "8ch    4M (  1GHz max)"}});
    }
}

TEST(MemoryEntries, OfThePerchRows) {
    for (const int row : {25, 26}) {
        ExpectTexts(row, 5,
                    {{0, "32ch   4K "},
                     {8, "32ch  64K "},
                     {4, "32ch 256K "},
                     {1, "Large memory"},
                     {6, "Small memory x4"}});
    }
    ExpectTexts(27, 5,
                {{0, "32ch   4K "},
                 {8, "32ch  64K "},
                 {4, "32ch 256K "},
                 {10, "32ch 512K "},
                 {6, "32ch   1M "},
                 {1, "16ch   8K "},
                 {9, "16ch 128K "},
                 {5, "16ch 512K "},
                 {11, "16ch   1M "},
                 {7, "16ch   2M "}});
}

TEST(MemoryEntries, OfRow27HaveNo32ChannelsAbove400MSa) {
    for (int code = 0; code < 3; ++code) {
        for (const int mode : {0, 8, 4, 10, 6}) {
            ExpectTexts(27, code, {{mode, "32ch is not available in 400MSa mode."}});
        }
        ExpectTexts(27, code, {{1, "16ch   8K "}, {7, "16ch   2M "}});
    }
    ExpectTexts(27, 3, {{0, "32ch   4K "}});
    EXPECT_EQ(MemoryMenuTexts(StateOf(27, 1, 0))[0].Text, "32ch   4K ") << "external clock";
    EXPECT_EQ(MemoryMenuTexts(StateOf(25, 0, 2))[0].Text, "32ch   4K ");
}

TEST(MemoryPane, ShowsTheSamplesAChannel) {
    struct Case {
        std::int32_t Length;
        std::string_view Text;
    };
    InstrumentState state;
    for (const Case& c : {Case{32768, " 32K"}, Case{2048, "  2K"}, Case{4096, "  4K"}, Case{8192, "  8K"},
                          Case{131072, "128K"}, Case{262144, "256K"}, Case{524288, "512K"},
                          Case{1048576, "1024"}, Case{65536, "64"}, Case{16384, "16"}, Case{1014, "1"},
                          Case{1013, "0"}, Case{0, "0"}, Case{INT32_MAX, "2097152"}}) {
        state.Memory.BufferLen = c.Length;
        EXPECT_EQ(StatusMemoryText(state), c.Text);
    }
}

TEST(BoardStatus, PrintsSamplesBeforeTheK) {
    InstrumentState state;
    ChangeModel(state, 1);
    EXPECT_EQ(BoardStatusText(state), "Pike40S_32 , 32768K ,ch=40,pods=5,buffers=5");
    ChangeModel(state, 0);
    EXPECT_EQ(BoardStatusText(state), "demo mode no board , 131072K ,ch=160,pods=20,buffers=20");
    ChangeModel(state, 13);
    EXPECT_EQ(BoardStatusText(state), "roach40L_128B , 524288K ,ch=40,pods=5,buffers=5");
    ChangeModel(state, 17);
    EXPECT_EQ(BoardStatusText(state), "Dace_128 , 131072K ,ch=24,pods=3,buffers=3");
}

TEST(BoardStatus, IsEmptyAboveRow17) {
    InstrumentState state;
    for (int row = 18; row < 28; ++row) {
        state.Identity.HardwareType = static_cast<std::uint8_t>(row);
        EXPECT_EQ(BoardStatusText(state), "") << row;
    }
}

}  // namespace
}  // namespace zu
