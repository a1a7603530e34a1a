#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <sys/uio.h>
#include <vector>

#include "state/Host.h"

namespace zu {

/// A file that is either written whole or not at all. The bytes go to a temporary beside the target; Commit
/// flushes it to the disk and renames it over the target. Until then, and after any failure, the old file
/// stands as it was and the temporary is removed. Symbolic links are followed, mode bits of an existing
/// target are kept.
class AtomicFile {
  public:
    explicit AtomicFile(const std::string& path);
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    /// Appends bytes. They are not copied: they must live until the next Flush or Commit.
    void Append(std::string_view bytes);
    void Append(std::span<const std::uint8_t> bytes);
    /// Hands what was appended to the system.
    bool Flush();
    /// Makes the new file take the target's place; false if anything failed since the start.
    bool Commit();

    /// What went wrong first, for the user; empty while all is well.
    [[nodiscard]] const std::string& Error() const { return error_; }

  private:
    bool Fail();
    bool CheckTarget();
    bool OpenTemporary();
    bool CopyMode();
    void Discard();

    std::string target_;  ///< with links resolved
    std::string temporary_;
    int fd_ = -1;
    std::vector<iovec> pending_;
    std::string error_;
};

/// Replaces a file by these bytes in one step; an empty text on success, else what went wrong.
std::string WriteWholeFile(const std::string& path, std::string_view bytes);
/// Commits a file. A failure shows no message: it is told by a remark.
bool FinishSave(AtomicFile& file, Host& host);

}  // namespace zu
