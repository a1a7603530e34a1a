#include <algorithm>

#include "hw/HardwareSession.h"
#include "hw/Registers.h"

namespace zu {
namespace {

using enum Shadow;

constexpr int kSmallDepth = Bit(2);  // of S10: the position counter tops at 0x3FFE
constexpr int kLargeDepth = Bit(5);  // at 0xFFFE

/// Depth bit of a type in the large memory modes; 0 for a type that has none.
int LargeModeBit(int hardwareType) {
    switch (hardwareType) {
        case 1:
        case 2:
        case 6:
        case 7:
        case 11:
        case 12:
            return kSmallDepth;
        case 3:
        case 4:
        case 5:
        case 8:
        case 9:
        case 10:
        case 13:
        case 14:
        case 15:
            return kLargeDepth;
        default:
            return 0;
    }
}

}  // namespace

bool SetupMemConfig(HardwareSession& hardware, InstrumentState& state) {
    const int mode = state.Memory.HardwareMode;
    if (mode != 0 && mode != 1 && mode != 3) return true;
    Registers registers(hardware, state.Identity.HwPort, state.Identity.HardwareType);
    const int depth = mode == 0 ? 0 : LargeModeBit(state.Identity.HardwareType);
    for (int board = 0; board < std::min(state.Shape.WordsPerTrig, kMaxBoards); ++board) {
        registers.ClearBits(S10, board, kSmallDepth | kLargeDepth);
        registers.SetBits(S10, board, depth);
        if (mode == 0 || depth != 0) registers.OutS10S11(board);
    }
    return true;
}

}  // namespace zu
