#pragma once

#include <string>
#include <vector>

namespace zu {

struct MenuEntry {
    int Id = 0;  ///< 0 = a separator
    std::string Text;
    bool Checked = false;
    bool Enabled = true;
};
/// A menu that pops up at a point.
struct MenuSpec {
    std::vector<MenuEntry> Entries;
};

enum class CursorAction { ToWindow, WindowToCursor, Color };

/// "Cursor &A to window", "&Window to cursor A", "Cursor A color" and the same for B, C, D, T.
MenuSpec CursorMenu();
/// Id of an entry of the cursor menu; never 0.
constexpr int CursorMenuId(int cursor, CursorAction action) {
    return 1 + cursor * 3 + static_cast<int>(action);
}

/// Entries of the menu for a point of a list: two that move a view there, then the cursors, A first.
inline constexpr int kTimingToPoint = 1;
inline constexpr int kSerialToPoint = 2;
inline constexpr int kCursorToPoint = 3;
/// "Timing window to point", "Serial window to point", "Cursor &A to point" and the same for B, C, D, T.
MenuSpec PointMenu();

}  // namespace zu
