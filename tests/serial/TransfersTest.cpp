// I2C transfers as bytes.
#include <array>
#include <gtest/gtest.h>
#include <random>

#include "BusState.h"
#include "serial/I2cDecoder.h"
#include "serial/Transfers.h"

namespace zu {
namespace {

using test::BusState;
using test::I2cWave;

std::vector<I2cTransfer> TransfersOf(const I2cWave& wave) {
    BusState bus(static_cast<std::int32_t>(wave.Scl.size()));
    bus.SetGroup(0, kGroupModeI2C, {0, 1});
    bus.Draw(0, wave.Scl);
    bus.Draw(1, wave.Sda);
    DecodeI2C(*bus);
    return I2cTransfers(*bus);
}

TEST(I2cTransfers, BytesBetweenStartAndStop) {
    I2cWave wave;
    wave.Start();
    wave.Byte(0xA0, true);
    wave.Byte(0x00, true);
    wave.Start();
    wave.Byte(0xA1, true);
    wave.Byte(0x5C, false);
    wave.Stop();
    const auto transfers = TransfersOf(wave);
    ASSERT_EQ(transfers.size(), 2U);
    EXPECT_EQ(TransferText(transfers[0]), "S 50 W ACK | 00 ACK");
    EXPECT_EQ(TransferText(transfers[1]), "Sr 50 R ACK | 5C NACK | P");
    EXPECT_EQ(transfers[0].Start, 2);
    EXPECT_EQ(transfers[0].Bytes[0].First, 10);
    EXPECT_EQ(transfers[0].Bytes[0].Mark, 58);
    EXPECT_EQ(transfers[0].Stop, -1);
    EXPECT_GT(transfers[1].Stop, transfers[1].Bytes[1].Mark);
}

TEST(I2cTransfers, IncompleteOnes) {
    I2cWave wave;
    wave.Hold(false, true);
    wave.Bit(true);
    wave.Bit(true);
    wave.Hold(false, true);
    wave.Hold(true, true);
    wave.Start();
    wave.Stop();
    wave.Start();
    wave.Byte(0x12, true);
    wave.Bit(true);
    wave.Stop();
    wave.Start();
    const auto transfers = TransfersOf(wave);
    ASSERT_EQ(transfers.size(), 3U);
    EXPECT_EQ(TransferText(transfers[0]), "S P");
    EXPECT_EQ(TransferText(transfers[1]), "S 09 W ACK | P") << "the odd bit is left out";
    EXPECT_EQ(TransferText(transfers[2]), "S");
    EXPECT_FALSE(transfers[1].Repeated);
    EXPECT_FALSE(transfers[2].Repeated);
}

TEST(I2cTransfers, NamedBitsCountAsBits) {
    BusState bus(32);
    const std::vector<std::uint8_t> codes{1, 18, 17, 18, 17, 9,  10, 9, 4,  15,
                                          5, 6,  6,  7,  8,  11, 12, 3, 16, 2};
    std::copy(codes.begin(), codes.end(), bus->Serial.SerialEvents.begin());
    const auto transfers = I2cTransfers(*bus);
    ASSERT_EQ(transfers.size(), 1U);
    EXPECT_EQ(TransferText(transfers[0]), "S 52 R ACK | 6A NACK | P");
}

TEST(I2cTransfers, AnyMapIsRead) {
    BusState bus(256);
    for (std::size_t i = 0; i < 256; ++i) bus->Serial.SerialEvents[i] = static_cast<std::uint8_t>(i * 7);
    for (const auto& transfer : I2cTransfers(*bus)) EXPECT_FALSE(TransferText(transfer).empty());
}

/// Events of all kinds at random places.
void Scatter(BusState& bus, std::mt19937& random, unsigned spacing) {
    constexpr std::array<std::uint8_t, 9> kCodes{1, 2, 3, 4, 3, 4, 15, 16, 27};
    for (auto& code : bus->Serial.SerialEvents) {
        code = random() % spacing == 0 ? kCodes[random() % (random() % 3 == 0 ? 9 : 6)] : std::uint8_t{0};
    }
}

TEST(I2cTransfers, ARangeHoldsTheTransfersThatBeginInIt) {
    std::mt19937 random(4);
    for (int round = 0; round < 300; ++round) {
        BusState bus(500);
        Scatter(bus, random, 1 + static_cast<unsigned>(random() % 6));
        const auto all = I2cTransfers(*bus);
        const auto first = static_cast<std::int32_t>(random() % 600) - 50;
        const auto last = static_cast<std::int32_t>(random() % 600) - 50;
        std::vector<I2cTransfer> expected;
        for (const I2cTransfer& transfer : all) {
            if (transfer.Start >= first && transfer.Start <= last) expected.push_back(transfer);
        }
        ASSERT_EQ(I2cTransfers(*bus, first, last), expected) << round;
    }
}

TEST(I2cTransfers, AreReadUpToSoManyBytes) {
    I2cWave wave;
    wave.Start();
    for (const unsigned byte : {0xA0U, 0x01U, 0x02U, 0x03U}) wave.Byte(byte, true);
    wave.Stop();
    wave.Start();
    wave.Stop();
    BusState bus(static_cast<std::int32_t>(wave.Scl.size()));
    bus.SetGroup(0, kGroupModeI2C, {0, 1});
    bus.Draw(0, wave.Scl);
    bus.Draw(1, wave.Sda);
    DecodeI2C(*bus);
    const auto text = [&bus](std::size_t most) {
        const auto transfers = I2cTransfers(*bus, 0, INT32_MAX, most);
        EXPECT_EQ(transfers.size(), 2U);
        EXPECT_FALSE(transfers[1].Repeated) << "the stop of a transfer that was cut is still seen";
        EXPECT_EQ(TransferText(transfers[1]), "S P");
        return TransferText(transfers[0]);
    };
    EXPECT_EQ(text(0), "S ...");
    EXPECT_EQ(text(2), "S 50 W ACK | 01 ACK | ...");
    EXPECT_EQ(text(4), "S 50 W ACK | 01 ACK | 02 ACK | 03 ACK | P");
}

}  // namespace
}  // namespace zu
