#include "reference/Capture.h"

namespace zu::reference {
namespace {

struct LaneWord {
    int Mask = 0xFF;
    int Value = 0;
};

LaneWord LaneOf(const Capture& capture, int word, int board, int lane) {
    const std::string& text = capture.Words.at(Index(word)).at(Index(board));
    LaneWord result;
    for (int i = 0; i < 8; ++i) {
        char c = text.at(Index(36 - 9 * lane + i));
        if (capture.AnyBit && c == '0') {
            c = '1';
        } else if (capture.AnyBit && c == '1') {
            c = '0';
        }
        const int bit = 0x80 >> i;
        if (c == '1') result.Value |= bit;
        if (c != '0' && c != '1') result.Mask &= ~bit;
    }
    return result;
}

bool IsBlanked(const Bank& bank, const Capture& capture, int lane) {
    const int rate = capture.ClockRate;
    if (bank.Type >= 11 && bank.Type <= 15) {
        return capture.ClockType == 0 && (rate == 1 || rate == 2) && (lane == 1 || lane == 3);
    }
    if (rate == 1 || rate == 2) return lane >= 1 && lane <= 3;
    if (rate == 3 || rate == 4) return lane == 2 || lane == 3;
    return false;
}

/// The edge that takes a page or the count over.
void PulseEdge(Bank& bank) {
    bank.ReadTimes(3);
    bank.Write(1, 0, bank.S(1, 0) | 0x08);
    bank.ReadTimes(3);
    bank.Write(1, 0, bank.S(1, 0) & ~0x08);
    bank.ReadTimes(3);
}

void ChoosePage(Bank& bank, int page) {
    bank.Write(7, 0, page);
    bank.Write(2, 0, bank.S(2, 0) & ~0x18);
    PulseEdge(bank);
    bank.Write(2, 0, bank.S(2, 0) & ~0x08);
}

/// Fills a page of one board; whether the word asks for anything.
bool FillPage(Bank& bank, const Capture& capture, int word, int b) {
    std::array<LaneWord, 5> lanes;
    bool asks = false;
    for (int i = 0; i < 5; ++i) {
        LaneWord& lane = lanes.at(Index(i));
        lane = LaneOf(capture, word, b, i);
        if (IsBlanked(bank, capture, i)) lane = {0, 0};
        if (lane.Mask != 0) asks = true;
    }
    bank.Write(0, b, 0);
    for (const int strobe : {3, 1, 3}) bank.Write(4, b, strobe);
    for (int a = 0; a < 256; ++a) {
        int data = 3;
        for (int i = 0; i < 5; ++i) {
            const LaneWord& lane = lanes.at(Index(i));
            if ((a & lane.Mask) == lane.Value) data |= 1 << (3 + i);
        }
        bank.Write(0, b, a);
        bank.Write(14, b, a);
        bank.Write(4, b, data);
        bank.Write(4, b, data & ~2);
        bank.Write(4, b, data);
    }
    bank.OnPut(4, b, 0x06);
    bank.OffPut(1, b, 0x03);
    return asks;
}

bool FillPages(Bank& bank, const Capture& capture) {
    bool asks = false;
    int page = 15;
    for (int k = 15; k >= 0; --k) {
        const int level = capture.Levels.at(Index(k));
        if (level < 1 || level > 16) continue;
        ChoosePage(bank, page);
        for (int b = 0; b < capture.Boards; ++b) {
            if (FillPage(bank, capture, level - 1, b)) asks = true;
        }
        --page;
    }
    return asks;
}

void ChoosePhases(Bank& bank, const Capture& capture, int b) {
    bank.OffPut(1, b, 0x03);
    if (capture.HasPatternPod() || capture.ClockType != 0) return;
    if (capture.ClockRate == 1 || capture.ClockRate == 2) {
        bank.OnPut(1, b, 0x02);
    } else if (capture.ClockRate == 3 || capture.ClockRate == 4 || capture.HardwareMode == 3) {
        bank.OnPut(1, b, 0x01);
    }
}

void LoadCount(Bank& bank, const Capture& capture) {
    const int preset = capture.CountMode == 3 ? 0 : capture.Count - 1;
    bank.S(3, 0) = (bank.S(3, 0) & 0x63) | 0x04;
    bank.Put(3, 0);
    bank.S(7, 0) = (255 - preset) & 0xFF;
    bank.Put(7, 0);
    PulseEdge(bank);
    if (capture.CountMode == 2 || capture.CountMode == 3) {
        bank.S(3, 0) = (bank.S(3, 0) & 0xE7) | 0x80;
    } else {
        bank.S(3, 0) = (bank.S(3, 0) & 0x67) | 0x18;
    }
    bank.Put(3, 0);
}

void SerialDac(Bank& bank, int b, int address, int value) {
    bank.OffPut(6, b, 0x01);
    const int word = address << 8 | value;
    for (int bit = 15; bit >= 0; --bit) {
        bank.Off(4, b, 0x08);
        if ((word >> bit & 1) != 0) bank.On(4, b, 0x08);
        bank.Put(4, b);
        bank.LowHighLow(6, b, 0x02);
    }
    bank.OnPut(6, b, 0x01);
}

}  // namespace

void LoadThresholds(Bank& bank, const Capture& capture) {
    for (int b = 0; b < capture.Boards; ++b) {
        for (int group = 0; group < 3; ++group) {
            const auto pod = Index(b * capture.BufStep + 2 * group);
            const auto entry = Index(3 * b + group);
            const int level =
                capture.Pods.at(pod) != 0 ? capture.Voltages.at(entry) : capture.Thresholds.at(entry);
            const int value = ~level & 0xFF;
            if (bank.Later()) {
                bank.OnPut(3, b, 0x01);
                SerialDac(bank, b, 4 >> group, value);
            } else {
                const int idle = 0xCF + 0x10 * group;
                BusData(bank, b, value);
                BusControl(bank, b, idle);
                BusControl(bank, b, idle & ~0x04);
                BusControl(bank, b, idle);
            }
        }
    }
}

int CompileTrigger(Bank& bank, const Capture& capture) {
    const int held = bank.ClockHold();
    bank.Off(3, 0, 0x04);
    bank.OffPut(5, 0, 0x02);
    bank.OnPut(2, 0, 0x18);
    bank.ReadTimes(3);
    for (int b = 0; b < capture.Boards; ++b) {
        bank.OnPut(3, b, 0x01);
        bank.OnPut(6, b, 0x60);
        bank.OnPut(1, b, 0x04);
        bank.Write(4, b, 7);
    }
    const bool asks = FillPages(bank, capture);
    bank.S(2, 0) &= 0x08;
    bank.Put(2, 0);
    for (int b = 0; b < capture.Boards; ++b) ChoosePhases(bank, capture, b);
    bank.OffPut(2, 0, 0x10);
    bank.Read(0, 0);
    LoadCount(bank, capture);
    bank.ClockSelect(held);
    return asks ? 1 : 2;
}

std::int64_t PositionValue(const Bank& bank, const Capture& capture, std::int64_t position) {
    const bool internal = capture.ClockType == 0;
    const bool fastest = capture.ClockRate == 1 || capture.ClockRate == 2;
    const bool half = capture.HardwareMode == 3 || capture.ClockRate == 3 || capture.ClockRate == 4;
    std::int64_t value = position;
    if (internal && fastest) {
        value += 0x40;
    } else if (internal && half) {
        value += 0x20;
    } else {
        value += 0x10;
    }
    const bool onePhase = !internal || capture.HasPatternPod();
    value >>= onePhase ? 1 : fastest ? 3 : half ? 2 : 1;
    const int t = bank.Type;
    const bool small = t == 1 || t == 2 || t == 6 || t == 7 || t == 11 || t == 12;
    const bool large = !small && t >= 3 && t <= 15;
    if (capture.HardwareMode == 0) return (value > 0xFFE ? 0xFFE : value) + 0x3F000;
    if (capture.HardwareMode == 1 && small) return (value > 0x3FFE ? 0x3FFE : value) + 0x3C000;
    if (capture.HardwareMode == 1 && large) return (value > 0xFFFE ? 0xFFFE : value) + 0x30000;
    if (capture.HardwareMode != 1 && t >= 13 && t <= 15) return (value > 0xFFFE ? 0xFFFE : value) + 0x30000;
    return value;
}

void LoadPosition(Bank& bank, const Capture& capture, int position) {
    const std::int64_t value = PositionValue(bank, capture, position);
    const int held = bank.ClockHold();
    bank.S(10, 0) = (bank.S(10, 0) & 0xF4) | 0x09;
    bank.PutS10S11(0);
    bank.ReadTimes(4);
    bank.Off(10, 0, 0x08);
    bank.PutS10S11(0);
    bank.ReadTimes(4);
    const int one = bank.S(4, 0) | 0x08;
    const int zero = bank.S(4, 0) & ~0x08;
    bank.Write(4, 0, (value & 0x7FF) == 0x7FF ? one : zero);
    bank.ReadTimes(2);
    for (int bit = 17; bit >= 0; --bit) {
        bank.Write(4, 0, (value >> bit & 1) != 0 ? one : zero);
        bank.ReadTimes(2);
    }
    bank.Off(10, 0, 0x01);
    bank.PutS10S11(0);
    bank.On(10, 0, 0x02);
    bank.PutS10S11(0);
    bank.ClockSelect(held);
}

}  // namespace zu::reference
