#pragma once

#include <string>
#include <string_view>

namespace zu {

/// Latin-1 text of the state as UTF-8.
std::string ToUtf8(std::string_view latin1);
/// The same for a terminal: control characters, which a file may hold to play tricks on it, become ".".
std::string ForTerminal(std::string_view latin1);
/// Whether bytes are well-formed UTF-8.
bool IsUtf8(std::string_view bytes);
/// Without blanks at both ends.
std::string_view Trimmed(std::string_view text);
/// The same, and with one blank where several stand inside.
std::string Squeezed(std::string_view text);

}  // namespace zu
