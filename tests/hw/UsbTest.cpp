#include <gtest/gtest.h>
#include <numeric>
#include <vector>

#include "Fakes.h"
#include "hw/UsbLink.h"
#include "hw/UsbOps.h"

namespace zu::test {
namespace {

struct UsbWire {
    FakeUsb Device;
    Lines Trace;
    TraceUsbDevice Traced{Device, Trace.Log};
    UsbLink Link{Traced};
    UsbOps Ops{Link};

    UsbWire() {
        Link.Open(kUsbVendor, kUsbProduct, UsbIdQuery::Scan);
        Trace.Take();
    }
};

TEST(UsbOpen, SearchesInOrderAndKeepsTheFirstMatch) {
    for (const UsbIdQuery query : {UsbIdQuery::Scan, UsbIdQuery::Descriptor}) {
        FakeUsb device;
        device.Place = 5;
        UsbLink link(device);
        EXPECT_TRUE(link.Open(0x3195, 0x20, query));
        EXPECT_EQ(device.Opened, (std::vector<int>{0, 1, 2, 3, 4, 5}));
        EXPECT_EQ(device.OpenNow, 1) << "the device in between was closed";
        EXPECT_TRUE(link.Open(0x3195, 0x20, query));
        EXPECT_EQ(device.OpenNow, 1) << "a second search closes the first device";
        link.Close();
        EXPECT_EQ(device.OpenNow, 0);
    }
}

TEST(UsbOpen, GivesUpAfter127) {
    FakeUsb device;
    device.Place = -1;
    UsbLink link(device);
    EXPECT_FALSE(link.Open(0x3195, 0x20, UsbIdQuery::Scan));
    EXPECT_EQ(device.Opened.size(), 127U);
    EXPECT_EQ(device.Opened.back(), 126);
    EXPECT_EQ(device.OpenNow, 0);
}

TEST(UsbOpen, OtherIdsAreNotTheInstrument) {
    FakeUsb device;
    device.Product = 0x21;
    UsbLink link(device);
    EXPECT_FALSE(link.Open(0x3195, 0x20, UsbIdQuery::Scan));
    EXPECT_FALSE(link.Open(0x3195, 0x20, UsbIdQuery::Descriptor));
}

TEST(UsbOpen, ZeroIdsAcceptTheFirstThatOpensWithoutAsking) {
    FakeUsb device;
    device.Place = 9;
    Lines trace;
    TraceUsbDevice traced(device, trace.Log);
    UsbLink link(traced);
    EXPECT_TRUE(link.Open(0, 0, UsbIdQuery::Scan));
    EXPECT_EQ(trace.Take(), "UOPEN 3\n");
    EXPECT_FALSE(link.Open(0, 0, UsbIdQuery::Descriptor)) << "the other query knows no such rule";
}

TEST(UsbOpen, AsksWithTheIdsItLooksFor) {
    FakeUsb device;
    Lines trace;
    TraceUsbDevice traced(device, trace.Log);
    UsbLink link(traced);
    link.Open(0x3195, 0x20, UsbIdQuery::Scan);
    EXPECT_EQ(trace.Take(), "UOPEN 0\nUIDS scan : 95 31 20 00 00 00 00 00\n");
}

TEST(UsbWrite, QueuesPairs) {
    UsbWire wire;
    wire.Ops.RegWrite(0, 0x0403, 0x11);
    wire.Ops.RegWrite(0x378, 0x00D1, 0x22);
    wire.Ops.RegWrite(0, 0x0040, 0x33);
    EXPECT_EQ(wire.Trace.Take(), "") << "nothing is sent";
    wire.Link.Flush();
    EXPECT_EQ(wire.Trace.Take(), "UOUT 83 6 0 : 33 11 d1 22 21 33\n");
    EXPECT_EQ(wire.Link.Queued(), 0U);
}

TEST(UsbRead, OfR0IsAQueuedStrobe) {
    UsbWire wire;
    wire.Device.Answer = [](std::uint8_t) { return std::uint8_t{0x99}; };
    wire.Ops.RegWrite(0, 0x0004, 0x08);
    EXPECT_EQ(wire.Ops.RegRead(0, 0x0400), 0);
    wire.Ops.RegWrite(0, 0x0004, 0x00);
    EXPECT_EQ(wire.Trace.Take(), "");
    wire.Link.Flush();
    EXPECT_EQ(wire.Trace.Take(), "UOUT 83 6 0 : 24 08 f0 00 24 00\n");
}

TEST(UsbRead, FlushesAndAsks) {
    UsbWire wire;
    wire.Device.Answer = [](std::uint8_t) { return std::uint8_t{0x99}; };
    wire.Ops.RegWrite(0, 0x0001, 0x01);
    EXPECT_EQ(wire.Ops.RegRead(0, 0x0801), 0x99);
    EXPECT_EQ(wire.Trace.Take(), "UOUT 83 2 0 : 21 01\nUOUT 83 1 0 : 41\nUIN 84 1 0 : 99\n");
}

TEST(UsbRead, FailureReadsAllOnes) {
    UsbWire wire;
    wire.Device.Works = [](std::uint8_t command) { return command != 0x84; };
    EXPECT_EQ(wire.Link.Status(), 63);
    EXPECT_EQ(wire.Ops.RegRead(0, 0x0001), 0xFF);
    EXPECT_EQ(wire.Link.Status(), 0x84) << "the status names the command that failed";
    wire.Link.ResetStatus();
    EXPECT_EQ(wire.Link.Status(), 63);
}

TEST(UsbFlush, PacketsOf64) {
    const std::pair<int, const char*> cases[] = {{0, ""},      {1, "2"},      {31, "62"},     {32, "64"},
                                                 {33, "64 2"}, {64, "64 64"}, {65, "64 64 2"}};
    for (const auto& [pairs, expected] : cases) {
        UsbWire wire;
        for (int i = 0; i < pairs; ++i) wire.Ops.RegWrite(0, 1, 0);
        wire.Link.Flush();
        std::string lengths;
        for (const std::string& line : wire.Trace.All) {
            EXPECT_EQ(line.substr(0, 8), "UOUT 83 ");
            const std::string length = line.substr(8, line.find(' ', 8) - 8);
            lengths += lengths.empty() ? length : " " + length;
        }
        EXPECT_EQ(lengths, expected) << pairs << " pairs";
    }
}

TEST(UsbFlush, EmptiesTheQueueThoughItFails) {
    UsbWire wire;
    wire.Device.Works = [](std::uint8_t) { return false; };
    wire.Ops.RegWrite(0, 1, 0);
    wire.Link.Flush();
    EXPECT_EQ(wire.Link.Queued(), 0U);
    EXPECT_EQ(wire.Link.Status(), 0x83);
}

TEST(UsbQueue, AFullQueueIsSentBeforeTheNextPair) {
    UsbWire wire;
    for (std::size_t i = 0; i < kUsbQueueBytes / 2; ++i) wire.Link.Queue(0x21, 0);
    EXPECT_EQ(wire.Trace.Take(), "");
    EXPECT_EQ(wire.Link.Queued(), 1000000U);
    wire.Link.Queue(0x22, 5);
    EXPECT_EQ(wire.Link.Queued(), 2U);
    EXPECT_EQ(wire.Trace.All.size(), 1000000U / 64);
}

TEST(UsbBulk, SplitsAt61440) {
    const std::pair<int, const char*> cases[] = {
        {0, ""},
        {1, "UOUT 82 8 0 : 00 00 00 00 01 00 00 00\nBIN 1\n"},
        {61440, "UOUT 82 8 0 : 00 00 00 00 00 f0 00 00\nBIN 61440\n"},
        {61441,
         "UOUT 82 8 0 : 00 00 00 00 00 f0 00 00\nBIN 61440\nUOUT 82 8 0 : 00 00 00 00 01 00 00 00\nBIN 1\n"},
    };
    for (const auto& [count, expected] : cases) {
        UsbWire wire;
        std::vector<std::uint8_t> buffer(static_cast<std::size_t>(count));
        wire.Ops.RegReadBlock(0, 0x0400, count, buffer.data());
        EXPECT_EQ(wire.Trace.Take(), std::string("UOUT 83 1 0 : 30\n") + expected);
        EXPECT_EQ(buffer, std::vector<std::uint8_t>(buffer.size(), 0x5A));
    }
}

TEST(UsbBulk, ReadFlushesFirst) {
    UsbWire wire;
    wire.Ops.RegWrite(0, 5, 0x34);
    std::uint8_t byte = 0;
    wire.Ops.RegReadBlock(0, 0, 1, &byte);
    EXPECT_EQ(wire.Trace.Take(),
              "UOUT 83 2 0 : 25 34\nUOUT 83 1 0 : 20\nUOUT 82 8 0 : 00 00 00 00 01 00 00 00\nBIN 1\n");
}

TEST(UsbBulk, WriteIsDirectionOne) {
    UsbWire wire;
    std::vector<std::uint8_t> data(61440 + 300);
    std::iota(data.begin(), data.end(), std::uint8_t{0});
    EXPECT_TRUE(wire.Link.BulkWrite(data));
    EXPECT_EQ(wire.Trace.Take(),
              "UOUT 82 8 0 : 01 00 00 00 00 f0 00 00\nBOUT 61440\n"
              "UOUT 82 8 0 : 01 00 00 00 2c 01 00 00\nBOUT 300\n");
    EXPECT_EQ(wire.Device.Written, data);
}

TEST(UsbBulk, AFailureEndsTheTransfer) {
    UsbWire wire;
    std::vector<std::uint8_t> buffer(200000, 0);
    wire.Device.BulkLimit = 1000;
    EXPECT_FALSE(wire.Link.BulkRead(buffer));
    EXPECT_EQ(wire.Trace.All.size(), 2U) << "one header, one short piece";
    EXPECT_EQ(buffer[999], 0x5A);
    EXPECT_EQ(buffer[1000], 0) << "what did not come stays";
    EXPECT_EQ(wire.Link.Status(), 0x82);
    wire.Device.BulkLimit = 1 << 30;
    wire.Device.Works = [](std::uint8_t command) { return command != 0x82; };
    EXPECT_FALSE(wire.Link.BulkWrite(buffer));
    EXPECT_TRUE(wire.Device.Written.empty());
}

TEST(UsbCommands, IndexStaysFromCommandToCommand) {
    UsbWire wire;
    const std::uint8_t four = 4;
    wire.Link.WriteCommand(UsbCommand::WriteTest, {&four, 1});
    wire.Link.WriteIndexed(UsbCommand::SetUp, 0x10, {&four, 1});
    wire.Link.ReadCommand(UsbCommand::ReadStatus);
    EXPECT_EQ(wire.Trace.Take(), "UOUT 88 1 0 : 04\nUOUT 8c 1 10 : 04\nUIN 86 1 10 : 00\n");
}

TEST(UsbCommands, BlockToTheByte) {
    const UsbRegisterBlock block{0x8C, 0x12, 0x10};
    const UsbRegisterBlock::Bytes expected{0x8C, 0, 0, 0, 0x12, 0, 0, 0, 0, 0, 0, 0, 0x10, 0, 0, 0};
    EXPECT_EQ(block.Pack(), expected);
}

TEST(UsbCommands, LengthIsItsLowByte) {
    UsbWire wire;
    const std::vector<std::uint8_t> data(258);
    wire.Link.WriteCommand(UsbCommand::Registers, data);
    EXPECT_EQ(wire.Trace.All.front().substr(0, 12), "UOUT 83 2 0 ");
}

TEST(UsbCommands, NothingMovesWithoutADevice) {
    FakeUsb device;
    device.Place = -1;
    Lines trace;
    TraceUsbDevice traced(device, trace.Log);
    UsbLink link(traced);
    UsbOps ops(link);
    ops.RegWrite(0, 1, 1);
    EXPECT_EQ(ops.RegRead(0, 1), 0xFF);
    std::uint8_t byte = 0x77;
    ops.RegReadBlock(0, 0, 1, &byte);
    EXPECT_EQ(byte, 0x77);
    EXPECT_EQ(trace.Take(), "");
}

}  // namespace
}  // namespace zu::test
