#include "reference/UsbPaper.h"

#include <algorithm>
#include <cstdio>

namespace zu::reference {
namespace {

constexpr int kPiece = 61440;
constexpr int kPacket = 64;

int AddressOf(int port) {
    return ((port & 15) + (port >> 6) + 32) & 0xFF;
}

bool IsPodRegister(int port) {
    return port == 0xE0 || port == 0xE1 || port == 0xD0 || port == 0xD1 || port == 0xC0 || port == 0xC1 ||
           port == 0xB0 || port == 0xB1;
}

std::string Hex(int byte) {
    char text[8];
    std::snprintf(text, sizeof text, "%02x", static_cast<unsigned>(byte & 0xFF));
    return text;
}

std::string Plain(int number) {
    char text[8];
    std::snprintf(text, sizeof text, "%x", static_cast<unsigned>(number));
    return text;
}

}  // namespace

void UsbPaper::Found(int number) {
    Text += "UOPEN " + std::to_string(number) + "\nUIDS scan : 95 31 20 00 00 00 00 00\n";
}

void UsbPaper::Command(int command, const std::vector<int>& data) {
    Text += "UOUT " + Hex(command) + " " + std::to_string(data.size() & 0xFF) + " " + Plain(index_) + " :";
    for (const int byte : data) Text += " " + Hex(byte);
    Text += "\n";
}

void UsbPaper::CommandWithIndex(int command, int index, const std::vector<int>& data) {
    index_ = index;
    Command(command, data);
}

int UsbPaper::ReadCommand(int command) {
    const int answer = Answer ? Answer(command) : 0;
    Text += "UIN " + Hex(command) + " 1 " + Plain(index_) + " : " + Hex(answer) + "\n";
    return answer;
}

void UsbPaper::Write(int port, int value) {
    queue_.push_back(IsPodRegister(port) ? port : AddressOf(port));
    queue_.push_back(value & 0xFF);
}

int UsbPaper::Read(int port) {
    if (AddressOf(port) % 16 == 0) {
        queue_.push_back(0xF0);
        queue_.push_back(0x00);
        return 0;
    }
    Flush();
    Select(port);
    return ReadCommand(0x84);
}

void UsbPaper::Select(int port) {
    Command(0x83, {AddressOf(port)});
}

void UsbPaper::Flush() {
    std::size_t sent = 0;
    while (sent < queue_.size()) {
        const std::size_t end = std::min(queue_.size(), sent + kPacket);
        Command(0x83, std::vector<int>(queue_.begin() + static_cast<std::ptrdiff_t>(sent),
                                       queue_.begin() + static_cast<std::ptrdiff_t>(end)));
        sent = end;
    }
    queue_.clear();
}

void UsbPaper::Bulk(int direction, int length) {
    while (length > 0) {
        const int piece = std::min(length, kPiece);
        Command(0x82, {direction, 0, 0, 0, piece & 0xFF, piece >> 8 & 0xFF, piece >> 16 & 0xFF, 0});
        Text += (direction == 0 ? "BIN " : "BOUT ") + std::to_string(piece) + "\n";
        length -= piece;
    }
}

std::vector<std::uint8_t> UsbPaper::ReadBlock(int port, int count) {
    Flush();
    Select(port);
    Bulk(0, count);
    return std::vector<std::uint8_t>(static_cast<std::size_t>(count), 0x5A);
}

void UsbPaper::BulkOut(const std::vector<int>& bytes) {
    for (const int byte : bytes) BulkBytes.push_back(static_cast<std::uint8_t>(byte));
    Bulk(1, static_cast<int>(bytes.size()));
}

}  // namespace zu::reference
