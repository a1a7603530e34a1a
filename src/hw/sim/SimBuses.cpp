#include "hw/sim/SimBuses.h"

#include <span>
#include <string_view>
#include <vector>

namespace zu {
namespace {

constexpr int kRounds = 16;

/// Draws signals along time.
class Pen {
  public:
    explicit Pen(std::uint8_t idle) : level_(idle) { edges_.push_back({0, idle}); }
    void Set(int bit, bool high) {
        const auto mask = static_cast<std::uint8_t>(1U << static_cast<unsigned>(bit));
        level_ = static_cast<std::uint8_t>(high ? level_ | mask : level_ & ~mask);
    }
    void Wait(SimTicks ticks) {
        if (edges_.back().Value != level_) edges_.push_back({time_, level_});
        time_ += ticks;
    }
    std::unique_ptr<SimSignal> Loop() { return std::make_unique<SimLoop>(std::move(edges_), time_); }

  private:
    std::vector<SimEdge> edges_;
    SimTicks time_ = 0;
    std::uint8_t level_;
};

constexpr std::uint8_t Bit(int bit) {
    return static_cast<std::uint8_t>(1U << static_cast<unsigned>(bit));
}

/// Words to write, so that a reader of the bytes sees what goes on.
constexpr std::array<std::string_view, 8> kWords{"LOGIC 01", "Hello, w", "12345678", "ABCDEFGH",
                                                 "bus test", "EEPROM #", "<- 8 -> ", "zu zu zu"};

/// Eight bytes of a round: words and random bytes by turns.
std::array<std::uint8_t, 8> Payload(std::uint64_t seed, int round) {
    std::array<std::uint8_t, 8> bytes{};
    const std::uint64_t random = SimHash(seed, static_cast<std::uint64_t>(round));
    const std::string_view word = kWords[random % kWords.size()];
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<std::uint8_t>(round % 2 == 0 ? static_cast<unsigned char>(word[i])
                                                            : random >> (8 * i));
    }
    return bytes;
}

std::uint64_t Pick(std::uint64_t seed, int round, std::uint64_t choices) {
    return SimHash(~seed, static_cast<std::uint64_t>(round)) % choices;
}

class I2cBus {
  public:
    I2cBus(SimTicks bit, SimI2cPins pins)
        : pen_(static_cast<std::uint8_t>(Bit(pins.Scl) | Bit(pins.Sda))), quarter_(bit / 4), pins_(pins) {}

    /// From an idle bus, or behind bytes a repeated start.
    void Start() {
        if (!clockHigh_) Lines(false, true);
        Lines(true, true);
        Lines(true, false);
        Lines(false, false);
    }
    void Stop() {
        Lines(false, false);
        Lines(true, false);
        Lines(true, true);
        Idle(4);
    }
    void Byte(unsigned value, bool acked) {
        for (unsigned bit = 8; bit-- > 0;) OneBit((value >> bit & 1U) != 0);
        OneBit(!acked);
    }
    void Idle(int bits) { pen_.Wait(4 * bits * quarter_); }
    std::unique_ptr<SimSignal> Loop() { return pen_.Loop(); }

  private:
    void Lines(bool scl, bool sda) {
        pen_.Set(pins_.Scl, scl);
        pen_.Set(pins_.Sda, sda);
        pen_.Wait(quarter_);
        clockHigh_ = scl;
    }
    /// Data change while the clock is low.
    void OneBit(bool bit) {
        Lines(false, bit);
        Lines(true, bit);
        Lines(true, bit);
        Lines(false, bit);
    }

    Pen pen_;
    SimTicks quarter_;
    SimI2cPins pins_;
    bool clockHigh_ = true;
};

class I2cEeprom {
  public:
    I2cEeprom(SimTicks bit, SimI2cPins pins) : bus_(bit, pins) {}

    void WritePage(unsigned address, std::span<const std::uint8_t> bytes) {
        Select(address);
        for (const std::uint8_t byte : bytes) {
            bus_.Byte(byte, true);
            memory_[address % memory_.size()] = byte;
            address = (address & ~7U) | ((address + 1) & 7U);  // the page wraps
        }
        bus_.Stop();
    }
    /// The device answers again after `busy` tries.
    void PollReady(int busy) {
        for (int i = 0; i <= busy; ++i) {
            bus_.Idle(20);
            bus_.Start();
            bus_.Byte(kWrite, i == busy);
            bus_.Stop();
        }
    }
    /// Random read of one byte, sequential read of more.
    void Read(unsigned address, int count) {
        Select(address);
        next_ = address;
        ReadOn(count);
    }
    /// At the address behind the last one.
    void ReadOn(int count) {
        bus_.Start();
        bus_.Byte(kRead, true);
        for (int i = 0; i < count; ++i) bus_.Byte(memory_[next_++ % memory_.size()], i + 1 < count);
        bus_.Stop();
    }
    I2cBus& Bus() { return bus_; }

