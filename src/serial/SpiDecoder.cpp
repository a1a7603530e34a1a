#include "serial/SpiDecoder.h"

#include <algorithm>
#include <span>

#include "serial/LineScan.h"

namespace zu {
namespace {

constexpr std::int32_t kSpiChannels = 4;
constexpr int kBitsOfByte = 8;

/// The four lines of a group and how to read them.
struct SpiBus {
    Line Clock, Si, So, Cs;
    bool ActiveLevel = false;  ///< of chip select
    bool CanBeActive = false;  ///< an active level of 1 is seen on bit 0 of a pod only
    bool SeesSelect = false;   ///< so is an idle level of 1, at the edge into a transfer
    bool SamplesRising = false;
    bool LsbFirst = false;
    std::int32_t Length = 0;  ///< samples
};

std::int32_t FullLength(const InstrumentState& state, int channel) {
    return channel < 0 || channel >= kMaxChannels ? 0 : GetBufLenFull(state.Buffer.BufLen, channel / 8);
}

bool SamplesRisingEdge(std::int8_t mode) {
    constexpr std::int8_t kMode0 = 3;
    constexpr std::int8_t kMode3 = 6;
    return mode == kMode0 || mode == kMode3;
}

SpiBus BindBus(const InstrumentState& state, const GroupRecord& group) {
    const auto& channels = group.Channels;
    SpiBus bus;
    bus.Clock = BindLine(state, channels[0]);
    bus.Si = BindLine(state, channels[1]);
    bus.So = BindLine(state, channels[2]);
    bus.Cs = BindLine(state, channels[3]);
    // The samples are compared with 1 as they stand, so a high level counts on bit 0 of a pod alone.
    const bool onBit0 = bus.Cs.Mask == 1;
    bus.ActiveLevel = group.CsActiveHigh != 0;
    bus.CanBeActive = !bus.ActiveLevel || onBit0;
    bus.SeesSelect = onBit0;
    bus.SamplesRising = SamplesRisingEdge(group.Mode);
    bus.LsbFirst = group.BitOrder == 1;
    bus.Length = INT32_MAX;
    for (std::size_t role = 0; role < kSpiChannels; ++role) {
        bus.Length = std::min(bus.Length, FullLength(state, channels[role]));
    }
    return bus;
}

/// First and last byte over all slots of a run.
class ByteRange {
  public:
    explicit ByteRange(SerialRecord& serial) : serial_(serial) { serial.SpiFirst = serial.SpiLast = 0; }
    void Take(std::int32_t start) {
        (any_ ? serial_.SpiLast : serial_.SpiFirst) = start;
        any_ = true;
    }

  private:
    SerialRecord& serial_;
    bool any_ = false;
};

/// One pass over the samples of a bus.
class SpiScan {
  public:
    SpiScan(const SpiBus& bus, std::span<std::uint16_t> si, std::span<std::uint16_t> so, ByteRange& range)
        : bus_(bus), scan_(bus.Clock, bus.Cs), si_(si), so_(so), range_(range), last_(bus.Length - 1) {}

    void Run() {
        while (i_ < last_) {
            if (bus_.Cs.High(i_) == bus_.ActiveLevel) {
                ReadActive();
            } else {
                ToTransfer();
            }
        }
    }

  private:
    /// From an inactive sample to the first one that can carry a bit.
    void ToTransfer() {
        const std::int32_t active = scan_.FindSecond(bus_.ActiveLevel, i_ + 1, last_ + 1);
        const std::int32_t before = active - 1;
        if (active > last_) {
            i_ = last_;
            return;
        }
        const bool leads = bus_.SeesSelect && bus_.Clock.High(before);
        // A transfer that is interrupted for the one sample before a leading level keeps its bits.
        if (!leads || before > i_) DropBits();
        i_ = leads ? EndOfLeadingLevel(before) : active;
    }

    /// The clock is high when chip select becomes active: that level is no part of the transfer. Its last
    /// sample, so that the fall behind it is seen, but always a sample beyond `i`.
    std::int32_t EndOfLeadingLevel(std::int32_t i) {
        const std::int32_t low = scan_.FindFirst(false, i, last_ + 1);
        return low > last_ ? last_ : std::max(i + 1, low - 1);
    }

