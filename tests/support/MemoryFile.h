#pragma once

#include <cstdio>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>

namespace zu::test {

/// An ordinary file that never reaches a disk; its path is good as long as the object.
class MemoryFile {
  public:
    explicit MemoryFile(std::string_view bytes) : fd_(::memfd_create("zu-test", MFD_CLOEXEC)) {
        while (!bytes.empty()) {
            const ssize_t written = ::write(fd_, bytes.data(), bytes.size());
            if (written <= 0) {
                std::perror("memfd");
                break;
            }
            bytes.remove_prefix(static_cast<std::size_t>(written));
        }
    }
    ~MemoryFile() { ::close(fd_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    [[nodiscard]] std::string Path() const { return "/proc/self/fd/" + std::to_string(fd_); }

  private:
    int fd_;
};

}  // namespace zu::test
