#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace zu {

/// An ordinary file open for reading at any position. Folders, pipes and devices do not open, so that no
/// reader waits for ever.
class ReadableFile {
  public:
    /// Opens the file that `path` means in any case; nothing if there is none that can be read.
    static std::optional<ReadableFile> Open(const std::string& path);
    ReadableFile(ReadableFile&& other) noexcept;
    ReadableFile& operator=(ReadableFile&&) = delete;
    ~ReadableFile();

    /// Fills `first`, then `second`, from the file; the count of bytes read is below their sum only at the
    /// end of the file or after a read error.
    std::size_t ReadAt(std::int64_t offset, std::span<std::uint8_t> first,
                       std::span<std::uint8_t> second = {}) const;

  private:
    explicit ReadableFile(int fd) : fd_(fd) {}
    int fd_;
};

}  // namespace zu
