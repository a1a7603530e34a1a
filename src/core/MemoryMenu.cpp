#include "core/MemoryMenu.h"

#include <algorithm>
#include <cstdio>
#include <span>

#include "state/Catalogue.h"

namespace zu {
namespace {

constexpr std::string_view kBlank = "  ";
constexpr std::string_view kNo32Channels = "32ch is not available in 400MSa mode.";
constexpr int kDeepMode = 3;

/// Texts of the small and the large entry; empty texts leave "Small memory" and "Large memory".
struct Pair {
    std::string_view Small;
    std::string_view Large;
};

/// What a row group says at each kind of rate.
struct MenuRow {
    std::array<int, 3> Rows;  ///< -1 = none
    Pair Code1;
    Pair Code3;
    Pair Code4;
    Pair Slow;                ///< from SlowFrom on, and with any external clock
    int SlowFrom = 5;         ///< internal code
    std::string_view Deep{};  ///< of mode 3 at the internal codes from SlowFrom on
};

constexpr Pair kSame{};

constexpr std::array kPairRows{
    MenuRow{{0, 5, 10},
            {"64ch  32ch  32K 500MHz + 32ch   8K 125MHz", "64ch  32ch 512K 500MHz + 32ch 128K 125MHz"},
            {"96ch  32ch  16K 250MHz + 32ch   8K 125MHz", "96ch  32ch 256K 250MHz + 32ch 128K 125MHz"},
            kSame,
            {"160ch        8K", "160ch      128K"}},
    MenuRow{{3, 8, -1},
            {"16ch  8ch  32K 500MHz + 8ch   8K 125MHz", "16ch  8ch 512K 500MHz + 8ch 128K 125MHz"},
            {"24ch 16ch  16K 250MHz + 8ch   8K 125MHz", "24ch 16ch 256K 250MHz + 8ch 128K 125MHz"},
            kSame,
            {"40ch        8K", "40ch      128K"}},
    MenuRow{{4, 9, -1},
            {"32ch 16ch  32K 500MHz + 16ch   8K 125MHz", "32ch 16ch 512K 500MHz + 16ch 128K 125MHz"},
            {"48ch 32ch  16K 250MHz + 16ch   8K 125MHz", "48ch 32ch 256K 250MHz + 16ch 128K 125MHz"},
            kSame,
            {"80ch        8K ", "80ch      128K "}},
    MenuRow{{1, 6, 11},
            kSame,
            kSame,
            {"24ch 16ch 16K  200MHz + 8ch  8K 100MHz", "24ch 16ch 64K  200MHz + 8ch 32K 100MHz"},
            {"40ch       8K ", "40ch      32K "}},
    MenuRow{{2, 7, 12},
            kSame,
            kSame,
            {"48ch 32ch 16K  200MHz + 16ch  8K 100MHz", "48ch 32ch 64K  200MHz + 16ch 32K 100MHz"},
            {"80ch       8K", "80ch      32K"}},
    MenuRow{{13, -1, -1},
            {"24ch 500MHz  32K", "24ch 500MHz 512K"},
            kSame,
            kSame,
            {"40ch        8K", "40ch      128K"},
            3,
            "40ch      256K (No Pattern Generator)"},
    MenuRow{{14, -1, -1},
            {"48ch 500MHz  32K", "48ch 500MHz 512K"},
            kSame,
            kSame,
            {"80ch        8K", "80ch      128K"},
            3,
            "80ch      256K (No Pattern Generator)"},
    MenuRow{{15, -1, -1},
            {"96ch 500MHz  32K", "96ch 500MHz 512K"},
            kSame,
            kSame,
            {"160ch        8K", "160ch      128K"},
            3,
            "160ch      256K (No Pattern Generator)"},
    MenuRow{{16, -1, -1}, kSame, kSame, kSame, {"24ch   2K ", "24ch  32K "}},
    MenuRow{{17, -1, -1}, kSame, kSame, kSame, {"24ch   2K ", "24ch 128K "}},
};

/// Text of one memory mode.
struct ModeText {
    int Mode;
    std::string_view Text;
};
constexpr std::array kTench512{ModeText{0, "32ch   8K (250MHz max)"}, ModeText{4, "16ch  16K (500MHz max)"},
                               ModeText{1, "32ch   1M (250MHz max)"}, ModeText{5, "16ch   2M (500MHz max)"}};
constexpr std::array kTench1024{ModeText{0, "32ch   8K (250MHz max)"}, ModeText{4, "16ch  16K (500MHz max)"},
                                ModeText{6, "8ch   32K (  1GHz max)"}, ModeText{1, "32ch   1M (250MHz max)"},
                                ModeText{5, "16ch   2M (500MHz max)"}, ModeText{7, "8ch    4M (  1GHz max)"}};
constexpr std::array kPerchA{ModeText{0, "32ch   4K "}, ModeText{8, "32ch  64K "}, ModeText{4, "32ch 256K "}};
constexpr std::array kPerchB{ModeText{0, "32ch   4K "},  ModeText{8, "32ch  64K "},
                             ModeText{4, "32ch 256K "},  ModeText{10, "32ch 512K "},
                             ModeText{6, "32ch   1M "},  ModeText{1, "16ch   8K "},
                             ModeText{9, "16ch 128K "},  ModeText{5, "16ch 512K "},
                             ModeText{11, "16ch   1M "}, ModeText{7, "16ch   2M "}};
constexpr std::array kModesOf32Channels{0, 8, 4, 10, 6};

using Entries = std::array<MemoryEntry, kMemoryModes>;

MemoryEntry& Entry(Entries& entries, int mode) {
    return entries[static_cast<std::size_t>(mode)];
}

const Pair& PairOf(const MenuRow& row, int code, bool internal) {
    if (!internal || code >= row.SlowFrom) return row.Slow;
    if (code == 1) return row.Code1;
    if (code == 3) return row.Code3;
    return code == 4 ? row.Code4 : kSame;
}

void WritePair(Entries& entries, const InstrumentState& state) {
    const bool internal = state.Clock.ClockType == 0;
    const int code = state.Clock.ClockRate;
    for (const MenuRow& row : kPairRows) {
        const int type = state.Identity.HardwareType;
        if (std::find(row.Rows.begin(), row.Rows.end(), type) == row.Rows.end()) continue;
        const Pair& pair = PairOf(row, code, internal);
        if (!pair.Small.empty()) Entry(entries, 0).Text = pair.Small;
        if (!pair.Large.empty()) Entry(entries, 1).Text = pair.Large;
        if (!row.Deep.empty() && internal && code >= row.SlowFrom) Entry(entries, kDeepMode).Text = row.Deep;
    }
}

void WriteModes(Entries& entries, std::span<const ModeText> texts) {
    for (const ModeText& text : texts) Entry(entries, text.Mode).Text = text.Text;
}

void WriteByMode(Entries& entries, const InstrumentState& state) {
    switch (state.Identity.HardwareType) {
        case 18:
            return WriteModes(entries, kTench512);
        case 19:
            return WriteModes(entries, kTench1024);
        case 25:
        case 26:
            return WriteModes(entries, kPerchA);
        case 27:
            WriteModes(entries, kPerchB);
            break;
        default:
            return;
    }
    if (state.Clock.ClockType != 0 || state.Clock.ClockRate >= 3) return;
    for (const int mode : kModesOf32Channels) Entry(entries, mode).Text = kNo32Channels;
}

}  // namespace

Entries MemoryMenuTexts(const InstrumentState& state) {
    Entries entries;
    for (int mode = 0; mode < kMemoryModes; ++mode) {
        Entry(entries, mode).Text = Traits(MemoryCommand(mode)).Text;
        Entry(entries, mode).Checked = mode == state.Memory.HardwareMode;
    }
    Entry(entries, 0).Text = "Small memory";
    Entry(entries, 1).Text = "Large memory";
    WritePair(entries, state);
    WriteByMode(entries, state);
    if (state.Clock.ClockType != 0 || state.Clock.ClockRate < 3) {
        Entry(entries, kDeepMode).Enabled = false;
        Entry(entries, kDeepMode).Text = kBlank;
    }
    return entries;
}

std::string StatusMemoryText(const InstrumentState& state) {
    struct Known {
        std::int32_t Length;
        std::string_view Text;
    };
    constexpr std::array kKnown{Known{32768, " 32K"}, Known{2048, "  2K"},   Known{4096, "  4K"},
                                Known{8192, "  8K"},  Known{131072, "128K"}, Known{262144, "256K"},
                                Known{524288, "512K"}};
    const std::int32_t length = state.Memory.BufferLen;
    for (const Known& known : kKnown) {
        if (known.Length == length) return std::string(known.Text);
    }
    return std::to_string((std::int64_t{length} + 10) / 1024);
}

std::string BoardStatusText(const InstrumentState& state) {
    const std::string_view label = Model(state.Identity.HardwareType).StatusLabel;
    if (label.empty()) return {};
    std::array<char, 96> numbers{};
    // The K behind a count of samples is what the text always said.
    std::snprintf(numbers.data(), numbers.size(), " , %ldK ,ch=%d,pods=%d,buffers=%d",
                  static_cast<long>(state.Memory.BufferLen), state.Shape.TotalChannels,
                  static_cast<int>(state.Shape.PodCount), static_cast<int>(state.Shape.BufCount));
    return std::string(label) + numbers.data();
}

}  // namespace zu
