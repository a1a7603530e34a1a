#include <gtest/gtest.h>
#include <vector>

#include "hw/sim/SimBus.h"
#include "hw/sim/SimInstrument.h"

// What the cables of the simulated instrument do, driven by hand.

namespace zu::test {
namespace {

constexpr SimTraits kLater{.Later = true, .LargeMemory = true, .Boards = 4, .Direct = false};

TEST(SimIsa, Decode) {
    SimInstrument sim(kLater);
    SimIsaPorts ports(sim, 0x210);
    const int regOfOffset[16] = {0, 1, 2, 3, 4, 5, 6, 7, 12, 13, 14, 15, 8, 9, 10, 11};
    for (int board = 0; board < 4; ++board) {
        for (int offset = 0; offset < 16; ++offset) {
            ports.Out8(static_cast<std::uint16_t>(0x210 + 0x400 * board + offset),
                       static_cast<std::uint8_t>(0x10 * board + offset + 1));
            EXPECT_EQ(sim.Board(board).Register(regOfOffset[offset]), 0x10 * board + offset + 1);
        }
    }
    EXPECT_EQ(ports.In8(0x212), 0x00);
    EXPECT_EQ(ports.In8(0x232), 0xFF) << "another address";
    EXPECT_EQ(ports.In8(0x1212), 0xFF);
    EXPECT_EQ(ports.In8(0x10), 0xFF);
    std::vector<std::uint8_t> bytes(5, 0x77);
    ports.InString(0x232, PortUnit::Word, bytes);
    EXPECT_EQ(bytes, (std::vector<std::uint8_t>{0xFF, 0xFF, 0xFF, 0xFF, 0x77}));
    ports.Out8(0x232, 0xAB);
    EXPECT_TRUE(sim.Complaints().empty());
}

TEST(SimIsa, LiteralPorts) {
    SimInstrument sim({true, true, 4, true});
    SimIsaPorts ports(sim, 0x210);
    const int highs[] = {0xE0, 0xD0, 0xC0, 0xB0};
    for (int board = 0; board < 4; ++board) {
        ports.Out8(static_cast<std::uint16_t>(highs[board] + 1), static_cast<std::uint8_t>(0x10 + board));
        ports.Out8(static_cast<std::uint16_t>(highs[board]), static_cast<std::uint8_t>(0x20 + board));
        EXPECT_EQ(sim.Board(board).S10(), 0x10 + board);
        EXPECT_EQ(sim.Board(board).S11(), 0x20 + board);
    }
}

TEST(SimParallel, ByteProtocolByHand) {
    SimInstrument sim(kLater);
    SimParallelPorts ports(sim, 0x378, {.Byte = true, .Epp = false});
    const auto out = [&](int offset, std::initializer_list<int> values) {
        for (const int v : values) {
            ports.Out8(static_cast<std::uint16_t>(0x378 + offset), static_cast<std::uint8_t>(v));
        }
    };
    ports.Out8(0x378, 0xAA);
    EXPECT_EQ(ports.In8(0x378), 0xAA) << "an idle port gives back what it was given";
    out(0, {0x31});  // board 1, register 1
    out(2, {0xC5, 0xCD, 0xC5});
    out(0, {0x01});
    out(2, {0xC7});
    EXPECT_EQ(sim.Board(1).Register(1), 1);
    out(2, {0xC5});
    out(0, {0x31});
    out(2, {0xC5, 0xCD, 0xC5, 0xE4, 0xE6});
    EXPECT_EQ(ports.In8(0x378), 0x80);
    EXPECT_EQ(ports.In8(0x378), 0x80) << "twice the same";
    out(2, {0xC5});
    EXPECT_EQ(ports.In8(0x37C), 0xFF) << "this port knows no EPP";
}

TEST(SimParallel, AStrobeIsOneEdgeHoweverOftenItIsPutOut) {
    SimInstrument sim({true, true, 1, true});
    SimParallelPorts ports(sim, 0x378, {});
    sim.WritePodRegister(0, true, 0x01);  // opens the position load
    sim.Write(0, 4, 0x08);
    for (int i = 0; i < 2; ++i) {
        for (const int v : {0x20, 0x20}) ports.Out8(0x378, static_cast<std::uint8_t>(v));
        for (const int v : {0xC5, 0xC5, 0xCD, 0xCD, 0xC5, 0xC5, 0xE4, 0xE4, 0xE6, 0xE6}) {
            ports.Out8(0x37A, static_cast<std::uint8_t>(v));
        }
        ports.In8(0x378);
        ports.In8(0x378);
        ports.Out8(0x37A, 0xC5);
    }
    sim.WritePodRegister(0, true, 0x00);
    EXPECT_EQ(sim.Position(), 1U) << "two strobes, one bit";
}

TEST(SimParallel, EppAddressesWithAndWithoutFrame) {
    SimInstrument sim({true, true, 4, true});
    SimParallelPorts ports(sim, 0x378, {});
    const auto write = [&](int address, int value) {
        ports.Out8(0x37B, static_cast<std::uint8_t>(address));
        ports.Out8(0x37C, static_cast<std::uint8_t>(value));
    };
    write(0x33, 0x5A);
    EXPECT_EQ(sim.Board(1).Register(3), 0x5A) << "board 1 begins at 0x30";
    write(0xE1, 0x44);
    EXPECT_EQ(sim.Board(0).S10(), 0x44);
    for (const int v : {0x04, 0x0F, 0x00}) ports.Out8(0x37A, static_cast<std::uint8_t>(v));
    write(0x33, 0x6B);
    EXPECT_EQ(sim.Board(3).Register(3), 0x6B) << "in a frame the boards begin at 0x00";
    for (const int v : {0x00, 0x0B, 0x00}) ports.Out8(0x37A, static_cast<std::uint8_t>(v));
    write(0x33, 0x7C);
    EXPECT_EQ(sim.Board(1).Register(3), 0x7C);
    write(0x99, 0);
    EXPECT_EQ(sim.Complaints().size(), 1U) << "no such address";
}

struct UsbHand {
    SimInstrument& Sim;
    SimUsbDevice Device{Sim};

