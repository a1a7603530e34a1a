#include "reference/Capture.h"

namespace zu::reference {
namespace {

enum class Phases { One, Two, Four };

/// The read-out of one stack of boards.
struct ReadOut {
    Bank& Instrument;
    Capture& Settings;
    int Step;
    int Stride;  ///< of the lengths at four phases

    [[nodiscard]] Phases Memory() const {
        const int rate = Settings.ClockRate;
        if (Settings.ClockType != 0 || Settings.HasPatternPod()) return Phases::One;
        if (rate == 1 || rate == 2) return Phases::Four;
        return Settings.HardwareMode == 3 || rate == 3 || rate == 4 ? Phases::Two : Phases::One;
    }
    [[nodiscard]] std::size_t Pod(int b, int lane) const { return Index(b * Step + lane); }
    [[nodiscard]] bool Plain(int b, int lane) const { return Settings.Pods.at(Pod(b, lane)) == 0; }
    [[nodiscard]] int Length(int b, int lane) const { return Settings.Lengths.at(Pod(b, lane)); }
    void Store(int b, int lane, int index, std::uint8_t byte) const {
        Settings.Samples.at(Pod(b, lane)).at(Index(index)) = byte;
    }

    std::vector<std::uint8_t> ReadBank(int b, int selector, int count) const {
        Instrument.OnPut(3, b, 0x01);
        Instrument.Write(5, b, selector);
        Instrument.OffPut(3, b, 0x01);
        return Instrument.ReadBlock(0, b, count);
    }

    void LaterPlain(int b) const {
        static const int kSelector[] = {0x00, 0x10, 0x04, 0x14, 0x08};
        for (int pod = 0; pod < 5; ++pod) {
            if (!Plain(b, pod)) continue;
            const auto bytes = ReadBank(b, Instrument.S(5, b) | kSelector[pod], Length(b, pod));
            for (int i = 0; i < Length(b, pod); ++i) Store(b, pod, i, bytes.at(Index(i)));
        }
    }

    void LaterFour(int b) const {
        for (int group = 0; group < 3; ++group) {
            const int pod = 2 * group;
            if (!Plain(b, pod)) continue;
            const int count = Settings.Lengths.at(Index(b * Stride + pod)) / 4;
            for (int k = 0; k < 4; ++k) {
                const auto bytes = ReadBank(b, Instrument.S(5, b) | group << 2 | k << 4, count);
                for (int i = 0; i < count; ++i) {
                    Store(b, pod, 4 * i + 4 - k, bytes.at(Index(i)));
                }
            }
        }
    }

    void LaterTwo(int b) const {
        static const int kSelector[] = {0x00, 0x10, 0x04, 0x14, 0x08};
        const bool swapped = Settings.ClockRate >= 3 && Settings.ClockRate <= 5;
        for (int pod = 0; pod < 5; ++pod) {
            if (!Plain(b, pod)) continue;
            int count = Length(b, pod);
            if (Settings.HardwareMode == 3) count /= 2;
            for (int phase = 0; phase < 2; ++phase) {
                const int further = phase == 0 ? 0x00 : 0x20;
                const int offset = swapped ? 2 - phase : 1 + phase;
                const auto bytes = ReadBank(b, Instrument.S(5, b) | kSelector[pod] | further, count);
                for (int i = 0; i < count; ++i) {
                    Store(b, pod, 2 * i + offset, bytes.at(Index(i)));
                }
            }
        }
    }

    void LaterBoard(int b) const {
        Instrument.WriteS9(b, Instrument.S(9, b) & 7);
        if (Memory() != Phases::Two) Instrument.OffPut(3, b, 0x01);
        Instrument.Off(5, b, 0x3C);
        if (Memory() == Phases::One) LaterPlain(b);
        if (Memory() == Phases::Two) LaterTwo(b);
        if (Memory() == Phases::Four) LaterFour(b);
        Instrument.PutS9(b);
    }

    void EarlierPlain(int b, int lane) const {
        const auto bytes = Instrument.ReadBlock(0, b, Length(b, lane));
        for (int i = 0; i < Length(b, lane); ++i) Store(b, lane, i, bytes.at(Index(i)));
    }

    /// Lane 4 has one phase: each byte stands for several samples.
    void EarlierLane4(int b, int phases) const {
        const auto bytes = Instrument.ReadBlock(0, b, Length(b, 0) / phases);
        for (int i = 0; i < Length(b, 4) / phases - phases; ++i) {
            for (int k = 0; k < phases; ++k) {
                Store(b, 4, phases * i + k, bytes.at(Index(i)));
            }
        }
    }

