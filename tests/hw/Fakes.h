#pragma once

#include <algorithm>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "hw/HardwareSession.h"
#include "hw/Seams.h"
#include "hw/Trace.h"

namespace zu::test {

/// Lines of a trace, to be compared as text.
struct Lines {
    std::vector<std::string> All;
    TraceLog Log{[this](std::string_view line) { All.emplace_back(line); }};

    /// The lines so far, one a row; starts anew.
    std::string Take() {
        std::string text;
        for (const std::string& line : All) text += line + "\n";
        All.clear();
        return text;
    }
};

/// Ports that answer what a function says, 0xFF without one.
class FakePorts : public PortIo {
  public:
    std::function<std::uint8_t(std::uint16_t)> Answer;
    std::map<std::uint16_t, std::uint8_t> Latch;  ///< last byte put out, by port

    void Out8(std::uint16_t port, std::uint8_t value) override { Latch[port] = value; }
    std::uint8_t In8(std::uint16_t port) override { return Answer ? Answer(port) : std::uint8_t{0xFF}; }
    void InString(std::uint16_t port, PortUnit unit, std::span<std::uint8_t> bytes) override {
        const std::size_t step = static_cast<std::size_t>(unit);
        for (std::size_t i = 0; i + step <= bytes.size(); ++i) bytes[i] = In8(port);
    }
};

/// A driver that opens and grants everything; data of reads come from a function.
class FakeDriver : public KernelDriver {
  public:
    bool Opens = true;
    std::uint32_t Version = 432;
    std::uint32_t Handle = 7;
    std::uint32_t FailingCode = 0;  ///< request that fails, 0 none
    std::function<std::uint8_t(std::uint16_t)> Answer;
    int OpenCalls = 0;
    int CloseCalls = 0;
    std::vector<std::uint32_t> Codes;
    std::vector<std::vector<std::uint8_t>> Records;

    bool Open() override {
        ++OpenCalls;
        return Opens;
    }
    bool Ioctl(std::uint32_t code, std::span<std::uint8_t> record, std::span<std::uint8_t> buffer) override {
        Codes.push_back(code);
        Records.emplace_back(record.begin(), record.end());
        if (code == FailingCode) return false;
        if (code == 0x95382443) PutU32(record, 0, Version);
        if (code == 0x95382523) PutU32(record, 0, Handle);
        if (code == 0x9538240F) Serve(record, buffer);
        return true;
    }
    void Close() override { ++CloseCalls; }

  private:
    void Serve(std::span<std::uint8_t> record, std::span<std::uint8_t> buffer) {
        const auto port = static_cast<std::uint16_t>(GetU32(record, 4));
        const std::uint8_t byte = Answer ? Answer(port) : std::uint8_t{0xFF};
        if (GetU32(record, 0) == 10) PutU32(record, 20, byte);
        std::fill(buffer.begin(), buffer.end(), byte);
    }
};

/// A USB bus with one device at a place; data of register reads come from a function of the command.
class FakeUsb : public UsbDevice {
  public:
    int Place = 0;  ///< number of the device, -1 none
    std::uint16_t Vendor = 0x3195;
    std::uint16_t Product = 0x20;
    std::function<std::uint8_t(std::uint8_t command)> Answer;
    std::function<bool(std::uint8_t command)> Works;  ///< whether a command succeeds
    std::int32_t BulkLimit = 1 << 30;                 ///< longest transfer that comes whole
    std::vector<int> Opened;
    int OpenNow = 0;
    std::vector<std::uint8_t> Written;  ///< bytes of bulk writes

    bool Open(int n) override {
        Opened.push_back(n);
        if (n != Place && n != 3) return false;  // number 3 is some other device
        current_ = n;
        ++OpenNow;
        return true;
    }
    void Close() override { --OpenNow; }
    bool QueryIds(UsbIdQuery query, std::span<std::uint8_t> bytes) override {
        const std::size_t at = query == UsbIdQuery::Scan ? 0 : 8;
        const std::uint16_t vendor = current_ == Place ? Vendor : std::uint16_t{0x1234};
        std::fill(bytes.begin(), bytes.end(), std::uint8_t{0});
        bytes[at] = static_cast<std::uint8_t>(vendor);
        bytes[at + 1] = static_cast<std::uint8_t>(vendor >> 8);
        bytes[at + 2] = static_cast<std::uint8_t>(Product);
        bytes[at + 3] = static_cast<std::uint8_t>(Product >> 8);
        return true;
    }
    bool RegisterIn(const UsbRegisterBlock::Bytes& block, std::span<std::uint8_t> data) override {
        if (Works && !Works(block[0])) return false;
        std::fill(data.begin(), data.end(), Answer ? Answer(block[0]) : std::uint8_t{0});
        return true;
    }
    bool RegisterOut(const UsbRegisterBlock::Bytes& block, std::span<const std::uint8_t>) override {
        return !Works || Works(block[0]);
    }
    std::int32_t BulkIn(std::span<std::uint8_t> data) override {
        const auto moved = std::min(BulkLimit, static_cast<std::int32_t>(data.size()));
        std::fill_n(data.begin(), moved, std::uint8_t{0x5A});
        return moved;
    }
    std::int32_t BulkOut(std::span<const std::uint8_t> data) override {
        Written.insert(Written.end(), data.begin(), data.end());
        return std::min(BulkLimit, static_cast<std::int32_t>(data.size()));
    }

  private:
    int current_ = -1;
};

/// Register operations that answer what a function of the port and of the writes so far says.
class ScriptedOps : public RegisterOps {
  public:
    std::function<std::uint8_t(std::uint16_t port)> Answer;
    std::map<std::uint16_t, std::uint8_t> Latch;

    void RegWrite(std::uint16_t, std::uint16_t port, std::uint8_t value) override { Latch[port] = value; }
    std::uint8_t RegRead(std::uint16_t, std::uint16_t port) override {
        return Answer ? Answer(port) : std::uint8_t{0};
    }
    void RegReadBlock(std::uint16_t, std::uint16_t, std::int32_t, std::uint8_t*) override {}
};

}  // namespace zu::test
