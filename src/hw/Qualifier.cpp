#include "hw/Qualifier.h"

#include <algorithm>
#include <string_view>

namespace zu {
namespace {

using enum Reg;
using enum Shadow;

constexpr int kEntries = 256;
constexpr int kSignals = 8;

/// The three values of R4 that store an entry; without bit 3 they clear it.
struct Strobes {
    explicit Strobes(int s4) : Store((s4 & ~5) | 0x0A), Rest((s4 & ~5) | 0x0F), Ready((s4 & ~5) | 0x0B) {}
    int Store;
    int Rest;
    int Ready;
};

struct Word {
    int Value = 0;
    int Mask = 0;
};

Word ParseWord(std::string_view text) {
    Word word;
    for (int i = 0; i < kSignals && i < static_cast<int>(text.size()); ++i) {
        const char c = text[static_cast<std::size_t>(i)];
        if (c == '0' || c == '1') word.Mask |= Bit(kSignals - 1 - i);
        if (c == '1') word.Value |= Bit(kSignals - 1 - i);
    }
    return word;
}

void StoreEntry(Registers& registers, int address, int ready, int store) {
    registers.Write(R14, 0, address);
    registers.Read(R0, 0);
    for (const int value : {ready, store, ready}) registers.Write(R4, 0, value);
}

void ClearTable(Registers& registers, const Strobes& strobes) {
    constexpr int kNoData = ~Bit(3);
    registers.Write(R4, 0, strobes.Ready & kNoData);
    for (int a = 0; a < kEntries; ++a)
        StoreEntry(registers, a, strobes.Ready & kNoData, strobes.Store & kNoData);
    registers.Write(R4, 0, strobes.Rest);
}

void StoreWord(Registers& registers, const Strobes& strobes, const Word& word, std::uint8_t edge) {
    for (int a = 0; a < kEntries; ++a) {
        const bool match = (a & word.Mask) == word.Value;
        if (edge == (match ? 0 : 1)) StoreEntry(registers, a, strobes.Ready, strobes.Store);
    }
    registers.Write(R4, 0, strobes.Rest);
}

}  // namespace

void LoadQualifier(Registers& registers, std::uint8_t edge, std::span<const Text<kQualifierText>> words) {
    registers.SetOutS8(0, Bit(2));
    const int held = registers.ClockHold();
    registers.WriteS9(0, registers.At(S9, 0) | Bits(3, 7));
    registers.Write(R1, 0, registers.At(S1, 0) | Bit(2));
    const Strobes strobes(registers.At(S4, 0));
    ClearTable(registers, strobes);
    for (const auto& text : words) {
        const Word word = ParseWord(text.View());
        if (word.Mask != 0) StoreWord(registers, strobes, word, edge);
    }
    registers.OutS9(0);
    registers.Out(S4, 0);
    registers.ClearOut(S1, 0, Bit(2));
    registers.ClearOutS8(0, Bit(2));
    registers.ClockSelect(held);
}

}  // namespace zu
