#include "hw/sim/SimBus.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace zu {
namespace {

constexpr std::uint8_t kOpenBus = 0xFF;
constexpr std::uint8_t kStrobeAddress = 0xF0;

/// Register at an offset within a board: the timer is at the top, the younger series' own registers below it.
constexpr std::array<int, 16> kRegisterAt{0, 1, 2, 3, 4, 5, 6, 7, 12, 13, 14, 15, 8, 9, 10, 11};

int RegisterAt(int offset) {
    return kRegisterAt[static_cast<std::size_t>(offset & 15)];
}

/// The pod registers: 0xE1 and 0xE0 of board 0, then 0x10 lower for each further board; the odd one is first.
struct PodAddress {
    int Board = -1;  ///< -1: not a pod register
    bool First = false;
};

PodAddress PodAddressOf(int address) {
    const bool inside = address >= 0xB0 && address <= 0xE1 && (address & 0x0E) == 0;
    return inside ? PodAddress{0xE - (address >> 4), (address & 1) != 0} : PodAddress{};
}

std::string Hex(const char* what, int value) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%s %x", what, static_cast<unsigned>(value));
    return text.data();
}

/// A register access by address byte, where board 0 begins at 0x20.
void WriteAt(SimInstrument& instrument, int address, std::uint8_t value) {
    const PodAddress pod = PodAddressOf(address);
    if (pod.Board >= 0) return instrument.WritePodRegister(pod.Board, pod.First, value);
    if (address < 0x20 || address >= 0x60) return instrument.Complain(Hex("write to address", address));
    instrument.Write((address - 0x20) >> 4, RegisterAt(address), value);
}

int BoardAt(int address) {
    return address < 0x20 || address >= 0x60 ? -1 : (address - 0x20) >> 4;
}

std::span<std::uint8_t> WholeUnits(std::span<std::uint8_t> bytes, PortUnit unit) {
    const std::size_t step = static_cast<std::size_t>(unit);
    return bytes.first(bytes.size() - bytes.size() % step);
}

/// Board and register of a port of the plug-in board; board -1 for a port that is not its own.
struct IsaTarget {
    int Board = -1;
    int Reg = 0;
};

IsaTarget IsaTargetOf(std::uint16_t port, std::uint16_t base) {
    const int p = port - base;
    if (p < 0 || p >= 0x1000 || (p & 0x3F0) != 0) return {};
    return {p >> 10, RegisterAt(p)};
}

}  // namespace

void SimIsaPorts::Out8(std::uint16_t port, std::uint8_t value) {
    const PodAddress pod = PodAddressOf(port);
    if (pod.Board >= 0) return instrument_->WritePodRegister(pod.Board, pod.First, value);
    const IsaTarget target = IsaTargetOf(port, base_);
    if (target.Board >= 0) instrument_->Write(target.Board, target.Reg, value);
}

std::uint8_t SimIsaPorts::In8(std::uint16_t port) {
    const IsaTarget target = IsaTargetOf(port, base_);
    return target.Board >= 0 ? instrument_->Read(target.Board, target.Reg) : kOpenBus;
}

void SimIsaPorts::InString(std::uint16_t port, PortUnit unit, std::span<std::uint8_t> bytes) {
    const std::span<std::uint8_t> whole = WholeUnits(bytes, unit);
    const IsaTarget target = IsaTargetOf(port, base_);
    if (target.Board >= 0) {
        instrument_->ReadBlock(target.Board, target.Reg, whole);
    } else {
        std::fill(whole.begin(), whole.end(), kOpenBus);
    }
}

void SimParallelPorts::Out8(std::uint16_t port, std::uint8_t value) {
    switch (port - base_) {
        case 0:
            data_ = value;
            drives_ = false;
            return;
        case 2:
            return OutControl(value);
        case 3:
            eppAddress_ = value;
            return;
        case 4:
            if (!modes_.Epp) return;
            if (framed_) {
                instrument_->Write(eppAddress_ >> 4 & 3, RegisterAt(eppAddress_), value);
            } else {
                WriteAt(*instrument_, eppAddress_, value);
            }
            return;
        default:
            return;
    }
}

/// Control lines of the byte protocol, told by their two high bits from those that frame EPP accesses: bit 3
/// latches an address, bit 1 moves a byte, bit 5 says which way.
void SimParallelPorts::OutControl(std::uint8_t value) {
    const std::uint8_t before = control_;
    control_ = value;
    if ((value & 0xC0) != 0xC0) {
        if (value == 0x0F) framed_ = true;
        if (value == 0x0B) framed_ = false;
        return;
    }
    if (!modes_.Byte) return;
    if (Rises(before, value, 3)) {
        address_ = data_;
        drives_ = true;
    }
    if (!Rises(before, value, 1)) return;
    if ((value & 0x20) != 0) {
        instrument_->Clock(BoardAt(address_), RegisterAt(address_));
    } else {
        WriteAt(*instrument_, address_, data_);
    }
}

