#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "files/Ini.h"
#include "files/SettingsKeys.h"

namespace zu {

/// Typed reading of one section. A key that is absent leaves the destination as it is.
class SettingsInput {
  public:
    SettingsInput(const IniText& ini, std::string section) : ini_(ini), section_(std::move(section)) {}

    [[nodiscard]] std::optional<std::string_view> Find(std::string_view key) const {
        return ini_.Find(section_, key);
    }
    [[nodiscard]] bool Present() const { return ini_.HasSection(section_); }

    /// A number cut to the destination's width; a 32-bit signed key that holds -1 counts as absent.
    template <typename Value>
    bool Number(std::string_view key, Value& value) const;
    void Numbers(InstrumentState& state, std::span<const keys::NumberKey> table) const;
    /// A text, cut to the field.
    template <std::size_t Size>
    bool Text(std::string_view key, zu::Text<Size>& text) const;
    /// At most `limit` bytes and a terminator; what stands behind the terminator stays.
    bool Entry(std::string_view key, TrigWordTable::Entry& entry, std::size_t limit) const;
    bool Color(std::string_view key, Rgb& color) const;

    /// Level lists pass through a field of 24 characters, so that the end of a long list never comes back: an
    /// entry counts only if its comma stands inside.
    void List(std::string_view key, std::array<std::int32_t, kTrigListSlots>& list) const;
    /// As a list, but the first character of each token alone counts and the last token needs no comma.
    void Bytes(std::string_view key, std::array<std::uint8_t, kTrigListSlots>& list) const;

  private:
    const IniText& ini_;
    std::string section_;
};

/// The numbers of "1,2,3"; those that are missing are 0.
std::array<std::int64_t, 3> ParseTuple(std::string_view text);

template <typename Value>
bool SettingsInput::Number(std::string_view key, Value& value) const {
    if constexpr (std::is_same_v<Value, std::int32_t>) {
        const auto number = ini_.Int32(section_, key);
        if (number) value = *number;
        return number.has_value();
    } else {
        const auto number = ini_.Number(section_, key);
        if (number) value = static_cast<Value>(*number);
        return number.has_value();
    }
}

template <std::size_t Size>
bool SettingsInput::Text(std::string_view key, zu::Text<Size>& text) const {
    const auto value = Find(key);
    if (value) text = *value;
    return value.has_value();
}

}  // namespace zu
