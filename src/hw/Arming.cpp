#include "hw/Arming.h"

#include <algorithm>
#include <cmath>

#include "hw/Clock.h"
#include "hw/PatternDownload.h"
#include "hw/PodLines.h"
#include "hw/PositionCounter.h"
#include "hw/Registers.h"
#include "hw/Thresholds.h"
#include "hw/TriggerCompile.h"
#include "state/Rates.h"

namespace zu {
namespace {

using enum Reg;
using enum Shadow;

constexpr std::int32_t kUsb = 9;
constexpr int kThresholdsChanged = Bit(2);  // of ReprogramFlag
constexpr int kOutputOnce = 0;
constexpr int kOutputContinuous = 2;
constexpr int kDurationLess = 1;  // TrigCntMd

// Bits 5 and 6 of S3[0], with the others kept by the mask.
constexpr int kKeepTriggerBits = 0x9F;
constexpr int kTriggerParked = Bit(5);
constexpr int kTriggerForced = Bit(6);

class Arming {
  public:
    Arming(HardwareSession& hardware, InstrumentState& state, const CompiledTrigWords& words)
        : hardware_(hardware),
          state_(state),
          words_(words),
          setup_(CaptureSetupOf(state)),
          registers_(hardware, setup_.Base, setup_.HardwareType) {}

    /// False if the user stopped.
    bool Program();
    void WaitForPreTrigger();

  private:
    void Park();
    void PrepareMemory();
    void SendThresholds();
    void ToggleEdgeOfAnyBit();
    void SetEdge();
    void ReleaseBoards();
    void OpenBoard(int board);
    void PulseEveryBoard();
    void RestartTrigger(int s3Bits);
    bool StartContinuous();
    bool StartAtOnce();
    bool StartTriggered();
    bool Start();

    [[nodiscard]] bool PatternsOnce() const {
        return setup_.HavePatterns && setup_.OutputMode == kOutputOnce;
    }