  private:
    static constexpr unsigned kWrite = 0xA0;
    static constexpr unsigned kRead = 0xA1;

    void Select(unsigned address) {
        bus_.Start();
        bus_.Byte(kWrite, true);
        bus_.Byte(address, true);
    }

    I2cBus bus_;
    std::array<std::uint8_t, 256> memory_{};
    unsigned next_ = 0;
};

class SpiFlash {
  public:
    SpiFlash(SimTicks bit, SimSpiPins pins) : pen_(Bit(pins.Cs)), half_(bit / 2), pins_(pins) {
        memory_.fill(0xFF);
    }

    void Identify() {
        Select();
        Transfer(0x9F, 0xFF);
        for (const unsigned id : {0x7FU, 0x20U, 0x16U}) Transfer(0, id);
        Deselect();
    }
    void WriteEnable() {
        Select();
        Transfer(0x06, 0xFF);
        Deselect();
    }
    void EraseSector(unsigned address) {
        Command(0x20, address);
        Deselect();
        memory_.fill(0xFF);
    }
    void Program(unsigned address, std::span<const std::uint8_t> bytes) {
        Command(0x02, address);
        for (const std::uint8_t byte : bytes) {
            Transfer(byte, 0xFF);
            memory_[address++ % memory_.size()] &= byte;
        }
        Deselect();
    }
    void PollStatus(int busy) {
        for (int i = 0; i <= busy; ++i) {
            Select();
            Transfer(0x05, 0xFF);
            Transfer(0, i < busy ? 0x03 : 0x00);
            Deselect();
        }
    }
    void Read(unsigned address, int count) {
        Command(0x03, address);
        for (int i = 0; i < count; ++i) Transfer(0, memory_[address++ % memory_.size()]);
        Deselect();
    }
    void Idle(int bits) { pen_.Wait(2 * bits * half_); }
    std::unique_ptr<SimSignal> Loop() { return pen_.Loop(); }

  private:
    void Command(unsigned code, unsigned address) {
        Select();
        Transfer(code, 0xFF);
        for (const unsigned shift : {16U, 8U, 0U}) Transfer(address >> shift & 0xFFU, 0xFF);
    }
    void Select() {
        pen_.Set(pins_.Cs, false);
        pen_.Wait(2 * half_);
    }
    void Deselect() {
        pen_.Wait(half_);
        pen_.Set(pins_.Cs, true);
        pen_.Set(pins_.Si, false);
        pen_.Set(pins_.So, false);
        Idle(4);
    }
    /// Both sides put their bit out while the clock is low and take the other's at its rise.
    void Transfer(unsigned si, unsigned so) {
        for (unsigned bit = 8; bit-- > 0;) {
            pen_.Set(pins_.Clk, false);
            pen_.Set(pins_.Si, (si >> bit & 1U) != 0);
            pen_.Set(pins_.So, (so >> bit & 1U) != 0);
            pen_.Wait(half_);
            pen_.Set(pins_.Clk, true);
            pen_.Wait(half_);
        }
        pen_.Set(pins_.Clk, false);
        pen_.Wait(half_);
    }

    Pen pen_;
    SimTicks half_;
    SimSpiPins pins_;
    std::array<std::uint8_t, 4096> memory_{};
};

class MicrowireEeprom {
  public:
    MicrowireEeprom(SimTicks bit, SimMicrowirePins pins) : pen_(0), half_(bit / 2), pins_(pins) {}

    void EnableWriting(bool enable) {
        Select();
        Send(0b100, 3);
        Send(enable ? 0xC0 : 0x00, 8);
        Deselect();
    }
    void WriteWord(unsigned address, unsigned word, int busy) {
        Select();
        Send(0b101, 3);
        Send(address, 8);
        Send(word, 16);
        Deselect();
        memory_[address % memory_.size()] = static_cast<std::uint16_t>(word);
        Select();  // now the output tells whether the word is written
        pen_.Wait(2 * busy * half_);
        pen_.Set(pins_.Do, true);
        pen_.Wait(4 * half_);
        Deselect();
    }
    void ReadWord(unsigned address) {
        Select();
        Send(0b110, 3);
        Send(address, 8);
        Receive(memory_[address % memory_.size()]);
        Deselect();
    }
    void Idle(int bits) { pen_.Wait(2 * bits * half_); }
    std::unique_ptr<SimSignal> Loop() { return pen_.Loop(); }

