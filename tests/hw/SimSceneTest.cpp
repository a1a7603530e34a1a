#include <array>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <set>

#include "hw/sim/SimScenes.h"
#include "serial/BusState.h"
#include "serial/EventCodes.h"
#include "serial/I2cDecoder.h"
#include "serial/MicrowireDecoder.h"
#include "serial/SpiDecoder.h"
#include "serial/Transfers.h"
#include "state/Rates.h"

// The scenes: signals that keep their word, and buses that the program's own decoders read as meant.

namespace zu::test {
namespace {

class EveryScene : public testing::TestWithParam<SimScene> {};
INSTANTIATE_TEST_SUITE_P(Scenes, EveryScene, testing::ValuesIn(kSimScenes),
                         [](const auto& scene) { return std::string(scene.param.Name); });

TEST(SimScenes, FoundByName) {
    std::set<std::string_view> names;
    for (const SimScene& scene : kSimScenes) {
        EXPECT_TRUE(names.insert(scene.Name).second) << scene.Name;
        EXPECT_EQ(FindSimScene(scene.Name), &scene);
        EXPECT_FALSE(scene.Description.empty());
    }
    EXPECT_EQ(FindSimScene("nothing"), nullptr);
    EXPECT_EQ(FindSimScene(""), nullptr);
    EXPECT_EQ(MakeSimScene("nothing"), nullptr);
}

TEST_P(EveryScene, TableNamesChannelsOnce) {
    const SimScene& scene = GetParam();
    std::set<int> channels;
    std::set<std::string_view> names;
    EXPECT_FALSE(scene.Channels.empty());
    for (const SimSceneChannel& channel : scene.Channels) {
        EXPECT_LT(channel.Channel, 40);
        EXPECT_TRUE(channels.insert(channel.Channel).second) << channel.Name;
        EXPECT_TRUE(names.insert(channel.Name).second) << channel.Name;
        EXPECT_LE(channel.Name.size(), 10U);
    }
    for (const SimSceneGroup& group : scene.Groups) {
        EXPECT_LE(group.Name.size(), 15U);
        const int size = group.Mode == kGroupModeI2C ? 2 : group.Mode == 0 ? group.Size : 4;
        EXPECT_EQ(group.Size, size);
        for (std::size_t i = 0; i < group.Size; ++i) EXPECT_TRUE(channels.contains(group.Channels[i]));
    }
    EXPECT_GE(scene.RateCode, 1);
    const double ns = GetRateNS(0, scene.RateCode);
    EXPECT_EQ(MakeSimScene(scene.Name)->ExternalPeriod(), static_cast<SimTicks>(ns * kTicksPerNs));
}

TEST_P(EveryScene, RunsKeepTheirWord) {
    const auto scene = MakeSimScene(GetParam().Name, 7);
    std::mt19937_64 random(5);
    for (int i = 0; i < 20000; ++i) {
        const int pod = static_cast<int>(random() % 20);
        const auto range = static_cast<std::uint64_t>(i % 2 == 0 ? kTicksPerMs * 300 : kTicksPerUs * 50);
        const SimTicks time = static_cast<SimTicks>(random() % range) - static_cast<SimTicks>(range / 4);
        const SimRun run = scene->At(pod, time);
        ASSERT_GT(run.Until, time);
        const auto length = static_cast<std::uint64_t>(std::min(run.Until - time, kTicksPerMs));
        const SimTicks inside = time + static_cast<SimTicks>(random() % length);
        EXPECT_EQ(scene->At(pod, inside).Value, run.Value) << pod << " " << time << " " << inside;
        EXPECT_EQ(scene->At(pod, time).Value, run.Value) << "order of questions does not matter";
    }
}

TEST_P(EveryScene, NamedChannelsMoveAndOthersOfTheFirstPodsDoNot) {
    const SimScene& scene = GetParam();
    const auto signals = MakeSimScene(scene.Name);
    std::array<std::uint8_t, 5> seenHigh{};
    std::array<std::uint8_t, 5> seenLow{};
    for (std::size_t pod = 0; pod < 5; ++pod) {
        SimTicks time = 0;
        while (time < kTicksPerMs * 150) {
            const SimRun run = signals->At(static_cast<int>(pod), time);
            seenHigh[pod] = static_cast<std::uint8_t>(seenHigh[pod] | run.Value);
            seenLow[pod] = static_cast<std::uint8_t>(seenLow[pod] | ~run.Value);
            time = run.Until;
        }
    }
    std::array<std::uint8_t, 5> named{};
    for (const SimSceneChannel& channel : scene.Channels) {
        named[channel.Channel / 8U] =
            static_cast<std::uint8_t>(named[channel.Channel / 8U] | 1U << (channel.Channel % 8U));
    }
    for (std::size_t pod = 0; pod < 5; ++pod) {
        EXPECT_EQ(named[pod] & seenHigh[pod] & seenLow[pod], named[pod]) << "pod " << pod;
        const int others = seenHigh[pod] & ~named[pod];
        EXPECT_TRUE(others == 0 || scene.Name == "noise") << "pod " << pod;
    }
}

TEST_P(EveryScene, SameSeedSameSignals) {
    const auto one = MakeSimScene(GetParam().Name, 3);
    const auto same = MakeSimScene(GetParam().Name, 3);
    const auto other = MakeSimScene(GetParam().Name, 4);
    bool differs = false;
    for (SimTicks time = 0; time < kTicksPerMs * 10; time += 1337) {
        ASSERT_EQ(one->At(0, time).Value, same->At(0, time).Value);
        differs = differs || one->At(0, time).Value != other->At(0, time).Value;
    }
    const bool seeded = GetParam().Name != "counters" && GetParam().Name != "clocks";
    EXPECT_EQ(differs, seeded);
}

TEST(SimScenes, Counters) {
    const auto scene = MakeSimScene("counters");
    for (int n = -300; n < 70000; n += 13) {
        const SimTicks time = n * SimTicks{1000} + 999;
        const int low = scene->At(0, time).Value;
        const int high = scene->At(1, time).Value;
        EXPECT_EQ(high << 8 | low, n & 0xFFFF);
    }
    int walking = 0;
    for (int n = 0; n < 16; ++n) {
        const int gray = scene->At(2, n * SimTicks{2000}).Value;
        const int next = scene->At(2, (n + 1) * SimTicks{2000}).Value;
        EXPECT_EQ(__builtin_popcount(static_cast<unsigned>(gray ^ next)), 1);
        walking |= scene->At(3, n * SimTicks{5000}).Value;
        EXPECT_EQ(__builtin_popcount(scene->At(3, n * SimTicks{5000}).Value), 1);
        const int johnson = scene->At(4, n * SimTicks{5000}).Value;
        const int after = scene->At(4, (n + 1) * SimTicks{5000}).Value;
        EXPECT_EQ(__builtin_popcount(static_cast<unsigned>(johnson ^ after)), 1);
    }
    EXPECT_EQ(walking, 0xFF);
}

TEST(SimScenes, ClocksHaveThePeriodsOfTheirNames) {
    const auto scene = MakeSimScene("clocks");
    for (int channel = 0; channel < 16; ++channel) {
        const std::string name(FindSimScene("clocks")->Channels[static_cast<std::size_t>(channel)].Name);
        const double hertz = std::stod(name) * (name.find("MHz") != std::string::npos ? 1e6 : 1e3);
        const auto period = static_cast<SimTicks>(1e10 / hertz);
        for (int n = 0; n < 5; ++n) {
            const auto level = [&](SimTicks t) { return scene->At(channel / 8, t).Value >> channel % 8 & 1; };
            EXPECT_EQ(level(n * period), 1) << name;
            EXPECT_EQ(level(n * period + period / 2 - 1), 1) << name;
            EXPECT_EQ(level(n * period + period / 2), 0) << name;
            EXPECT_EQ(level((n + 1) * period - 1), 0) << name;
        }
    }
}

// ---- buses ----

/// A scene sampled into a state at the rate that the scene names, with its groups.
BusState Sampled(const SimScene& scene, std::uint64_t seed, std::int32_t length, SimTicks start = 0) {
    BusState bus(length);
    const auto signals = MakeSimScene(scene.Name, seed);
    const auto period = static_cast<SimTicks>(GetRateNS(0, scene.RateCode) * kTicksPerNs);
    for (std::size_t pod = 0; pod < 2; ++pod) {
        for (std::int32_t i = 0; i < length; ++i) {
            bus->Buffer.Pod[pod][i] = signals->At(static_cast<int>(pod), start + i * period).Value;
        }
    }
    int slot = 0;
    for (const SimSceneGroup& group : scene.Groups) {
        GroupRecord& record = bus->Groups[static_cast<std::size_t>(slot++)];
        record.Mode = group.Mode;
        record.Size = group.Size;
        std::copy_n(group.Channels.begin(), group.Size, record.Channels.begin());
        record.CsActiveHigh = 0;
    }
    return bus;
}

/// What an EEPROM does with the transfers of a bus. Every read must find what was written.
struct EepromReader {
    std::map<unsigned, int> Memory;
    unsigned Next = 0;
    int Writes = 0, Polls = 0, Refused = 0, RandomReads = 0, CurrentReads = 0, BytesRead = 0;

