#include "reference/Sequences.h"

namespace zu::reference {
namespace {

struct Lane {
    int Number;  ///< on its board
    int Mode;
    int Length;
    const std::vector<std::uint8_t>* Bytes;

    [[nodiscard]] bool IsPattern() const { return Mode == 1 || Mode == 2; }
    [[nodiscard]] int Byte(int i) const { return Bytes->at(Index(i)); }
};

Lane LaneOf(const Setup& setup, int board, int number) {
    const auto pod = Index(board * setup.BufStep + number);
    return {number, setup.Pods.at(pod), setup.Lengths.at(pod), &setup.Patterns.at(pod)};
}

void PrepareBoard(Bank& bank, int b) {
    bank.On(9, b, 0xF8);
    bank.PutS9(b);
    bank.OnPut(4, b, 0xE0);
    bank.On(8, b, 0x15);
    bank.PutS8(b);
    bank.Off(2, b, 0x40);
    bank.Off(5, b, 0x40);
    bank.Put(2, b);
    bank.Put(5, b);
    bank.Off(10, b, 0x02);
    bank.PutS10S11(b);
    bank.WriteS10S11(b, bank.S(10, b) | 0x08, bank.S(11, b));
    bank.Read(0, b);
    bank.WriteS10S11(b, bank.S(10, b) & ~0x08, bank.S(11, b));
    bank.Read(0, b);
    bank.OnPut(6, b, 0x08);
    bank.OnPut(3, b, 0x01);
}

/// Routes a lane to the memory; returns the mask that opens it.
int RouteLane(Bank& bank, int b, int lane) {
    bank.OffPut(6, b, 0x60);
    bank.OffPut(1, b, 0x04);
    int mask = 0;
    if (lane == 0 || lane == 1) {
        bank.OnPut(6, b, 0x20);
        mask = 0xBF;
    } else if (lane == 2 || lane == 3) {
        bank.OnPut(6, b, 0x40);
        mask = 0x7F;
    } else {
        bank.OnPut(1, b, 0x04);
        mask = 0xDF;
    }
    bank.Write(4, b, bank.S(4, b) & mask);
    return mask;
}

void SendPair(Bank& bank, int b, const Lane& first, const Lane& second) {
    if (bank.Direct && first.Number == 0) {
        bank.Write(14, b, first.Byte(0));
        bank.Write(14, b, second.Byte(0));
    }
    for (int i = 0; i < first.Length; ++i) {
        bank.Write(14, b, first.Byte(i));
        if (bank.Direct) {
            bank.Write(14, b, second.Byte(i));
        } else {
            bank.Write(0, b, first.Byte(i));
            bank.Read(0, b);
        }
    }
}

void SendPairOverUsb(Bank& bank, int b, const Lane& first, const Lane& second) {
    bank.Write(15, b, 0xFF);
    bank.Flush();
    bank.Usb->Select(bank.PortOf(14, b));
    std::vector<int> image;
    for (int i = 0; i < first.Length; ++i) {
        image.push_back(first.Byte(i));
        image.push_back(second.Byte(i));
    }
    bank.Usb->BulkOut(image);
}

void LoadLaterBoard(Bank& bank, const Setup& setup, int b) {
    for (int k = 0; k < setup.BufStep; k += 2) {
        const Lane first = LaneOf(setup, b, k);
        const Lane second = k == 4 ? first : LaneOf(setup, b, k + 1);
        RouteLane(bank, b, k);
        if (first.IsPattern()) {
            bank.WriteS9(b, bank.S(9, b) & ~(0x80 >> k));
            bank.Write(15, b, 0);
        }
        if (bank.Usb != nullptr) {
            SendPairOverUsb(bank, b, first, second);
        } else {
            SendPair(bank, b, first, second);
        }
        bank.Put(4, b);
    }
    bank.PutS9(b);
}

void LoadEarlierBoard(Bank& bank, const Setup& setup, int b) {
    for (int k = 0; k < setup.BufStep; ++k) {
        const Lane lane = LaneOf(setup, b, k);
        const int mask = RouteLane(bank, b, k);
        bank.WriteS9(b, bank.S(9, b) & ~(0x80 >> k));
        for (int i = 0; lane.IsPattern() && i < lane.Length; ++i) {
            bank.Read(0, b);
            bank.Write(0, b, lane.Byte(i));
            bank.Write(4, b, bank.S(4, b) & mask);
            bank.Put(4, b);
        }
        bank.PutS9(b);
    }
    bank.PutS9(b);
    bank.OnPut(6, b, 0x60);
    bank.OnPut(1, b, 0x04);
}

}  // namespace

void DownloadPatterns(Bank& bank, const Setup& setup) {
    const int held = bank.ClockHold();
    for (int b = 0; b < setup.Boards; ++b) {
        PrepareBoard(bank, b);
        if (bank.Later()) {
            LoadLaterBoard(bank, setup, b);
        } else {
            LoadEarlierBoard(bank, setup, b);
        }
    }
    bank.ClockSelect(held);
}

}  // namespace zu::reference