std::uint8_t SimParallelPorts::DataLines() const {
    if (!drives_) return data_;
    return instrument_->Peek(BoardAt(address_), RegisterAt(address_));
}

/// Board of the EPP address; -1 for one that no board has.
int SimParallelPorts::EppAddress() const {
    return framed_ ? eppAddress_ >> 4 & 3 : BoardAt(eppAddress_);
}

std::uint8_t SimParallelPorts::In8(std::uint16_t port) {
    if (port == base_) return DataLines();
    if (port == base_ + 4 && modes_.Epp) return instrument_->Read(EppAddress(), RegisterAt(eppAddress_));
    return kOpenBus;
}

void SimParallelPorts::InString(std::uint16_t port, PortUnit unit, std::span<std::uint8_t> bytes) {
    const std::span<std::uint8_t> whole = WholeUnits(bytes, unit);
    if (port == base_ + 4 && modes_.Epp) {
        instrument_->ReadBlock(EppAddress(), RegisterAt(eppAddress_), whole);
    } else {
        std::fill(whole.begin(), whole.end(), kOpenBus);
    }
}

bool SimUsbDevice::QueryIds(UsbIdQuery query, std::span<std::uint8_t> bytes) {
    constexpr std::array<std::uint8_t, 4> kIds{0x95, 0x31, 0x20, 0x00};
    const std::size_t at = query == UsbIdQuery::Scan ? 0 : 8;
    if (bytes.size() < at + kIds.size()) return false;
    std::copy(kIds.begin(), kIds.end(), bytes.begin() + static_cast<std::ptrdiff_t>(at));
    return true;
}

bool SimUsbDevice::RegisterIn(const UsbRegisterBlock::Bytes& block, std::span<std::uint8_t> data) {
    constexpr std::uint8_t kStatus = 0x2F;
    constexpr std::uint8_t kIdentity = 0x08;
    const UsbRegisterBlock command = UsbRegisterBlock::Unpack(block);
    if (command.Length != 1 || data.size() != 1) return false;
    switch (command.Offset) {
        case 0x84:
            data[0] = instrument_->Read(BoardAt(selected_), RegisterAt(selected_));
            return true;
        case 0x86:
            data[0] = static_cast<std::uint8_t>(kStatus | (test_ != 0 ? 0x10 : 0));
            return true;
        case 0x8E:
            data[0] = kIdentity;
            return true;
        default:
            instrument_->Complain(Hex("USB read command", static_cast<int>(command.Offset)));
            return false;
    }
}

bool SimUsbDevice::RegisterOut(const UsbRegisterBlock::Bytes& block, std::span<const std::uint8_t> data) {
    const UsbRegisterBlock command = UsbRegisterBlock::Unpack(block);
    if (command.Length == 0 || command.Length > data.size()) return false;
    data = data.first(command.Length);
    switch (command.Offset) {
        case 0x82:
            if (data.size() != UsbBulkHeader::kBytes) return false;
            header_ = UsbBulkHeader::Unpack(data);
            return true;
        case 0x83:
            return TakeRegisters(data);
        case 0x88:
            test_ = data[0];
            return true;
        case 0x8C:
            return true;
        default:
            instrument_->Complain(Hex("USB write command", static_cast<int>(command.Offset)));
            return false;
    }
}

bool SimUsbDevice::TakeRegisters(std::span<const std::uint8_t> data) {
    if (data.size() == 1) {
        selected_ = data[0];
        return true;
    }
    if (data.size() % 2 != 0 || data.size() > 64) {
        instrument_->Complain(Hex("USB packet of length", static_cast<int>(data.size())));
        return false;
    }
    for (std::size_t i = 0; i < data.size(); i += 2) {
        if (data[i] == kStrobeAddress) {
            instrument_->Strobe();
        } else {
            WriteAt(*instrument_, data[i], data[i + 1]);
        }
    }
    return true;
}

bool SimUsbDevice::Announced(std::uint16_t direction, std::size_t length) {
    if (header_.Direction == direction && header_.Length == length) return true;
    instrument_->Complain(Hex("USB bulk transfer without its header, length", static_cast<int>(length)));
    return false;
}

std::int32_t SimUsbDevice::BulkIn(std::span<std::uint8_t> data) {
    if (!Announced(0, data.size())) return -1;
    instrument_->ReadBlock(BoardAt(selected_), RegisterAt(selected_), data);
    return static_cast<std::int32_t>(data.size());
}

std::int32_t SimUsbDevice::BulkOut(std::span<const std::uint8_t> data) {
    if (!Announced(1, data.size())) return -1;
    instrument_->WriteBlock(BoardAt(selected_), RegisterAt(selected_), data);
    return static_cast<std::int32_t>(data.size());
}

}  // namespace zu
