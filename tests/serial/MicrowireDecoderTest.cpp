// The Microwire decoder, which fills no map.
#include <gtest/gtest.h>
#include <random>

#include "BusState.h"
#include "SlowDecoders.h"
#include "serial/MicrowireDecoder.h"

namespace zu {
namespace {

using test::BusState;

/// Clock on channel 0, data in 1, data out 2, chip select 8.
void Draw(BusState& bus, const std::vector<std::uint8_t>& clock, const std::vector<std::uint8_t>& dataIn,
          const std::vector<std::uint8_t>& select) {
    bus.SetGroup(3, kGroupModeMicrowire, {0, 1, 2, 8});
    bus->Serial.SerialGroup = 3;
    bus.Draw(0, clock);
    bus.Draw(1, dataIn);
    bus.Draw(8, select);
}

TEST(DecodeMicrowire, FormsTheCodeOfTheLastBitOfTheFirstSelect) {
    BusState bus(12);
    Draw(bus, {0, 0, 1, 0, 1, 0, 0, 0, 1, 0, 1, 0},  //
         {0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0},       //
         {0, 1, 1, 1, 1, 1, 0, 0, 1, 1, 1, 1});
    EXPECT_EQ(DecodeMicrowire(*bus), 26) << "the line is 1 at the second rise";
    bus.Set(1, 4, false);
    EXPECT_EQ(DecodeMicrowire(*bus), 27);
}

TEST(DecodeMicrowire, ARiseTogetherWithTheSelectCounts) {
    BusState bus(6);
    Draw(bus, {0, 0, 1, 1, 1, 0}, {0, 0, 1, 0, 0, 0}, {0, 0, 1, 1, 0, 0});
    EXPECT_EQ(DecodeMicrowire(*bus), 26);
}

TEST(DecodeMicrowire, ASelectFromTheFirstSampleOn) {
    BusState bus(4);
    Draw(bus, {0, 1, 0, 0}, {1, 1, 0, 0}, {1, 1, 1, 1});
    EXPECT_EQ(DecodeMicrowire(*bus), 26);
}

TEST(DecodeMicrowire, EmptiesTheMapAndStoresNothing) {
    BusState bus(6);
    Draw(bus, {0, 0, 1, 1, 1, 0}, {0, 0, 1, 0, 0, 0}, {0, 0, 1, 1, 0, 0});
    bus->Serial.SerialEvents.assign(6, 26);
    bus->Serial.SerialFirst = 2;
    bus->Serial.SerialLast = 5;
    DecodeMicrowire(*bus);
    EXPECT_EQ(bus->Serial.SerialEvents, std::vector<std::uint8_t>(6, 0));
    EXPECT_EQ(bus->Serial.SerialFirst, 0);
    EXPECT_EQ(bus->Serial.SerialLast, 0);
}

TEST(DecodeMicrowire, WithoutASelectThereIsNoCode) {
    BusState bus(6);
    Draw(bus, {0, 1, 0, 1, 0, 1}, {1, 1, 1, 1, 1, 1}, {0, 0, 0, 0, 0, 0});
    EXPECT_EQ(DecodeMicrowire(*bus), 0);
}

TEST(DecodeMicrowire, TheShortestOfTheFourPodsCounts) {
    BusState bus(6);
    Draw(bus, {0, 1, 0, 1, 0, 1}, {1, 1, 1, 1, 1, 1}, {0, 1, 1, 1, 1, 1});
    bus->Groups[3].Channels[2] = 16;
    bus.SetLength(2, 0);
    EXPECT_EQ(DecodeMicrowire(*bus), 0);
}

TEST(DecodeMicrowire, AGroupThatDoesNotExistChangesNothing) {
    BusState bus(6);
    bus->Serial.SerialEvents.assign(6, 3);
    for (const int group : {-1, 30, INT32_MAX}) {
        bus->Serial.SerialGroup = group;
        EXPECT_EQ(DecodeMicrowire(*bus), 0);
    }
    EXPECT_EQ(bus->Serial.SerialEvents, std::vector<std::uint8_t>(6, 3));
}

TEST(DecodeMicrowire, AgreesWithTheSlowDecoderOnNoiseAndStrangeNumbers) {
    std::mt19937 random(9);
    BusState bus(200);
    bus->Serial.SerialGroup = 0;
    int bits = 0;
    for (int round = 0; round < 3000; ++round) {
        auto& channels = bus->Groups[0].Channels;
        for (std::size_t role = 0; role < 4; ++role) {
            channels[role] = static_cast<std::int32_t>(random() % 160);
            bool level = false;
            const auto rate = 1 + random() % 40;
            for (std::size_t i = 0; i < 200; ++i) {
                if (random() % rate == 0) level = !level;
                bus.Set(channels[role], i, level);
            }
        }
        if (random() % 10 == 0) channels[random() % 4] = static_cast<std::int32_t>(random());
        for (auto& adjust : bus->Pods.AdjAddr) {
            adjust = random() % 5 == 0 ? static_cast<std::int32_t>(random()) % 250 : 0;
        }
        for (int pod = 0; pod < kMaxPods; ++pod) {
            bus.SetLength(pod, random() % 6 == 0 ? static_cast<std::int32_t>(random() % 400) - 50 : 200);
        }
        const std::uint8_t expected = test::DecodeSlowlyMicrowire(*bus);
        ASSERT_EQ(DecodeMicrowire(*bus), expected) << "round " << round;
        bits += expected != 0 ? 1 : 0;
    }
    EXPECT_GT(bits, 500);
}

}  // namespace
}  // namespace zu
