#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "state/InstrumentState.h"

namespace zu {

/// State of a group's channels at one sample; bit i is Channels[i].
struct GroupValue {
    std::array<std::uint64_t, 3> Words{};

    [[nodiscard]] bool Bit(std::int32_t i) const {
        return (Words[static_cast<std::size_t>(i / 64)] >> (static_cast<unsigned>(i) % 64) & 1U) != 0;
    }
    friend bool operator==(const GroupValue&, const GroupValue&) = default;
};

/// A group's channels bound to their samples once, for a loop.
class GroupReader {
  public:
    /// A group with a channel that the model does not have, or with none, has no samples.
    GroupReader(const InstrumentState& state, const GroupRecord& group);

    [[nodiscard]] std::int32_t Size() const { return static_cast<std::int32_t>(channels_.size()); }
    /// Samples that every channel has.
    [[nodiscard]] std::int64_t Length() const { return length_; }
    /// Value at a display index below Length().
    [[nodiscard]] GroupValue At(std::int64_t i) const;

  private:
    struct Channel {
        const std::uint8_t* Data;
        std::int64_t Stored;
        unsigned Bit;
    };
    std::vector<Channel> channels_;
    std::int64_t length_ = 0;
};

/// Number formats, in the order of line styles 0 to 4 and of the Statelist's list.
enum class GroupFormat : std::uint8_t { Hex, Binary, Ascii, Decimal, Translate };

/// The group as a number: its first 32 channels, negative by TwosComplement.
std::int64_t GroupNumber(const GroupRecord& group, const GroupValue& value);
/// The group as a number of a single sample's first 32 channels, without a sign.
std::uint32_t GroupWord(const GroupRecord& group, const GroupValue& value);
/// Channels as "0" and "1", the most significant first.
std::string GroupBits(const GroupRecord& group, const GroupValue& value);
/// The entry of the translate table that a word matches; null if there is none.
const TranslateEntry* TranslateWord(const TranslateRecord& table, std::uint32_t word);
/// Text of a value; a word that the translate table does not know is ten dashes.
std::string GroupText(const InstrumentState& state, const GroupRecord& group, const GroupValue& value,
                      GroupFormat format);
/// Characters that every text of the format has at least.
std::int32_t LeastTextLength(const GroupRecord& group, GroupFormat format);

}  // namespace zu
