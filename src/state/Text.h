#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace zu {

/// An 8-bit byte string in a field of Size bytes: at most Size - 1 bytes are kept, the rest is cut.
template <std::size_t Size>
class Text {
  public:
    static constexpr std::size_t kSize = Size;

    constexpr Text() = default;
    constexpr Text(std::string_view text) { Assign(text); }  // NOLINT(google-explicit-constructor)

    /// Stores the text up to its first NUL or the field's room.
    constexpr void Assign(std::string_view text) {
        length_ = std::min({text.size(), Size - 1, text.find('\0')});
        std::copy_n(text.data(), length_, bytes_.data());
        std::fill(bytes_.begin() + static_cast<std::ptrdiff_t>(length_), bytes_.end(), '\0');
    }
    constexpr Text& operator=(std::string_view text) {
        Assign(text);
        return *this;
    }

    [[nodiscard]] constexpr std::string_view View() const { return {bytes_.data(), length_}; }
    [[nodiscard]] constexpr const char* CStr() const { return bytes_.data(); }
    [[nodiscard]] constexpr bool Empty() const { return length_ == 0; }
    constexpr void Clear() { Assign({}); }

    friend constexpr bool operator==(const Text& a, const Text& b) { return a.View() == b.View(); }
    friend constexpr bool operator==(const Text& a, std::string_view b) { return a.View() == b; }

  private:
    std::array<char, Size> bytes_{};
    std::size_t length_ = 0;
};

}  // namespace zu
