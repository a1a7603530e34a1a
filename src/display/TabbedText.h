#pragma once

#include <string>
#include <string_view>

namespace zu {

/// Appends a cell of copied text without the blanks that only fill a column: what would break the table
/// becomes a blank.
void AppendCell(std::string& text, std::string_view cell);

}  // namespace zu
