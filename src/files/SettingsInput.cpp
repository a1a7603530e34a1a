#include "files/SettingsInput.h"

#include <algorithm>

#include "files/Decimal.h"

namespace zu {
namespace {

constexpr std::size_t kListField = 24;
constexpr std::size_t kListEntries = 25;

std::string_view ListField(std::string_view value) {
    return value.substr(0, kListField);
}

/// What a byte list makes of a token's first character: its distance from "0", or itself below "0".
std::uint8_t ByteOf(char first) {
    const auto code = static_cast<unsigned char>(first);
    return code >= '0' ? static_cast<std::uint8_t>(code - '0') : code;
}

}  // namespace

std::array<std::int64_t, 3> ParseTuple(std::string_view text) {
    std::array<std::int64_t, 3> numbers{};
    for (std::int64_t& number : numbers) {
        const std::size_t comma = text.find(',');
        number = ParseDecimal(text.substr(0, comma));
        if (comma == std::string_view::npos) break;
        text.remove_prefix(comma + 1);
    }
    return numbers;
}

void SettingsInput::Numbers(InstrumentState& state, std::span<const keys::NumberKey> table) const {
    for (const keys::NumberKey& key : table) {
        if (key.Use == keys::Use::Write) continue;
        const bool counts = key.Type != keys::Width::I32 || ini_.Int32(section_, key.Name).has_value();
        const auto number = ini_.Number(section_, key.Name);
        if (number && counts) key.Set(state, keys::Narrow(key.Type, *number));
    }
}

bool SettingsInput::Entry(std::string_view key, TrigWordTable::Entry& entry, std::size_t limit) const {
    const auto value = Find(key);
    if (!value) return false;
    const std::size_t size = std::min({value->size(), value->find('\0'), limit, entry.size() - 1});
    std::copy_n(value->begin(), size, entry.begin());
    entry[size] = '\0';
    return true;
}

bool SettingsInput::Color(std::string_view key, Rgb& color) const {
    const auto value = Find(key);
    if (!value) return false;
    const auto parts = ParseTuple(*value);
    color = MakeRgb(static_cast<unsigned>(parts[0]), static_cast<unsigned>(parts[1]),
                    static_cast<unsigned>(parts[2]));
    return true;
}

void SettingsInput::List(std::string_view key, std::array<std::int32_t, kTrigListSlots>& list) const {
    const auto value = Find(key);
    if (!value) return;
    std::string_view field = ListField(*value);
    for (std::size_t i = 0; i < kListEntries; ++i) {
        const std::size_t comma = field.find(',');
        if (comma == std::string_view::npos) break;
        list[i] = static_cast<std::int32_t>(ParseDecimal(field.substr(0, comma)));
        field.remove_prefix(comma + 1);
    }
}

void SettingsInput::Bytes(std::string_view key, std::array<std::uint8_t, kTrigListSlots>& list) const {
    const auto value = Find(key);
    if (!value) return;
    const std::string_view field = ListField(*value);
    std::size_t used = 0;
    bool atStart = true;
    for (const char c : field) {
        if (c != ',' && atStart && used < kListEntries) list[used++] = ByteOf(c);
        atStart = c == ',';
    }
}

}  // namespace zu
