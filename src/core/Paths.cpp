#include "core/Paths.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <unistd.h>

#include "files/Paths.h"
#include "state/Catalogue.h"

namespace zu {
namespace {

namespace fs = std::filesystem;

bool IsSeparator(char c) {
    return c == '/' || c == '\\';
}

bool Writable(const std::string& directory) {
    return ::access(directory.c_str(), W_OK) == 0;
}

std::string FromEnvironment(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

/// Makes a folder with its parents; a failure shows later, when a file in it cannot be written.
std::string MadeFolder(std::string folder) {
    std::error_code ignored;
    fs::create_directories(folder, ignored);
    return folder;
}

std::string ExecutableDirectory() {
    std::error_code error;
    const fs::path executable = fs::read_symlink("/proc/self/exe", error);
    return error ? std::string(".") : executable.parent_path().string();
}

std::string UserDirectory() {
    std::string base = FromEnvironment("XDG_CONFIG_HOME");
    if (base.empty()) base = FromEnvironment("HOME") + "/.config";
    return MadeFolder(base + "/zu");
}

}  // namespace

std::string JoinPath(std::string_view directory, std::string_view name) {
    std::string path(directory);
    const bool closed = path.empty() || IsSeparator(path.back());
    const bool bareDrive = path.size() == 2 && path[1] == ':';
    if (!closed && !bareDrive) path += '/';
    path += name;
    return path;
}

std::string FolderOfFile(std::string_view path) {
    std::string_view folder = FolderOf(path);
    if (folder.empty()) return ".";
    if (folder.size() > 1) folder.remove_suffix(1);
    return std::string(folder);
}

std::string ProgramDirectory(std::string_view argv0) {
    const std::string given = FromEnvironment(kHomeVariable);
    if (!given.empty()) return MadeFolder(given);
    const std::string directory = FolderOf(argv0).empty() ? ExecutableDirectory() : FolderOfFile(argv0);
    return Writable(directory) ? directory : UserDirectory();
}

void BuildFileNames(InstrumentState& state) {
    FileRecord& files = state.Files;
    std::string stem = JoinPath(files.AppDir, Series(state.Identity.ModelSeries).Prefix);
    if (!state.Command.Simulate.empty()) stem += "_sim";
    for (std::size_t slot = 0; slot < files.SettingsSlot.size(); ++slot) {
        files.SettingsSlot[slot] = stem + "_" + std::to_string(slot) + ".ini";
    }
    files.PreferencesFile = stem + ".ini";
    files.DefaultDataFile = stem + "_0.zu";
}

}  // namespace zu
