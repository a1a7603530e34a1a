#include "reference/Sequences.h"

namespace zu::reference {
namespace {

struct ClockChoice {
    std::uint32_t Word = 0;
    int Counter0 = 0;
    int Counter1 = 0;
};

struct ClockRow {
    int Rate;
    ClockChoice Plain;
    ClockChoice Mode3;
};

// Word, first and second divider; the second triple is that of memory mode 3.
const ClockRow kClockRows[] = {
    {1, {0x3FD412, 0, 0}, {0x3FD412, 0, 0}},
    {2, {0x2D7C08, 0, 0}, {0x2D7C08, 0, 0}},
    {3, {0x3FD412, 0, 0}, {0x3FD412, 0, 0}},
    {4, {0x2D7C08, 0, 0}, {0x2D7C08, 0, 0}},
    {5, {0x2D7C08, 0, 0}, {0x08B408, 0, 0}},
    {6, {0x08B408, 0, 0}, {0x08B488, 0, 0}},
    {7, {0x1D2D08, 0, 0}, {0x1D2D88, 0, 0}},
    {8, {0x1D2D88, 1, 0}, {0x1D2E08, 1, 0}},
    {9, {0x1D2D88, 2, 0}, {0x1D2D88, 4, 0}},
    {10, {0x1D2D88, 5, 0}, {0x1D2D88, 10, 0}},
    {11, {0x1D2D88, 10, 0}, {0x1D2D88, 20, 0}},
    {12, {0x1D2D88, 20, 0}, {0x1D2D88, 40, 0}},
    {14, {0x1D2D88, 50, 0}, {0x1D2D88, 100, 0}},
    {16, {0x1D2D88, 100, 0}, {0x1D2D88, 200, 0}},
    {18, {0x1D2D88, 200, 0}, {0x1D2D88, 400, 0}},
    {20, {0x1D2D88, 500, 0}, {0x1D2D88, 1000, 0}},
    {22, {0x1D2D88, 1000, 0}, {0x1D2D88, 2000, 0}},
    {23, {0x1D2D88, 2000, 0}, {0x1D2D88, 4000, 0}},
    {24, {0x1D2D88, 5000, 0}, {0x1D2D88, 10000, 0}},
    {25, {0x1D2D88, 10000, 0}, {0x1D2D88, 20000, 0}},
    {26, {0x1D2D88, 20000, 0}, {0x1D2D88, 40000, 0}},
    {27, {0x1D2D88, 50000, 0}, {0x1D2D88, 50000, 2}},
    {28, {0x1D2D88, 50000, 2}, {0x1D2D88, 50000, 4}},
    {29, {0x1D2D88, 50000, 4}, {0x1D2D88, 50000, 8}},
    {30, {0x1D2D88, 50000, 10}, {0x1D2D88, 50000, 20}},
    {31, {0x1D2D88, 50000, 20}, {0x1D2D88, 50000, 40}},
    {32, {0x1D2D88, 50000, 40}, {0x1D2D88, 50000, 80}},
    {33, {0x1D2D88, 50000, 100}, {0x1D2D88, 50000, 200}},
    {34, {0x1D2D88, 50000, 200}, {0x1D2D88, 50000, 400}},
};

ClockChoice ChoiceOf(const Setup& setup) {
    if (setup.ClockType != 0) return {};
    for (const ClockRow& row : kClockRows) {
        if (row.Rate == setup.ClockRate) return setup.HardwareMode == 3 ? row.Mode3 : row.Plain;
    }
    return {};
}

bool BitOf(std::uint32_t word, int bit) {
    return (word >> bit & 1U) != 0;
}

void PutData(Bank& bank, bool one) {
    if (one) {
        bank.OnPut(4, 0, 8);
    } else {
        bank.OffPut(4, 0, 8);
    }
}

void SendFixedWord(Bank& bank) {
    for (int bit = 0; bit < 22; ++bit) {
        PutData(bank, BitOf(0x14EF08, bit));
        bank.On(8, 0, 2);
        bank.PutS8(0);
        bank.Off(8, 0, 2);
        bank.PutS8(0);
    }
}

void SendChosenWord(Bank& bank, std::uint32_t word) {
    bank.OffPut(6, 0, 4);
    for (int bit = 0; bit < 22; ++bit) {
        PutData(bank, BitOf(word, bit));
        bank.OnPut(6, 0, 4);
        bank.OffPut(6, 0, 4);
    }
}

/// The same word with bit 1 of S8 as the clock, low and then high.
void SendByControlByte(Bank& bank, std::uint32_t word) {
    bank.OffPut(6, 0, 4);
    for (int bit = 0; bit < 22; ++bit) {
        PutData(bank, BitOf(word, bit));
        bank.Off(8, 0, 2);
        bank.PutS8(0);
        bank.On(8, 0, 2);
        bank.PutS8(0);
    }
}

void LoadCounters(Bank& bank, const Setup& setup, const ClockChoice& choice) {
    bank.Write(11, 0, 0x36);
    bank.Write(8, 0, choice.Counter0 & 0xFF);
    bank.Write(8, 0, choice.Counter0 >> 8);
    const bool slow = setup.ClockRate >= 28 && setup.ClockRate <= 34;
    if ((setup.HardwareMode == 3 && setup.ClockRate == 27) || (slow && bank.Later())) {
        bank.Write(11, 0, 0x76);
        bank.Write(9, 0, choice.Counter1 & 0xFF);
        bank.Write(9, 0, choice.Counter1 >> 8);
    } else if (slow) {
        SerialCounter(bank, choice.Counter1);
    }
}

void SelectByRate(Bank& bank, const Setup& setup) {
    const int rate = setup.ClockRate;
    const bool unused = rate == 13 || rate == 15 || rate == 17 || rate == 19 || rate == 21;
    if (rate >= 1 && rate <= 8) bank.ClockSelect(1);
    if (rate >= 9 && rate <= 27 && !unused) bank.ClockSelect(3);
    if (rate >= 28 && rate <= 34) bank.ClockSelect(5);
    if (setup.HardwareMode == 3 && rate == 27) bank.ClockSelect(5);
}

void SelectByType(Bank& bank, const Setup& setup, std::uint32_t word) {
    switch (setup.ClockType) {
        case 0:
            SelectByRate(bank, setup);
            break;
        case 1:
            bank.ClockSelect(0);
            break;
        case 2:
            bank.ClockSelect(2);
            break;
        case 3:
            LoadQualifier(bank, setup.ClockEdge, setup.ClockExt);
            bank.ClockSelect(6);
            bank.Off(4, 0, 1);
            break;
        case 4:
        case 6:
            LoadQualifier(bank, setup.ClockEdge, setup.ClockExt);
            bank.ClockSelect(4);
            bank.Off(4, 0, 1);
            break;
        case 5:
            SendByControlByte(bank, word);
            break;
        case 7:
            bank.ClockSelect(7);
            break;
        default:
            break;
    }
}

void SwitchInputs(Bank& bank, int clockType) {
    if (clockType == 4) {
        bank.On(3, 0, 2);
        bank.Off(2, 0, 0x24);
    } else if (clockType == 5) {
        bank.On(3, 0, 2);
        bank.On(2, 0, 0x20);
    } else if (clockType == 6) {
        bank.Off(3, 0, 2);
        bank.On(2, 0, 0x20);
    } else {
        return;
    }
    bank.Put(3, 0);
    bank.Put(2, 0);
}

}  // namespace

bool Setup::HasPatternPod() const {
    for (int p = 0; p < PodCount; ++p) {
        const int mode = Pods.at(Index(p));
        if (mode == 1 || mode == 2) return true;
    }
    return false;
}

void LoadClockWord(Bank& bank, int column, int r4, int s2, std::uint32_t word) {
    bank.WriteS10S11(0, bank.S(10, 0), bank.S(11, 0) & 0xFC);
    int r0 = bank.S(8, column);
    for (int bit = 0; bit < 22; ++bit) {
        r4 = BitOf(word, bit) ? r4 | 8 : r4 & ~8;
        bank.Write(4, column, r4);
        r0 &= ~2;
        bank.Write(0, column, r0);
        bank.Write(2, column, s2 & ~2);
        bank.Write(2, column, s2 | 2);
        r0 |= 2;
        bank.Write(0, column, r0);
        bank.Write(2, column, s2 & ~2);
        bank.Write(2, column, s2 | 2);
    }
}

void BusData(Bank& bank, int board, int value) {
    bank.ShiftOut(board, value);
    bank.LowHighLow(4, board, 0x20);
}

void BusControl(Bank& bank, int board, int value) {
    bank.ShiftOut(board, value);
    bank.LowHighLow(2, board, 0x01);
}

void SerialCounter(Bank& bank, int value) {
    BusData(bank, 0, 0xB6);
    for (const int control : {0xFF, 0xBF, 0xFF}) BusControl(bank, 0, control);
    BusData(bank, 0, value & 0xFF);
    for (const int control : {0xEF, 0xAF, 0xEF}) BusControl(bank, 0, control);
    BusData(bank, 0, value >> 8);
    for (const int control : {0xEF, 0xAF, 0xEF}) BusControl(bank, 0, control);
}

bool SetClock(Bank& bank, Setup& setup) {
    if (setup.Emulated) return true;
    for (int b = 0; b < 4; ++b) bank.OnPut(3, b, 1);
    SendFixedWord(bank);
    const ClockChoice choice = ChoiceOf(setup);
    LoadCounters(bank, setup, choice);
    if (bank.Later()) {
        bank.Off(10, 0, 0x10);
        if (setup.ClockRate < 9 && setup.ClockType == 0) bank.On(10, 0, 0x10);
    }
    bank.Off(11, 0, 3);
    bank.PutS10S11(0);
    SendChosenWord(bank, choice.Word);
    bank.Flush();
    bank.On(4, 0, 1);
    if (setup.OutputMode == 0 && setup.FirstRun && setup.HasPatternPod()) {
        setup.FirstRun = false;
        if (!setup.UserGoesOn) return false;
    }
    SelectByType(bank, setup, choice.Word);
    SwitchInputs(bank, setup.ClockType);
    bank.Put(4, 0);
    return true;
}

}  // namespace zu::reference
