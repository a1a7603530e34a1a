#include "display/Menus.h"

#include <string_view>

namespace zu {
namespace {

constexpr std::string_view kNames = "ABCDT";

}  // namespace

MenuSpec CursorMenu() {
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

MenuSpec PointMenu() {
    MenuSpec menu;
    menu.Entries.push_back({kTimingToPoint, "Timing window to point"});
    menu.Entries.push_back({kSerialToPoint, "Serial window to point"});
    int id = kCursorToPoint;
    for (const char name : kNames) {
        menu.Entries.push_back({id++, std::string("Cursor &") + name + " to point"});
    }
    return menu;
}

}  // namespace zu
