#include "hw/ReadOut.h"

#include <algorithm>

#include "hw/AdjustAddress.h"
#include "hw/BoardMemory.h"
#include "hw/PodLines.h"
#include "hw/Registers.h"

namespace zu {
namespace {

using enum Reg;
using enum Shadow;

constexpr int kOutputContinuous = 2;
constexpr int kBitsOfPod = 8;

class ReadOut {
  public:
    ReadOut(HardwareSession& hardware, InstrumentState& state, const CaptureSetup& setup)
        : hardware_(hardware),
          state_(state),
          setup_(setup),
          registers_(hardware, setup.Base, setup.HardwareType) {}

    void Run() {
        Halt();
        OpenMemory();
        BoardMemory memory(hardware_, registers_, setup_, state_);
        for (int board = 0; board < setup_.Boards; ++board) memory.Read(board);
        // One column past the last board, with the control bytes of the first.
        registers_.WriteS10S11(setup_.Boards, registers_.At(S10, 0), registers_.At(S11, 0));
    }

  private:
    void Halt();
    void OpenMemory();
    void OpenBoard(int board);

    HardwareSession& hardware_;
    InstrumentState& state_;
    const CaptureSetup& setup_;
    Registers registers_;
};

void ReadOut::Halt() {
    if (setup_.OutputMode == kOutputContinuous) {
        registers_.MaskOut(S3, 0, 0x9F, Bit(6));
        registers_.WriteS10S11(0, registers_.At(S10, 0), registers_.At(S11, 0) | Bit(1));
    }
    UsbFlushQueue(hardware_);
    registers_.ClockHold();
    UsbFlushQueue(hardware_);
    registers_.SetOutS8(0, Bits(5, 7));
    registers_.ClearOut(S4, 0, Bit(4));
    ReleasePatternLines(registers_, setup_, state_);
}

void ReadOut::OpenMemory() {
    const int past = setup_.Boards;  // the column behind the last board
    registers_.WriteS10S11(0, registers_.At(S10, 0) & ~Bit(1), registers_.At(S11, 0));
    registers_.Read(R0, past);
    for (int board = 0; board < setup_.Boards; ++board) OpenBoard(board);
    registers_.ClearOut(S2, past, Bit(2));
    registers_.Read(R0, past);
}

void ReadOut::OpenBoard(int board) {
    registers_.SetOut(S4, board, Bits(0, 2));
    registers_.SetOutS9(board, Bits(3, 7));
    registers_.SetOut(S4, board, Bits(5, 7));
    registers_.SetOutS8(board, Bit(0) | Bit(2) | Bit(4));
    registers_.ClearOut(S5, board, Bit(6));
    registers_.SetOut(S6, board, Bits(5, 6));
    registers_.SetOut(S1, board, Bit(2));
    registers_.ClearOut(S4, board, Bit(4));
}

std::uint8_t InvertedBits(const InstrumentState& state, int pod) {
    unsigned bits = 0;
    for (int bit = 0; bit < kBitsOfPod; ++bit) {
        const int channel = kBitsOfPod * pod + bit;
        if (state.Channels.ChannelInvert[static_cast<std::size_t>(channel)] != 0) bits |= 1U << bit;
    }
    return static_cast<std::uint8_t>(bits);
}

/// Everything above sees true logic. Pods that were not read are turned as well, at every read-out.
void InvertSamples(const CaptureSetup& setup, InstrumentState& state) {
    for (int pod = 0; pod < setup.Pods; ++pod) {
        const std::uint8_t inverted = InvertedBits(state, pod);
        if (inverted == 0) continue;
        for (std::uint8_t& sample : state.Buffer.Samples(pod)) sample ^= inverted;
    }
}

}  // namespace

std::uint8_t EndCapture(HardwareSession& hardware, InstrumentState& state, const CompiledTrigWords& words) {
    const CaptureSetup setup = CaptureSetupOf(state);
    if (state.Identity.Emulated == 0) {
        ReadOut(hardware, state, setup).Run();
        AdjustAddress(setup, PodLayoutOf(setup).Step, state, words);
    }
    InvertSamples(setup, state);
    return 1;
}

std::uint8_t* PodSample(const CaptureBuffer& buffer, int podCount, int boards, int step, int pod,
                        std::int32_t offset) {
    const std::int64_t pods = std::min<std::int64_t>(std::int64_t{boards} * step, podCount);
    const bool there = pod >= 0 && pod < std::min<std::int64_t>(pods, kMaxPods);
    const std::int64_t length = there ? GetBufLenFull(buffer.BufLen, pod) : 0;
    if (offset < 0 || offset >= length) return buffer.Pod[0];
    if (static_cast<std::size_t>(offset) >= buffer.Room(pod)) return buffer.Pod[0];
    return buffer.Pod[static_cast<std::size_t>(pod)] + offset;
}

}  // namespace zu