    /// From an active sample on: a bit at every sampling edge, up to the end of chip select or of the block.
    void ReadActive() {
        const std::int32_t base = scan_.Load(i_);
        const std::int32_t inBlock = i_ - base;
        const bool beyond = bus_.Clock.High(std::int64_t{base} + scan::kBlock);
        const std::uint64_t clock = scan_.First();
        const std::uint64_t next = clock >> 1U | std::uint64_t{beyond ? 1U : 0U} << 63U;
        const std::uint64_t inactive = bus_.ActiveLevel ? ~scan_.Second() : scan_.Second();
        const std::int32_t step =
            std::min({std::countr_zero(inactive >> inBlock), scan::kBlock - inBlock, last_ - i_});
        // Bit k: the clock changes in the wanted sense between samples i + k and i + k + 1.
        std::uint64_t edges = (bus_.SamplesRising ? ~clock & next : clock & ~next) >> inBlock;
        if (step < scan::kBlock) edges &= (std::uint64_t{1} << step) - 1;
        for (; edges != 0; edges &= edges - 1) TakeBit(i_ + std::countr_zero(edges));
        i_ += step;
    }

    /// Reads both lines at the sample before the clock's edge.
    void TakeBit(std::int32_t e) {
        if (bits_ == 0) start_ = e;
        const unsigned weight = bus_.LsbFirst ? 1U << bits_ : 0x80U >> bits_;
        siByte_ += weight * Sample(bus_.Si, si_, e);
        soByte_ += weight * Sample(bus_.So, so_, e);
        if (++bits_ == kBitsOfByte) StoreByte(e);
    }

    /// Marks a clocked sample that is 1; without a branch, since the data cannot be foreseen.
    static unsigned Sample(const Line& line, std::span<std::uint16_t> words, std::int32_t e) {
        const unsigned level = line.High(e) ? 1 : 0;
        std::uint16_t& word = words[static_cast<std::size_t>(e)];
        word = static_cast<std::uint16_t>(word | level * spi::kOne);
        return level;
    }

    void StoreByte(std::int32_t e) {
        const auto put = [this, e](std::span<std::uint16_t> words, unsigned byte) {
            words[static_cast<std::size_t>(e)] |= spi::kEnd;
            std::uint16_t& word = words[static_cast<std::size_t>(start_)];
            word = static_cast<std::uint16_t>(word | spi::kStart | byte);
        };
        put(si_, siByte_);
        put(so_, soByte_);
        range_.Take(start_);
        DropBits();
    }

    void DropBits() {
        bits_ = 0;
        siByte_ = soByte_ = 0;
    }

    const SpiBus& bus_;
    PairScan scan_;
    std::span<std::uint16_t> si_;
    std::span<std::uint16_t> so_;
    ByteRange& range_;
    std::int32_t last_;
    std::int32_t i_ = 0;
    std::int32_t start_ = 0;
    unsigned bits_ = 0;
    unsigned siByte_ = 0;
    unsigned soByte_ = 0;
};

void DecodeSlot(InstrumentState& state, std::size_t slot, const GroupRecord& group, ByteRange& range) {
    auto& si = state.Serial.SpiSI[slot];
    auto& so = state.Serial.SpiSO[slot];
    SpiBus bus = BindBus(state, group);
    bus.Length = static_cast<std::int32_t>(
        std::min<std::int64_t>(std::max(bus.Length, 0), std::min(std::ssize(si), std::ssize(so))));
    std::fill_n(si.begin(), bus.Length, std::uint16_t{0});
    std::fill_n(so.begin(), bus.Length, std::uint16_t{0});
    if (bus.CanBeActive) SpiScan(bus, si, so, range).Run();
}

}  // namespace

int SpiGroup(const InstrumentState& state, int slot) {
    if (slot < 0 || slot >= kSpiSlots) return -1;
    for (int g = 0; g < kGroupCount; ++g) {
        const GroupRecord& group = state.Groups[static_cast<std::size_t>(g)];
        if (!IsSpiMode(group.Mode) || group.Size != kSpiChannels) continue;
        if (slot-- == 0) return g;
    }
    return -1;
}

bool DecodeSPI(InstrumentState& state) {
    ByteRange range(state.Serial);
    for (int slot = 0; slot < kSpiSlots; ++slot) {
        const int group = SpiGroup(state, slot);
        if (group < 0) return slot > 0;
        DecodeSlot(state, static_cast<std::size_t>(slot), state.Groups[static_cast<std::size_t>(group)],
                   range);
    }
    return true;
}

}  // namespace zu
