#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace zu {

/// Writes and reads little-endian numbers of records that leave the program.
inline void PutU32(std::span<std::uint8_t> bytes, std::size_t at, std::uint32_t value) {
    for (std::size_t i = 0; i < 4 && at + i < bytes.size(); ++i) {
        bytes[at + i] = static_cast<std::uint8_t>(value >> (8 * i));
    }
}
inline std::uint32_t GetU32(std::span<const std::uint8_t> bytes, std::size_t at) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4 && at + i < bytes.size(); ++i) {
        value |= static_cast<std::uint32_t>(bytes[at + i]) << (8 * i);
    }
    return value;
}

/// What a transfer of the kernel driver does.
enum class TransferCommand : std::uint32_t {
    ReadByte = 10,
    WriteByte = 13,
    BlockBytes = 20,
    BlockWords = 21,
    BlockDoubleWords = 22
};

/// One port access of the kernel driver. The buffer of a block read travels beside the record.
struct TransferRecord {
    static constexpr std::size_t kBytes = 24;
    using Bytes = std::array<std::uint8_t, kBytes>;

    TransferCommand Command = TransferCommand::ReadByte;
    std::uint32_t Port = 0;
    std::uint32_t Count = 1;  ///< bytes of a block read, whatever its unit
    std::uint32_t Data = 0;   ///< byte written or read

    [[nodiscard]] Bytes Pack() const {
        Bytes bytes{};
        PutU32(bytes, 0, static_cast<std::uint32_t>(Command));
        PutU32(bytes, 4, Port);
        PutU32(bytes, 8, Count);
        PutU32(bytes, 20, Data);
        return bytes;
    }
    static TransferRecord Unpack(std::span<const std::uint8_t> bytes) {
        return {static_cast<TransferCommand>(GetU32(bytes, 0)), GetU32(bytes, 4), GetU32(bytes, 8),
                GetU32(bytes, 20)};
    }
};

/// One register command of the USB device. The data travel beside the block.
struct UsbRegisterBlock {
    static constexpr std::size_t kBytes = 16;
    using Bytes = std::array<std::uint8_t, kBytes>;

    std::uint32_t Offset = 0;  ///< device command
    std::uint32_t Length = 0;  ///< data length, its low byte only
    std::uint32_t Index = 0;

    [[nodiscard]] Bytes Pack() const {
        Bytes bytes{};
        PutU32(bytes, 0, Offset);
        PutU32(bytes, 4, Length);
        PutU32(bytes, 12, Index);
        return bytes;
    }
    static UsbRegisterBlock Unpack(std::span<const std::uint8_t> bytes) {
        return {GetU32(bytes, 0), GetU32(bytes, 4), GetU32(bytes, 12)};
    }
};

/// Sent ahead of each piece of a bulk transfer.
struct UsbBulkHeader {
    static constexpr std::size_t kBytes = 8;
    using Bytes = std::array<std::uint8_t, kBytes>;

    std::uint16_t Direction = 0;  ///< 0 device to host, 1 host to device
    std::uint8_t Selector = 0;    ///< 0 in all uses
    std::uint32_t Length = 0;     ///< bytes of the coming transfer

    [[nodiscard]] Bytes Pack() const {
        Bytes bytes{static_cast<std::uint8_t>(Direction), static_cast<std::uint8_t>(Direction >> 8),
                    Selector};
        PutU32(bytes, 4, Length);
        return bytes;
    }
    static UsbBulkHeader Unpack(std::span<const std::uint8_t> bytes) {
        const std::uint32_t first = GetU32(bytes, 0);
        return {static_cast<std::uint16_t>(first), static_cast<std::uint8_t>(first >> 16), GetU32(bytes, 4)};
    }
};

static_assert(sizeof(TransferRecord::Bytes) == 24);
static_assert(sizeof(UsbRegisterBlock::Bytes) == 16);
static_assert(sizeof(UsbBulkHeader::Bytes) == 8);

}  // namespace zu