    void Take(const I2cTransfer& transfer) {
        ASSERT_FALSE(transfer.Bytes.empty());
        const I2cByte& device = transfer.Bytes[0];
        ASSERT_EQ(device.Value & 0xFE, 0xA0);
        if ((device.Value & 1) != 0) return TakeRead(transfer);
        if (transfer.Bytes.size() == 1) {
            ++Polls;
            Refused += device.Acked ? 0 : 1;
            EXPECT_GE(transfer.Stop, 0);
            return;
        }
        for (const I2cByte& byte : transfer.Bytes) EXPECT_TRUE(byte.Acked);
        Next = transfer.Bytes[1].Value;
        if (transfer.Bytes.size() == 2) return;  // the address of a read
        ASSERT_EQ(transfer.Bytes.size(), 10U) << "a page";
        ++Writes;
        for (std::size_t i = 2; i < 10; ++i) Memory[Next++] = transfer.Bytes[i].Value;
    }
    void TakeRead(const I2cTransfer& transfer) {
        ++(transfer.Repeated ? RandomReads : CurrentReads);
        for (std::size_t i = 1; i < transfer.Bytes.size(); ++i) {
            EXPECT_EQ(transfer.Bytes[i].Acked, i + 1 < transfer.Bytes.size()) << "the last is refused";
            const auto found = Memory.find(Next++);
            ASSERT_NE(found, Memory.end());
            EXPECT_EQ(transfer.Bytes[i].Value, found->second);
            ++BytesRead;
        }
    }
};

class BusScenes : public testing::TestWithParam<std::tuple<std::string_view, int>> {
  protected:
    static const SimScene& Scene() { return *FindSimScene(std::get<0>(GetParam())); }
    static std::uint64_t Seed() { return static_cast<std::uint64_t>(std::get<1>(GetParam())); }
};
using I2cScenes = BusScenes;
using SpiScenes = BusScenes;
using MicrowireScenes = BusScenes;
INSTANTIATE_TEST_SUITE_P(Sim, I2cScenes,
                         testing::Combine(testing::Values("i2c", "bench"), testing::Values(1, 2, 77)));
INSTANTIATE_TEST_SUITE_P(Sim, SpiScenes,
                         testing::Combine(testing::Values("spi", "bench"), testing::Values(1, 2, 77)));
INSTANTIATE_TEST_SUITE_P(Sim, MicrowireScenes,
                         testing::Combine(testing::Values("microwire", "bench"), testing::Values(1, 2, 77)));

TEST_P(I2cScenes, ReadsFindWhatWasWritten) {
    BusState bus = Sampled(Scene(), Seed(), 262144);
    ASSERT_TRUE(DecodeI2C(*bus));
    EepromReader reader;
    std::vector<I2cTransfer> transfers = I2cTransfers(*bus);
    ASSERT_GT(transfers.size(), 80U);
    transfers.pop_back();  // the end of data may cut it
    for (const I2cTransfer& transfer : transfers) {
        reader.Take(transfer);
        if (HasFatalFailure()) return;
    }
    EXPECT_GT(reader.Writes, 8);
    EXPECT_GT(reader.RandomReads, reader.Writes);
    EXPECT_GT(reader.CurrentReads, 8);
    EXPECT_GT(reader.BytesRead, 80);
    EXPECT_GT(reader.Refused, 8);
    EXPECT_LT(reader.Refused, reader.Polls);
}

/// Bytes of both lines between a fall and a rise of chip select, as the decoder saw them.
struct SpiTransfer {
    std::vector<int> Si, So;
};

std::vector<SpiTransfer> SpiTransfers(const InstrumentState& state, int select) {
    std::vector<SpiTransfer> transfers;
    const auto& samples = state.Buffer.Pod[static_cast<std::size_t>(select / 8)];
    bool before = false;  // a transfer that runs already is left out
    for (std::size_t i = 0; i < state.Serial.SpiSI[0].size(); ++i) {
        const bool high = (samples[i] >> select % 8 & 1) != 0;
        if (before && !high) transfers.emplace_back();
        before = high;
        const std::uint16_t si = state.Serial.SpiSI[0][i];
        const std::uint16_t so = state.Serial.SpiSO[0][i];
        if ((si & spi::kStart) == 0 || transfers.empty()) continue;
        transfers.back().Si.push_back(si & spi::kValue);
        transfers.back().So.push_back(so & spi::kValue);
    }
    return transfers;
}

struct FlashReader {
    std::map<unsigned, int> Memory;
    bool Enabled = false;
    int Programs = 0, Reads = 0, Erases = 0, Busy = 0, Ready = 0, Ids = 0;

