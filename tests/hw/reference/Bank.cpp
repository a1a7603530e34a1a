#include "reference/Bank.h"

#include <cstdio>

namespace zu::reference {

Bank::Bank(int type, bool direct, int address, RegisterOps& wire)
    : Type(type), Direct(direct), Address(address), wire_(&wire) {}

int Bank::PortOf(int reg, int board) const {
    const int flat = reg * 4 + board;
    const int row = flat / 4;
    const int column = flat % 4;
    int offset = row;
    if (row >= 8 && row <= 11) offset = row + 4;  // the timer has the highest ports
    if (row >= 12 && row <= 15) offset = row - 4;
    return (Address + 0x400 * column + offset) & 0xFFFF;
}

void Bank::Line(char kind, int port, int value) {
    char line[16];
    std::snprintf(line, sizeof line, "%c %04x %02x\n", kind, static_cast<unsigned>(port & 0xFFFF),
                  static_cast<unsigned>(value & 0xFF));
    Text += line;
}

void Bank::WritePort(int port, int value) {
    if (Usb != nullptr) {
        Usb->Write(port, value);
        return;
    }
    Line('W', port, value);
    wire_->RegWrite(0, static_cast<std::uint16_t>(port), static_cast<std::uint8_t>(value));
}

void Bank::Write(int reg, int board, int value) {
    WritePort(PortOf(reg, board), value);
}

int Bank::Read(int reg, int board) {
    const int port = PortOf(reg, board);
    if (Usb != nullptr) return Usb->Read(port);
    const int value = wire_->RegRead(0, static_cast<std::uint16_t>(port));
    Line('R', port, value);
    return value;
}

void Bank::ReadTimes(int times) {
    for (int i = 0; i < times; ++i) Read(0, 0);
}

std::vector<std::uint8_t> Bank::ReadBlock(int reg, int board, int count) {
    std::vector<std::uint8_t> bytes(Index(count));
    const int port = PortOf(reg, board);
    if (Usb != nullptr) return Usb->ReadBlock(port, count);
    char line[32];
    std::snprintf(line, sizeof line, "B %04x %d\n", static_cast<unsigned>(port), count);
    Text += line;
    wire_->RegReadBlock(0, static_cast<std::uint16_t>(port), count, bytes.data());
    return bytes;
}

void Bank::Flush() {
    if (Usb != nullptr) {
        Usb->Flush();
    } else {
        Text += "FLUSH 0\n";
    }
}

void Bank::OnPut(int row, int board, int bits) {
    On(row, board, bits);
    Put(row, board);
}

void Bank::OffPut(int row, int board, int bits) {
    Off(row, board, bits);
    Put(row, board);
}

void Bank::LowHighLow(int row, int board, int bits) {
    OffPut(row, board, bits);
    OnPut(row, board, bits);
    OffPut(row, board, bits);
}

void Bank::WriteS8(int board, int value) {
    if (Later()) {
        Write(12, board, value);
        return;
    }
    Write(0, board, value);
    const int s2 = S(2, board);
    Write(2, board, s2 & ~2);
    Write(2, board, s2 | 2);
    Write(2, board, s2 & ~2);
}

void Bank::WriteS9(int board, int value) {
    if (Later()) {
        Write(13, board, value);
        return;
    }
    Write(0, board, value);
    const int s2 = S(2, board);
    Write(2, board, s2 & ~4);
    Write(2, board, s2 | 4);
    Write(2, board, s2 & ~4);
}

void Bank::WriteS10S11(int board, int v10, int v11) {
    if (Direct) {
        if (board == 0) WritePort(0xE1, v10), WritePort(0xE0, v11);
        if (board == 1) WritePort(0xD1, v10), WritePort(0xD0, v11);
        if (board == 2) WritePort(0xC1, v10), WritePort(0xC0, v11);
        if (board == 3) WritePort(0xB1, v10), WritePort(0xB0, v11);
        return;
    }
    OffPut(6, board, 0x10);
    ShiftOut(board, v10);
    LowHighLow(5, board, 0x80);
    ShiftOut(board, v11);
    OnPut(6, board, 0x05);
}

void Bank::ShiftOut(int board, int value) {
    for (int bit = 7; bit >= 0; --bit) {
        if ((value >> bit & 1) != 0) {
            OnPut(4, board, 8);
        } else {
            OffPut(4, board, 8);
        }
        OffPut(6, board, 0x80);
        OnPut(6, board, 0x80);
    }
}

int Bank::ClockHold() {
    const int held = S(8, 0) >> 5;
    On(8, 0, 0xE0);
    PutS8(0);
    if (Later()) Off(10, 0, 0x10);
    return held;
}

void Bank::ClockSelect(int selector) {
    S(8, 0) = (S(8, 0) & 0x1F) | selector << 5;
    PutS8(0);
}

}  // namespace zu::reference
