#include "reference/Capture.h"

namespace zu::reference {
namespace {

bool IsPattern(const Capture& capture, int pod) {
    const int mode = capture.Pods.at(Index(pod));
    return mode == 1 || mode == 2;
}

bool HasCapturePod(const Capture& capture) {
    for (int p = 0; p < capture.PodCount; ++p) {
        if (!IsPattern(capture, p)) return true;
    }
    return false;
}

void RestartTrigger(Bank& bank) {
    bank.OffPut(5, 0, 0x02);
    bank.OnPut(5, 0, 0x02);
}

void RunMode(Bank& bank, int mode) {
    bank.S(3, 0) = (bank.S(3, 0) & 0x9F) | mode;
    bank.Put(3, 0);
}

void JoinLanesOfMode3(Bank& bank, const Capture& capture) {
    if (capture.HardwareMode != 3) return;
    for (int b = 0; b < capture.Boards; ++b) {
        bank.Off(2, b, 0x40);
        bank.On(5, b, 0x40);
        bank.S(8, b) = (bank.S(8, b) & 0xEA) | 0x08;
        bank.Put(2, b);
        bank.Put(5, b);
        bank.PutS8(b);
    }
}

void ReleaseMemory(Bank& bank, int b) {
    bank.Off(10, b, 0x08);
    bank.PutS10S11(b);
}

bool ArmContinuousOutput(Bank& bank, Capture& capture) {
    RunMode(bank, 0x20);
    RestartTrigger(bank);
    SetInputMode(bank, capture);
    bank.OnPut(2, 0, 0x10);
    bank.Off(10, 0, 0x02);
    bank.PutS10S11(0);
    ReleaseMemory(bank, 0);
    return SetClock(bank, capture);
}

bool ArmForced(Bank& bank, Capture& capture) {
    ReleaseMemory(bank, 0);
    RunMode(bank, 0x20);
    RestartTrigger(bank);
    for (int b = 0; b < 4; ++b) {
        bank.On(10, b, 0x08);
        bank.PutS10S11(b);
    }
    for (int b = 0; b < 4; ++b) ReleaseMemory(bank, b);
    bank.On(8, 0, 0xE0);
    bank.PutS8(0);
    for (int b = 0; b < capture.Boards; ++b) {
        if (capture.ClockType != 0 || capture.HasPatternPod()) bank.OnPut(2, b, 0x40);
    }
    bank.Read(0, 0);
    SetInputMode(bank, capture);
    JoinLanesOfMode3(bank, capture);
    const int past = capture.Boards;
    bank.Put(2, past);
    bank.Put(5, past);
    bank.PutS8(past);
    const bool goesOn = SetClock(bank, capture);
    bank.OnPut(2, 0, 0x10);
    RunMode(bank, 0x40);
    return goesOn;
}

bool ArmTriggered(Bank& bank, Capture& capture) {
    bank.ClockHold();
    bank.Flush();
    ReleaseMemory(bank, 0);
    RunMode(bank, capture.CountMode == 1 ? 0x60 : 0x00);
    RestartTrigger(bank);
    SetInputMode(bank, capture);
    JoinLanesOfMode3(bank, capture);
    const bool goesOn = SetClock(bank, capture);
    bank.Flush();
    return goesOn;
}

void PrepareMemory(Bank& bank, Capture& capture) {
    ReleaseLines(bank, capture);
    bank.Flush();
    for (int b = 0; b < capture.Boards; ++b) {
        bank.OnPut(3, b, 0x01);
        bank.On(9, b, 0xF8);
        bank.PutS9(b);
    }
    SetupMemConfig(bank, capture);
    if (capture.HasPatternPod() && capture.PatDirty) {
        DownloadPatterns(bank, capture);
        capture.PatDirty = false;
    }
    if ((capture.Reprogram & 4) != 0) {
        LoadThresholds(bank, capture);
        capture.Reprogram &= ~4;
    }
}

int PrepareTrigger(Bank& bank, Capture& capture) {
    if (capture.AnyBit && (capture.Edge == 0 || capture.Edge == 1)) capture.Edge = 1 - capture.Edge;
    const int kind = CompileTrigger(bank, capture);
    bank.Off(1, 0, 0x08);
    if (capture.Edge != 0) bank.On(1, 0, 0x08);
    bank.Put(1, 0);
    const int position = capture.Position < 0 ? 0 : capture.Position;
    LoadPosition(bank, capture, kind == 2 ? 0 : position);
    SetLaneSelect(bank, capture);
    bank.Flush();
    bank.Off(3, 0, 0x60);
    bank.Write(3, 0, bank.S(3, 0) | 0x20);
    bank.OffPut(4, 0, 0x10);
    bank.Flush();
    return kind;
}

int PrepareBoards(Bank& bank, const Capture& capture, int kind) {
    for (int b = 0; b < capture.Boards; ++b) {
        if (capture.HasPatternPod()) {
            if (capture.OutputMode == 0) {
                bank.OnPut(4, b, 0x10);
                kind = 2;
            } else if (capture.OutputMode == 1 || capture.OutputMode == 2) {
                bank.OffPut(4, b, 0x10);
            }
        }
        bank.On(10, b, 0x08);
        bank.PutS10S11(b);
        bank.Read(0, 0);
        bank.OffPut(4, b, 0x02);
        bank.S(9, b) &= 7;
        bank.PutS9(b);
    }
    bank.ClockSelect(7);
    for (int b = 0; b < capture.Boards; ++b) ReleaseMemory(bank, b);
    return kind;
}

bool Arm(Bank& bank, Capture& capture) {
    PrepareMemory(bank, capture);
    const int kind = PrepareBoards(bank, capture, PrepareTrigger(bank, capture));
    const bool patterns = capture.HasPatternPod();
    bool goesOn = true;
    if (patterns && capture.OutputMode == 2) {
        goesOn = ArmContinuousOutput(bank, capture);
    } else if (kind == 2 || (patterns && capture.OutputMode == 0) || !HasCapturePod(capture)) {
        goesOn = ArmForced(bank, capture);
    } else {
        goesOn = ArmTriggered(bank, capture);
    }
    if (capture.IsUsb) bank.WritePort(0, 0);
    return goesOn;
}

void RouteLane(Bank& bank, int b, int lane, int mode) {
    static const int kRegister[] = {6, 6, 6, 6, 1};
    static const int kBit[] = {0x20, 0x20, 0x40, 0x40, 0x04};
    static const int kBitOfS4[] = {0x40, 0x40, 0x80, 0x80, 0x20};
    if (mode == 0 || mode == 3) {
        bank.Off(kRegister[lane], b, kBit[lane]);
        bank.Off(4, b, kBitOfS4[lane]);
    } else if (mode == 1 || mode == 2) {
        bank.On(kRegister[lane], b, kBit[lane]);
        bank.On(4, b, kBitOfS4[lane]);
    }
}

}  // namespace

void ReleaseLines(Bank& bank, const Capture& capture) {
    for (int b = 0; b < capture.Boards; ++b) {
        if (IsPattern(capture, 0)) {
            bank.On(8, b, 0x01);
            bank.PutS8(b);
        }
        if (IsPattern(capture, 2)) {
            bank.Off(2, b, 0x40);
            bank.Off(5, b, 0x40);
            bank.Put(2, b);
            bank.Put(5, b);
        }
        if (IsPattern(capture, 4)) {
            bank.On(8, b, 0x04);
            bank.PutS8(b);
        }
    }
}

void SetLaneSelect(Bank& bank, const Capture& capture) {
    for (int b = 0; b < capture.Boards; ++b) {
        for (int lane = 0; lane < capture.BufStep; ++lane) {
            RouteLane(bank, b, lane, capture.Pods.at(Index(b * capture.BufStep + lane)));
        }
        bank.Put(6, b);
        bank.Put(4, b);
        bank.Put(1, b);
    }
}

void SetInputMode(Bank& bank, const Capture& capture) {
    const int rate = capture.ClockRate;
    for (int b = 0; b < capture.Boards; ++b) {
        const bool patterns = capture.HasPatternPod();
        const bool slow = capture.ClockType != 0 || rate < 1 || rate > 4;
        bank.On(2, b, 0x40);
        bank.On(5, b, 0x40);
        if (!patterns && !slow) bank.Off(2, b, 0x40);
        if (!patterns && !slow && rate <= 2) {
            bank.S(8, b) = (bank.S(8, b) & 0xF2) | 0x10;
        } else {
            bank.S(8, b) = (bank.S(8, b) & 0xEA) | 0x08;
        }
        if (patterns && IsPattern(capture, 5 * b + 4)) bank.On(8, b, 0xE0);
        bank.Put(2, b);
        bank.Put(5, b);
        bank.PutS8(b);
    }
}

int StartCapture(Bank& bank, Capture& capture) {
    capture.FirstRun = true;
    bool goesOn = true;
    if (!capture.Emulated) goesOn = Arm(bank, capture);
    bank.OnPut(2, 0, 0x10);
    bank.Read(1, 0);
    return goesOn ? 1 : 0;
}

int GetTrigStat(Bank& bank) {
    bank.OnPut(2, 0, 0x10);
    const int answer = bank.Read(1, 0);
    if ((answer & 0x10) == 0) return 2;
    return (answer & 0x40) != 0 ? 3 : 1;
}

void ForceTrigger(Bank& bank) {
    RunMode(bank, 0x40);
}

}  // namespace zu::reference
