#include "hw/TriggerCompile.h"

#include <algorithm>

#include "trigger/Sequence.h"

namespace zu {
namespace {

using enum Reg;
using enum Shadow;

constexpr int kAddresses = 256;
constexpr int kLastPage = 15;
constexpr int kLaneText = 9;      // eight characters and a blank
constexpr int kFirstLaneAt = 36;  // lane 0 stands last in the text
constexpr int kOccurrences = 2;
constexpr int kCountOff = 3;

class Compiler {
  public:
    Compiler(HardwareSession& hardware, Registers& registers, const CaptureSetup& setup,
             const InstrumentState& state, const CompiledTrigWords& words)
        : hardware_(hardware), registers_(registers), setup_(setup), state_(state), words_(words) {}

    TriggerKind Run() {
        RememberWords();
        const int held = registers_.ClockHold();
        OpenTables();
        StoreLevels();
        CloseTables();
        SelectLaneInputs();
        LoadCount();
        registers_.ClockSelect(held);
        return kind_;
    }

  private:
    void RememberWords();
    void OpenTables();
    void StoreLevels();
    void SelectPage(int page);
    void PulseLoad();
    void StoreTable(int board, const LaneMatch& match);
    void CloseTables();
    void SelectLaneInputs();
    void LoadCount();

