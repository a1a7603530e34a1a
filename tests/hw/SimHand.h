#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "hw/sim/SimInstrument.h"

namespace zu::test {

inline constexpr SimTraits kLater{.Later = true, .LargeMemory = true, .Boards = 4, .Direct = false};
inline constexpr SimTraits kEarlier{.Later = false, .LargeMemory = true, .Boards = 4, .Direct = false};

/// Puts bits of a register up or down on one board.
struct Hand {
    SimInstrument& Sim;
    int Board = 0;
    std::uint8_t Now[16] = {};

    void Set(int reg, int bit, bool high) {
        const int mask = 1 << bit;
        Now[reg] = static_cast<std::uint8_t>(high ? Now[reg] | mask : Now[reg] & ~mask);
        Sim.Write(Board, reg, Now[reg]);
    }
    void Put(int reg, int value) {
        Now[reg] = static_cast<std::uint8_t>(value);
        Sim.Write(Board, reg, Now[reg]);
    }
    void Pulse(int reg, int bit) {
        Set(reg, bit, false);
        Set(reg, bit, true);
        Set(reg, bit, false);
    }
    void Bit8(bool bit) {
        Set(4, 3, bit);
        Pulse(6, 7);
    }
    void Byte(int value, int bits = 8) {
        for (int i = bits - 1; i >= 0; --i) Bit8((value >> i & 1) != 0);
    }
    void BusData(int value) {
        Byte(value);
        Pulse(4, 5);
    }
    void BusControl(int value) {
        Byte(value);
        Pulse(2, 0);
    }
    void DacBits(int value, int bits) {
        for (int i = bits - 1; i >= 0; --i) {
            Set(4, 3, (value >> i & 1) != 0);
            Pulse(6, 1);
        }
    }
};

/// A different byte on each pod and in each 10 ns step; periodic, so that every moment has one.
class StepStimulus : public SimStimulus {
  public:
    static std::uint8_t Byte(int pod, std::int64_t step) {
        return static_cast<std::uint8_t>(step * 37 + (step >> 8) * 11 + pod * 29);
    }
    SimRun At(int pod, SimTicks time) override {
        const SimTicks step = FloorDiv(time, 100);
        return {Byte(pod, step), (step + 1) * 100};
    }
};

/// Works an instrument with registers alone, from set-up to read-out. Board 0 takes its pod registers at
/// their own addresses.
class SimBench {
  public:
    using Match = std::function<bool(int pod, std::uint8_t byte)>;

    SimInstrument Sim;
    std::vector<Hand> Boards;
    int Selector = 1;

    SimBench(SimTraits traits, std::shared_ptr<SimStimulus> stimulus) : Sim(Direct(traits)) {
        for (int b = 0; b < traits.Boards; ++b) Boards.push_back({Sim, b});
        Sim.Connect(std::move(stimulus));
        for (Hand& board : Boards) {
            board.Put(3, 0x01);
            board.Put(4, 0x06);
        }
        Select(7);
        Position(0x3F008);
        CountRegister(255);
        Set(3, 7, true);
        Synth(0x2D7C08);
    }
    [[nodiscard]] Hand& Master() { return Boards.front(); }
    void Set(int reg, int bit, bool high) { Master().Set(reg, bit, high); }

