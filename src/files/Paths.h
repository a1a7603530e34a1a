#pragma once

#include <string>
#include <string_view>

namespace zu {

/// Folder of a path up to and with its last separator ("/" or "\"); empty if there is none.
std::string_view FolderOf(std::string_view path);
/// What follows the last separator.
std::string_view FileNameOf(std::string_view path);
/// Extension without its dot in upper case; empty if the file name has none.
std::string ExtensionOf(std::string_view path);

/// The existing file that a name means: the name as given if it exists, else "\" read as "/" and each
/// component replaced by its first match in any case, in byte order. A name that matches nothing comes back
/// as given.
std::string ResolveExisting(const std::string& path);

}  // namespace zu
