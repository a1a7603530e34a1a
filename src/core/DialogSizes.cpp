#include "core/DialogSizes.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace zu {
namespace {

constexpr std::size_t kMostDialogs = 100;
constexpr std::size_t kLongestName = 40;
constexpr std::int32_t kLargest = 32767;

/// The text up to a mark, which is taken off with it; all of the text without that mark.
std::string_view TakeUpTo(std::string_view& text, char mark) {
    const std::size_t end = std::min(text.find(mark), text.size());
    const std::string_view taken = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return taken;
}

bool IsName(std::string_view name) {
    constexpr std::string_view kAllowed = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
    return !name.empty() && name.size() <= kLongestName &&
           name.find_first_not_of(kAllowed) == std::string_view::npos;
}

std::optional<std::int32_t> Pixels(std::string_view text) {
    std::int32_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool whole = error == std::errc{} && end == text.data() + text.size();
    return whole && value > 0 && value <= kLargest ? std::optional(value) : std::nullopt;
}

}  // namespace

std::string FormatDialogSizes(const std::map<std::string, DialogSize>& sizes) {
    std::string text;
    for (const auto& [name, size] : sizes) {
        if (!text.empty()) text += ';';
        text += name + '=' + std::to_string(size.Width) + 'x' + std::to_string(size.Height);
    }
    return text;
}

std::map<std::string, DialogSize> ParseDialogSizes(std::string_view text) {
    std::map<std::string, DialogSize> sizes;
    while (!text.empty() && sizes.size() < kMostDialogs) {
        std::string_view entry = TakeUpTo(text, ';');
        const std::string_view name = TakeUpTo(entry, '=');
        const auto width = Pixels(TakeUpTo(entry, 'x'));
        const auto height = Pixels(entry);
        if (IsName(name) && width && height) sizes[std::string(name)] = {*width, *height};
    }
    return sizes;
}

}  // namespace zu
