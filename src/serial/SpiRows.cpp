#include "serial/SpiRows.h"

#include <algorithm>
#include <cstdio>
#include <span>

#include "serial/LineScan.h"
#include "serial/RowCursors.h"
#include "serial/SpiDecoder.h"

namespace zu {
namespace {

using Words = std::span<const std::uint16_t>;

Words WordsOf(const std::array<std::vector<std::uint16_t>, kSpiSlots>& slots, int slot) {
    if (slot < 0 || slot >= kSpiSlots) return {};
    return slots[static_cast<std::size_t>(slot)];
}

std::uint16_t WordAt(Words words, std::int64_t sample) {
    return sample >= 0 && sample < std::ssize(words) ? words[static_cast<std::size_t>(sample)]
                                                     : std::uint16_t{0};
}

constexpr std::int32_t kWordsAtOnce = 4;

/// Whether none of the kWordsAtOnce entries from `at` on has a flag.
bool NoneAt(Words words, std::uint16_t flag, std::int32_t at) {
    constexpr std::uint64_t kEachEntry = 0x0001000100010001U;
    return (scan::LoadWord(&words[static_cast<std::size_t>(at)]) & kEachEntry * flag) == 0;
}

/// First index in [from, to) whose entry has a flag; `to` if there is none.
std::int32_t FindFlag(Words words, std::uint16_t flag, std::int32_t from, std::int32_t to) {
    const auto end = static_cast<std::int32_t>(std::min<std::int64_t>(to, std::ssize(words)));
    std::int32_t i = std::max(from, 0);
    while (i + kWordsAtOnce <= end && NoneAt(words, flag, i)) i += kWordsAtOnce;
    while (i < end && (words[static_cast<std::size_t>(i)] & flag) == 0) ++i;
    return i < end ? i : to;
}

/// Last index in [floor, from] whose entry has a flag; floor - 1 if there is none.
std::int32_t FindFlagBack(Words words, std::uint16_t flag, std::int32_t from, std::int32_t floor) {
    auto i = static_cast<std::int32_t>(std::min<std::int64_t>(from, std::ssize(words) - 1));
    while (i - floor + 1 >= kWordsAtOnce && NoneAt(words, flag, i + 1 - kWordsAtOnce)) i -= kWordsAtOnce;
    while (i >= floor && (words[static_cast<std::size_t>(i)] & flag) == 0) --i;
    return std::max(i, floor - 1);
}

std::int32_t EndOf(Words words) {
    return static_cast<std::int32_t>(words.size());
}

SpiByte ByteAt(const InstrumentState& state, int slot, std::int32_t start) {
    const Words si = WordsOf(state.Serial.SpiSI, slot);
    const std::int32_t end = FindFlag(si, spi::kEnd, start, EndOf(si));
    return {start, end < EndOf(si) ? end : start,
            static_cast<std::uint8_t>(si[static_cast<std::size_t>(start)] & spi::kValue),
            static_cast<std::uint8_t>(SpiSoAt(state, slot, start) & spi::kValue)};
}

bool StartsByte(const InstrumentState& state, int slot, std::int64_t sample) {
    return (SpiSiAt(state, slot, sample) & spi::kStart) != 0;
}

std::int32_t DataEnd(const InstrumentState& state) {
    return static_cast<std::int32_t>(state.Serial.SpiSI[0].size());
}

using SlotSet = std::array<bool, kSpiSlots>;
constexpr SlotSet kAllSlots{true, true, true};

/// First start of a byte in [from, to) in the chosen slots; `to` if there is none.
std::int32_t NextStart(const InstrumentState& state, const SlotSet& slots, std::int32_t from,
                       std::int32_t to) {
    // Block by block: a slot without bytes is not walked to its end for the sake of the next byte of another.
    constexpr std::int32_t kBlock = 4096;
    for (std::int32_t block = std::max(from, 0); block < to;) {
        const std::int32_t stop = to - block > kBlock ? block + kBlock : to;
        std::int32_t next = stop;
        for (int slot = 0; slot < kSpiSlots; ++slot) {
            if (!slots[static_cast<std::size_t>(slot)]) continue;
            next = FindFlag(WordsOf(state.Serial.SpiSI, slot), spi::kStart, block, next);
        }
        if (next < stop) return next;
        block = stop;
    }
    return to;
}

/// Last start of a byte from 0 up to a sample in the chosen slots; -1 if there is none.
std::int32_t StartBack(const InstrumentState& state, const SlotSet& slots, std::int32_t from) {
    std::int32_t last = -1;
    for (int slot = 0; slot < kSpiSlots; ++slot) {
        if (!slots[static_cast<std::size_t>(slot)]) continue;
        last = FindFlagBack(WordsOf(state.Serial.SpiSI, slot), spi::kStart, from, last + 1);
    }
    return last;
}

/// Next sample at which a byte starts in all shown slots at once; `to` if there is none.
std::int32_t NextCommonStart(const InstrumentState& state, std::int32_t from, std::int32_t to) {
    const auto shown = ShownSpiSlots(state);
    for (std::int32_t i = NextStart(state, shown, from, to); i < to; i = NextStart(state, shown, i + 1, to)) {
        bool all = true;
        for (int slot = 0; slot < kSpiSlots; ++slot) {
            all = all && (!shown[static_cast<std::size_t>(slot)] || StartsByte(state, slot, i));
        }
        if (all) return i;
    }
    return to;
}

}  // namespace

std::uint16_t SpiSiAt(const InstrumentState& state, int slot, std::int64_t sample) {
    return WordAt(WordsOf(state.Serial.SpiSI, slot), sample);
}

std::uint16_t SpiSoAt(const InstrumentState& state, int slot, std::int64_t sample) {
    return WordAt(WordsOf(state.Serial.SpiSO, slot), sample);
}

std::optional<SpiByte> NextSpiByte(const InstrumentState& state, int slot, std::int32_t from) {
    const Words si = WordsOf(state.Serial.SpiSI, slot);
    const std::int32_t start = FindFlag(si, spi::kStart, from, EndOf(si));
    if (start >= EndOf(si)) return std::nullopt;
    return ByteAt(state, slot, start);
}

std::optional<SpiByte> SpiByteAround(const InstrumentState& state, int slot, std::int32_t sample) {
    const Words si = WordsOf(state.Serial.SpiSI, slot);
    const std::int32_t start = FindFlagBack(si, spi::kStart, sample, 0);
    if (start < 0) return std::nullopt;
    const SpiByte byte = ByteAt(state, slot, start);
    return byte.End >= sample ? std::optional(byte) : std::nullopt;
}

std::array<bool, kSpiSlots> ShownSpiSlots(const InstrumentState& state) {
    SlotSet shown{};
    for (std::size_t slot = 0; slot < kSpiSlots; ++slot) {
        shown[slot] = state.Serial.SpiShown[slot] != 0 && SpiGroup(state, static_cast<int>(slot)) >= 0;
    }
    return shown;
}

std::string SpiButtonText(const InstrumentState& state, int slot) {
    const int group = SpiGroup(state, slot);
    const std::string name(group < 0 ? std::string_view("Undefined")
                                     : state.Groups[static_cast<std::size_t>(group)].Name.View());
    return "SPI(" + std::to_string(slot) + ")\r\n" + name;
}

std::string SpiCellText(std::uint16_t entry) {
    if ((entry & spi::kStart) == 0) return {};
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "%2.2X", static_cast<unsigned>(entry & spi::kValue));
    return text.data();
}

