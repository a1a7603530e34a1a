#pragma once

#include <span>
#include <string_view>

#include "core/CommandTable.h"

namespace zu {

/// One row of the menu tree, read from top to bottom: a menu opens with Begin and closes with End.
struct MenuRow {
    enum class Kind : std::uint8_t { Begin, End, Commands, Separator, Recent, Windows };
    Kind What = Kind::Separator;
    std::string_view Text{};             ///< of a menu
    CommandId First = CommandId::Count;  ///< commands First..Last
    CommandId Last = CommandId::Count;
};

/// The main menu. What a model does not offer is hidden, not left out.
std::span<const MenuRow> MenuTree();

/// Commands whose texts are columns of figures and need a fixed pitch.
bool IsTabular(CommandId id);

}  // namespace zu