    HardwareSession& hardware_;
    InstrumentState& state_;
    const CompiledTrigWords& words_;
    CaptureSetup setup_;
    Registers registers_;
    TriggerKind kind_ = TriggerKind::AnyData;
};

bool Arming::Program() {
    Park();
    PrepareMemory();
    SendThresholds();
    ToggleEdgeOfAnyBit();
    kind_ = CompileTrigger(hardware_, registers_, setup_, state_, words_);
    SetEdge();
    LoadPosition(registers_, setup_, kind_ == TriggerKind::AnyData ? 0 : setup_.Position);
    SetLaneSelect(registers_, setup_, state_);
    UsbFlushQueue(hardware_);
    ReleaseBoards();
    const bool goesOn = Start();
    // One more pair ends the programming over USB.
    if (state_.Identity.ComMode == kUsb) hardware_.Ops->RegWrite(3, 0, 0);
    return goesOn;
}

void Arming::Park() {
    ReleasePatternLines(registers_, setup_, state_);
    UsbFlushQueue(hardware_);
    for (int board = 0; board < setup_.Boards; ++board) {
        registers_.SetOut(S3, board, Bit(0));
        registers_.SetOutS9(board, Bits(3, 7));
    }
}

void Arming::PrepareMemory() {
    SetupMemConfig(hardware_, state_);
    if (setup_.HavePatterns && state_.Pattern.PatDirty != 0) DownloadPatterns(hardware_, state_);
}

void Arming::SendThresholds() {
    std::uint8_t& flags = state_.Pods.ReprogramFlag;
    if ((flags & kThresholdsChanged) == 0) return;
    LoadThresholds(registers_, setup_, state_);
    flags = static_cast<std::uint8_t>(flags & ~kThresholdsChanged);
}

/// "Any bit" runs on the complement, whose edge is the other one. The toggle stays in the state, so the edge
/// alternates from one arming to the next.
void Arming::ToggleEdgeOfAnyBit() {
    std::uint8_t& edge = state_.Trigger.EdgeList16[0];
    if (state_.Trigger.TrigMatchMode[0] == 0 && edge <= 1) edge ^= 1U;
}

void Arming::SetEdge() {
    if (state_.Trigger.EdgeList16[0] != 0) {
        registers_.SetOut(S1, 0, Bit(3));
    } else {
        registers_.ClearOut(S1, 0, Bit(3));
    }
}

void Arming::ReleaseBoards() {
    registers_.ClearBits(S3, 0, Bits(5, 6));
    registers_.Write(R3, 0, registers_.At(S3, 0) | Bit(5));
    registers_.ClearOut(S4, 0, Bit(4));
    UsbFlushQueue(hardware_);
    for (int board = 0; board < setup_.Boards; ++board) OpenBoard(board);
    if (PatternsOnce()) kind_ = TriggerKind::AnyData;
    registers_.ClockSelect(7);
    for (int board = 0; board < setup_.Boards; ++board) {
        registers_.ClearBits(S10, board, Bit(3));
        registers_.OutS10S11(board);
    }
}

void Arming::OpenBoard(int board) {
    if (PatternsOnce()) {
        registers_.SetOut(S4, board, Bit(4));
    } else if (setup_.HavePatterns && setup_.OutputMode <= kOutputContinuous) {
        registers_.ClearOut(S4, board, Bit(4));
    }
    registers_.SetBits(S10, board, Bit(3));
    registers_.OutS10S11(board);
    registers_.Strobe(1);
    registers_.ClearOut(S4, board, Bit(1));
    registers_.ClearBits(S9, board, Bits(3, 7));
    registers_.OutS9(board);
}

/// Of the three ways the first that fits.
bool Arming::Start() {
    if (setup_.HavePatterns && setup_.OutputMode == kOutputContinuous) return StartContinuous();
    const bool nothingToWaitFor = kind_ == TriggerKind::AnyData || !setup_.HaveCapture;
    return nothingToWaitFor ? StartAtOnce() : StartTriggered();
}

void Arming::RestartTrigger(int s3Bits) {
    registers_.MaskOut(S3, 0, kKeepTriggerBits, s3Bits);
    registers_.ClearOut(S5, 0, Bit(1));
    registers_.SetOut(S5, 0, Bit(1));
}

bool Arming::StartContinuous() {
    RestartTrigger(kTriggerParked);
    SetInputMode(registers_, setup_, state_);
    registers_.SetOut(S2, 0, Bit(4));
    for (const int bit : {Bit(1), Bit(3)}) {
        registers_.ClearBits(S10, 0, bit);
        registers_.OutS10S11(0);
    }
    return SetClock(hardware_, setup_.Base, ClockSettingsOf(state_));
}

void Arming::PulseEveryBoard() {
    for (int board = 0; board < kMaxBoards; ++board) {  // boards that are absent too
        registers_.SetBits(S10, board, Bit(3));
        registers_.OutS10S11(board);
    }
    for (int board = 0; board < kMaxBoards; ++board) {
        registers_.ClearBits(S10, board, Bit(3));
        registers_.OutS10S11(board);
    }
}

bool Arming::StartAtOnce() {
    registers_.ClearBits(S10, 0, Bit(3));
    registers_.OutS10S11(0);
    RestartTrigger(kTriggerParked);
    PulseEveryBoard();
    registers_.SetOutS8(0, Bits(5, 7));
    if (!setup_.Internal() || setup_.HavePatterns) {
        for (int board = 0; board < setup_.Boards; ++board) registers_.SetOut(S2, board, Bit(6));
    }
    registers_.Strobe(1);
    SetInputMode(registers_, setup_, state_);
    JoinLanesOfNoPatternMode(registers_, setup_);
    // One column past the last board; with four boards that is the first column of the next row.
    registers_.Out(S2, setup_.Boards);
    registers_.Out(S5, setup_.Boards);
    registers_.OutS8(setup_.Boards);
    const bool goesOn = SetClock(hardware_, setup_.Base, ClockSettingsOf(state_));
    registers_.SetOut(S2, 0, Bit(4));
    registers_.MaskOut(S3, 0, kKeepTriggerBits, kTriggerForced);
    return goesOn;
}

bool Arming::StartTriggered() {
    registers_.ClockHold();
    UsbFlushQueue(hardware_);
    registers_.ClearBits(S10, 0, Bit(3));
    registers_.OutS10S11(0);
    RestartTrigger(setup_.CountMode == kDurationLess ? Bits(5, 6) : 0);
    SetInputMode(registers_, setup_, state_);
    JoinLanesOfNoPatternMode(registers_, setup_);
    const bool goesOn = SetClock(hardware_, setup_.Base, ClockSettingsOf(state_));
    UsbFlushQueue(hardware_);
    return goesOn;
}

void Arming::WaitForPreTrigger() {
    const double period = GetRateNS(setup_.ClockType, setup_.ClockRate);
    const double ns = (static_cast<double>(setup_.Position) + 100) * period;
    const double ms = std::min(std::round(ns / 1e6) + 1, 2147483647.0);
    hardware_.CaptureTimeout = static_cast<std::int32_t>(ms);
    WaitNanoseconds(hardware_, ns);
    GetTrigStat(hardware_);  // the first poll; its answer is not asked for
}

}  // namespace

std::uint8_t StartCapture(HardwareSession& hardware, InstrumentState& state, const CompiledTrigWords& words) {
    hardware.FirstRun = 1;
    Arming arming(hardware, state, words);
    const bool goesOn = state.Identity.Emulated != 0 || arming.Program();
    arming.WaitForPreTrigger();
    return goesOn ? 1 : 0;
}

void ForceTrigger(HardwareSession& hardware) {
    Registers registers(hardware, hardware.HwPort, 0);
    registers.MaskOut(S3, 0, kKeepTriggerBits, kTriggerForced);
}

bool StopPatternGen(HardwareSession& hardware, InstrumentState& state) {
    Registers registers(hardware, state.Identity.HwPort, state.Identity.HardwareType);
    registers.ClockHold();
    UsbFlushQueue(hardware);
    return true;
}

bool StopContinuousPG(HardwareSession& hardware, InstrumentState& state) {
    return StopPatternGen(hardware, state);
}

}  // namespace zu
