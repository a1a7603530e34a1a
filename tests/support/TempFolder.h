#pragma once

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace zu::test {

inline std::string ReadBytes(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

inline std::string WriteBytes(const std::filesystem::path& path, std::string_view bytes) {
    std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return path.string();
}

/// A folder of its own for one test, removed with all in it.
class TempFolder {
  public:
    TempFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "zu-test-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr) std::perror("mkdtemp");
        path_ = pattern;
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& Path() const { return path_; }
    [[nodiscard]] std::string File(std::string_view name) const { return (path_ / name).string(); }
    std::string Write(std::string_view name, std::string_view bytes) const {
        return WriteBytes(path_ / name, bytes);
    }
    [[nodiscard]] std::string Read(std::string_view name) const { return ReadBytes(path_ / name); }
    [[nodiscard]] bool Has(std::string_view name) const { return std::filesystem::exists(path_ / name); }
    /// Names in the folder, counted.
    [[nodiscard]] std::ptrdiff_t Count() const {
        return std::distance(std::filesystem::directory_iterator(path_), {});
    }

  private:
    std::filesystem::path path_;
};

}  // namespace zu::test
