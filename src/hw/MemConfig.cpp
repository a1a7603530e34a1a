#include <algorithm>

#include "hw/HardwareSession.h"
#include "hw/MemoryDepth.h"
#include "hw/Registers.h"

namespace zu {
namespace {

using enum Shadow;

constexpr int kSmallDepth = Bit(2);  // of S10: the position counter tops at 0x3FFE
constexpr int kLargeDepth = Bit(5);  // at 0xFFFE

/// Depth bit of a type in the large memory modes; 0 for a type that has none.
int LargeModeBit(int hardwareType) {
    const MemoryDepth depth = DepthOfType(hardwareType);
    if (depth == MemoryDepth::None) return 0;
    return depth == MemoryDepth::Small ? kSmallDepth : kLargeDepth;
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