    bool Out(int command, std::vector<std::uint8_t> data) {
        const UsbRegisterBlock block{static_cast<std::uint32_t>(command),
                                     static_cast<std::uint32_t>(data.size()), 0};
        return Device.RegisterOut(block.Pack(), data);
    }
    int In(int command) {
        std::vector<std::uint8_t> data(1);
        const UsbRegisterBlock block{static_cast<std::uint32_t>(command), 1, 0};
        return Device.RegisterIn(block.Pack(), data) ? data[0] : -1;
    }
};

TEST(SimUsb, Commands) {
    SimInstrument sim({true, true, 4, true});
    UsbHand usb{sim};
    EXPECT_TRUE(usb.Device.Open(0));
    EXPECT_FALSE(usb.Device.Open(1));
    EXPECT_TRUE(usb.Out(0x88, {0xFF}));
    EXPECT_EQ(usb.In(0x86), 0x3F);
    EXPECT_TRUE(usb.Out(0x88, {0x00}));
    EXPECT_EQ(usb.In(0x86), 0x2F);
    EXPECT_EQ(usb.In(0x8E), 0x08);
    EXPECT_TRUE(usb.Out(0x8C, {0x04}));
    EXPECT_TRUE(usb.Out(0x83, {0x21, 0x01, 0xE1, 0x12, 0x53, 0x34}));
    EXPECT_EQ(sim.Board(0).Register(1), 1);
    EXPECT_EQ(sim.Board(0).S10(), 0x12);
    EXPECT_EQ(sim.Board(3).Register(3), 0x34);
    EXPECT_TRUE(usb.Out(0x83, {0x21}));
    EXPECT_EQ(usb.In(0x84), 0x82);
    EXPECT_TRUE(sim.Complaints().empty());
    EXPECT_EQ(usb.In(0x99), -1);
    EXPECT_FALSE(usb.Out(0x99, {0}));
    EXPECT_FALSE(usb.Out(0x83, {1, 2, 3}));
    EXPECT_FALSE(usb.Out(0x83, std::vector<std::uint8_t>(66)));
    EXPECT_TRUE(usb.Out(0x83, {0x10, 0x00}));
    EXPECT_EQ(sim.Complaints().size(), 5U);
}

TEST(SimUsb, BulkNeedsItsHeader) {
    SimInstrument sim(kLater);
    UsbHand usb{sim};
    std::vector<std::uint8_t> data(300);
    EXPECT_EQ(usb.Device.BulkIn(data), -1);
    EXPECT_TRUE(usb.Out(0x82, {0, 0, 0, 0, 0x2C, 0x01, 0, 0}));
    EXPECT_EQ(usb.Device.BulkOut(data), -1) << "the other direction";
    EXPECT_EQ(usb.Device.BulkIn(data), 300);
    EXPECT_FALSE(usb.Out(0x82, {0, 0, 0}));
}

TEST(SimUsb, Ids) {
    SimInstrument sim(kLater);
    SimUsbDevice device(sim);
    std::vector<std::uint8_t> scan(8);
    std::vector<std::uint8_t> descriptor(18);
    EXPECT_TRUE(device.QueryIds(UsbIdQuery::Scan, scan));
    EXPECT_EQ(scan, (std::vector<std::uint8_t>{0x95, 0x31, 0x20, 0, 0, 0, 0, 0}));
    EXPECT_TRUE(device.QueryIds(UsbIdQuery::Descriptor, descriptor));
    EXPECT_EQ(descriptor[8], 0x95);
    EXPECT_EQ(descriptor[10], 0x20);
    EXPECT_FALSE(device.QueryIds(UsbIdQuery::Descriptor, scan));
}

TEST(SimComplaints, AreBounded) {
    SimInstrument sim(kLater);
    for (int i = 0; i < 1000; ++i) sim.Complain("again");
    EXPECT_EQ(sim.Complaints().size(), 100U);
}

}  // namespace
}  // namespace zu::test
