#pragma once

#include <string>
#include <string_view>

#include "state/InstrumentState.h"

namespace zu {

/// Environment variable that names the folder of all files of the program.
inline constexpr const char* kHomeVariable = "ZU_HOME";

/// `path` up to its last "/" or "\", without it; empty when it holds none.
std::string_view DirectoryPart(std::string_view path);
/// `path` behind its last "/" or "\".
std::string_view NamePart(std::string_view path);
/// Upper-cased characters behind the last dot of the name; empty without a dot.
std::string UpperExtension(std::string_view path);
/// ASCII upper case.
std::string UpperCase(std::string_view text);
/// Directory and name with one separator between them; none is added to a directory that ends in one, to an
/// empty one or to a bare drive.
std::string JoinPath(std::string_view directory, std::string_view name);

/// Folder of the program's files: ZU_HOME if set; else the directory of argv0, or of the running executable
/// when argv0 has none; else, when that cannot be written, the user's own configuration directory, which is
/// made if it is missing.
std::string ProgramDirectory(std::string_view argv0);

/// The name under which an existing file is opened: the name itself if it exists, else the first match in
/// byte order, component by component, that differs in case only; the name as given when nothing matches.
std::string ResolveExisting(std::string_view name);

/// Fills the slot, preferences and default data names from AppDir and the series.
void BuildFileNames(InstrumentState& state);

}  // namespace zu
