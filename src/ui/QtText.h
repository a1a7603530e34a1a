#pragma once

#include <string>
#include <string_view>

#include <QString>

namespace zu {

/// Text of the state: one byte a character.
QString FromState(std::string_view text);
/// Text for the state; characters beyond Latin-1 become "?".
std::string ToState(const QString& text);

/// Text that may carry a file name (titles, messages): UTF-8 where it is that, else one byte a character.
QString FromMessage(std::string_view text);

/// File names keep their bytes.
QString FromPath(std::string_view path);
std::string ToPath(const QString& path);

}  // namespace zu
