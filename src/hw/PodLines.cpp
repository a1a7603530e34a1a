#include "hw/PodLines.h"

#include <algorithm>

namespace zu {
namespace {

using enum Shadow;

/// Bits that route a pair.
struct PairRoute {
    Shadow Enable;
    int EnableBit;
    int DirectionBit;  ///< of S4
};
constexpr std::array<PairRoute, 3> kPairRoutes{{{S6, 5, 6}, {S6, 6, 7}, {S1, 2, 5}}};

void RoutePair(Registers& registers, int board, const PairRoute& route, bool output) {
    const auto change = [&](Shadow shadow, int bit) {
        if (output) {
            registers.SetBits(shadow, board, Bit(bit));
        } else {
            registers.ClearBits(shadow, board, Bit(bit));
        }
    };
    change(route.Enable, route.EnableBit);
    change(S4, route.DirectionBit);
}

/// What joins the lanes of a board: bit 6 of S2 and five bits of S8.
struct InputMode {
    bool Separate;
    int Keep;
    int Set;
};
constexpr InputMode kOneLane{true, 0xEA, 0x08};
constexpr InputMode kTwoLanes{false, 0xEA, 0x08};
constexpr InputMode kFourLanes{false, 0xF2, 0x10};

InputMode InputModeOf(const CaptureSetup& setup) {
    if (setup.HavePatterns || !setup.Internal()) return kOneLane;
    if (setup.RateQuad()) return kFourLanes;
    return setup.RateDual() ? kTwoLanes : kOneLane;
}

void JoinLanes(Registers& registers, int board, const InputMode& mode) {
    if (mode.Separate) {
        registers.SetBits(S2, board, Bit(6));
    } else {
        registers.ClearBits(S2, board, Bit(6));
    }
    registers.SetBits(S5, board, Bit(6));
    std::uint8_t& control = registers.At(S8, board);
    control = static_cast<std::uint8_t>((control & mode.Keep) | mode.Set);
}

void WriteJoined(Registers& registers, int board) {
    registers.Out(S2, board);
    registers.Out(S5, board);
    registers.OutS8(board);
}

}  // namespace

void ReleasePatternLines(Registers& registers, const CaptureSetup& setup, const InstrumentState& state) {
    for (int board = 0; board < setup.Boards; ++board) {
        // The first board's pods decide for all of them.
        if (IsPatternPod(state, 0)) registers.SetOutS8(board, Bit(0));
        if (IsPatternPod(state, 2)) {
            registers.ClearBits(S2, board, Bit(6));
            registers.ClearBits(S5, board, Bit(6));
            registers.Out(S2, board);
            registers.Out(S5, board);
        }
        if (IsPatternPod(state, kUnmatchedPod)) registers.SetOutS8(board, Bit(2));
    }
}

void SetLaneSelect(Registers& registers, const CaptureSetup& setup, const InstrumentState& state) {
    constexpr int kModeUnknown = -1;
    const int lanes = std::min(setup.PodStep, kBoardLanes);
    for (int board = 0; board < setup.Boards; ++board) {
        for (int lane = 0; lane < lanes; ++lane) {
            const int mode = PodMode(state, std::int64_t{board} * setup.PodStep + lane, kModeUnknown);
            const PairRoute& route = kPairRoutes[static_cast<std::size_t>(lane / 2)];
            if (mode == 0 || mode == 3) RoutePair(registers, board, route, false);
            if (mode == 1 || mode == 2) RoutePair(registers, board, route, true);
        }
        registers.Out(S6, board);
        registers.Out(S4, board);
        registers.Out(S1, board);
    }
}

void SetInputMode(Registers& registers, const CaptureSetup& setup, const InstrumentState& state) {
    const InputMode mode = InputModeOf(setup);
    for (int board = 0; board < setup.Boards; ++board) {
        JoinLanes(registers, board, mode);
        const bool clockedOut = IsPatternPod(state, std::int64_t{kBoardLanes} * board + kUnmatchedPod);
        if (setup.HavePatterns && clockedOut) registers.SetBits(S8, board, Bits(5, 7));
        WriteJoined(registers, board);
    }
}

void JoinLanesOfNoPatternMode(Registers& registers, const CaptureSetup& setup) {
    if (!setup.NoPatternMode()) return;
    for (int board = 0; board < setup.Boards; ++board) {
        JoinLanes(registers, board, kTwoLanes);
        WriteJoined(registers, board);
    }
}

}  // namespace zu
