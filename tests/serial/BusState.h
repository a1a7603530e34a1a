#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <random>
#include <vector>

#include "state/InstrumentState.h"
#include "state/Model.h"

namespace zu::test {

/// A state with 20 short pods that are filled channel by channel, and no groups.
class BusState {
  public:
    explicit BusState(std::int32_t length) : state_(std::make_unique<InstrumentState>()) {
        SetDisplayLen(length);
        for (int pod = 0; pod < kMaxPods; ++pod) SetLength(pod, length);
        state_->Buffer.Allocate();
    }

    InstrumentState& operator*() { return *state_; }
    InstrumentState* operator->() { return state_.get(); }

    void SetLength(int pod, std::int32_t length) { SetBufLenFull(state_->Buffer.BufLen, pod, length); }
    void SetDisplayLen(std::int32_t length) {
        state_->Memory.DisplayLen = length;
        ResizeDecodeBuffers(*state_);
    }
    void SetGroup(int group, std::int8_t mode, std::initializer_list<int> channels) {
        GroupRecord& record = state_->Groups[static_cast<std::size_t>(group)];
        record.Mode = mode;
        record.Size = static_cast<std::int32_t>(channels.size());
        std::copy(channels.begin(), channels.end(), record.Channels.begin());
    }
    /// Sets one stored sample of a channel; `pattern` takes the pattern buffer.
    void Set(int channel, std::size_t i, bool level, bool pattern = false) {
        const auto pod = static_cast<std::size_t>(channel / 8);
        std::uint8_t& byte = (pattern ? state_->Buffer.PatPod : state_->Buffer.Pod)[pod][i];
        const auto mask = static_cast<std::uint8_t>(1U << (static_cast<unsigned>(channel) % 8U));
        byte = static_cast<std::uint8_t>(level ? byte | mask : byte & ~mask);
    }
    void Draw(int channel, const std::vector<std::uint8_t>& levels, bool pattern = false) {
        for (std::size_t i = 0; i < levels.size(); ++i) Set(channel, i, levels[i] != 0, pattern);
    }

  private:
    std::unique_ptr<InstrumentState> state_;
};

/// Draws I2C traffic; each phase of a bit lasts as many samples as `Width` says.
struct I2cWave {
    std::vector<std::uint8_t> Scl, Sda;
    std::function<int()> Width = [] { return 2; };

    void Hold(bool scl, bool sda) { Hold(scl, sda, Width()); }
    void Hold(bool scl, bool sda, int samples) {
        Scl.insert(Scl.end(), static_cast<std::size_t>(samples), scl ? 1 : 0);
        Sda.insert(Sda.end(), static_cast<std::size_t>(samples), sda ? 1 : 0);
    }
    /// From clock high: a start, or behind bits a repeated start.
    void Start() {
        if (!Scl.empty() && Scl.back() == 0) Hold(false, true);
        Hold(true, true);
        Hold(true, false);
        Hold(false, false);
    }
    void Bit(bool bit) {
        Hold(false, bit);
        Hold(true, bit);
        Hold(false, bit);
    }
    void Byte(unsigned value, bool acked) {
        for (int bit = 7; bit >= 0; --bit) Bit(((value >> static_cast<unsigned>(bit)) & 1U) != 0);
        Bit(!acked);
    }
    void Stop() {
        Hold(false, false);
        Hold(true, false);
        Hold(true, true);
    }
};

/// Draws SPI traffic on four lines.
struct SpiWave {
    std::vector<std::uint8_t> Clock, Si, So, Cs;
    std::function<int()> Width = [] { return 2; };
    bool IdleClock = false;
    bool ActiveCs = false;
    bool SamplesRising = true;
    bool LsbFirst = false;

    void Hold(bool clock, bool si, bool so, bool cs) {
        const auto samples = static_cast<std::size_t>(Width());
        Clock.insert(Clock.end(), samples, clock ? 1 : 0);
        Si.insert(Si.end(), samples, si ? 1 : 0);
        So.insert(So.end(), samples, so ? 1 : 0);
        Cs.insert(Cs.end(), samples, cs ? 1 : 0);
    }
    void Idle() { Hold(IdleClock, false, false, !ActiveCs); }
    void Select() { Hold(IdleClock, false, false, ActiveCs); }
    void Bits(unsigned si, unsigned so, int count) {
        for (int i = 0; i < count; ++i) {
            const auto shift = static_cast<unsigned>(LsbFirst ? i : 7 - i);
            const bool siBit = ((si >> shift) & 1U) != 0;
            const bool soBit = ((so >> shift) & 1U) != 0;
            Hold(!SamplesRising, siBit, soBit, ActiveCs);
            Hold(SamplesRising, siBit, soBit, ActiveCs);
        }
    }
    void Byte(unsigned si, unsigned so) { Bits(si, so, 8); }

    /// Draws the lines on four channels: clock, SI, SO, chip select.
    void Onto(BusState& bus, int clock, int si, int so, int cs) const {
        bus.Draw(clock, Clock);
        bus.Draw(si, Si);
        bus.Draw(so, So);
        bus.Draw(cs, Cs);
    }
};

}  // namespace zu::test
