#include "hw/sim/SimInstrument.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace zu {
namespace {

constexpr std::uint8_t kOpenBus = 0xFF;
constexpr std::uint8_t kUnwritten = 0x00;  // memory before the first capture
constexpr std::size_t kComplaintsKept = 100;
constexpr std::size_t kPeekAhead = 512;

/// Phases of a clock as R2 and the control byte S8 of board 0 route them.
int PhasesOf(const SimBoard& master) {
    if (master.RegisterBit(2, 6)) return 1;
    switch (master.S8() >> 3 & 3) {
        case 2:
            return 4;
        case 1:
            return 2;
        default:
            return 1;
    }
}

SimTriggerKind KindOf(const SimBoard& master) {
    if (master.RegisterBit(3, 7) || !master.RegisterBit(3, 3)) return SimTriggerKind::Events;
    return (master.Register(3) & 0x60) == 0x60 ? SimTriggerKind::EndsWithin : SimTriggerKind::Lasts;
}

SimTriggerGate GateOf(const SimBoard& master) {
    switch (master.Register(3) >> 5 & 3) {
        case 1:
            return SimTriggerGate::Parked;
        case 2:
            return SimTriggerGate::Forced;
        default:
            return SimTriggerGate::Open;
    }
}

}  // namespace

SimInstrument::SimInstrument(const SimTraits& traits)
    : traits_(traits),
      boards_(kSimBoards, SimBoard(traits)),
      stimulus_(std::make_shared<SimQuiet>()),
      acquisition_(boards_) {}

void SimInstrument::Reset() {
    for (SimBoard& board : boards_) board = SimBoard(traits_);
    position_ = {};
    complaints_.clear();
    acquisition_.Reset();
    clock_ = {};
    clockWord_ = 0;
    s8Writes_ = 0;
    page_ = 0;
    count_ = 0;
    polls_ = 0;
    next_ = {};
    cache_ = {};
}

void SimInstrument::Connect(std::shared_ptr<SimStimulus> stimulus) {
    stimulus_ = stimulus != nullptr ? std::move(stimulus) : std::make_shared<SimQuiet>();
}

void SimInstrument::Complain(const std::string& text) {
    if (complaints_.size() < kComplaintsKept) complaints_.push_back(text);
}

const SimBoard& SimInstrument::Board(int board) const {
    return boards_[static_cast<std::size_t>(std::clamp(board, 0, kSimBoards - 1))];
}

void SimInstrument::Write(int board, int reg, std::uint8_t value) {
    if (!Fitted(board)) return;
    SimBoard& b = boards_[static_cast<std::size_t>(board)];
    const std::uint8_t before = b.Register(reg);
    b.Write(reg, value);
    position_.SetControl(boards_[0].S10());
    if (reg == 3 && Falls(before, value, 0)) next_[static_cast<std::size_t>(board)] = 0;
    if (board != 0) return;
    if (reg == 1) OnR1(before, value);
    if (reg == 2 || reg == 3 || reg == 5 || reg == 12) OnControl();
}

void SimInstrument::WritePodRegister(int board, bool first, std::uint8_t value) {
    if (!Fitted(board) || !traits_.Direct) return;
    boards_[static_cast<std::size_t>(board)].WritePodRegister(first, value);
    position_.SetControl(boards_[0].S10());
}

/// The rise of bit 3 takes R7, as the count or, while R2 bit 3 is low, as the page.
void SimInstrument::OnR1(std::uint8_t before, std::uint8_t after) {
    if (!Rises(before, after, 3)) return;
    const std::uint8_t value = boards_[0].Register(7);
    if (boards_[0].RegisterBit(3, 2)) {
        count_ = value;
    } else if (!boards_[0].RegisterBit(2, 3)) {
        page_ = value & 15;
        for (SimBoard& board : boards_) board.SetTriggerPage(page_);
    }
}

/// The clock follows S8 alone, but for the pair of bits in R2 and R3 that lets it run when S8 stops it.
void SimInstrument::OnControl() {
    const bool written = std::exchange(s8Writes_, boards_[0].S8Writes()) != s8Writes_;
    if (written || boards_[0].S8() >> 5 == 7) {
        clock_ = SampleClock();
        clockWord_ = boards_[0].SynthWord();
    }
    const SimControl control = Control();
    if (!control.Armed) polls_ = 0;
    acquisition_.Update(control, traits_.Boards, stimulus_, time_.Now());
}

SimControl SimInstrument::Control() const {
    const SimBoard& master = boards_[0];
    SimControl control;
    control.Armed = master.RegisterBit(5, 1);
    control.Clock = clock_;
    control.Gate = GateOf(master);
    control.Trigger = {page_, KindOf(master), 256 - count_, master.RegisterBit(1, 3)};
    control.Phases = PhasesOf(master);
    control.Depth = Depth();
    control.PhasesSwapped = (clockWord_ >> 7 & 7) == 0;
    control.Position = position_.Value();
    return control;
}

/// R1: bit 7 says that the board is there, bit 5 of board 0 the memory class, bit 1 whether the pod registers
/// have addresses of their own. While R2 bit 4 is high, bit 4 says that the trigger came and bit 6 that
/// memory is full; the read that ends the arming never finds it so.
std::uint8_t SimInstrument::Status(int board) {
    const int echo = boards_[static_cast<std::size_t>(board)].Register(1) & 1;
    int answer = echo << 7;
    if (board == 0) {
        answer |= traits_.Direct ? echo << 1 : 0;
        answer |= traits_.LargeMemory ? 0 : 0x20;
        if (boards_[0].RegisterBit(2, 4)) {
            acquisition_.Progress(time_.Now());
            answer |= acquisition_.Triggered() ? 0x10 : 0;
            answer |= acquisition_.Complete() && polls_ > 0 ? 0x40 : 0;
        }
    }
    return static_cast<std::uint8_t>(answer);
}

