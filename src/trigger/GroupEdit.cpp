#include "trigger/GroupEdit.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <limits>
#include <optional>

#include "trigger/TrigCells.h"

namespace zu {
namespace {

const GroupRecord* FindGroup(const InstrumentState& state, int group) {
    if (group < 0 || group >= kGroupCount) return nullptr;
    return &state.Groups[static_cast<std::size_t>(group)];
}

int SizeOf(const InstrumentState& state, int group) {
    const GroupRecord* record = FindGroup(state, group);
    return record == nullptr ? 0 : std::clamp(record->Size, 0, kGroupSlots);
}

int CeilDiv(int value, int by) {
    return (value + by - 1) / by;
}

/// Largest value of `size` bits; 0, which skips the range test, for sizes that 32 bits cannot tell.
std::uint32_t LargestValue(int size) {
    return size >= 1 && size <= 31 ? (1U << static_cast<unsigned>(size)) - 1U : 0U;
}

bool IsDontCare(char c) {
    return c == 'X' || c == 'x';
}

std::optional<std::uint32_t> HexDigit(char c) {
    std::uint32_t value = 0;
    const auto result = std::from_chars(&c, &c + 1, value, 16);
    return result.ptr == &c + 1 ? std::optional(value) : std::nullopt;
}

std::uint32_t BitsValue(std::string_view bits) {
    std::uint32_t value = 0;
    for (const char c : bits) value = (value << 1U) | (c == '1' ? 1U : 0U);
    return value;
}

std::string Formatted(const char* format, std::uint32_t value) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), format, value);
    return text.data();
}

/// `cells` filled up on the left with "0" to a multiple of `width`.
std::string Padded(const std::string& cells, int width) {
    const int length = CeilDiv(static_cast<int>(cells.size()), width) * width;
    return std::string(static_cast<std::size_t>(length) - cells.size(), '0') + cells;
}

/// Nothing if a digit mixes don't-care with set cells; the padding counts as set.
std::optional<std::string> HexText(const std::string& cells) {
    const std::string padded = Padded(cells, 4);
    std::string text;
    for (std::size_t i = 0; i < padded.size(); i += 4) {
        const std::string_view nibble = std::string_view(padded).substr(i, 4);
        const auto open = std::count(nibble.begin(), nibble.end(), 'X');
        if (open != 0 && open != 4) return std::nullopt;
        text += open == 4 ? "X" : Formatted("%X", BitsValue(nibble));
    }
    return text;
}

std::optional<std::string> AsciiText(const std::string& cells) {
    if (cells.find('X') != std::string::npos) return std::nullopt;
    const std::string padded = Padded(cells, 8);
    std::string text;
    for (std::size_t i = 0; i < padded.size(); i += 8) {
        const auto byte = static_cast<char>(BitsValue(std::string_view(padded).substr(i, 8)));
        text += byte == '\0' ? ' ' : byte;
    }
    return text;
}

std::optional<std::string> DecimalText(const std::string& cells) {
    if (cells.find('X') != std::string::npos) return std::nullopt;
    // A value has 32 bits: of a larger group its lowest channels.
    const std::size_t skipped = cells.size() - std::min<std::size_t>(cells.size(), kGroupValueBits);
    return Formatted("%u", BitsValue(std::string_view(cells).substr(skipped)));
}

std::optional<std::string> TextInBase(const std::string& cells, int base) {
    if (cells.empty()) return std::string();
    switch (base) {
        case kBaseHex:
            return HexText(cells);
        case kBaseBinary:
            return cells;
        case kBaseDecimal:
            return DecimalText(cells);
        default:
            return AsciiText(cells);
    }
}

/// Value of leading digits, saturated at 32 bits; the rest of the text is ignored.
std::uint32_t LeadingValue(std::string_view text, int base) {
    std::uint32_t value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value, base);
    return result.ec == std::errc::result_out_of_range ? std::numeric_limits<std::uint32_t>::max() : value;
}

/// The field's length of text: the surplus is cut, a shorter one filled up on the left with "0".
std::string FitToField(std::string_view text, int length) {
    const auto room = static_cast<std::size_t>(length);
    std::string fitted(text.substr(0, room));
    fitted.insert(0, room - fitted.size(), '0');
    return fitted;
}

}  // namespace

