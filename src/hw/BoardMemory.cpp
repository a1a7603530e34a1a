#include "hw/BoardMemory.h"

#include <algorithm>

#include "hw/Deinterleave.h"

namespace zu {
namespace {

using enum Reg;
using enum Shadow;

constexpr int kOddStep = 0xA6;  // a pod step whose lengths lie six apart at the fastest rates
constexpr int kPairedLanes = 4;
constexpr int kBankBits = Bits(2, 5);  // of R5 on later boards
constexpr int kPhaseShift = 4;
constexpr int kSecondPhase = Bit(5);

/// Of a later board: the pair in bits 2 and 3, the pod in the pair in bit 4.
int PodSelector(int lane) {
    return lane / 2 << 2 | lane % 2 << kPhaseShift;
}

bool ReadByBanks(const Registers& registers) {
    const int type = registers.Type();
    return (type >= 11 && type <= 15) || ((type == 6 || type == 7) && registers.Direct());
}

/// Bytes of a phase, `count` at most, that a slot of `room` bytes has place for behind its first `skip`.
std::size_t Fit(std::size_t count, std::size_t phases, std::size_t skip, std::size_t room) {
    return room < skip ? 0 : std::min(count, (room - skip) / phases);
}

}  // namespace

PodLayout PodLayoutOf(const CaptureSetup& setup) {
    if (!setup.Internal() || !setup.RateQuad()) return {setup.PodStep, setup.PodStep};
    return {kBoardLanes, setup.PodStep == kOddStep ? kBoardLanes + 1 : kBoardLanes};
}

BoardMemory::BoardMemory(HardwareSession& hardware, Registers& registers, const CaptureSetup& setup,
                         InstrumentState& state)
    : hardware_(hardware), registers_(registers), setup_(setup), state_(state), layout_(PodLayoutOf(setup)) {
    if (setup.Memory == Interleave::Plain) return;
    std::size_t room = 0;
    for (int pod = 0; pod < kMaxPods; ++pod) room = std::max(room, state.Buffer.Room(pod));
    const std::int32_t longest = GetLongestBufLen(state.Buffer.BufLen, kMaxPods);
    regionSize_ = std::min(room, static_cast<std::size_t>(std::max(longest, 0)));
    const std::size_t needed = regionSize_ * kBoardLanes;
    if (hardware_.ReadScratch.size() < needed) hardware_.ReadScratch.resize(needed);
}

void BoardMemory::Read(int board) {
    phases_.fill({});
    if (ReadByBanks(registers_)) {
        ReadLater(board);
    } else {
        ReadEarlier(board);
    }
}

int BoardMemory::Pod(int board, int lane) const {
    const std::int64_t pod = std::int64_t{board} * layout_.Step + lane;
    return pod < kMaxPods ? static_cast<int>(pod) : kMaxPods;
}

bool BoardMemory::IsRead(int board, int lane) const {
    return PodMode(state_, Pod(board, lane), 1) == 0;
}

std::size_t BoardMemory::Length(int board, int lane) const {
    const std::int64_t entry = std::int64_t{board} * layout_.LengthStride + lane;
    const std::int32_t length =
        entry < kMaxPods ? GetBufLenFull(state_.Buffer.BufLen, static_cast<int>(entry)) : 0;
    return static_cast<std::size_t>(std::max(length, 0));
}

std::span<std::uint8_t> BoardMemory::Slot(int board, int lane) const {
    const int pod = Pod(board, lane);
    const std::size_t room = state_.Buffer.Room(pod);
    return room == 0 ? std::span<std::uint8_t>{}
                     : std::span(state_.Buffer.Pod[static_cast<std::size_t>(pod)], room);
}

std::span<std::uint8_t> BoardMemory::Phase(int lane, std::size_t count) {
    const auto index = static_cast<std::size_t>(lane);
    phases_[index] =
        std::span(hardware_.ReadScratch).subspan(index * regionSize_, std::min(count, regionSize_));
    return phases_[index];
}

void BoardMemory::ReadLater(int board) {
    registers_.WriteS9(board, registers_.At(S9, board) & Bits(0, 2));
    if (setup_.Memory != Interleave::Dual) registers_.ClearOut(S3, board, Bit(0));
    registers_.ClearBits(S5, board, kBankBits);
    switch (setup_.Memory) {
        case Interleave::Plain:
            ReadLaterPlain(board);
            break;
        case Interleave::Dual:
            ReadLaterDual(board);
            break;
        case Interleave::Quad:
            ReadLaterQuad(board);
            break;
    }
    registers_.OutS9(board);
}

void BoardMemory::SelectBank(int board, int selector) {
    registers_.SetOut(S3, board, Bit(0));
    registers_.Write(R5, board, registers_.At(S5, board) | selector);
    registers_.ClearOut(S3, board, Bit(0));
}

void BoardMemory::ReadBank(int board, int selector, std::span<std::uint8_t> bytes) {
    SelectBank(board, selector);
    registers_.ReadBlock(R0, board, bytes);
}

void BoardMemory::ReadLaterPlain(int board) {
    for (int lane = 0; lane < kBoardLanes; ++lane) {
        if (!IsRead(board, lane)) continue;
        const std::span<std::uint8_t> slot = Slot(board, lane);
        ReadBank(board, PodSelector(lane), slot.first(std::min(Length(board, lane), slot.size())));
    }
}

void BoardMemory::ReadLaterDual(int board) {
    // The rates made of the synthesiser's shortest periods start on the other phase.
    const bool swapped = setup_.ClockRate >= 3 && setup_.ClockRate <= 5;
    for (int lane = 0; lane < kBoardLanes; ++lane) {
        if (!IsRead(board, lane)) continue;
        const std::span<std::uint8_t> slot = Slot(board, lane);
        const std::size_t length = Length(board, lane);
        // Outside the memory mode without patterns the buffer holds half of what is read.
        const std::size_t count = Fit(setup_.NoPatternMode() ? length / 2 : length, 2, 1, slot.size());
        const std::span<std::uint8_t> a = Phase(0, count);
        const std::span<std::uint8_t> b = Phase(1, count);
        ReadBank(board, PodSelector(lane), a);
        ReadBank(board, PodSelector(lane) | kSecondPhase, b);
        if (a.empty()) continue;
        // Sample 0 stays as it was.
        JoinTwoPhases(swapped ? b.data() : a.data(), swapped ? a.data() : b.data(), a.size(), &slot[1]);
    }
}

void BoardMemory::ReadLaterQuad(int board) {
    for (int lane = 0; lane < kBoardLanes; lane += 2) {
        if (!IsRead(board, lane)) continue;
        const std::span<std::uint8_t> slot = Slot(board, lane);
        const std::size_t count = Fit(Length(board, lane) / 4, 4, 1, slot.size());
        for (int k = 0; k < 4; ++k) ReadBank(board, PodSelector(lane) | k << kPhaseShift, Phase(k, count));
        // The newest phase comes first; sample 0 stays as it was.
        if (count == 0) continue;
        const std::array<const std::uint8_t*, 4> oldestFirst{phases_[3].data(), phases_[2].data(),
                                                             phases_[1].data(), phases_[0].data()};
        JoinFourPhases(oldestFirst, phases_[0].size(), &slot[1]);
    }
}

void BoardMemory::ReadEarlier(int board) {
    const int lanes = std::min(layout_.Step, kBoardLanes);
    for (int lane = 0; lane < lanes; ++lane) {
        if (!IsRead(board, lane)) continue;
        registers_.WriteS9(board, registers_.At(S9, board) & ~(0x80 >> lane));
        registers_.ClearOut(S3, board, Bit(0));
        ReadLane(board, lane);
        registers_.SetOut(S3, board, Bit(0));
    }
    if (setup_.Memory == Interleave::Dual) JoinEarlierDual(board);
    if (setup_.Memory == Interleave::Quad) JoinEarlierQuad(board);
}

/// The lane whose pod and length a lane's bytes belong to.
int BoardMemory::LaneTarget(int lane) const {
    if (setup_.Memory == Interleave::Quad || lane >= kPairedLanes) return 0;
    return lane % 2;
}

void BoardMemory::ReadLane(int board, int lane) {
    if (setup_.Memory == Interleave::Plain) {
        const std::span<std::uint8_t> slot = Slot(board, lane);
        registers_.ReadBlock(R0, board, slot.first(std::min(Length(board, lane), slot.size())));
        return;
    }
    const std::size_t phases = setup_.Memory == Interleave::Quad ? 4 : 2;
    const std::size_t length = Length(board, LaneTarget(lane));
    registers_.ReadBlock(R0, board, Phase(lane, length / phases));
}

/// Lanes 2 and 3 hold the samples before those of lanes 0 and 1.
void BoardMemory::JoinEarlierDual(int board) {
    for (std::size_t lane = 0; lane < 2; ++lane) {
        const std::span<std::uint8_t> slot = Slot(board, static_cast<int>(lane));
        const auto& late = phases_[lane];
        const auto& early = phases_[lane + 2];
        if (late.size() == early.size() && 2 * late.size() <= slot.size()) {
            JoinTwoPhases(early.data(), late.data(), late.size(), slot.data());
        } else {
            // The lane of a pod that is not captured was not read: its samples keep their bytes.
            StorePhase(late, 1, 2, slot);
            StorePhase(early, 0, 2, slot);
        }
    }
    const std::size_t last = std::max<std::size_t>(Length(board, kUnmatchedPod) / 2, 2) - 2;
    const auto& fifth = phases_[kUnmatchedPod];
    RepeatSamples(fifth.first(std::min(last, fifth.size())), 2, Slot(board, kUnmatchedPod));
}

/// Lane 0 holds the newest sample of each four.
void BoardMemory::JoinEarlierQuad(int board) {
    const std::span<std::uint8_t> slot = Slot(board, 0);
    const std::size_t count = phases_[0].size();
    const bool whole = std::all_of(phases_.begin(), phases_.begin() + kPairedLanes,
                                   [count](const auto& phase) { return phase.size() == count; });
    if (count != 0 && whole && 4 * count < slot.size()) {
        const std::array<const std::uint8_t*, 4> oldestFirst{phases_[3].data(), phases_[2].data(),
                                                             phases_[1].data(), phases_[0].data()};
        JoinFourPhases(oldestFirst, count, &slot[1]);
    } else {
        for (std::size_t k = 0; k < kPairedLanes; ++k) StorePhase(phases_[k], 4 - k, 4, slot);
    }
    const std::size_t last = std::max<std::size_t>(Length(board, kUnmatchedPod) / 4, 4) - 4;
    const auto& fifth = phases_[kUnmatchedPod];
    RepeatSamples(fifth.first(std::min(last, fifth.size())), 4, Slot(board, kUnmatchedPod));
}

}  // namespace zu