std::uint8_t SimInstrument::Peek(int board, int reg) {
    if (!Fitted(board)) return kOpenBus;
    if (reg == 0) return boards_[static_cast<std::size_t>(board)].RegisterBit(3, 0) ? 0 : PeekMemory(board);
    if (reg == 1) return Status(board);
    if (reg == 2 && board == 0) return traits_.Later ? 0x00 : 0x80;
    return 0;
}

void SimInstrument::Clock(int board, int reg) {
    if (reg == 0) {
        if (Fitted(board)) ++next_[static_cast<std::size_t>(board)];
        Strobe();
    }
    if (board == 0 && reg == 1 && boards_[0].RegisterBit(2, 4)) {
        ++polls_;
        time_.Advance(pollTicks_);
    }
}

std::uint8_t SimInstrument::Read(int board, int reg) {
    const std::uint8_t value = Peek(board, reg);
    Clock(board, reg);
    return value;
}

void SimInstrument::ReadBlock(int board, int reg, std::span<std::uint8_t> bytes) {
    if (reg == 0 && Fitted(board)) return ReadMemory(board, bytes);
    for (std::uint8_t& byte : bytes) byte = Peek(board, reg);
}

void SimInstrument::WriteBlock(int board, int reg, std::span<const std::uint8_t> bytes) {
    if (Fitted(board)) boards_[static_cast<std::size_t>(board)].WriteBlock(reg, bytes);
}

void SimInstrument::Strobe() {
    position_.Strobe(boards_[0].RegisterBit(4, 3));
}

int SimInstrument::Depth() const {
    if ((boards_[0].S10() & 0x20) != 0) return 131072;
    return (boards_[0].S10() & 0x04) != 0 ? 32768 : 8192;
}

std::optional<SimInstrument::Bank> SimInstrument::BankOf(int board, const SimMemory& memory) const {
    auto bank = traits_.Later ? LaterBank(board, memory) : EarlierBank(board, memory);
    if (!bank || bank->Pod >= kSimLanes) return std::nullopt;
    bank->Pod += board * kSimLanes;
    return bank;
}

/// R5 selects two lanes by bits 2 and 3, one of them and the phase by bits 4 and 5.
std::optional<SimInstrument::Bank> SimInstrument::LaterBank(int board, const SimMemory& memory) const {
    const int selector = boards_[static_cast<std::size_t>(board)].Register(5);
    const int group = selector >> 2 & 3;
    const int k = selector >> 4 & 3;
    if (group == 3) return std::nullopt;
    if (memory.Phases == 4) return Bank{2 * group, 4 - k, 4};
    if (memory.Phases == 1) return Bank{2 * group + (k & 1), 0, 1};
    const bool second = (k >= 2) != memory.PhasesSwapped;
    return Bank{2 * group + (k & 1), second ? 2 : 1, 2};
}

/// S9 selects the lane whose bit alone is low. Of several phases the first four lanes hold one each.
std::optional<SimInstrument::Bank> SimInstrument::EarlierBank(int board, const SimMemory& memory) const {
    const auto open = static_cast<std::uint8_t>(~boards_[static_cast<std::size_t>(board)].S9() & 0xF8);
    if (std::popcount(open) != 1) return std::nullopt;
    const int k = std::countl_zero(open);
    if (memory.Phases == 1) return Bank{k, 0, 1};
    if (k == 4) return Bank{4, 0, memory.Phases};
    return memory.Phases == 4 ? Bank{0, 4 - k, 4} : Bank{k & 1, 1 - k / 2, 2};
}

void SimInstrument::ReadMemory(int board, std::span<std::uint8_t> bytes) {
    std::uint32_t& next = next_[static_cast<std::size_t>(board)];
    const SimMemory* memory = acquisition_.ReadOut(time_.Now());
    const auto bank = memory == nullptr ? std::nullopt : BankOf(board, *memory);
    if (!bank) {
        std::fill(bytes.begin(), bytes.end(), memory == nullptr ? kUnwritten : kOpenBus);
        next += static_cast<std::uint32_t>(bytes.size());
        return;
    }
    const auto depth = static_cast<std::uint32_t>(memory->Depth);
    while (!bytes.empty()) {
        const std::uint32_t address = next % depth;
        const std::size_t count = std::min<std::size_t>(bytes.size(), depth - address);
        memory->Sample(bank->Pod, bank->First + address * bank->Stride, bank->Stride, bytes.first(count));
        bytes = bytes.subspan(count);
        next += static_cast<std::uint32_t>(count);
    }
}

/// The byte that comes next. A cable that moves byte by byte looks at each one, so some are sampled ahead.
std::uint8_t SimInstrument::PeekMemory(int board) {
    const SimMemory* memory = acquisition_.ReadOut(time_.Now());
    if (memory == nullptr) return kUnwritten;
    const auto bank = BankOf(board, *memory);
    if (!bank) return kOpenBus;
    const std::int64_t address =
        next_[static_cast<std::size_t>(board)] % static_cast<unsigned>(memory->Depth);
    const std::int64_t first = address - address % static_cast<std::int64_t>(kPeekAhead);
    const unsigned captures = acquisition_.Captures();
    if (cache_.Memory != memory || cache_.Captures != captures || cache_.First != first ||
        cache_.From != *bank) {
        cache_ = {memory, captures, *bank, first, std::vector<std::uint8_t>(kPeekAhead)};
        memory->Sample(bank->Pod, bank->First + first * bank->Stride, bank->Stride, cache_.Bytes);
    }
    return cache_.Bytes[static_cast<std::size_t>(address - first)];
}

}  // namespace zu
