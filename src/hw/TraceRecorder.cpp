#include "hw/TraceRecorder.h"

#include <charconv>

#include "hw/AddressByte.h"

namespace zu {
namespace {

std::string Name(const char* letter, int number, int board) {
    return letter + std::to_string(number) + "[" + std::to_string(board) + "]";
}

/// Port of a line "W 0210 1f", "R 0211 80" or "B 0210 8192"; -1 for any other.
int PortOfLine(std::string_view line) {
    constexpr std::size_t kPortAt = 2;
    constexpr std::size_t kPortDigits = 4;
    if (line.size() < kPortAt + kPortDigits || line[1] != ' ') return -1;
    if (line[0] != 'W' && line[0] != 'R' && line[0] != 'B') return -1;
    const std::string_view digits = line.substr(kPortAt, kPortDigits);
    int port = -1;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), port, 16);
    return error == std::errc{} && end == digits.data() + digits.size() ? port : -1;
}

}  // namespace

TraceRecorder::TraceRecorder(HardwareSession& hardware, std::size_t keptLines)
    : hardware_(hardware), keptLines_(keptLines), log_([this](std::string_view line) { Take(line); }) {}

TraceRecorder::~TraceRecorder() {
    Stop();
}

void TraceRecorder::Start() {
    TraceRegisters(hardware_, &log_);
}

void TraceRecorder::Stop() {
    if (Recording()) TraceRegisters(hardware_, nullptr);
}

bool TraceRecorder::Recording() const {
    return hardware_.Trace == &log_;
}

void TraceRecorder::Clear() {
    lines_.clear();
    total_ = 0;
}

void TraceRecorder::Take(std::string_view line) {
    ++total_;
    lines_.emplace_back(line);
    if (lines_.size() > keptLines_) lines_.pop_front();
}

std::string TraceRecorder::Text() const {
    std::string text;
    for (const std::string& line : lines_) {
        text += line;
        text += '\n';
    }
    return text;
}

std::string RegisterOfLine(const PortTable& ports, std::string_view line) {
    const int port = PortOfLine(line);
    if (port < 0) return {};
    for (int board = 0; board < kMaxBoards; ++board) {
        const auto& pair = kPodRegisterPorts[static_cast<std::size_t>(board)];
        if (port == pair[0]) return Name("S", 10, board);
        if (port == pair[1]) return Name("S", 11, board);
        for (int row = 0; row < static_cast<int>(kRegisterOffset.size()); ++row) {
            if (ports.At(row, board) == port) return Name("R", row, board);
        }
    }
    return {};
}

}  // namespace zu
