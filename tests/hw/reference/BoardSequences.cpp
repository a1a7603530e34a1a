#include "reference/Sequences.h"

namespace zu::reference {
namespace {

struct QualifierWord {
    int Mask = 0xFF;
    int Value = 0;
};

QualifierWord WordOf(const std::string& text) {
    QualifierWord word;
    for (int i = 0; i < 8; ++i) {
        const int bit = 0x80 >> i;
        const char c = Index(i) < text.size() ? text[Index(i)] : ' ';
        if (c == '1') word.Value |= bit;
        if (c != '0' && c != '1') word.Mask &= ~bit;
    }
    return word;
}

/// Echo of bit `bit` of what is written to R1: both levels are tried, whatever the first one gives.
bool Echoes(Bank& bank, int board, int bit) {
    bank.Write(1, board, 0);
    const bool low = (bank.Read(1, board) & bit) == 0;
    bank.Write(1, board, 1);
    const bool high = (bank.Read(1, board) & bit) != 0;
    return low && high;
}

void ClearColumn(Bank& bank, int board) {
    for (const int row : {11, 10, 2, 8, 4}) bank.S(row, board) = 0;
    LoadClockWord(bank, board, bank.S(4, board), bank.S(2, board), 0x2D7C08);
}

int PresenceChain(Bank& bank, int memoryClass) {
    if (!Echoes(bank, 0, 0x80)) {
        ClearColumn(bank, 0);
        return 0;
    }
    if (!Echoes(bank, 1, 0x80)) {
        ClearColumn(bank, 1);
        return memoryClass == 1 ? 1 : 3;
    }
    if (!Echoes(bank, 2, 0x80)) {
        ClearColumn(bank, 2);
        return memoryClass == 1 ? 2 : 4;
    }
    ClearColumn(bank, 2);
    ClearColumn(bank, 3);
    return 5;
}

void FindPodRegisters(Bank& bank) {
    bank.Direct = false;
    int good = 0;
    for (int round = 0; round < 4; ++round) {
        if (Echoes(bank, 0, 2)) ++good;
    }
    if (good < 4) return;
    bank.Direct = true;
    if (bank.Usb != nullptr) bank.Usb->ReadCommand(0x8E);
}

void ShowTheClass(Bank& bank) {
    for (int b = 0; b < 4; ++b) {
        bank.OnPut(3, b, 1);
        bank.Write(11, 0, 0x36);
        bank.On(9, b, 0xF8);
        bank.PutS9(b);
        bank.Write(13, b, bank.S(9, b));
    }
    bank.Off(10, 0, 0x10);
    bank.S(11, 0) = 3;
    bank.WriteS10S11(0, bank.S(10, 0), 3);
    bank.S(8, 0) = (bank.S(8, 0) & 0x17) | 0x20;
    bank.Write(0, 0, bank.S(8, 0));
    bank.Write(2, 0, bank.S(2, 0) & ~2);
    bank.Write(2, 0, bank.S(2, 0) | 2);
}

void ShowTheSeries(Bank& bank) {
    bank.OnPut(4, 0, 0x07);
    bank.On(9, 0, 0xF8);
    bank.PutS9(0);
    bank.S(8, 0) = (bank.S(8, 0) & 0xEA) | 8;
    bank.PutS8(0);
    bank.OnPut(2, 0, 0x40);
    bank.OnPut(5, 0, 0x40);
}

void LeaveIdle(Bank& bank, int board, int model) {
    bank.OnPut(4, board, 0x07);
    bank.On(9, board, 0xF8);
    bank.PutS9(board);
    bank.OnPut(4, board, 0xE0);
    bank.On(8, board, 0x15);
    bank.PutS8(board);
    bank.OffPut(5, board, 0x40);
    bank.OnPut(6, board, 0x60);
    bank.OnPut(1, board, 0x04);
    bank.OffPut(4, board, 0x10);
    bank.On(8, board, 0x15);
    const int before = bank.Type;
    bank.Type = model;
    bank.PutS8(board);
    bank.Type = before;
    bank.OffPut(2, board, 0x40);
}

}  // namespace

void LoadQualifier(Bank& bank, int edge, const std::vector<std::string>& words) {
    bank.On(8, 0, 0x04);
    bank.PutS8(0);
    const int held = bank.ClockHold();
    bank.WriteS9(0, bank.S(9, 0) | 0xF8);
    bank.Write(1, 0, bank.S(1, 0) | 0x04);

    const int rest = bank.S(4, 0) & ~0x05;
    const int a = rest | 0x0A;
    const int b = rest | 0x0F;
    const int c = rest | 0x0B;
    bank.Write(4, 0, c & 0xF7);
    for (int entry = 0; entry < 256; ++entry) {
        bank.Write(14, 0, entry);
        bank.Read(0, 0);
        for (const int strobe : {c, a, c}) bank.Write(4, 0, strobe & 0xF7);
    }
    bank.Write(4, 0, b);

    for (const std::string& text : words) {
        const QualifierWord word = WordOf(text);
        if (word.Mask == 0) continue;
        for (int entry = 0; entry < 256; ++entry) {
            const bool equal = (entry & word.Mask) == word.Value;
            if (!(equal && edge == 0) && !(!equal && edge == 1)) continue;
            bank.Write(14, 0, entry);
            bank.Read(0, 0);
            for (const int strobe : {c, a, c}) bank.Write(4, 0, strobe);
        }
        bank.Write(4, 0, b);
    }

    bank.PutS9(0);
    bank.Put(4, 0);
    bank.OffPut(1, 0, 0x04);
    bank.Off(8, 0, 0x04);
    bank.PutS8(0);
    bank.ClockSelect(held);
}

void SetupMemConfig(Bank& bank, const Setup& setup) {
    for (int b = 0; b < setup.Boards; ++b) {
        const int mode = setup.HardwareMode;
        if (mode != 0 && mode != 1 && mode != 3) continue;
        bank.Off(10, b, 0x24);
        if (mode != 0) {
            const int t = bank.Type;
            if (t == 1 || t == 2 || t == 6 || t == 7 || t == 11 || t == 12) {
                bank.On(10, b, 0x04);
            } else if (t >= 1 && t <= 15) {
                bank.On(10, b, 0x20);
            } else {
                continue;
            }
        }
        bank.PutS10S11(b);
    }
}

int FindBoard(Bank& bank) {
    FindPodRegisters(bank);
    ShowTheClass(bank);
    const int memoryClass = (bank.Read(1, 0) & 0x20) == 0 ? 2 : 1;
    bank.On(10, 0, 0x10);
    bank.S(11, 0) = 0;
    int model = PresenceChain(bank, memoryClass);
    ShowTheSeries(bank);
    const bool laterSeries = (bank.Read(2, 0) & 0x80) == 0;
    if (model != 0 && laterSeries) model += 10;
    bank.Read(2, 0);
    for (int b = 0; b < 4; ++b) LeaveIdle(bank, b, model);
    return model;
}

}  // namespace zu::reference
