// The SPI decoder: edges of the four modes, chip select, bytes and their marks.
#include <gtest/gtest.h>
#include <random>

#include "BusState.h"
#include "SlowDecoders.h"
#include "serial/SpiDecoder.h"

namespace zu {
namespace {

using test::BusState;
using test::SpiWave;

constexpr std::int8_t kMode0 = 3;
constexpr std::int8_t kMode1 = 4;
constexpr std::int8_t kMode2 = 5;
constexpr std::int8_t kMode3 = 6;

struct Byte {
    std::int32_t Start;
    unsigned Si;
    unsigned So;
    friend bool operator==(const Byte&, const Byte&) = default;
};
void PrintTo(const Byte& byte, std::ostream* out) {
    *out << byte.Start << ":" << byte.Si << "/" << byte.So;
}

std::vector<Byte> BytesOf(const InstrumentState& state, std::size_t slot = 0) {
    std::vector<Byte> bytes;
    const auto& si = state.Serial.SpiSI[slot];
    const auto& so = state.Serial.SpiSO[slot];
    for (std::size_t i = 0; i < si.size(); ++i) {
        EXPECT_EQ(si[i] & 0x1100, so[i] & 0x1100) << "both lines carry the marks";
        EXPECT_EQ(si[i] & 0x0200, 0);
        if ((si[i] & 0x100) == 0) continue;
        bytes.push_back({static_cast<std::int32_t>(i), si[i] & 0xFFU, so[i] & 0xFFU});
    }
    return bytes;
}

std::vector<std::pair<unsigned, unsigned>> Values(const InstrumentState& state, std::size_t slot = 0) {
    std::vector<std::pair<unsigned, unsigned>> values;
    for (const Byte& byte : BytesOf(state, slot)) values.emplace_back(byte.Si, byte.So);
    return values;
}

using ValueList = std::vector<std::pair<unsigned, unsigned>>;

/// Chip select on channel 8 (bit 0 of its pod), clock 1, SI 2, SO 3.
std::unique_ptr<BusState> BusOf(const SpiWave& wave, std::int8_t mode) {
    auto bus = std::make_unique<BusState>(static_cast<std::int32_t>(wave.Clock.size()));
    bus->SetGroup(0, mode, {1, 2, 3, 8});
    (*bus)->Groups[0].CsActiveHigh = wave.ActiveCs ? 1 : 0;
    (*bus)->Groups[0].BitOrder = wave.LsbFirst ? 1 : 0;
    wave.Onto(*bus, 1, 2, 3, 8);
    return bus;
}

SpiWave WaveOfMode(std::int8_t mode) {
    SpiWave wave;
    wave.IdleClock = mode == kMode2 || mode == kMode3;
    wave.SamplesRising = mode == kMode0 || mode == kMode3;
    return wave;
}

SpiWave TwoBytes(std::int8_t mode) {
    SpiWave wave = WaveOfMode(mode);
    wave.Idle();
    wave.Select();
    wave.Byte(0x9F, 0x00);
    wave.Byte(0x01, 0xE5);
    wave.Select();
    wave.Idle();
    return wave;
}

TEST(DecodeSPI, EachModeSamplesAtItsEdge) {
    for (const std::int8_t mode : {kMode0, kMode1, kMode2, kMode3}) {
        const auto bus = BusOf(TwoBytes(mode), mode);
        EXPECT_TRUE(DecodeSPI(**bus));
        EXPECT_EQ(Values(**bus), (ValueList{{0x9F, 0x00}, {0x01, 0xE5}})) << int{mode};
    }
}

TEST(DecodeSPI, TheWrongEdgeReadsTheWrongBits) {
    SpiWave wave = WaveOfMode(kMode0);
    wave.Idle();
    wave.Select();
    // Data that are valid in front of the rising edge only.
    for (int bit = 0; bit < 8; ++bit) {
        wave.Hold(false, true, true, false);
        wave.Hold(true, false, false, false);
    }
    wave.Hold(false, false, false, false);
    wave.Idle();
    const auto rising = BusOf(wave, kMode0);
    DecodeSPI(**rising);
    EXPECT_EQ(Values(**rising), (ValueList{{0xFF, 0xFF}}));
    const auto falling = BusOf(wave, kMode1);
    DecodeSPI(**falling);
    EXPECT_EQ(Values(**falling), (ValueList{{0x00, 0x00}}));
}

TEST(DecodeSPI, MarksStandAtTheSamplesBeforeTheEdges) {
    const auto bus = BusOf(TwoBytes(kMode0), kMode0);
    DecodeSPI(**bus);
    // Idle 0..1, select 2..3, then two samples low and two high for each bit: the first rise is at 6.
    const auto& si = (*bus)->Serial.SpiSI[0];
    const auto& so = (*bus)->Serial.SpiSO[0];
    EXPECT_EQ(si[5], 0x0100 | 0x0400 | 0x9F);
    EXPECT_EQ(so[5], 0x0100 | 0x00);
    EXPECT_EQ(si[9], 0) << "the second bit is 0";
    EXPECT_EQ(si[17], 0x0400);
    EXPECT_EQ(si[33], 0x1000 | 0x0400) << "the last bit's edge is at 34";
    EXPECT_EQ(so[33], 0x1000);
    EXPECT_EQ(si[37], 0x0100 | 0x01);
    EXPECT_EQ((*bus)->Serial.SpiFirst, 5);
    EXPECT_EQ((*bus)->Serial.SpiLast, 37);
}

TEST(DecodeSPI, ByteOrderOfTheBits) {
    SpiWave wave = WaveOfMode(kMode0);
    wave.LsbFirst = true;
    wave.Idle();
    wave.Byte(0x01, 0xA6);
    wave.Idle();
    const auto bus = BusOf(wave, kMode0);
    DecodeSPI(**bus);
    EXPECT_EQ(Values(**bus), (ValueList{{0x01, 0xA6}})) << "the first bit clocked is worth 1";
    (*bus)->Groups[0].BitOrder = 0;
    DecodeSPI(**bus);
    EXPECT_EQ(Values(**bus), (ValueList{{0x80, 0x65}}));
    (*bus)->Groups[0].BitOrder = 2;
    DecodeSPI(**bus);
    EXPECT_EQ(Values(**bus), (ValueList{{0x80, 0x65}})) << "only 1 turns the order";
}

TEST(DecodeSPI, ChipSelectEndingInAByteThrowsItsBitsAway) {
    SpiWave wave = WaveOfMode(kMode0);
    wave.Idle();
    wave.Bits(0xFF, 0xFF, 7);
    wave.Idle();
    wave.Byte(0x12, 0x34);
    wave.Idle();
    const auto bus = BusOf(wave, kMode0);
    DecodeSPI(**bus);
    EXPECT_EQ(Values(**bus), (ValueList{{0x12, 0x34}}));
    int ones = 0;
    for (const auto word : (*bus)->Serial.SpiSI[0]) ones += (word & 0x400) != 0 ? 1 : 0;
    EXPECT_EQ(ones, 7 + 2) << "the marks of the single bits stay";
}

TEST(DecodeSPI, OneInactiveSampleInFrontOfAHighClockKeepsTheBits) {
    // Chip select drops for one sample while the clock is high: the leading level is skipped, the bits stay.
    SpiWave wave = WaveOfMode(kMode0);
    wave.Idle();
    wave.Bits(0xF0, 0xF0, 4);
    wave.Bits(0x05, 0x05, 0);
    wave.Cs.back() = 1;
    wave.Clock.insert(wave.Clock.end(), 2, 1);
    wave.Si.insert(wave.Si.end(), 2, 0);
    wave.So.insert(wave.So.end(), 2, 0);
    wave.Cs.insert(wave.Cs.end(), 2, 0);
    wave.Bits(0x50, 0x50, 4);
    wave.Idle();
    const auto bus = BusOf(wave, kMode0);
    DecodeSPI(**bus);
    EXPECT_EQ(Values(**bus), (ValueList{{0xF5, 0xF5}}));
    // On another bit of the pod that edge is not seen, and the bits are dropped.
    BusState other(static_cast<std::int32_t>(wave.Clock.size()));
    other.SetGroup(0, kMode0, {1, 2, 3, 12});
    wave.Onto(other, 1, 2, 3, 12);
    DecodeSPI(*other);
    EXPECT_TRUE(BytesOf(*other).empty());
}

TEST(DecodeSPI, ActiveHighChipSelectIsSeenOnBitZeroOnly) {
    SpiWave wave = TwoBytes(kMode0);
    for (auto& level : wave.Cs) level ^= 1;
    for (int bit = 0; bit < 8; ++bit) {
        BusState bus(static_cast<std::int32_t>(wave.Clock.size()));
        bus.SetGroup(0, kMode0, {1, 2, 3, 16 + bit});
        bus->Groups[0].CsActiveHigh = 1;
        wave.Onto(bus, 1, 2, 3, 16 + bit);
        EXPECT_TRUE(DecodeSPI(*bus));
        EXPECT_EQ(BytesOf(*bus).size(), bit == 0 ? 2U : 0U) << bit;
    }
}

TEST(DecodeSPI, ActiveLowChipSelectIsSeenOnEveryBit) {
    const SpiWave wave = TwoBytes(kMode3);
    for (int bit = 0; bit < 8; ++bit) {
        BusState bus(static_cast<std::int32_t>(wave.Clock.size()));
        bus.SetGroup(0, kMode3, {1, 2, 3, 16 + bit});
        wave.Onto(bus, 1, 2, 3, 16 + bit);
        DecodeSPI(*bus);
        EXPECT_EQ(Values(*bus), (ValueList{{0x9F, 0x00}, {0x01, 0xE5}})) << bit;
    }
}

SpiWave Lines(std::vector<std::uint8_t> clock, std::vector<std::uint8_t> si, std::vector<std::uint8_t> cs) {
    SpiWave wave;
    wave.So.assign(clock.size(), 0);
    wave.Clock = std::move(clock);
    wave.Si = std::move(si);
    wave.Cs = std::move(cs);
    return wave;
}

/// Appends whole clock periods of one sample low and one high, SI at 1, chip select active.
void AddPeriods(SpiWave& wave, int count) {
    for (int i = 0; i < count; ++i) {
        wave.Clock.insert(wave.Clock.end(), {0, 1});
        wave.Si.insert(wave.Si.end(), {1, 1});
        wave.So.insert(wave.So.end(), {0, 0});
        wave.Cs.insert(wave.Cs.end(), {0, 0});
    }
}

TEST(DecodeSPI, TheFallBehindALeadingLevelIsSeen) {
    // Mode 2: the clock idles high, and its first fall is the first bit.
    SpiWave wave = Lines({1, 1, 1, 1}, {0, 0, 1, 1}, {1, 1, 0, 0});
    AddPeriods(wave, 8);
    const auto bus = BusOf(wave, kMode2);
    DecodeSPI(**bus);
    EXPECT_EQ(BytesOf(**bus), (std::vector<Byte>{{3, 0xFF, 0x00}}));
}

TEST(DecodeSPI, AFallTogetherWithTheSelectIsPartOfTheLeadingLevel) {
    SpiWave wave = Lines({1, 1}, {1, 1}, {1, 1});
    AddPeriods(wave, 9);
    const auto bus = BusOf(wave, kMode2);
    DecodeSPI(**bus);
    EXPECT_EQ(BytesOf(**bus), (std::vector<Byte>{{3, 0xFF, 0x00}}))
        << "the fall at 2 comes with chip select; the bits begin with the fall at 4";
}

TEST(DecodeSPI, AClockThatStaysHighToTheEndLeavesNothing) {
    const auto bus = BusOf(Lines({1, 1, 1, 1, 1}, {1, 1, 1, 1, 1}, {1, 1, 0, 0, 0}), kMode2);
    EXPECT_TRUE(DecodeSPI(**bus));
    EXPECT_TRUE(BytesOf(**bus).empty());
}

TEST(DecodeSPI, ARiseTogetherWithTheSelectIsNoBit) {
    SpiWave wave = Lines({0, 0}, {1, 1}, {1, 1});
    AddPeriods(wave, 9);
    wave.Clock[2] = 1;
    const auto bus = BusOf(wave, kMode0);
    DecodeSPI(**bus);
    EXPECT_EQ(BytesOf(**bus).front().Start, 4) << "chip select was not active in front of the rise at 2";
}

TEST(DecodeSPI, GroupsOfOtherSizesYieldNothingAndNoError) {
    for (const int size : {0, 3, 5, 160, -1}) {
        const auto bus = BusOf(TwoBytes(kMode0), kMode0);
        (*bus)->Groups[0].Size = size;
        EXPECT_FALSE(DecodeSPI(**bus)) << size;
        EXPECT_TRUE(BytesOf(**bus).empty());
        EXPECT_EQ(SpiGroup(**bus, 0), -1);
    }
}

TEST(DecodeSPI, OtherModesAreNoSpi) {
    for (int mode = -128; mode < 128; ++mode) {
        const bool expected = mode >= 3 && mode <= 6;
        EXPECT_EQ(IsSpiMode(static_cast<std::int8_t>(mode)), expected);
    }
    BusState bus(16);
    EXPECT_FALSE(DecodeSPI(*bus));
}

TEST(DecodeSPI, SlotsFollowTheOrderOfTheGroups) {
    BusState bus(200);
    bus.SetGroup(2, kMode0, {0, 1, 2, 3});
    bus.SetGroup(5, kMode1, {0, 1, 2});
    bus.SetGroup(11, kMode2, {0, 1, 2, 3});
    bus.SetGroup(29, kMode3, {0, 1, 2, 3});
    EXPECT_EQ(SpiGroup(*bus, 0), 2);
    EXPECT_EQ(SpiGroup(*bus, 1), 11) << "the group of three channels takes no slot";
    EXPECT_EQ(SpiGroup(*bus, 2), 29);
    EXPECT_EQ(SpiGroup(*bus, 3), -1);
    EXPECT_EQ(SpiGroup(*bus, -1), -1);
    bus->Groups[2].Mode = 0;
    EXPECT_EQ(SpiGroup(*bus, 0), 11) << "deleting the first moves the others down";
    EXPECT_EQ(SpiGroup(*bus, 1), 29);
    EXPECT_EQ(SpiGroup(*bus, 2), -1);
}

TEST(DecodeSPI, AFourthGroupOfAFileIsLeftOut) {
    const auto bus = BusOf(TwoBytes(kMode0), kMode0);
    for (int group = 1; group < 6; ++group) bus->SetGroup(group, kMode0, {1, 2, 3, 8});
    EXPECT_TRUE(DecodeSPI(**bus));
    for (std::size_t slot = 0; slot < 3; ++slot) EXPECT_EQ(BytesOf(**bus, slot).size(), 2U);
}

TEST(DecodeSPI, FirstAndLastRunOverAllSlots) {
    // Slot 0 has bytes at 100 and 130 or so, slot 1 earlier ones.
    SpiWave early = TwoBytes(kMode0);
    SpiWave late = WaveOfMode(kMode0);
    for (int i = 0; i < 50; ++i) late.Idle();
    late.Byte(1, 2);
    late.Byte(3, 4);
    late.Idle();
    BusState bus(static_cast<std::int32_t>(late.Clock.size()));
    for (const int cs : {24, 40}) {
        for (std::size_t i = 0; i < late.Cs.size(); ++i) bus.Set(cs, i, true);
    }
    late.Onto(bus, 17, 18, 19, 24);
    early.Onto(bus, 33, 34, 35, 40);
    bus.SetGroup(0, kMode0, {17, 18, 19, 24});
    bus.SetGroup(1, kMode0, {33, 34, 35, 40});
    DecodeSPI(*bus);
    EXPECT_EQ(bus->Serial.SpiFirst, BytesOf(*bus, 0)[0].Start) << "the first byte of the run, not in time";
    EXPECT_EQ(bus->Serial.SpiLast, BytesOf(*bus, 1)[1].Start);
    EXPECT_LT(bus->Serial.SpiLast, bus->Serial.SpiFirst);
}

TEST(DecodeSPI, ASingleByteLeavesTheLastAtZero) {
    SpiWave wave = WaveOfMode(kMode0);
    wave.Idle();
    wave.Byte(7, 7);
    wave.Idle();
    const auto bus = BusOf(wave, kMode0);
    (*bus)->Serial.SpiFirst = (*bus)->Serial.SpiLast = 99;
    DecodeSPI(**bus);
    EXPECT_EQ((*bus)->Serial.SpiFirst, 3);
    EXPECT_EQ((*bus)->Serial.SpiLast, 0);
    (*bus)->Groups[0].Mode = 0;
    DecodeSPI(**bus);
    EXPECT_EQ((*bus)->Serial.SpiFirst, 0) << "each run begins at 0";
}

TEST(DecodeSPI, TheArraysAreClearedUpToTheShortestBuffer) {
    BusState bus(100);
    bus.SetGroup(0, kMode0, {0, 8, 16, 24});
    bus.SetLength(2, 60);
    for (auto* words : {&bus->Serial.SpiSI[0], &bus->Serial.SpiSO[0], &bus->Serial.SpiSI[1]}) {
        std::fill(words->begin(), words->end(), std::uint16_t{0x1234});
    }
    DecodeSPI(*bus);
    for (std::size_t i = 0; i < 100; ++i) {
        EXPECT_EQ(bus->Serial.SpiSI[0][i], i < 60 ? 0 : 0x1234);
        EXPECT_EQ(bus->Serial.SpiSO[0][i], i < 60 ? 0 : 0x1234);
        EXPECT_EQ(bus->Serial.SpiSI[1][i], 0x1234);
    }
}

TEST(DecodeSPI, BuffersOfLengthZeroLeaveTheArrays) {
    BusState bus(100);
    bus.SetGroup(0, kMode0, {0, 8, 16, 24});
    bus->Serial.SpiSI[0][7] = 0x155;
    bus.SetLength(3, 0);
    DecodeSPI(*bus);
    EXPECT_EQ(bus->Serial.SpiSI[0][7], 0x155);
}

TEST(DecodeSPI, TheLengthIsTheWholeBuffers) {
    // With an alignment the last samples are read behind the buffer as 0: the second byte ends there.
    SpiWave wave = WaveOfMode(kMode1);
    wave.Width = [] { return 1; };
    wave.Idle();
    wave.Byte(0xFF, 0xFF);
    wave.Cs.back() = 0;
    const auto bus = BusOf(wave, kMode1);
    DecodeSPI(**bus);
    EXPECT_EQ(Values(**bus), (ValueList{{0xFF, 0xFF}}));
    (*bus)->Pods.AdjAddr[0] = 2;
    (*bus)->Pods.AdjAddr[1] = 2;
    DecodeSPI(**bus);
    EXPECT_TRUE(BytesOf(**bus).empty()) << "its first bit is cut away";
}

/// Random transfers with partial bytes and phases of one to six samples.
SpiWave RandomTraffic(std::mt19937& random, std::int8_t mode, bool activeHigh, bool lsbFirst) {
    SpiWave wave = WaveOfMode(mode);
    wave.ActiveCs = activeHigh;
    wave.LsbFirst = lsbFirst;
    wave.Width = [&random] { return 1 + static_cast<int>(random() % 6); };
    if (random() % 3 == 0) wave.IdleClock = !wave.IdleClock;
    for (auto transfer = random() % 4; transfer > 0; --transfer) {
        wave.Idle();
        if (random() % 2 == 0) wave.Select();
        for (auto byte = random() % 4; byte > 0; --byte) wave.Byte(random() % 256, random() % 256);
        if (random() % 3 == 0) wave.Bits(random() % 256, random() % 256, static_cast<int>(random() % 8));
    }
    wave.Idle();
    return wave;
}

TEST(DecodeSPI, AgreesWithTheSlowDecoder) {
    std::mt19937 random(20240315);
    BusState bus(64);
    std::ptrdiff_t bytes = 0;
    for (int round = 0; round < 4000; ++round) {
        for (auto& record : bus->Groups) record = GroupRecord{};
        const auto mode = static_cast<std::int8_t>(3 + random() % 4);
        const bool activeHigh = random() % 3 == 0;
        SpiWave wave = RandomTraffic(random, mode, activeHigh, random() % 2 == 0);
        for (auto* line : {&wave.Clock, &wave.Cs}) {
            for (auto hit = round % 2 == 0 ? 0 : random() % 6; hit > 0; --hit)
                (*line)[random() % line->size()] ^= 1;
        }
        const auto length = static_cast<std::int32_t>(wave.Clock.size());
        const int cs =
            random() % 2 == 0 ? 8 * static_cast<int>(random() % 20) : static_cast<int>(random() % 160);
        const auto any = [&random] { return static_cast<int>(random() % 160); };
        const std::array<int, 4> channels{any(), any(), any(), cs};
        bus.SetDisplayLen(random() % 5 == 0 ? length / 2 : length + static_cast<std::int32_t>(random() % 20));
        for (const int channel : channels) {
            const auto pod = static_cast<std::size_t>(channel / 8);
            bus.SetLength(channel / 8,
                          random() % 8 == 0 ? static_cast<std::int32_t>(random() % 300) : length);
            bus->Pods.AdjAddr[pod] = random() % 5 == 0 ? static_cast<std::int32_t>(random() % 300) - 20 : 0;
            bus->Pods.HardwarePod[pod] = random() % 8 == 0 ? 1 : 0;
        }
        wave.Onto(bus, channels[0], channels[1], channels[2], channels[3]);
        const int group = static_cast<int>(random() % 30);
        bus.SetGroup(group, mode, {channels[0], channels[1], channels[2], channels[3]});
        bus->Groups[static_cast<std::size_t>(group)].CsActiveHigh = activeHigh ? 1 : 0;
        bus->Groups[static_cast<std::size_t>(group)].BitOrder = wave.LsbFirst ? 1 : 0;
        for (auto& word : bus->Serial.SpiSI[0]) word = static_cast<std::uint16_t>(random());
        const auto expected = test::DecodeSlowlySpi(*bus);
        DecodeSPI(*bus);
        ASSERT_EQ(bus->Serial.SpiSI, expected.Si) << "round " << round;
        ASSERT_EQ(bus->Serial.SpiSO, expected.So) << "round " << round;
        ASSERT_EQ(bus->Serial.SpiFirst, expected.First) << "round " << round;
        ASSERT_EQ(bus->Serial.SpiLast, expected.Last) << "round " << round;
        bytes += std::count_if(expected.So[0].begin(), expected.So[0].end(),
                               [](auto word) { return (word & 0x100) != 0; });
    }
    EXPECT_GT(bytes, 2000);
}

TEST(DecodeSPI, AgreesOnNoise) {
    std::mt19937 random(6);
    BusState bus(800);
    for (int round = 0; round < 600; ++round) {
        const std::array<int, 4> channels{0, 9, 18, round % 2 == 0 ? 24 : 29};
        bus.SetGroup(0, static_cast<std::int8_t>(3 + round % 4), {0, 9, 18, channels[3]});
        bus->Groups[0].CsActiveHigh = (round / 4) % 2 == 0 ? 1 : 0;
        for (std::size_t role = 0; role < 4; ++role) {
            const auto rate = 1 + random() % (role == 3 ? 60 : 5);
            bool level = false;
            for (std::size_t i = 0; i < 800; ++i) {
                if (random() % rate == 0) level = !level;
                bus.Set(channels[role], i, level);
            }
        }
        const auto expected = test::DecodeSlowlySpi(*bus);
        DecodeSPI(*bus);
        ASSERT_EQ(bus->Serial.SpiSI, expected.Si) << "round " << round;
        ASSERT_EQ(bus->Serial.SpiSO, expected.So) << "round " << round;
    }
}

TEST(DecodeSPI, NumbersFromAFileDoNoHarm) {
    std::mt19937 random(12);
    BusState bus(300);
    for (int round = 0; round < 2000; ++round) {
        const auto any = [&random] { return static_cast<std::int32_t>(random()); };
        for (auto& group : bus->Groups) {
            group.Mode = static_cast<std::int8_t>(random());
            group.Size = random() % 3 == 0 ? 4 : any();
            group.CsActiveHigh = static_cast<std::uint8_t>(random());
            group.BitOrder = any();
            for (std::size_t role = 0; role < 4; ++role) {
                group.Channels[role] =
                    random() % 4 == 0 ? any() : static_cast<std::int32_t>(random() % 200) - 20;
            }
        }
        for (auto& adjust : bus->Pods.AdjAddr) adjust = random() % 2 == 0 ? any() : any() % 400;
        for (auto& mode : bus->Pods.HardwarePod) mode = static_cast<std::int8_t>(random() % 6);
        for (int pod = 0; pod < kMaxPods; ++pod) bus.SetLength(pod, any() % 1000);
        if (round % 7 == 0) bus.SetDisplayLen(static_cast<std::int32_t>(random() % 400));
        DecodeSPI(*bus);
    }
}

}  // namespace
}  // namespace zu