    static unsigned Address(const SpiTransfer& t) {
        return static_cast<unsigned>(t.Si[1] << 16 | t.Si[2] << 8 | t.Si[3]);
    }
    void Take(const SpiTransfer& t) {
        ASSERT_FALSE(t.Si.empty());
        switch (t.Si[0]) {
            case 0x9F:
                ++Ids;
                EXPECT_EQ(t.So, (std::vector<int>{0xFF, 0x7F, 0x20, 0x16}));
                return;
            case 0x06:
                Enabled = true;
                EXPECT_EQ(t.Si.size(), 1U);
                return;
            case 0x05:
                ASSERT_EQ(t.So.size(), 2U);
                ++(t.So[1] == 0x03 ? Busy : Ready);
                EXPECT_TRUE(t.So[1] == 0x03 || t.So[1] == 0);
                return;
            default:
                ASSERT_GE(t.Si.size(), 4U);
                return TakeAddressed(t);
        }
    }
    void TakeAddressed(const SpiTransfer& t) {
        unsigned address = Address(t);
        if (t.Si[0] == 0x03) {
            ++Reads;
            for (std::size_t i = 4; i < t.So.size(); ++i) EXPECT_EQ(t.So[i], Memory[address++]);
            EXPECT_EQ(t.So.size(), 12U);
            return;
        }
        EXPECT_TRUE(Enabled);
        Enabled = false;
        if (t.Si[0] == 0x20) {
            ++Erases;
            return;
        }
        ASSERT_EQ(t.Si[0], 0x02);
        ++Programs;
        EXPECT_EQ(t.Si.size(), 12U);
        for (std::size_t i = 4; i < t.Si.size(); ++i) Memory[address++] = t.Si[i];
    }
};

TEST_P(SpiScenes, ReadsFindWhatWasProgrammed) {
    BusState bus = Sampled(Scene(), Seed(), 131072);
    ASSERT_TRUE(DecodeSPI(*bus));
    const int group = SpiGroup(*bus, 0);
    const int select = bus->Groups[static_cast<std::size_t>(group)].Channels[3];
    std::vector<SpiTransfer> transfers = SpiTransfers(*bus, select);
    ASSERT_GT(transfers.size(), 80U);
    transfers.pop_back();
    FlashReader reader;
    for (const SpiTransfer& transfer : transfers) {
        reader.Take(transfer);
        if (HasFatalFailure()) return;
    }
    EXPECT_GT(reader.Programs, 8);
    EXPECT_GE(reader.Reads + 1, reader.Programs);
    EXPECT_GT(reader.Erases, 8);
    EXPECT_GT(reader.Ids, 8);
    EXPECT_GT(reader.Busy, 16);
    EXPECT_GT(reader.Ready, 16);
}

struct MicrowireCommand {
    unsigned In = 0;   ///< bits from the start bit on
    unsigned Out = 0;  ///< bits that stood at the fall of the clock
    int Bits = 0;
};

std::vector<MicrowireCommand> MicrowireCommands(const InstrumentState& state, const SimSceneGroup& group) {
    std::vector<MicrowireCommand> commands;
    const auto level = [&](std::size_t slot, std::int32_t i) {
        const int channel = group.Channels[slot];
        return (state.Buffer.Pod[static_cast<std::size_t>(channel / 8)][i] >> channel % 8 & 1) != 0;
    };
    for (std::int32_t i = 1; i < GetBufLenFull(state.Buffer.BufLen, 0); ++i) {
        if (level(3, i) && !level(3, i - 1)) commands.emplace_back();
        if (commands.empty() || !level(3, i)) continue;
        MicrowireCommand& command = commands.back();
        if (level(0, i) && !level(0, i - 1)) {
            command.In = command.In << 1 | (level(1, i) ? 1U : 0U);
            ++command.Bits;
        }
        if (!level(0, i) && level(0, i - 1)) command.Out = command.Out << 1 | (level(2, i) ? 1U : 0U);
    }
    return commands;
}

TEST_P(MicrowireScenes, ReadsFindWhatWasWritten) {
    BusState bus = Sampled(Scene(), Seed(), 262144);
    const SimScene& scene = Scene();
    const auto* const group = std::find_if(scene.Groups.begin().base(), scene.Groups.end().base(),
                                           [](const SimSceneGroup& g) { return g.Mode == 2; });
    std::vector<MicrowireCommand> commands = MicrowireCommands(*bus, *group);
    ASSERT_GT(commands.size(), 60U);
    commands.pop_back();
    std::map<unsigned, unsigned> memory;
    bool enabled = false;
    int reads = 0;
    for (const MicrowireCommand& command : commands) {
        if (command.Bits == 0) continue;  // the ready line is watched
        if (command.Bits == 11) {
            EXPECT_TRUE(command.In == (0b100U << 8 | 0xC0U) || command.In == 0b100U << 8);
            enabled = (command.In & 0xC0U) != 0;
            continue;
        }
        ASSERT_EQ(command.Bits, 27);
        const unsigned address = command.In >> 16 & 0xFFU;
        if (command.In >> 24 == 0b101) {
            EXPECT_TRUE(enabled);
            memory[address] = command.In & 0xFFFFU;
        } else {
            ASSERT_EQ(command.In >> 24, 0b110U);
            EXPECT_EQ(command.Out & 0xFFFFU, memory[address]);
            EXPECT_EQ(command.Out >> 16, 0U);
            ++reads;
        }
    }
    EXPECT_GT(reads, 16);
}

TEST_P(MicrowireScenes, DecoderTakesTheFirstCommandsLastBit) {
    BusState bus = Sampled(Scene(), Seed(), 20000);
    const SimScene& scene = Scene();
    for (std::size_t i = 0; i < scene.Groups.size(); ++i) {
        if (scene.Groups[i].Mode == kGroupModeMicrowire) bus->Serial.SerialGroup = static_cast<int>(i);
    }
    EXPECT_EQ(DecodeMicrowire(*bus), event::kMicrowireIn0) << "writing is enabled by 100 11000000";
}

}  // namespace
}  // namespace zu::test