    void EarlierFour(int b, int lane) const {
        const int count = Length(b, 0) / 4;
        const auto bytes = Instrument.ReadBlock(0, b, count);
        for (int i = 0; i < count; ++i) Store(b, 0, 4 * i + 4 - lane, bytes.at(Index(i)));
    }

    void EarlierTwo(int b, int lane) const {
        const int target = lane & 1;
        const int count = Length(b, target) / 2;
        const auto bytes = Instrument.ReadBlock(0, b, count);
        for (int i = 0; i < count; ++i) {
            Store(b, target, 2 * i - lane / 2 + 1, bytes.at(Index(i)));
        }
    }

    void EarlierBoard(int b) const {
        for (int lane = 0; lane < Step; ++lane) {
            if (!Plain(b, lane)) continue;
            Instrument.WriteS9(b, Instrument.S(9, b) & ~(0x80 >> lane));
            Instrument.OffPut(3, b, 0x01);
            if (Memory() == Phases::One) {
                EarlierPlain(b, lane);
            } else if (lane == 4) {
                EarlierLane4(b, Memory() == Phases::Four ? 4 : 2);
            } else if (Memory() == Phases::Four) {
                EarlierFour(b, lane);
            } else {
                EarlierTwo(b, lane);
            }
            Instrument.OnPut(3, b, 0x01);
        }
    }

    void Board(int b) const {
        const int t = Instrument.Type;
        if ((t >= 11 && t <= 15) || ((t == 6 || t == 7) && Instrument.Direct)) {
            LaterBoard(b);
        } else {
            EarlierBoard(b);
        }
    }
};

void Halt(Bank& bank, const Capture& capture) {
    if (capture.OutputMode == 2) {
        bank.S(3, 0) = (bank.S(3, 0) & 0x9F) | 0x40;
        bank.Put(3, 0);
        bank.WriteS10S11(0, bank.S(10, 0), bank.S(11, 0) | 0x02);
    }
    bank.Flush();
    bank.ClockHold();
    bank.Flush();
    bank.On(8, 0, 0xE0);
    bank.PutS8(0);
    bank.OffPut(4, 0, 0x10);
    ReleaseLines(bank, capture);
    bank.WriteS10S11(0, bank.S(10, 0) & ~0x02, bank.S(11, 0));
    bank.Read(0, capture.Boards);
}

void OpenMemory(Bank& bank, const Capture& capture) {
    for (int b = 0; b < capture.Boards; ++b) {
        bank.OnPut(4, b, 0x07);
        bank.On(9, b, 0xF8);
        bank.PutS9(b);
        bank.OnPut(4, b, 0xE0);
        bank.On(8, b, 0x15);
        bank.PutS8(b);
        bank.OffPut(5, b, 0x40);
        bank.OnPut(6, b, 0x60);
        bank.OnPut(1, b, 0x04);
        bank.OffPut(4, b, 0x10);
    }
    bank.OffPut(2, capture.Boards, 0x04);
    bank.Read(0, capture.Boards);
}

void Invert(Capture& capture) {
    for (int p = 0; p < capture.PodCount; ++p) {
        const auto pod = Index(p);
        int flips = 0;
        for (std::size_t i = 0; i < 8; ++i) {
            if (capture.Inverted.at(8 * pod + i)) flips |= 1 << i;
        }
        for (int i = 0; i < capture.Lengths.at(pod); ++i) {
            std::uint8_t& byte = capture.Samples.at(pod).at(Index(i));
            byte = static_cast<std::uint8_t>(byte ^ flips);
        }
    }
}

}  // namespace

void EndCapture(Bank& bank, Capture& capture) {
    const bool fastest = capture.ClockType == 0 && (capture.ClockRate == 1 || capture.ClockRate == 2);
    const int step = fastest ? 5 : capture.BufStep;
    if (!capture.Emulated) {
        Halt(bank, capture);
        OpenMemory(bank, capture);
        const ReadOut readOut{bank, capture, step, capture.BufStep == 0xA6 ? 6 : 5};
        for (int b = 0; b < capture.Boards; ++b) readOut.Board(b);
        bank.WriteS10S11(capture.Boards, bank.S(10, 0), bank.S(11, 0));
        const int adjust = FindAlignment(capture, step);
        for (int p = 0; p < capture.PodCount; ++p) capture.Adjusted.at(Index(p)) = adjust;
    }
    Invert(capture);
}

}  // namespace zu::reference
