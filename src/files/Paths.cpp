#include "files/Paths.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <system_error>

#include "files/Decimal.h"

namespace zu {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kSeparators = "/\\";

bool Exists(const fs::path& path) {
    std::error_code error;
    return fs::exists(path, error);
}

/// The entry of `folder` called `name`, exactly or in another case; the first in byte order.
std::optional<std::string> EntryNamed(const fs::path& folder, const std::string& name) {
    if (Exists(folder / name)) return name;
    std::optional<std::string> best;
    std::error_code error;
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
        std::string entry = it->path().filename().string();
        if (EqualIgnoringCase(entry, name) && (!best || entry < *best)) best = std::move(entry);
    }
    return best;
}

}  // namespace

std::string_view FolderOf(std::string_view path) {
    const std::size_t end = path.find_last_of(kSeparators);
    return end == std::string_view::npos ? std::string_view{} : path.substr(0, end + 1);
}

std::string_view FileNameOf(std::string_view path) {
    return path.substr(FolderOf(path).size());
}

std::string ExtensionOf(std::string_view path) {
    const std::string_view name = FileNameOf(path);
    const std::size_t dot = name.rfind('.');
    return dot == std::string_view::npos ? std::string{} : UpperCase(name.substr(dot + 1));
}

std::string ResolveExisting(const std::string& path) {
    if (path.empty() || path.find('\0') != std::string::npos || Exists(path)) return path;
    std::string unified = path;
    std::replace(unified.begin(), unified.end(), '\\', '/');
    fs::path found = unified.front() == '/' ? "/" : ".";
    for (const fs::path& part : fs::path(unified).relative_path()) {
        const std::optional<std::string> entry = EntryNamed(found, part.string());
        if (!entry) return path;
        found /= *entry;
    }
    return found.string();
}

}  // namespace zu
