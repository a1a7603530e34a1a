#include "display/GroupValue.h"

#include <algorithm>
#include <array>
#include <cinttypes>
#include <cstdio>

#include "display/Lines.h"
#include "state/SampleView.h"

namespace zu {
namespace {

constexpr std::string_view kNoTranslation = "----------";

std::int32_t CeilDiv(std::int32_t a, std::int32_t b) {
    return (a + b - 1) / b;
}

/// Bits [low, low + count) of a value; channels that the group does not have are 0.
unsigned BitsAt(const GroupRecord& group, const GroupValue& value, std::int32_t low, std::int32_t count) {
    unsigned bits = 0;
    for (std::int32_t i = std::min(low + count, GroupSize(group)) - 1; i >= low; --i) {
        bits = bits << 1U | (value.Bit(i) ? 1U : 0U);
    }
    return bits;
}

std::string HexText(const GroupRecord& group, const GroupValue& value) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text;
    for (std::int32_t nibble = CeilDiv(GroupSize(group), 4) - 1; nibble >= 0; --nibble) {
        text += kDigits[BitsAt(group, value, 4 * nibble, 4)];
    }
    return text;
}

std::string AsciiText(const GroupRecord& group, const GroupValue& value) {
    std::string text;
    for (std::int32_t byte = 0; byte < CeilDiv(GroupSize(group), 8); ++byte) {
        const auto c = static_cast<char>(BitsAt(group, value, 8 * byte, 8));
        text += c == '\0' ? ' ' : c;
    }
    return text;
}

std::string DecimalText(const GroupRecord& group, const GroupValue& value) {
    std::array<char, 96> text{};
    std::snprintf(text.data(), text.size(), "%.*" PRId64, std::clamp(CeilDiv(GroupSize(group), 3), 0, 64),
                  GroupNumber(group, value));
    return text.data();
}

}  // namespace

GroupReader::GroupReader(const InstrumentState& state, const GroupRecord& group) {
    const std::int32_t size = GroupSize(group);
    length_ = size > 0 ? INT32_MAX : 0;
    channels_.reserve(static_cast<std::size_t>(size));
    for (std::int32_t i = 0; i < size; ++i) {
        const std::int32_t channel = group.Channels[static_cast<std::size_t>(i)];
        const bool known = channel >= 0 && channel < state.Shape.TotalChannels;
        const SampleView view = known ? BindChannel(state, channel) : SampleView{};
        channels_.push_back({view.Data, view.Stored, static_cast<unsigned>(channel) % 8});
        length_ = std::min<std::int64_t>(length_, view.Shown);
    }
}

GroupValue GroupReader::At(std::int64_t i) const {
    GroupValue value;
    for (std::size_t c = 0; c < channels_.size(); ++c) {
        const Channel& channel = channels_[c];
        if (i >= channel.Stored) continue;
        const std::uint64_t bit = channel.Data[i] >> channel.Bit & 1U;
        value.Words[c / 64] |= bit << (c % 64);
    }
    return value;
}

std::uint32_t GroupWord(const GroupRecord& group, const GroupValue& value) {
    const std::int32_t size = std::min(GroupSize(group), kGroupValueBits);
    const std::uint64_t mask = (std::uint64_t{1} << static_cast<unsigned>(size)) - 1;
    return static_cast<std::uint32_t>(value.Words[0] & mask);
}

std::int64_t GroupNumber(const GroupRecord& group, const GroupValue& value) {
    const std::int64_t word = GroupWord(group, value);
    const std::int32_t size = std::min(GroupSize(group), kGroupValueBits);
    const bool negative = group.TwosComplement != 0 && size > 0 && value.Bit(size - 1);
    return negative ? word - (std::int64_t{1} << size) : word;
}

std::string GroupBits(const GroupRecord& group, const GroupValue& value) {
    std::string text;
    for (std::int32_t i = GroupSize(group) - 1; i >= 0; --i) text += value.Bit(i) ? '1' : '0';
    return text;
}

const TranslateEntry* TranslateWord(const TranslateRecord& table, std::uint32_t word) {
    std::int32_t left = table.TranslateCount;
    for (const TranslateEntry& entry : table.Entry) {
        if (left <= 0) break;
        if (entry.Bit.Empty() || entry.Skip < 0) continue;
        --left;
        if ((word & entry.Care) == entry.Value) return &entry;
    }
    return nullptr;
}

std::string GroupText(const InstrumentState& state, const GroupRecord& group, const GroupValue& value,
                      GroupFormat format) {
    switch (format) {
        case GroupFormat::Hex:
            return HexText(group, value);
        case GroupFormat::Binary:
            return GroupBits(group, value);
        case GroupFormat::Ascii:
            return AsciiText(group, value);
        case GroupFormat::Decimal:
            return DecimalText(group, value);
        case GroupFormat::Translate: {
            const TranslateEntry* entry = TranslateWord(state.Translate, GroupWord(group, value));
            return std::string(entry == nullptr ? kNoTranslation : entry->Stg.View());
        }
    }
    return {};
}

std::int32_t LeastTextLength(const GroupRecord& group, GroupFormat format) {
    const std::int32_t size = GroupSize(group);
    switch (format) {
        case GroupFormat::Hex:
            return CeilDiv(size, 4);
        case GroupFormat::Binary:
            return size;
        case GroupFormat::Ascii:
            return CeilDiv(size, 8);
        case GroupFormat::Decimal:
            return CeilDiv(size, 3);
        case GroupFormat::Translate:
            return 0;
    }
    return 0;
}

}  // namespace zu