std::int32_t SpiRangeEnd(const InstrumentState& state) {
    return std::max(state.Serial.SpiFirst, state.Serial.SpiLast);
}

std::int32_t SpiRowsStart(const InstrumentState& state) {
    const std::int32_t end = DataEnd(state);
    const std::int32_t from =
        std::max(std::min(state.Serial.SpiDataPos, SpiRangeEnd(state)), std::max(state.Serial.SpiFirst, 0));
    const std::int32_t next = NextStart(state, kAllSlots, from, end);
    if (next < end) return next;
    const std::int32_t previous = StartBack(state, kAllSlots, from);
    return previous >= 0 ? previous : from;
}

std::optional<std::int32_t> NextSpiRow(const InstrumentState& state, std::int32_t from) {
    const std::int32_t end = DataEnd(state);
    from = std::max(from, 0);
    const std::int32_t cursor = NextCursorSample(state, from, end);
    const std::int32_t sample = NextStart(state, ShownSpiSlots(state), from, cursor);
    return sample < end ? std::optional(sample) : std::nullopt;
}

std::optional<std::int32_t> SpiStartBack(const InstrumentState& state, std::int32_t from) {
    const std::int32_t start = StartBack(state, ShownSpiSlots(state), from);
    return start >= 0 ? std::optional(start) : std::nullopt;
}

std::vector<std::int32_t> SpiRows(const InstrumentState& state, int count) {
    std::vector<std::int32_t> rows;
    auto row = NextSpiRow(state, SpiRowsStart(state));
    for (int r = 0; r < count && row; ++r) {
        rows.push_back(*row);
        row = NextSpiRow(state, *row + 1);
    }
    return rows;
}

std::optional<std::int32_t> SpiRowSample(const InstrumentState& state, int row) {
    const std::int32_t end = DataEnd(state);
    if (row < 0) return std::nullopt;
    std::int32_t from = std::max(state.Serial.SpiDataPos, 0);
    for (;; --row) {
        const std::int32_t sample =
            std::min(NextCommonStart(state, from, end), NextCursorSample(state, from, end));
        if (sample >= end) return std::nullopt;
        if (row == 0) return sample;
        from = sample + 1;
    }
}

}  // namespace zu