    void S8(int board, int value) {
        Hand& hand = Boards[static_cast<std::size_t>(board)];
        if (Sim.Traits().Later) return hand.Put(12, value);
        hand.Put(0, value);
        hand.Pulse(2, 1);
    }
    void S9(int board, int value) {
        Hand& hand = Boards[static_cast<std::size_t>(board)];
        if (Sim.Traits().Later) return hand.Put(13, value);
        hand.Put(0, value);
        hand.Pulse(2, 2);
    }
    void S10(int value) { Sim.WritePodRegister(0, true, static_cast<std::uint8_t>(value)); }
    /// Clock selector; the phases stay.
    void Select(int selector) { S8(0, selector << 5 | phaseBits_); }
    void Phases(int phases) {
        Set(2, 6, phases == 1);
        phaseBits_ = phases == 4 ? 0x10 : phases == 2 ? 0x08 : 0;
        Select(7);
    }
    void Depth(int words) { S10(depthBits_ = words == 131072 ? 0x20 : words == 32768 ? 0x04 : 0); }
    void Synth(std::uint32_t word) {
        for (int i = 0; i < 22; ++i) {
            Master().Set(4, 3, (word >> i & 1) != 0);
            Master().Pulse(6, 2);
        }
    }
    void Position(std::uint32_t value) {
        S10(depthBits_ | 0x01);
        for (int bit = 17; bit >= 0; --bit) {
            Master().Set(4, 3, (value >> bit & 1) != 0);
            Sim.Strobe();
            Sim.Strobe();
        }
        S10(depthBits_);
    }
    /// Opens a page of trigger memory.
    void Page(int page) {
        Set(3, 2, false);
        Set(2, 3, false);
        Master().Put(7, page);
        Master().Pulse(1, 3);
        Set(2, 3, true);
    }
    void CountRegister(int value) {
        Set(3, 2, true);
        Master().Put(7, value);
        Master().Pulse(1, 3);
        Set(3, 2, false);
    }
    /// Fills a page: the lanes of all boards match where `match` says.
    void Word(int page, const Match& match) {
        Page(page);
        for (Hand& board : Boards) {
            for (int a = 0; a < 256; ++a) {
                int data = 3;
                for (int lane = 0; lane < kSimLanes; ++lane) {
                    const bool good = match(board.Board * kSimLanes + lane, static_cast<std::uint8_t>(a));
                    data |= good ? 8 << lane : 0;
                }
                board.Put(Sim.Traits().Later ? 14 : 0, a);
                for (const int value : {data, data & 0xFD, data}) board.Put(4, value);
            }
            board.Put(4, 0x06);
        }
    }
    /// Inactive and active change places.
    void Inverted(bool inverted) { Set(1, 3, inverted); }
    /// Bits 5 and 6 of R3.
    void Gate(bool bit5, bool bit6) {
        const int rest = Master().Now[3] & 0x9F;
        Master().Put(3, rest | (bit5 ? 0x20 : 0) | (bit6 ? 0x40 : 0));
    }
    void Force() { Gate(false, true); }
    void Arm() {
        Set(5, 1, false);
        Set(5, 1, true);
    }
    void Go() {
        Arm();
        Select(Selector);
        Status();  // that of the arming itself
    }
    void Stop() { Select(7); }
    /// 0 waiting, 1 triggered, 2 full.
    int Status() {
        Set(2, 4, true);
        const int bits = Sim.Read(0, 1) & 0x50;
        return bits == 0x50 ? 2 : bits == 0x10 ? 1 : bits == 0 ? 0 : -1;
    }
    /// Polls until it is full; false if it never is.
    bool Wait(int polls = 2000) {
        while (polls-- > 0) {
            if (Status() == 2) return true;
        }
        return false;
    }
    /// Bank of the younger series: group 0 to 2, k 0 to 3.
    std::vector<std::uint8_t> ReadGroup(int board, int group, int k, int count) {
        Hand& hand = Boards[static_cast<std::size_t>(board)];
        hand.Set(3, 0, true);
        hand.Put(5, (hand.Now[5] & 0xC3) | group << 2 | k << 4);
        hand.Set(3, 0, false);
        return Block(board, count);
    }
    std::vector<std::uint8_t> ReadLane(int board, int lane, int count) {
        Hand& hand = Boards[static_cast<std::size_t>(board)];
        S9(board, 0xF8 & ~(0x80 >> lane));
        hand.Set(3, 0, false);
        std::vector<std::uint8_t> bytes = Block(board, count);
        hand.Set(3, 0, true);
        return bytes;
    }
    std::vector<std::uint8_t> Block(int board, int count) {
        std::vector<std::uint8_t> bytes(static_cast<std::size_t>(count), 0xEE);
        Sim.ReadBlock(board, 0, bytes);
        return bytes;
    }

  private:
    static SimTraits Direct(SimTraits traits) {
        traits.Direct = true;
        return traits;
    }
    int phaseBits_ = 0;
    int depthBits_ = 0;
};

inline std::shared_ptr<SimStimulus> Steps() {
    return std::make_shared<StepStimulus>();
}

/// Matches while the first pod shows a byte.
inline SimBench::Match FirstPodIs(int byte) {
    return [byte](int pod, std::uint8_t b) { return pod != 0 || b == byte; };
}

/// What the first pod shows for 10 ns, 64 steps from now, and not within 128 steps otherwise.
inline constexpr int kByteAt64 = static_cast<std::uint8_t>(64 * 37);

}  // namespace zu::test