std::string GroupCells(const InstrumentState& state, int group, int word) {
    const GroupRecord* record = FindGroup(state, group);
    std::string cells;
    for (int bit = SizeOf(state, group) - 1; bit >= 0; --bit) {
        cells += CharOfChannel(state, record->Channels[static_cast<std::size_t>(bit)], word);
    }
    return cells;
}

int GroupFieldLimit(int base, int size) {
    switch (base) {
        case kBaseHex:
            return CeilDiv(size, 4);
        case kBaseBinary:
            return size;
        case kBaseDecimal:
            return CeilDiv(size, 3);
        default:
            return CeilDiv(size, 8);
    }
}

TrigWordEditGroup::TrigWordEditGroup(InstrumentState& state, int group, int word)
    : state_(state), group_(group), word_(word), base_(state.Trigger.TrigWordEditGroupBase) {
    Refresh();
}

int TrigWordEditGroup::Size() const {
    return SizeOf(state_, group_);
}

int TrigWordEditGroup::Limit() const {
    return GroupFieldLimit(base_, Size());
}

void TrigWordEditGroup::SelectGroup(int group) {
    group_ = group;
    Refresh();
}

void TrigWordEditGroup::SelectWord(int word) {
    word_ = word;
    Refresh();
}

void TrigWordEditGroup::SelectBase(int base) {
    base_ = base;
    Refresh();
}

void TrigWordEditGroup::Refresh() {
    const std::string cells = GroupCells(state_, group_, word_);
    const auto text = TextInBase(cells, base_);
    if (!text) base_ = kBaseBinary;
    text_ = text.value_or(cells);
}

void TrigWordEditGroup::Write(std::string_view text) {
    switch (base_) {
        case kBaseHex:
            WriteHex(FitToField(text, Limit()));
            break;
        case kBaseBinary:
            WriteBinary(text);
            break;
        case kBaseDecimal:
            WriteDecimal(text);
            break;
        default:
            WriteAscii(FitToField(text, Limit()));
            break;
    }
    state_.Trigger.TrigLevelsMatchWizard = 0;
    Refresh();
}

void TrigWordEditGroup::Accept() {
    state_.Trigger.TrigWordEditGroupBase = static_cast<std::int8_t>(base_);
}

void TrigWordEditGroup::Store(int bit, char cell) {
    const GroupRecord* record = FindGroup(state_, group_);
    SetCharOfChannel(state_, record->Channels[static_cast<std::size_t>(bit)], word_, cell);
}

/// Binary form of `value` in the group's channels `lowest` to `lowest + count - 1`; higher bits are cut.
void TrigWordEditGroup::StoreBits(int lowest, int count, std::uint32_t value) {
    for (int i = 0; i < count; ++i) {
        const bool set = i < kGroupValueBits && ((value >> static_cast<unsigned>(i)) & 1U) != 0;
        Store(lowest + i, set ? '1' : '0');
    }
}

void TrigWordEditGroup::WriteHex(std::string text) {
    const std::uint32_t largest = LargestValue(Size());
    const bool open = std::any_of(text.begin(), text.end(), IsDontCare);
    if (largest != 0 && !open && LeadingValue(text, 16) > largest) text = Formatted("%X", largest);
    int bit = Size();
    for (const char c : text) {
        const int count = bit % 4 == 0 ? 4 : bit % 4;
        bit -= count;
        if (IsDontCare(c)) {
            for (int i = 0; i < count; ++i) Store(bit + i, 'X');
        } else if (const auto digit = HexDigit(c)) {
            StoreBits(bit, count, *digit);
        }
    }
}

void TrigWordEditGroup::WriteAscii(std::string_view text) {
    int bit = Size();
    for (const char c : text) {
        const int count = bit % 8 == 0 ? 8 : bit % 8;
        bit -= count;
        if (IsDontCare(c)) {
            for (int i = 0; i < count; ++i) Store(bit + i, 'X');
        } else {
            StoreBits(bit, count,
                      std::min<std::uint32_t>(static_cast<unsigned char>(c), LargestValue(count)));
        }
    }
}

void TrigWordEditGroup::WriteDecimal(std::string_view text) {
    const std::uint32_t largest = LargestValue(Size());
    std::uint32_t value = LeadingValue(text, 10);
    if (largest != 0) value = std::min(value, largest);
    StoreBits(0, Size(), value);
}

void TrigWordEditGroup::WriteBinary(std::string_view text) {
    int bit = Size();
    for (const char c : text.substr(0, static_cast<std::size_t>(Size()))) Store(--bit, c);
    base_ = kBaseBinary;
}

}  // namespace zu
