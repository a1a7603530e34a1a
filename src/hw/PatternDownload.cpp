#include "hw/PatternDownload.h"

#include <algorithm>
#include <span>
#include <vector>

#include "hw/AddressByte.h"
#include "hw/BackEnds.h"
#include "hw/Registers.h"

namespace zu {
namespace {

using enum Reg;
using enum Shadow;

constexpr int kLastLane = 4;  // has no partner

/// Every second byte of the image from `first` on; what the lane does not hold stays.
void Interleave(std::span<const std::uint8_t> lane, std::span<std::uint8_t> image, std::size_t first) {
    const std::size_t count = std::min(lane.size(), image.size() / 2);
    for (std::size_t i = 0; i < count; ++i) image[2 * i + first] = lane[i];
}

class Download {
  public:
    Download(HardwareSession& hardware, InstrumentState& state)
        : hardware_(hardware),
          state_(state),
          registers_(hardware, state.Identity.HwPort, state.Identity.HardwareType),
          lanes_(std::clamp(state.Shape.BufStep, 0, 8)),
          usb_(UsbInForce(hardware)) {}

    void Run() {
        const int held = registers_.ClockHold();
        for (int board = 0; board < std::min(state_.Shape.WordsPerTrig, kMaxBoards); ++board) {
            Prepare(board);
            if (registers_.Later()) {
                SendPairs(board);
            } else {
                SendLanes(board);
            }
        }
        registers_.ClockSelect(held);
    }

  private:
    void Prepare(int board);
    int SelectLane(int board, int lane);
    void OpenLane(int board, int lane);
    void SendPairs(int board);
    void SendPair(int board, int lane);
    void SendImage(int board, int pod, int partner);
    void SendBytes(int board, int lane, int pod, int partner);
    void SendLanes(int board);
    void SendLane(int board, int pod, int strobeMask);

    [[nodiscard]] int PodOf(int board, int lane) const { return board * lanes_ + lane; }
    [[nodiscard]] bool IsPattern(int pod) const;
    [[nodiscard]] std::int32_t Length(int pod) const;
    [[nodiscard]] std::span<const std::uint8_t> Lane(int pod) const;
    [[nodiscard]] std::uint8_t Byte(int pod, std::int32_t index) const;