    HardwareSession& hardware_;
    Registers& registers_;
    const CaptureSetup& setup_;
    const InstrumentState& state_;
    const CompiledTrigWords& words_;
    TriggerKind kind_ = TriggerKind::AnyData;
};

void Compiler::RememberWords() {
    hardware_.ArmChanged = *hardware_.TrigCache == words_ ? 0 : 1;
    *hardware_.TrigCache = words_;
}

void Compiler::OpenTables() {
    registers_.ClearBits(S3, 0, Bit(2));
    registers_.ClearOut(S5, 0, Bit(1));
    registers_.SetOut(S2, 0, Bits(3, 4));
    registers_.Strobe(3);
    for (int board = 0; board < setup_.Boards; ++board) {
        registers_.SetOut(S3, board, Bit(0));
        registers_.SetOut(S6, board, Bits(5, 6));
        registers_.SetOut(S1, board, Bit(2));
        registers_.Write(R4, board, Bits(0, 2));
    }
}

/// The last level of the sequence owns the last page; empty slots take none.
void Compiler::StoreLevels() {
    const bool anyBit = state_.Trigger.TrigMatchMode[0] == 0;
    const int blanked = BlankedLanes(setup_);
    int page = kLastPage;
    for (int level = kTrigWords - 1; level >= 0; --level) {
        const auto word = WordOfLevel(state_, level);
        if (!word) continue;
        SelectPage(page--);
        for (int board = 0; board < setup_.Boards; ++board) {
            // "Any bit" is programmed as its opposite: not all bits at the complement.
            LaneMatch match = MatchOf(
                words_.Word[static_cast<std::size_t>(*word)][static_cast<std::size_t>(board)], anyBit);
            for (std::size_t lane = 0; lane < kBoardLanes; ++lane) {
                if ((blanked >> lane & 1) != 0) match.Mask[lane] = match.Value[lane] = 0;
            }
            if (match.Constrains()) kind_ = TriggerKind::Constrained;
            StoreTable(board, match);
        }
    }
}

void Compiler::SelectPage(int page) {
    registers_.Write(R7, 0, page);
    registers_.Write(R2, 0, registers_.At(S2, 0) & ~Bits(3, 4));
    PulseLoad();
    registers_.Write(R2, 0, registers_.At(S2, 0) & ~Bit(3));
}

/// What stands in R7 is taken over.
void Compiler::PulseLoad() {
    registers_.Strobe(3);
    registers_.Write(R1, 0, registers_.At(S1, 0) | Bit(3));
    registers_.Strobe(3);
    registers_.Write(R1, 0, registers_.At(S1, 0) & ~Bit(3));
    registers_.Strobe(3);
}

void Compiler::StoreTable(int board, const LaneMatch& match) {
    constexpr int kIdle = Bits(0, 1);
    constexpr int kStore = ~Bit(1);  // the entry is taken while bit 1 is low
    registers_.Write(R0, board, 0);
    for (const int value : {kIdle, kIdle & kStore, kIdle}) registers_.Write(R4, board, value);
    for (int address = 0; address < kAddresses; ++address) {
        const int data = kIdle | match.Lanes(address) << 3;
        registers_.Write(R0, board, address);
        registers_.Write(R14, board, address);
        for (const int value : {data, data & kStore, data}) registers_.Write(R4, board, value);
    }
    registers_.SetOut(S4, board, Bits(1, 2));
    registers_.ClearOut(S1, board, Bits(0, 1));
}

void Compiler::CloseTables() {
    registers_.MaskOut(S2, 0, Bit(3), 0);
}

void Compiler::SelectLaneInputs() {
    for (int board = 0; board < setup_.Boards; ++board) {
        registers_.ClearOut(S1, board, Bits(0, 1));
        if (setup_.Memory == Interleave::Quad) registers_.SetOut(S1, board, Bit(1));
        if (setup_.Memory == Interleave::Dual) registers_.SetOut(S1, board, Bit(0));
    }
    registers_.ClearOut(S2, 0, Bit(4));
    registers_.Strobe(1);
}

/// The count register runs up to its overflow; a count of 0 asks for 256 events.
void Compiler::LoadCount() {
    const bool off = setup_.CountMode == kCountOff;
    const int preset = off ? 0 : setup_.Count - 1;
    registers_.MaskOut(S3, 0, 0x63, Bit(2));
    registers_.At(S7, 0) = static_cast<std::uint8_t>(0xFF - preset);
    registers_.Out(S7, 0);
    PulseLoad();
    if (off || setup_.CountMode == kOccurrences) {
        registers_.MaskOut(S3, 0, 0xE7, Bit(7));
    } else {
        registers_.MaskOut(S3, 0, 0x67, Bits(3, 4));
    }
}

}  // namespace

bool LaneMatch::Constrains() const {
    return std::any_of(Mask.begin(), Mask.end(), [](std::uint8_t mask) { return mask != 0; });
}

int LaneMatch::Lanes(int byte) const {
    int lanes = 0;
    for (std::size_t lane = 0; lane < kBoardLanes; ++lane) {
        if ((byte & Mask[lane]) == Value[lane]) lanes |= 1 << lane;
    }
    return lanes;
}

LaneMatch MatchOf(const CompiledTrigWords::Entry& entry, bool complement) {
    const char one = complement ? '0' : '1';
    LaneMatch match;
    for (std::size_t lane = 0; lane < kBoardLanes; ++lane) {
        const std::size_t first = kFirstLaneAt - kLaneText * lane;
        for (std::size_t i = 0; i < 8; ++i) {
            const char cell = entry[first + i];
            if (cell != '0' && cell != '1') continue;
            const auto bit = static_cast<std::uint8_t>(0x80U >> i);
            match.Mask[lane] |= bit;
            if (cell == one) match.Value[lane] |= bit;
        }
    }
    return match;
}

int BlankedLanes(const CaptureSetup& setup) {
    const bool large = setup.HardwareType >= 11 && setup.HardwareType <= 15;
    if (large) return setup.Internal() && setup.RateQuad() ? Bit(1) | Bit(3) : 0;
    // The other boards go by the rate alone, with an external clock too.
    if (setup.RateQuad()) return Bits(1, 3);
    return setup.RateDual() ? Bits(2, 3) : 0;
}

TriggerKind CompileTrigger(HardwareSession& hardware, Registers& registers, const CaptureSetup& setup,
                           const InstrumentState& state, const CompiledTrigWords& words) {
    return Compiler(hardware, registers, setup, state, words).Run();
}

}  // namespace zu
