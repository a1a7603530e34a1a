#include "display/Menus.h"

#include <string_view>

namespace zu {

MenuSpec CursorMenu() {
    constexpr std::string_view kNames = "ABCDT";
    MenuSpec menu;
    for (int cursor = 0; cursor < static_cast<int>(kNames.size()); ++cursor) {
        const std::string name(1, kNames[static_cast<std::size_t>(cursor)]);
        menu.Entries.push_back(
            {CursorMenuId(cursor, CursorAction::ToWindow), "Cursor &" + name + " to window"});
        menu.Entries.push_back(
            {CursorMenuId(cursor, CursorAction::WindowToCursor), "&Window to cursor " + name});
        menu.Entries.push_back({CursorMenuId(cursor, CursorAction::Color), "Cursor " + name + " color"});
    }
    return menu;
}

}  // namespace zu
