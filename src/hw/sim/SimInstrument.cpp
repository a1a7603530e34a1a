#include "hw/sim/SimInstrument.h"

#include <algorithm>

namespace zu {
namespace {

constexpr int kBoards = 4;
constexpr std::uint8_t kOpenBus = 0xFF;
constexpr std::size_t kComplaintsKept = 100;

}  // namespace

SimInstrument::SimInstrument(const SimTraits& traits) : traits_(traits) {
    Reset();
}

void SimInstrument::Reset() {
    boards_.assign(kBoards, SimBoard(traits_));
    position_ = {};
    complaints_.clear();
}

void SimInstrument::Complain(const std::string& text) {
    if (complaints_.size() < kComplaintsKept) complaints_.push_back(text);
}

const SimBoard& SimInstrument::Board(int board) const {
    return boards_[static_cast<std::size_t>(std::clamp(board, 0, kBoards - 1))];
}

void SimInstrument::Write(int board, int reg, std::uint8_t value) {
    if (!Fitted(board)) return;
    boards_[static_cast<std::size_t>(board)].Write(reg, value);
    position_.SetControl(boards_[0].S10());
}

void SimInstrument::WritePodRegister(int board, bool first, std::uint8_t value) {
    if (!Fitted(board) || !traits_.Direct) return;
    boards_[static_cast<std::size_t>(board)].WritePodRegister(first, value);
    position_.SetControl(boards_[0].S10());
}

/// R1: bit 7 says that the board is there, bit 5 of board 0 the memory class, bit 1 whether the pod registers
/// have addresses of their own. Bits 4 and 6 are the progress of a capture.
std::uint8_t SimInstrument::Status(int board) const {
    const int echo = boards_[static_cast<std::size_t>(board)].Register(1) & 1;
    int answer = echo << 7;
    if (board == 0) {
        answer |= traits_.Direct ? echo << 1 : 0;
        answer |= traits_.LargeMemory ? 0 : 0x20;
    }
    return static_cast<std::uint8_t>(answer);
}

std::uint8_t SimInstrument::Peek(int board, int reg) const {
    if (!Fitted(board)) return kOpenBus;
    if (reg == 1) return Status(board);
    if (reg == 2 && board == 0) return traits_.Later ? 0x00 : 0x80;
    return 0;
}

void SimInstrument::Clock(int /*board*/, int reg) {
    if (reg == 0) Strobe();
}

std::uint8_t SimInstrument::Read(int board, int reg) {
    const std::uint8_t value = Peek(board, reg);
    Clock(board, reg);
    return value;
}

void SimInstrument::ReadBlock(int board, int reg, std::span<std::uint8_t> bytes) {
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

}  // namespace zu
