// The I2C decoder: line events, frames, acknowledges.
#include <gtest/gtest.h>
#include <random>

#include "BusState.h"
#include "SlowDecoders.h"
#include "serial/EventText.h"
#include "serial/I2cDecoder.h"

namespace zu {
namespace {

using test::BusState;
using test::I2cWave;

using Event = std::pair<int, int>;  // sample and code

std::vector<Event> EventsOf(const InstrumentState& state) {
    std::vector<Event> list;
    for (std::size_t i = 0; i < state.Serial.SerialEvents.size(); ++i) {
        const int code = state.Serial.SerialEvents[i];
        if (code != 0) list.emplace_back(static_cast<int>(i), code);
    }
    return list;
}

std::vector<int> CodesOf(const InstrumentState& state) {
    std::vector<int> codes;
    for (const auto& [sample, code] : EventsOf(state)) codes.push_back(code);
    return codes;
}

/// A bus on channels 0 (clock) and 1 (data), decoded.
std::unique_ptr<BusState> Decoded(const I2cWave& wave) {
    auto bus = std::make_unique<BusState>(static_cast<std::int32_t>(wave.Scl.size()));
    bus->SetGroup(0, kGroupModeI2C, {0, 1});
    bus->Draw(0, wave.Scl);
    bus->Draw(1, wave.Sda);
    EXPECT_TRUE(DecodeI2C(**bus));
    return bus;
}

I2cWave Levels(std::vector<std::uint8_t> scl, std::vector<std::uint8_t> sda) {
    I2cWave wave;
    wave.Scl = std::move(scl);
    wave.Sda = std::move(sda);
    return wave;
}

TEST(I2cLineEvent, EveryPairOfSamples) {
    for (unsigned pair = 0; pair < 16; ++pair) {
        const bool scl0 = (pair & 8U) != 0, scl1 = (pair & 4U) != 0;
        const bool sda0 = (pair & 2U) != 0, sda1 = (pair & 1U) != 0;
        int expected = 0;
        if (scl0 && scl1 && sda0 && !sda1) expected = 1;
        if (scl0 && scl1 && !sda0 && sda1) expected = 2;
        if (scl0 && !scl1) expected = sda0 ? 4 : 3;
        EXPECT_EQ(I2cLineEvent(scl0, scl1, sda0, sda1), expected) << pair;
    }
}

TEST(DecodeI2C, AWholeTransfer) {
    I2cWave wave;
    wave.Start();
    wave.Byte(0xA0, true);
    wave.Byte(0x3C, false);
    wave.Stop();
    const auto bus = Decoded(wave);
    EXPECT_EQ(CodesOf(**bus), (std::vector<int>{1, 4, 3, 4, 3, 3, 3, 3, 3,  15,  //
                                                3, 3, 4, 4, 4, 4, 3, 3, 16, 2}));
    const auto events = EventsOf(**bus);
    EXPECT_EQ(events.front(), (Event{2, 1})) << "a start stands at the sample with the low data line";
    EXPECT_EQ(events[1], (Event{10, 4})) << "a bit stands at the first sample with the clock low";
    EXPECT_EQ((*bus)->Serial.SerialFirst, 2);
    EXPECT_EQ((*bus)->Serial.SerialLast, events.back().first);
}

TEST(DecodeI2C, NineBitsWithTheNinthHighAreRefusedWhateverTheByte) {
    for (unsigned value = 0; value < 256; ++value) {
        I2cWave wave;
        wave.Width = [] { return 1; };
        wave.Start();
        wave.Byte(value, false);
        wave.Stop();
        const auto codes = CodesOf(**Decoded(wave));
        ASSERT_EQ(codes.size(), 11U);
        EXPECT_EQ(codes[9], 16) << value;
        EXPECT_EQ(std::count(codes.begin(), codes.end(), 15), 0);
    }
}

TEST(DecodeI2C, TheAcknowledgesOwnBitIsReplaced) {
    I2cWave wave;
    wave.Start();
    wave.Byte(0xFF, true);
    wave.Stop();
    const auto codes = CodesOf(**Decoded(wave));
    EXPECT_EQ(std::count(codes.begin(), codes.end(), 3), 0);
    EXPECT_EQ(std::count(codes.begin(), codes.end(), 4), 8);
}

TEST(DecodeI2C, AStartAtTheLastPairStandsBeyondTheLoop) {
    // Six samples are shown, the seventh is in the buffer.
    BusState bus(7);
    bus.SetGroup(0, kGroupModeI2C, {0, 8});
    bus.Draw(0, {1, 1, 1, 1, 1, 1, 1});
    bus.Draw(8, {1, 1, 1, 1, 1, 1, 0});
    bus.SetLength(0, 6);
    DecodeI2C(*bus);
    EXPECT_EQ(EventsOf(*bus), (std::vector<Event>{{6, 1}}));
    EXPECT_EQ(bus->Serial.SerialFirst, 6);
    EXPECT_EQ(bus->Serial.SerialLast, 6);
}

TEST(DecodeI2C, AnEventBehindTheMapIsDropped) {
    BusState bus(7);
    bus.SetDisplayLen(6);
    bus.SetGroup(0, kGroupModeI2C, {0, 8});
    bus.Draw(0, {1, 1, 1, 1, 1, 1, 1});
    bus.Draw(8, {1, 1, 1, 1, 1, 1, 0});
    DecodeI2C(*bus);
    EXPECT_TRUE(EventsOf(*bus).empty());
    EXPECT_EQ(bus->Serial.SerialFirst, 0);
    EXPECT_EQ(bus->Serial.SerialLast, 0);
}

TEST(DecodeI2C, TheEndOfTheBufferIsNoEvent) {
    const auto bus = Decoded(Levels({1, 1, 1, 1}, {1, 1, 1, 1}));
    EXPECT_TRUE(EventsOf(**bus).empty());
    // What lies behind the buffer in memory does not count either.
    (*bus)->Buffer.Pod[0][4] = 0x01;
    DecodeI2C(**bus);
    EXPECT_TRUE(EventsOf(**bus).empty());
}

TEST(DecodeI2C, AStartFollowedAtOnceByAStopKeepsBoth) {
    const auto bus = Decoded(Levels({1, 1, 1, 1, 1}, {1, 1, 0, 1, 1}));
    EXPECT_EQ(EventsOf(**bus), (std::vector<Event>{{2, 1}, {3, 2}}));
}

TEST(DecodeI2C, TheClocksFallBehindAStartOrStopIsNoBit) {
    const auto bus = Decoded(Levels({1, 1, 0, 1, 1, 0, 1, 1, 1, 0, 1, 0},  //
                                    {1, 0, 0, 1, 1, 1, 0, 0, 1, 1, 1, 1}));
    EXPECT_EQ(EventsOf(**bus), (std::vector<Event>{{1, 1}, {5, 4}, {8, 2}, {11, 4}}))
        << "the falls at 2 and 9 are dropped";
}

TEST(DecodeI2C, AStopDoesNotRestoreASkippedBit) {
    const auto bus = Decoded(Levels({1, 1, 1, 0, 1, 0}, {1, 0, 1, 1, 0, 0}));
    EXPECT_EQ(EventsOf(**bus), (std::vector<Event>{{1, 1}, {2, 2}, {5, 3}}));
}

TEST(DecodeI2C, AFrameWithoutAStopKeepsItsAcknowledgesAndEndsThePass) {
    I2cWave wave;
    wave.Start();
    wave.Byte(0xA0, true);
    wave.Byte(0x55, true);
    wave.Bit(true);
    const auto codes = CodesOf(**Decoded(wave));
    EXPECT_EQ(codes[9], 15);
    EXPECT_EQ(codes[18], 15);
    EXPECT_EQ(codes.back(), 4);
}

TEST(DecodeI2C, ARepeatedStartOpensAFrameOfItsOwn) {
    I2cWave wave;
    wave.Start();
    wave.Byte(0xA0, true);
    wave.Bit(true);
    wave.Bit(true);
    wave.Start();
    wave.Byte(0xA1, true);
    wave.Byte(0x00, false);
    wave.Stop();
    EXPECT_EQ(CodesOf(**Decoded(wave)), (std::vector<int>{1, 4, 3, 4, 3, 3, 3, 3, 3,  15, 4, 4,  //
                                                          1, 4, 3, 4, 3, 3, 3, 3, 4,  15,        //
                                                          3, 3, 3, 3, 3, 3, 3, 3, 16, 2}));
}

TEST(DecodeI2C, BitsOutsideAFrameStayBits) {
    I2cWave wave;
    wave.Hold(false, true);
    for (int i = 0; i < 20; ++i) wave.Bit(i % 2 == 0);
    const auto codes = CodesOf(**Decoded(wave));
    ASSERT_EQ(codes.size(), 20U);
    for (const int code : codes) EXPECT_TRUE(code == 3 || code == 4);
}

TEST(DecodeI2C, TheFirstGroupOfTheModeIsTheSerialGroup) {
    BusState bus(64);
    bus.SetGroup(0, 2, {0, 1, 2, 3});
    bus.SetGroup(4, kGroupModeI2C, {16, 17});
    bus.SetGroup(9, kGroupModeI2C, {0, 1});
    bus->Serial.SerialGroup = 9;
    EXPECT_TRUE(DecodeI2C(*bus));
    EXPECT_EQ(bus->Serial.SerialGroup, 4);
}

TEST(DecodeI2C, WithoutSuchAGroupNothingHappens) {
    BusState bus(64);
    bus->Serial.SerialEvents[5] = 23;
    bus->Serial.SerialGroup = 7;
    bus->Serial.SerialFirst = 5;
    bus->Serial.SerialLast = 5;
    EXPECT_FALSE(DecodeI2C(*bus));
    EXPECT_EQ(EventsOf(*bus), (std::vector<Event>{{5, 23}}));
    EXPECT_EQ(bus->Serial.SerialGroup, 7);
    EXPECT_EQ(bus->Serial.SerialFirst, 5);
}

TEST(DecodeI2C, APodWithoutDataGivesAnEmptyMap) {
    BusState bus(64);
    bus.SetGroup(0, kGroupModeI2C, {0, 8});
    bus->Serial.SerialEvents[5] = 1;
    bus->Serial.SerialFirst = 5;
    bus.SetLength(1, 0);
    EXPECT_TRUE(DecodeI2C(*bus));
    EXPECT_TRUE(EventsOf(*bus).empty());
    EXPECT_EQ(bus->Serial.SerialFirst, 0);
    EXPECT_EQ(bus->Serial.SerialLast, 0);
}

TEST(DecodeI2C, AGroupTooSmallReadsItsSlotsAsTheyStand) {
    I2cWave wave;
    wave.Start();
    wave.Stop();
    BusState bus(static_cast<std::int32_t>(wave.Scl.size()));
    bus.SetGroup(0, kGroupModeI2C, {0, 1});
    bus.Draw(0, wave.Scl);
    bus.Draw(1, wave.Sda);
    bus->Groups[0].Size = 0;
    DecodeI2C(*bus);
    EXPECT_EQ(CodesOf(*bus), (std::vector<int>{1, 2}));
}

TEST(DecodeI2C, ReadsWhatIsDisplayed) {
    I2cWave wave;
    wave.Start();
    wave.Byte(0x5A, true);
    wave.Stop();
    BusState bus(static_cast<std::int32_t>(wave.Scl.size()) + 40);
    bus.SetGroup(0, kGroupModeI2C, {0, 1});
    for (std::size_t i = 0; i < wave.Scl.size(); ++i) {
        bus.Set(0, i + 30, wave.Scl[i] != 0);
        bus.Set(1, i + 30, wave.Sda[i] != 0);
    }
    bus->Pods.AdjAddr[0] = 30;
    DecodeI2C(*bus);
    EXPECT_EQ(EventsOf(*bus).front(), (Event{2, 1}));
    // A pod of the pattern generator is decoded from its pattern.
    bus->Pods.HardwarePod[0] = 1;
    bus.Draw(0, wave.Scl, true);
    bus.Draw(1, wave.Sda, true);
    DecodeI2C(*bus);
    EXPECT_EQ(EventsOf(*bus).front(), (Event{2, 1}));
}

TEST(DecodeI2C, ClockAndDataMayLieOnPodsOfDifferentLengthAndAlignment) {
    I2cWave wave;
    wave.Start();
    wave.Byte(0x12, true);
    wave.Stop();
    const auto length = static_cast<std::int32_t>(wave.Scl.size());
    BusState bus(length + 20);
    bus.SetGroup(0, kGroupModeI2C, {159, 80});
    for (std::size_t i = 0; i < wave.Scl.size(); ++i) bus.Set(159, i + 7, wave.Scl[i] != 0);
    bus.Draw(80, wave.Sda);
    bus->Pods.AdjAddr[19] = 7;
    bus.SetLength(10, length);
    DecodeI2C(*bus);
    EXPECT_EQ(CodesOf(*bus), CodesOf(**Decoded(wave)));
}

TEST(FrameI2C, AnOddNinthEventEndsTheFrame) {
    std::vector<std::uint8_t> events{0, 1, 3, 3, 3, 3, 3, 3, 3, 3, 21, 3, 2, 1, 4, 4, 4, 4, 4, 4, 4, 4, 4, 2};
    FrameI2C(events, static_cast<std::int32_t>(events.size()));
    EXPECT_EQ(events[10], 21);
    EXPECT_EQ(events[11], 3) << "and is not counted on";
    EXPECT_EQ(events[22], 16) << "the next frame is marked";
}

TEST(FrameI2C, AStartRightBehindTheFramesStartDoesNotEndIt) {
    std::vector<std::uint8_t> events{1, 1, 3, 3, 3, 3, 3, 3, 3, 3, 3, 2};
    FrameI2C(events, static_cast<std::int32_t>(events.size()));
    EXPECT_EQ(events[10], 15);
}

TEST(FrameI2C, MapsOfAnyBytesAndAnyLength) {
    std::mt19937 random(3);
    for (int round = 0; round < 3000; ++round) {
        std::vector<std::uint8_t> events(random() % 70);
        for (auto& code : events) code = static_cast<std::uint8_t>(random() % (round % 2 == 0 ? 5 : 45));
        const auto n = static_cast<std::int32_t>(random() % 90) - 10;
        const std::vector<std::uint8_t> before = events;
        FrameI2C(events, n);
        for (std::size_t i = 0; i < events.size(); ++i) {
            EXPECT_TRUE(static_cast<std::int32_t>(i) < n || events[i] == before[i]);
        }
    }
}

/// Random transfers, some of them cut, with the phases of a bit one to six samples long.
I2cWave RandomTraffic(std::mt19937& random) {
    I2cWave wave;
    wave.Width = [&random] { return 1 + static_cast<int>(random() % 6); };
    wave.Hold(true, true);
    const int transfers = 1 + static_cast<int>(random() % 4);
    for (int t = 0; t < transfers; ++t) {
        wave.Start();
        const int bytes = static_cast<int>(random() % 4);
        for (int b = 0; b < bytes; ++b) wave.Byte(random() % 256, random() % 4 != 0);
        for (auto odd = random() % 12; odd > 7; --odd) wave.Bit(random() % 2 == 0);
        if (random() % 3 != 0) wave.Stop();
    }
    return wave;
}

void Damage(std::vector<std::uint8_t>& levels, std::mt19937& random) {
    const auto hits = levels.empty() ? 0 : random() % 8;
    for (auto hit = hits; hit > 0; --hit) levels[random() % levels.size()] ^= 1;
}

std::int32_t RandomAlignment(std::mt19937& random, std::int32_t length) {
    const std::array<std::int32_t, 12> choices{0, 0, 1, 7, 40, 127, 128, 129, 200, length, length + 1, -3};
    return random() % 3 == 0 ? choices[random() % choices.size()] : 0;
}

TEST(DecodeI2C, AgreesWithTheSlowDecoder) {
    std::mt19937 random(20240314);
    BusState bus(64);
    std::ptrdiff_t acknowledges = 0;
    for (int round = 0; round < 4000; ++round) {
        I2cWave wave = RandomTraffic(random);
        if (round % 2 == 1) Damage(wave.Scl, random);
        if (round % 4 == 3) Damage(wave.Sda, random);
        const auto length = static_cast<std::int32_t>(wave.Scl.size());
        const int scl = static_cast<int>(random() % 160);
        const int sda = random() % 2 == 0 ? scl ^ 1 : static_cast<int>(random() % 160);
        const int group = static_cast<int>(random() % 30);
        for (auto& record : bus->Groups) record.Mode = 0;
        bus.SetGroup(group, kGroupModeI2C, {scl, sda});
        bus.SetDisplayLen(random() % 5 == 0 ? length / 2 : length);
        for (const int channel : {scl, sda}) {
            bus.SetLength(channel / 8,
                          random() % 6 == 0 ? static_cast<std::int32_t>(random() % 300) : length);
            bus->Pods.AdjAddr[static_cast<std::size_t>(channel / 8)] = RandomAlignment(random, length);
        }
        bus.Draw(scl, wave.Scl);
        bus.Draw(sda, wave.Sda);
        const auto expected = test::DecodeSlowlyI2c(*bus);
        DecodeI2C(*bus);
        ASSERT_EQ(bus->Serial.SerialEvents, expected.Events) << "round " << round;
        ASSERT_EQ(bus->Serial.SerialFirst, expected.First) << "round " << round;
        ASSERT_EQ(bus->Serial.SerialLast, expected.Last) << "round " << round;
        ASSERT_EQ(bus->Serial.SerialGroup, expected.Group);
        acknowledges += std::count(expected.Events.begin(), expected.Events.end(), 15);
    }
    EXPECT_GT(acknowledges, 5000);
}

TEST(DecodeI2C, AgreesOnNoise) {
    std::mt19937 random(5);
    BusState bus(1000);
    bus.SetGroup(0, kGroupModeI2C, {3, 12});
    for (int round = 0; round < 500; ++round) {
        const auto rate = 1 + random() % 6;
        std::uint8_t scl = 0;
        std::uint8_t sda = 0;
        for (std::size_t i = 0; i < 1000; ++i) {
            if (random() % rate == 0) scl ^= 1;
            if (random() % rate == 0) sda ^= 1;
            bus.Set(3, i, scl != 0);
            bus.Set(12, i, sda != 0);
        }
        const auto expected = test::DecodeSlowlyI2c(*bus);
        DecodeI2C(*bus);
        ASSERT_EQ(bus->Serial.SerialEvents, expected.Events) << "round " << round;
    }
}

TEST(DecodeI2C, NumbersFromAFileDoNoHarm) {
    std::mt19937 random(11);
    BusState bus(300);
    for (int round = 0; round < 2000; ++round) {
        const auto any = [&random] { return static_cast<std::int32_t>(random()); };
        for (auto& record : bus->Groups) record.Mode = static_cast<std::int8_t>(random() % 8);
        auto& group = bus->Groups[random() % 4];
        group.Mode = kGroupModeI2C;
        group.Size = any();
        for (auto& channel : group.Channels) {
            channel = random() % 3 == 0 ? any() : static_cast<std::int32_t>(random() % 200) - 20;
        }
        for (auto& adjust : bus->Pods.AdjAddr) adjust = random() % 2 == 0 ? any() : any() % 400;
        for (auto& mode : bus->Pods.HardwarePod) mode = static_cast<std::int8_t>(random() % 6);
        for (int pod = 0; pod < kMaxPods; ++pod) bus.SetLength(pod, any() % 1000);
        if (round % 7 == 0) bus.SetDisplayLen(static_cast<std::int32_t>(random() % 400));
        EXPECT_TRUE(DecodeI2C(*bus));
        EXPECT_GE(bus->Serial.SerialLast, bus->Serial.SerialFirst);
    }
}

}  // namespace
}  // namespace zu
