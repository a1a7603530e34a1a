#include "files/ReadableFile.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>
#include <utility>

#include "files/Paths.h"

namespace zu {

std::optional<ReadableFile> ReadableFile::Open(const std::string& path) {
    if (path.find('\0') != std::string::npos) return std::nullopt;
    const int fd = ::open(ResolveExisting(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0) return std::nullopt;
    ReadableFile file(fd);
    struct stat facts {};
    if (::fstat(fd, &facts) != 0 || !S_ISREG(facts.st_mode)) return std::nullopt;
    return file;
}

ReadableFile::ReadableFile(ReadableFile&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}

ReadableFile::~ReadableFile() {
    if (fd_ >= 0) ::close(fd_);
}

std::size_t ReadableFile::ReadAt(std::int64_t offset, std::span<std::uint8_t> first,
                                 std::span<std::uint8_t> second) const {
    const std::size_t wanted = first.size() + second.size();
    std::size_t done = 0;
    while (done < wanted) {
        const std::size_t inFirst = std::min(done, first.size());
        const std::size_t inSecond = done - inFirst;
        const std::array<iovec, 2> parts{{{first.data() + inFirst, first.size() - inFirst},
                                          {second.data() + inSecond, second.size() - inSecond}}};
        const ssize_t got = ::preadv(fd_, parts.data(), 2, offset + static_cast<std::int64_t>(done));
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) break;
        done += static_cast<std::size_t>(got);
    }
    return done;
}

}  // namespace zu