    HardwareSession& hardware_;
    InstrumentState& state_;
    Registers registers_;
    int lanes_;
    bool usb_;
};

bool Download::IsPattern(int pod) const {
    return pod >= 0 && pod < kMaxPods &&
           IsPatternMode(state_.Pods.HardwarePod[static_cast<std::size_t>(pod)]);
}

std::int32_t Download::Length(int pod) const {
    return std::max(GetBufLenFull(state_.Buffer.BufLen, pod), 0);
}

/// The lane's bytes as far as there is memory behind them.
std::span<const std::uint8_t> Download::Lane(int pod) const {
    if (pod < 0 || pod >= kMaxPods) return {};
    const std::uint8_t* bytes = state_.Buffer.PatPod[static_cast<std::size_t>(pod)];
    return bytes == nullptr ? std::span<const std::uint8_t>{} : std::span(bytes, state_.Buffer.Room(pod));
}

std::uint8_t Download::Byte(int pod, std::int32_t index) const {
    const std::span<const std::uint8_t> lane = Lane(pod);
    return static_cast<std::size_t>(index) < lane.size() ? lane[static_cast<std::size_t>(index)]
                                                         : std::uint8_t{0};
}

void Download::Prepare(int board) {
    registers_.SetOutS9(board, Bits(3, 7));
    registers_.SetOut(S4, board, Bits(5, 7));
    registers_.SetOutS8(board, Bit(0) | Bit(2) | Bit(4));
    registers_.ClearBits(S2, board, Bit(6));
    registers_.ClearBits(S5, board, Bit(6));
    registers_.Out(S2, board);
    registers_.Out(S5, board);
    registers_.ClearBits(S10, board, Bit(1));
    registers_.OutS10S11(board);
    const int control = registers_.At(S10, board);
    for (const int value : {control | Bit(3), control & ~Bit(3)}) {
        registers_.WriteS10S11(board, value, registers_.At(S11, board));
        registers_.Read(R0, board);
    }
    registers_.SetOut(S6, board, Bit(3));
    registers_.SetOut(S3, board, Bit(0));
}

/// Routes the pair that holds `lane`, opens it on R4 and returns the mask that does so.
int Download::SelectLane(int board, int lane) {
    registers_.ClearOut(S6, board, Bits(5, 6));
    registers_.ClearOut(S1, board, Bit(2));
    int mask = 0xDF;
    if (lane < 2) {
        registers_.SetOut(S6, board, Bit(5));
        mask = 0xBF;
    } else if (lane < kLastLane) {
        registers_.SetOut(S6, board, Bit(6));
        mask = 0x7F;
    } else {
        registers_.SetOut(S1, board, Bit(2));
    }
    registers_.Write(R4, board, registers_.At(S4, board) & mask);
    return mask;
}

void Download::OpenLane(int board, int lane) {
    registers_.WriteS9(board, registers_.At(S9, board) & ~(0x80 >> lane));
}

void Download::SendPairs(int board) {
    for (int lane = 0; lane < lanes_ && lane <= kLastLane; lane += 2) SendPair(board, lane);
    registers_.OutS9(board);
}

void Download::SendPair(int board, int lane) {
    const int pod = PodOf(board, lane);
    const int partner = lane == kLastLane ? pod : pod + 1;
    SelectLane(board, lane);
    // The data of a pair go out whatever its pods are for; only the opening depends on the mode.
    if (IsPattern(pod)) {
        OpenLane(board, lane);
        registers_.Write(R15, board, 0);
    }
    if (usb_) {
        SendImage(board, pod, partner);
    } else {
        SendBytes(board, lane, pod, partner);
    }
    registers_.Out(S4, board);
}

void Download::SendImage(int board, int pod, int partner) {
    registers_.Write(R15, board, 0xFF);
    UsbFlushQueue(hardware_);
    UsbLink& usb = hardware_.Slots->Usb;
    usb.SelectRegister(AddressWithOffset(hardware_.Ports.At(static_cast<int>(R14), board)));
    std::vector<std::uint8_t> image(2 * static_cast<std::size_t>(Length(pod)));
    Interleave(Lane(pod), image, 0);
    Interleave(Lane(partner), image, 1);
    usb.BulkWrite(image);
}

void Download::SendBytes(int board, int lane, int pod, int partner) {
    const bool direct = registers_.Direct();
    if (direct && lane == 0) {
        registers_.Write(R14, board, Byte(pod, 0));
        registers_.Write(R14, board, Byte(partner, 0));
    }
    for (std::int32_t i = 0; i < Length(pod); ++i) {
        registers_.Write(R14, board, Byte(pod, i));
        if (direct) {
            registers_.Write(R14, board, Byte(partner, i));
        } else {
            registers_.Write(R0, board, Byte(pod, i));  // the first lane's byte here too
            registers_.Read(R0, board);
        }
    }
}

void Download::SendLanes(int board) {
    for (int lane = 0; lane < lanes_; ++lane) {
        const int mask = SelectLane(board, lane);
        OpenLane(board, lane);
        if (IsPattern(PodOf(board, lane))) SendLane(board, PodOf(board, lane), mask);
        registers_.OutS9(board);
    }
    registers_.OutS9(board);
    registers_.SetOut(S6, board, Bits(5, 6));
    registers_.SetOut(S1, board, Bit(2));
}

void Download::SendLane(int board, int pod, int strobeMask) {
    for (std::int32_t i = 0; i < Length(pod); ++i) {
        registers_.Read(R0, board);
        registers_.Write(R0, board, Byte(pod, i));
        registers_.Write(R4, board, registers_.At(S4, board) & strobeMask);
        registers_.Out(S4, board);
    }
}

}  // namespace

bool DownloadPatterns(HardwareSession& hardware, InstrumentState& state) {
    Download(hardware, state).Run();
    state.Pattern.PatDirty = 0;
    return true;
}

}  // namespace zu
