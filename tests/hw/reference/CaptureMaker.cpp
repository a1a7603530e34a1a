#include "reference/CaptureMaker.h"

namespace zu::reference {
namespace {

constexpr int kSamples = 96;

int Below(std::mt19937& random, int limit) {
    return static_cast<int>(random() % static_cast<unsigned>(limit));
}

std::string RandomWord(std::mt19937& random, int rareness) {
    std::string word = "XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX";
    for (char& c : word) {
        if (c == 'X' && Below(random, rareness) == 0) c = "01x"[Below(random, 3)];
    }
    return word;
}

void FillWords(Capture& capture, std::mt19937& random) {
    for (std::size_t word = 0; word < 16; ++word) {
        const int rareness = word == 8 ? 1 << 30 : word % 2 == 0 ? 40 : 6;  // word 9 asks for nothing
        for (std::string& text : capture.Words[word]) text = RandomWord(random, rareness);
    }
    capture.Words[0][0][43] = '1';
}

}  // namespace

void MakeCapture(Capture& capture, int boards) {
    std::mt19937 random(static_cast<unsigned>(boards));
    capture.Boards = boards;
    capture.Lengths.assign(20, kSamples);
    FillWords(capture, random);
    capture.Levels = {};
    capture.Levels[0] = 1;
    capture.Levels[2] = 4;
    for (std::size_t i = 0; i < 12; ++i) {
        capture.Thresholds[i] = static_cast<int>(0x100 + 20 * i);
        capture.Voltages[i] = static_cast<int>(0x3FF - 11 * i);
    }
    capture.ClockExt.assign(16, "XXXXXXXX");
    capture.ClockExt[2] = "01XXXXX1";
    capture.Reprogram = 0xFF;
}

void MakePatterns(Capture& capture, int variant) {
    for (std::size_t p = 0; p < 20; ++p) {
        const int pod = static_cast<int>(p);
        int mode = 0;
        if (variant == 0) mode = pod == 3 ? 1 : 0;
        if (variant == 1) mode = pod == 0 || pod == 2 || pod == 4 ? 2 : 0;
        if (variant == 2) mode = pod * 3 % 5;
        if (variant == 3) mode = 1 + pod % 2;
        capture.Pods[p] = mode;
        capture.Patterns[p].resize(kSamples);
        for (std::size_t i = 0; i < kSamples; ++i) {
            capture.Patterns[p][i] = static_cast<std::uint8_t>(17 * p + 5 * i);
        }
    }
}

void MakeRandomCapture(Capture& capture, std::mt19937& random) {
    static const int kBoards[] = {1, 2, 3, 4};
    MakeCapture(capture, kBoards[Below(random, 4)]);
    if (Below(random, 3) == 0) MakePatterns(capture, Below(random, 4));
    for (std::size_t p = 0; p < 20; ++p) {
        if (Below(random, 9) == 0) capture.Pods[p] = 3 + Below(random, 2);
    }
    FillWords(capture, random);
    capture.Levels = {};
    const int levels = Below(random, 4);
    for (int i = 0; i < levels; ++i) capture.Levels.at(random() % 16) = Below(random, 18);
    capture.ClockType = Below(random, 3) == 0 ? Below(random, 8) : 0;
    capture.ClockRate = Below(random, 2) == 0 ? Below(random, 6) : Below(random, 36);
    capture.ClockEdge = Below(random, 2);
    capture.HardwareMode = Below(random, 4);
    capture.OutputMode = Below(random, 3);
    capture.UserGoesOn = Below(random, 2) == 0;
    capture.PatDirty = Below(random, 2) == 0;
    capture.Reprogram = Below(random, 256);
    capture.AnyBit = Below(random, 4) == 0;
    capture.Edge = Below(random, 3);
    capture.Count = Below(random, 256);
    capture.CountMode = Below(random, 4);
    capture.Position = Below(random, 4) == 0 ? Below(random, 100000) - 10 : Below(random, 90);
    capture.IsUsb = Below(random, 2) == 0;
    capture.Lengths.assign(20, kSamples - Below(random, 40));
    for (std::size_t c = 0; c < 160; ++c) capture.Inverted[c] = Below(random, 4) == 0;
}

}  // namespace zu::reference
