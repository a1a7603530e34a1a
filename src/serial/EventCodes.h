#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace zu {

/// Codes of the event map, one byte per sample; 0 is no event.
namespace event {
inline constexpr std::uint8_t kNone = 0;
inline constexpr std::uint8_t kStart = 1;
inline constexpr std::uint8_t kStop = 2;
inline constexpr std::uint8_t kBit0 = 3;
inline constexpr std::uint8_t kBit1 = 4;
inline constexpr std::uint8_t kData0 = 5;
inline constexpr std::uint8_t kData1 = 6;
inline constexpr std::uint8_t kAddr0 = 7;
inline constexpr std::uint8_t kAddr1 = 8;
inline constexpr std::uint8_t kChip0 = 9;
inline constexpr std::uint8_t kChip1 = 10;
inline constexpr std::uint8_t kChipTenBit0 = 11;
inline constexpr std::uint8_t kChipTenBit1 = 12;
inline constexpr std::uint8_t kByteWrite = 13;
inline constexpr std::uint8_t kPageWrite = 14;
inline constexpr std::uint8_t kAck = 15;
inline constexpr std::uint8_t kNack = 16;
inline constexpr std::uint8_t kMode0 = 17;
inline constexpr std::uint8_t kMode1 = 18;
inline constexpr std::uint8_t kError0 = 19;
inline constexpr std::uint8_t kError1 = 20;
inline constexpr std::uint8_t kRandomRead = 21;
inline constexpr std::uint8_t kSequentialRead = 22;
inline constexpr std::uint8_t kCurrentRead = 23;
inline constexpr std::uint8_t kMicrowireIn1 = 26;  ///< data in was 1; the two views disagree on its text
inline constexpr std::uint8_t kMicrowireIn0 = 27;
}  // namespace event

/// Classes of the serial view's filter, in the order of its flags and menu items.
enum class FilterClass : std::int8_t {
    None = -1,
    Start,
    Stop,
    Read,
    Write,
    Bit,
    Ack,
    Nack,
    Data,
    Address,
    Error,
    Select
};
inline constexpr std::array<std::string_view, 11> kFilterTexts{
    "Start", "Stop", "Read",    "Write", "1 or 0",          "ACK",
    "NACK",  "Data", "Address", "Error", "Mode/Chip select"};

/// How the views show an event; a view without a text for it shows blanks or no row.
struct EventTraits {
    std::uint8_t Code;
    std::string_view StateListText;
    std::string_view SerialText;  ///< acknowledges are followed by the values that they end
    FilterClass Filter;           ///< None: the serial view of I2C never lists it
};

inline constexpr std::array<EventTraits, 39> kEvents{{
    {1, "START", "START", FilterClass::Start},
    {2, "STOP", "STOP", FilterClass::Stop},
    {3, "     0", "0", FilterClass::Bit},
    {4, "     1", "1", FilterClass::Bit},
    {5, "DATA 0", "DATA 0", FilterClass::Data},
    {6, "DATA 1", "DATA 1", FilterClass::Data},
    {7, "ADDR 0", "ADDR 0", FilterClass::Address},
    {8, "ADDR 1", "ADDR 1", FilterClass::Address},
    {9, "CHIP SEL 0", "CHIP SEL 0", FilterClass::Select},
    {10, "CHIP SEL 1", "CHIP SEL 1", FilterClass::Select},
    {11, "CHIP SEL(10bit) 0", "CHIP SEL 0", FilterClass::Select},
    {12, "CHIP SEL(10bit) 1", "CHIP SEL 1", FilterClass::Select},
    {13, "BYTE WRITE", "BYTE WRITE", FilterClass::Write},
    {14, "PAGE WRITE", "PAGE WRITE", FilterClass::Write},
    {15, "ACK", "ACK", FilterClass::Ack},
    {16, "NACK", "NACK", FilterClass::Nack},
    {17, "MODE 0", "MODE 0", FilterClass::Select},
    {18, "MODE 1", "MODE 1", FilterClass::Select},
    {19, "ERROR 0", "ERROR[0]", FilterClass::Error},
    {20, "ERROR 1", "ERROR[1]", FilterClass::Error},
    {21, "RANDOM READ", "RANDOM READ", FilterClass::Read},
    {22, "SEQ. READ", "SEQ. READ", FilterClass::Read},
    {23, "CURRENT READ", "CURRENT ADDR READ", FilterClass::Read},
    {25, "START", "", FilterClass::None},
    // The two views name these two the other way round, and files have been read with either.
    {26, "Data in 0", "D in 1", FilterClass::None},
    {27, "Data in 1", "D in 0", FilterClass::None},
    {28, "Data out 1", "", FilterClass::None},
    {29, "Data out 0", "", FilterClass::None},
    {30, "READ", "", FilterClass::None},
    {31, "WRITE", "", FilterClass::None},
    {32, "ERASE", "", FilterClass::None},
    {33, "EWEN", "", FilterClass::None},
    {34, "EWDS", "", FilterClass::None},
    {35, "ERAL", "", FilterClass::None},
    {36, "WRAL", "", FilterClass::None},
    {37, "Data 1", "", FilterClass::None},
    {38, "Data 0", "", FilterClass::None},
    {40, "ADDR 1", "", FilterClass::None},
    {41, "ADDR 0", "", FilterClass::None},
}};

/// Traits of a code; no texts for a code that has none.
const EventTraits& EventOf(std::uint8_t code);

}  // namespace zu
