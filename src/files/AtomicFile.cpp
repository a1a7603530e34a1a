#include "files/AtomicFile.h"

#include <cerrno>
#include <climits>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace zu {
namespace {

constexpr int kMostLinks = 40;
constexpr int kMostNames = 1000;
constexpr std::size_t kMostParts = 1000;  // the system takes 1024 at once

/// Folder of a path with its final slash; empty for the working folder.
std::string FolderPart(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string{} : path.substr(0, slash + 1);
}

/// The path that a chain of symbolic links ends at, whether or not there is a file.
std::string FollowLinks(std::string path) {
    for (int hop = 0; hop < kMostLinks; ++hop) {
        std::string link(PATH_MAX, '\0');
        const ssize_t size = ::readlink(path.c_str(), link.data(), link.size());
        if (size < 0) break;
        link.resize(static_cast<std::size_t>(size));
        path = link.starts_with('/') ? std::move(link) : FolderPart(path).append(link);
    }
    return path;
}

/// Makes a rename in a folder survive a power cut; a file system that cannot is no failure of the save.
void FlushFolder(const std::string& folder) {
    const int fd = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) return;
    ::fsync(fd);
    ::close(fd);
}

}  // namespace

AtomicFile::AtomicFile(const std::string& path) : target_(FollowLinks(path)) {
    if (path.find('\0') != std::string::npos) {
        errno = EINVAL;
        Fail();
        return;
    }
    if (CheckTarget() && OpenTemporary() && !CopyMode()) Discard();
}

AtomicFile::~AtomicFile() {
    Discard();
}

bool AtomicFile::Fail() {
    const int cause = errno;
    if (error_.empty()) error_ = "Could not save " + target_ + ": " + std::strerror(cause);
    Discard();
    return false;
}

void AtomicFile::Discard() {
    pending_.clear();
    if (fd_ < 0) return;
    ::close(fd_);
    fd_ = -1;
    ::unlink(temporary_.c_str());
}

bool AtomicFile::CheckTarget() {
    struct stat facts {};
    // Links that lead nowhere but to each other are no place for a new file.
    if (::stat(target_.c_str(), &facts) != 0) return errno == ENOENT || Fail();
    // Renaming over a device or pipe would replace it, and over a protected file would get round its
    // protection.
    errno = S_ISDIR(facts.st_mode) ? EISDIR : EINVAL;
    if (!S_ISREG(facts.st_mode) || ::access(target_.c_str(), W_OK) != 0) return Fail();
    return true;
}

bool AtomicFile::OpenTemporary() {
    // The name says nothing of a data file, so that one left behind by a kill is not taken for one.
    const std::string stem = FolderPart(target_) + ".zu-save-" + std::to_string(::getpid()) + "-";
    for (int i = 0; i < kMostNames; ++i) {
        temporary_ = stem + std::to_string(i) + ".tmp";
        fd_ = ::open(temporary_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
        if (fd_ >= 0 || errno != EEXIST) break;
    }
    return fd_ >= 0 || Fail();
}

bool AtomicFile::CopyMode() {
    struct stat facts {};
    if (::stat(target_.c_str(), &facts) != 0) return true;
    // Only the superuser may give a file to another owner; for all others it has the right one.
    [[maybe_unused]] const int owner = ::fchown(fd_, facts.st_uid, facts.st_gid);
    return ::fchmod(fd_, facts.st_mode & 07777U) == 0 || Fail();
}

void AtomicFile::Append(std::string_view bytes) {
    if (bytes.empty()) return;
    // The interface of writev has no const; it does not write through the pointer.
    pending_.push_back({const_cast<char*>(bytes.data()), bytes.size()});  // NOLINT
    if (pending_.size() == kMostParts) Flush();
}

void AtomicFile::Append(std::span<const std::uint8_t> bytes) {
    Append(std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
}

bool AtomicFile::Flush() {
    if (fd_ < 0) return false;
    std::size_t first = 0;
    while (first < pending_.size()) {
        const ssize_t written = ::writev(fd_, &pending_[first], static_cast<int>(pending_.size() - first));
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return Fail();
        auto left = static_cast<std::size_t>(written);
        while (first < pending_.size() && left >= pending_[first].iov_len) left -= pending_[first++].iov_len;
        if (left == 0) continue;
        pending_[first].iov_base = static_cast<char*>(pending_[first].iov_base) + left;
        pending_[first].iov_len -= left;
    }
    pending_.clear();
    return true;
}

bool AtomicFile::Commit() {
    if (!Flush()) return false;
    if (::fsync(fd_) != 0) return Fail();
    if (::rename(temporary_.c_str(), target_.c_str()) != 0) return Fail();
    const int fd = fd_;
    fd_ = -1;  // the temporary's name is gone; nothing is left to discard
    ::close(fd);
    FlushFolder(FolderPart(target_));
    return true;
}

std::string WriteWholeFile(const std::string& path, std::string_view bytes) {
    AtomicFile file(path);
    file.Append(bytes);
    file.Commit();
    return file.Error();
}

bool FinishSave(AtomicFile& file, Host& host) {
    const bool saved = file.Commit();
    if (!saved) host.Remark(file.Error());
    return saved;
}

}  // namespace zu
