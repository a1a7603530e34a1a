#include <gtest/gtest.h>
#include <set>
#include <vector>

#include "Fakes.h"
#include "hw/PortKernelDriver.h"
#include "hw/linux/LinuxPorts.h"
#include "hw/linux/LinuxSeams.h"
#include "hw/linux/LinuxUsb.h"

// No test here asks the machine for a port or opens a device of its own.

namespace zu::test {
namespace {

struct FakeGate : PortGate {
    bool Open = true;
    std::set<std::uint32_t> Refused;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> Asked;
    bool Available() override { return Open; }
    bool Allow(const CardRange& range) override {
        Asked.emplace_back(range.Start, range.Length);
        return Refused.count(range.Start) == 0;
    }
};

struct Driver {
    FakePorts Ports;
    Lines Trace;
    TracePortIo Traced{Ports, Trace.Log};
    FakeGate Gate;
    PortKernelDriver Kernel{Traced, Gate};
};

TEST(PortDriver, ServesTransferRecords) {
    Driver d;
    d.Ports.Answer = [](std::uint16_t port) { return static_cast<std::uint8_t>(port); };
    DriverLink link(d.Kernel);
    DriverPorts ports(link);
    ports.Out8(0x378, 0x5A);
    EXPECT_EQ(ports.In8(0x37C), 0x7C);
    std::vector<std::uint8_t> bytes(6, 0);
    ports.InString(0x37C, PortUnit::Byte, bytes);
    ports.InString(0x37C, PortUnit::Word, bytes);
    ports.InString(0x37C, PortUnit::DoubleWord, bytes);
    EXPECT_EQ(d.Trace.Take(), "OUT 0378 5a\nIN 037c 7c\nINS1 037c 6\nINS2 037c 6\nINS4 037c 6\n");
    EXPECT_EQ(d.Gate.Asked, (std::vector<std::pair<std::uint32_t, std::uint32_t>>{
                                {0x210, 432}, {0x610, 384}, {0xA10, 384}, {0xE10, 384}}));
}

TEST(PortDriver, RefusalsAreFailures) {
    Driver closed;
    closed.Gate.Open = false;
    DriverLink a(closed.Kernel);
    EXPECT_FALSE(a.EnsureOpen());
    EXPECT_EQ(a.FailureText(), "Failed opening WinDriver device\n");
    Driver refused;
    refused.Gate.Refused = {0xA10};
    DriverLink b(refused.Kernel);
    EXPECT_FALSE(b.EnsureOpen());
    EXPECT_EQ(b.FailureText(), "Failed locking device.\n");
}

TEST(PortDriver, StrangeRequestsAreRefused) {
    Driver d;
    std::vector<std::uint8_t> record(24);
    EXPECT_FALSE(d.Kernel.Ioctl(0x12345678, record, {}));
    record[0] = 99;
    EXPECT_FALSE(d.Kernel.Ioctl(kDriverTransferCode, record, {})) << "unknown command";
    record.resize(23);
    EXPECT_FALSE(d.Kernel.Ioctl(kDriverTransferCode, record, {}));
    EXPECT_FALSE(d.Kernel.Ioctl(kDriverVersionCode, record, {}));
    EXPECT_FALSE(d.Kernel.Ioctl(kDriverRegisterCode, record, {}));
    EXPECT_TRUE(d.Kernel.Ioctl(kDriverReleaseCode, record, {}));
    std::vector<std::uint8_t> card(CardRecord::kBytes);
    EXPECT_TRUE(d.Kernel.Ioctl(kDriverRegisterCode, card, {}));
    EXPECT_EQ(GetU32(card, 0), 0U) << "no items, no handle";
    PutU32(card, 4, 0xFFFFFFFF);
    EXPECT_TRUE(d.Kernel.Ioctl(kDriverRegisterCode, card, {})) << "a wild count stays in the record";
    EXPECT_TRUE(d.Trace.All.empty());
}

TEST(PortDriver, BlockLongerThanItsBufferIsCut) {
    Driver d;
    TransferRecord record{TransferCommand::BlockBytes, 0x210, 1000, 0};
    auto bytes = record.Pack();
    std::vector<std::uint8_t> buffer(10);
    EXPECT_TRUE(d.Kernel.Ioctl(kDriverTransferCode, bytes, buffer));
    EXPECT_EQ(d.Trace.Take(), "INS1 0210 10\n");
}

TEST(LinuxPorts, PortsThatWereNotGrantedAreNeverTouched) {
    LinuxPorts ports;
    std::vector<std::uint8_t> bytes(9, 0x77);
    ports.Out8(0x80, 1);
    EXPECT_EQ(ports.In8(0x210), 0xFF);
    EXPECT_EQ(ports.In8(0xFFFF), 0xFF);
    ports.InString(0xFFFF, PortUnit::DoubleWord, bytes);
    EXPECT_EQ(bytes, (std::vector<std::uint8_t>{0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x77}));
    EXPECT_FALSE(ports.Allow({0xFFF0, 0x20})) << "beyond the last port";
    EXPECT_FALSE(ports.Allow({0xFFFFFFF0, 0xFFFFFFFF}));
}

TEST(LinuxUsb, WithoutADeviceEverythingFails) {
    LinuxUsb usb;
    EXPECT_FALSE(usb.Open(-1));
    EXPECT_FALSE(usb.Open(1000000));
    std::vector<std::uint8_t> data(18);
    EXPECT_FALSE(usb.QueryIds(UsbIdQuery::Descriptor, data));
    const auto block = UsbRegisterBlock{0x84, 1, 0}.Pack();
    EXPECT_FALSE(usb.RegisterIn(block, data));
    EXPECT_FALSE(usb.RegisterOut(block, data));
    EXPECT_EQ(usb.BulkIn(data), -1);
    EXPECT_EQ(usb.BulkOut(data), -1);
    usb.Close();
}

TEST(LinuxSeams, LeadToDriverAndUsbOnly) {
    LinuxSeams seams;
    EXPECT_EQ(seams.Seams().Ports, &NullPortIo());
    EXPECT_NE(seams.Seams().Driver, &NullKernelDriver());
    EXPECT_NE(seams.Seams().Usb, &NullUsbDevice());
}

}  // namespace
}  // namespace zu::test
