#include "Script.h"

#include <cstdio>
#include <sstream>
#include <stdexcept>

namespace zu::test {
namespace {

std::string Line(const char* format, int port, int value) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), format, static_cast<unsigned>(port & 0xFFFF),
                  static_cast<unsigned>(value & 0xFF));
    return text.data();
}

int Hex(const std::string& digits) {
    return std::stoi(digits, nullptr, 16);
}

}  // namespace

void RecordingOps::RegWrite(std::uint16_t, std::uint16_t port, std::uint8_t value) {
    Text += Line("W %04x %02x\n", port, value);
    if (Watch) Watch(port, value);
}

std::uint8_t RecordingOps::RegRead(std::uint16_t, std::uint16_t port) {
    Text += Line("R %04x\n", port, 0);
    return Answer ? Answer(port) : std::uint8_t{0};
}

void RecordingOps::RegReadBlock(std::uint16_t, std::uint16_t port, std::int32_t count, std::uint8_t*) {
    Text += Line("B %04x ", port, 0) + std::to_string(count) + "\n";
}

Script::Script(int hardwareType, bool podRegistersDirect, std::uint16_t address)
    : Type(hardwareType), Direct(podRegistersDirect), address_(address) {}

void Script::Write(int row, int board, int value) {
    // Row to offset, written out once more: the timer's four registers are the highest ports.
    static constexpr const char* kOffsets = "0123456789:;<=>?";
    static constexpr const char* kOrder = "01234567<=>?89:;";
    if (board == 4) return Write(row + 1, 0, value);  // the tables are flat
    const int offset = static_cast<int>(std::string(kOffsets).find(kOrder[row]));
    Text += Line("W %04x %02x\n", address_ + 1024 * board + offset, value);
}

void Script::Read(int row, int board) {
    if (board == 4) return Read(row + 1, 0);
    Text += Line("R %04x\n", address_ + 1024 * board + row, 0);
}

void Script::Do(int board, const std::string& words) {
    std::istringstream in(words);
    std::string word;
    while (in >> word) Word(board, word);
}

void Script::Word(int board, const std::string& word) {
    if (word == "!") {
        Text += "FLUSH 0\n";
        return;
    }
    if (word[0] == '?') return Read(std::stoi(word.substr(2)), board);
    if (word == "WX") return PodPair(board, S(10, board), S(11, board));
    std::size_t at = 1;
    while (at < word.size() && std::isdigit(static_cast<unsigned char>(word[at])) != 0) ++at;
    const int row = std::stoi(word.substr(1, at - 1));
    const char op = at < word.size() ? word[at] : ' ';
    const int operand = op == ' ' ? 0 : Hex(word.substr(at + 1));
    int value = op == '=' ? operand : S(row, board);
    if (op == '|') value |= operand;
    if (op == '-') value &= 0xFF - operand;
    if (op == '&') value &= operand;
    if (word[0] == 'S') S(row, board) = value;
    if (word[0] == 'R') Write(row, board, value);
    if (word[0] == 'W' && row == 8) Control8(board, value);
    if (word[0] == 'W' && row == 9) Control9(board, value);
    if (std::string("SRW").find(word[0]) == std::string::npos) throw std::invalid_argument(word);
}

void Script::Control8(int board, int value) {
    if (Type >= 6 && Type <= 15) return Write(12, board, value);
    Write(0, board, value);
    Do(board, "R2-02 R2|02 R2-02");
}

void Script::Control9(int board, int value) {
    if (Type >= 6 && Type <= 15) return Write(13, board, value);
    Write(0, board, value);
    Do(board, "R2-04 R2|04 R2-04");
}

void Script::Bits(int board, std::uint32_t value, int count, bool lowFirst, const std::string& one,
                  const std::string& zero, const std::string& clock) {
    for (int i = 0; i < count; ++i) {
        const int bit = lowFirst ? i : count - 1 - i;
        Do(board, (value >> bit & 1U) != 0 ? one : zero);
        Do(board, clock);
    }
}

void Script::ShiftByte(int board, int value) {
    Bits(board, static_cast<std::uint32_t>(value), 8, false, "S4|08 R4", "S4-08 R4", "S6-80 R6 S6|80 R6");
}

void Script::PodPair(int board, int v10, int v11) {
    if (Direct) {
        if (board == 4) return;  // no such pair
        const int high = 0xE0 - 0x10 * board;
        Text += Line("W %04x %02x\n", high + 1, v10) + Line("W %04x %02x\n", high, v11);
        return;
    }
    Do(board, "S6-10 R6");
    ShiftByte(board, v10);
    Do(board, "S5-80 R5 S5|80 R5 S5-80 R5");
    ShiftByte(board, v11);
    Do(board, "S6|05 R6");
}

void Script::Block(int board, int count) {
    Text += Line("B %04x ", address_ + 1024 * board, 0) + std::to_string(count) + "\n";
}

void Script::FillShadows(unsigned seed) {
    for (int row = 1; row <= 11; ++row) {
        for (int board = 0; board < 4; ++board) {
            seed = seed * 1103515245U + 12345U;
            S(row, board) = static_cast<int>(seed >> 16 & 0xFF);
        }
    }
}

void Script::CopyShadowsTo(ShadowTable& shadows) const {
    for (int i = 4; i < 48; ++i) {
        shadows.At(i / 4, i % 4) = static_cast<std::uint8_t>(Cells[static_cast<std::size_t>(i)]);
    }
}

std::string Script::ShadowDifference(const ShadowTable& shadows) const {
    for (int i = 4; i < 48; ++i) {
        const int expected = Cells[static_cast<std::size_t>(i)];
        const int actual = shadows.At(i / 4, i % 4);
        if (expected == actual) continue;
        return "S" + std::to_string(i / 4) + "[" + std::to_string(i % 4) + "]" +
               Line(" should be %x", expected, 0) + Line(" and is %x", actual, 0);
    }
    return "";
}

std::string Difference(const std::string& expected, const std::string& actual) {
    if (expected == actual) return "";
    std::istringstream e(expected);
    std::istringstream a(actual);
    std::string el;
    std::string al;
    std::vector<std::string> before;
    for (int line = 1;; ++line) {
        const bool moreE = static_cast<bool>(std::getline(e, el));
        const bool moreA = static_cast<bool>(std::getline(a, al));
        if (moreE && moreA && el == al) {
            before.push_back(el);
            continue;
        }
        std::string text;
        for (std::size_t i = before.size() > 6 ? before.size() - 6 : 0; i < before.size(); ++i) {
            text += "    " + before[i] + "\n";
        }
        return text + "line " + std::to_string(line) + ": should be \"" + (moreE ? el : "the end") +
               "\" and is \"" + (moreA ? al : "the end") + "\"\n";
    }
}

}  // namespace zu::test
