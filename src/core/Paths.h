#pragma once

#include <string>
#include <string_view>

#include "state/InstrumentState.h"

namespace zu {

/// Environment variable that names the folder of all files of the program.
inline constexpr const char* kHomeVariable = "ZU_HOME";

/// Directory and name with one separator between them; none is added to a directory that ends in one, to an
/// empty one or to a bare drive.
std::string JoinPath(std::string_view directory, std::string_view name);
/// Folder that holds a file, without the closing separator; "." for a bare name.
std::string FolderOfFile(std::string_view path);

/// Folder of the program's files: ZU_HOME if set; else the directory of argv0, or of the running executable
/// when argv0 has none; else, when that cannot be written, the user's own configuration directory, which is
/// made if it is missing.
std::string ProgramDirectory(std::string_view argv0);

/// Fills the slot, preferences and default data names from AppDir and the series. Runs on the simulated
/// instrument have files of their own, so that nothing of theirs reaches the bench with a real one.
void BuildFileNames(InstrumentState& state);

}  // namespace zu
