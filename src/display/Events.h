#pragma once

#include <cstdint>
#include <string_view>

namespace zu {

enum class MouseButton : std::uint8_t { None, Left, Right, Middle };

/// Letter and digit keys that are held while the mouse works: A B C D T and 2 3 4 5.
struct HeldKeys {
    bool A = false, B = false, C = false, D = false, T = false;
    bool Two = false, Three = false, Four = false, Five = false;
};

struct MouseEvent {
    std::int32_t X = 0;  ///< client pixels
    std::int32_t Y = 0;
    MouseButton Button = MouseButton::None;
    bool Ctrl = false;
    bool Shift = false;
    bool Alt = false;
    HeldKeys Held;
};

enum class ScrollAxis : std::uint8_t { Horizontal, Vertical };
enum class ScrollCode : std::uint8_t { LineBack, LineForward, PageBack, PageForward, Top, Bottom, Thumb };

struct ScrollEvent {
    ScrollAxis Axis = ScrollAxis::Horizontal;
    ScrollCode Code = ScrollCode::LineBack;
    std::int32_t Thumb = 0;  ///< scroll bar position, in scroll units
};

/// Range and place of a scroll bar, in the units of the view.
struct ScrollRange {
    std::int32_t Minimum = 0;
    std::int32_t Maximum = 0;
    std::int32_t Position = 0;
    friend bool operator==(const ScrollRange&, const ScrollRange&) = default;
};

enum class PointerShape : std::uint8_t {
    Arrow,
    CursorA,
    CursorB,
    CursorC,
    CursorD,
    CursorT,
    SizeHorizontal,
    SizeVertical
};

}  // namespace zu