  private:
    void Select() {
        pen_.Set(pins_.Cs, true);
        pen_.Wait(2 * half_);
    }
    void Deselect() {
        pen_.Set(pins_.Di, false);
        pen_.Wait(half_);
        pen_.Set(pins_.Cs, false);
        pen_.Set(pins_.Do, false);
        Idle(4);
    }
    void ClockBit(bool in) {
        pen_.Set(pins_.Di, in);
        pen_.Wait(half_ / 2);
        pen_.Set(pins_.Clk, true);
        pen_.Wait(half_);
        pen_.Set(pins_.Clk, false);
        pen_.Wait(half_ - half_ / 2);
    }
    void Send(unsigned value, int bits) {
        for (int bit = bits; bit-- > 0;) ClockBit((value >> static_cast<unsigned>(bit) & 1U) != 0);
    }
    /// The output follows the clock's rise; a 0 goes ahead of the word and stands already.
    void Receive(unsigned word) {
        for (unsigned bit = 16; bit-- > 0;) {
            pen_.Set(pins_.Di, false);
            pen_.Wait(half_ / 2);
            pen_.Set(pins_.Clk, true);
            pen_.Wait(half_ / 4);
            pen_.Set(pins_.Do, (word >> bit & 1U) != 0);
            pen_.Wait(half_ - half_ / 4);
            pen_.Set(pins_.Clk, false);
            pen_.Wait(half_ - half_ / 2);
        }
    }

    Pen pen_;
    SimTicks half_;
    SimMicrowirePins pins_;
    std::array<std::uint16_t, 256> memory_{};
};

}  // namespace

std::unique_ptr<SimSignal> SimI2cEeprom(std::uint64_t seed, SimTicks bit, SimI2cPins pins) {
    I2cEeprom eeprom(bit, pins);
    for (int round = 0; round < kRounds; ++round) {
        const auto page = static_cast<unsigned>(Pick(seed, round, 32) * 8);
        eeprom.Bus().Idle(12);
        eeprom.WritePage(page, Payload(seed, round));
        eeprom.PollReady(1 + static_cast<int>(Pick(seed + 1, round, 3)));
        eeprom.Bus().Idle(12);
        eeprom.Read(page, 1);
        eeprom.ReadOn(1);
        eeprom.Bus().Idle(12);
        eeprom.Read(page, 8);
        eeprom.Bus().Idle(40);
    }
    return eeprom.Bus().Loop();
}

std::unique_ptr<SimSignal> SimSpiFlash(std::uint64_t seed, SimTicks bit, SimSpiPins pins) {
    SpiFlash flash(bit, pins);
    for (int round = 0; round < kRounds; ++round) {
        const auto address = static_cast<unsigned>(Pick(seed, round, 256) * 16);
        flash.Idle(12);
        flash.Identify();
        flash.WriteEnable();
        flash.EraseSector(address & ~0xFFFU);
        flash.PollStatus(1 + static_cast<int>(Pick(seed + 1, round, 2)));
        flash.WriteEnable();
        flash.Program(address, Payload(seed, round));
        flash.PollStatus(1 + static_cast<int>(Pick(seed + 2, round, 2)));
        flash.Idle(12);
        flash.Read(address, 8);
        flash.Idle(40);
    }
    return flash.Loop();
}

std::unique_ptr<SimSignal> SimMicrowireEeprom(std::uint64_t seed, SimTicks bit, SimMicrowirePins pins) {
    MicrowireEeprom eeprom(bit, pins);
    for (int round = 0; round < kRounds; ++round) {
        const auto address = static_cast<unsigned>(Pick(seed, round, 254));
        const auto bytes = Payload(seed, round);
        eeprom.Idle(12);
        eeprom.EnableWriting(true);
        for (unsigned i = 0; i < 2; ++i) {
            const auto word = static_cast<unsigned>(bytes[2 * i] << 8 | bytes[2 * i + 1]);
            eeprom.WriteWord(address + i, word, 6 + static_cast<int>(Pick(seed + i, round, 20)));
        }
        eeprom.EnableWriting(false);
        eeprom.Idle(12);
        for (unsigned i = 0; i < 2; ++i) eeprom.ReadWord(address + i);
        eeprom.Idle(40);
    }
    return eeprom.Loop();
}

}  // namespace zu
