#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "files/ReadableFile.h"

namespace zu {

/// One forward pass over a file: byte by byte through a window for headers, straight to the destination for
/// payloads.
class ByteSource {
  public:
    explicit ByteSource(const ReadableFile& file) : file_(file), window_(kTextWindow) {}

    /// The next byte; nothing at the end of the file.
    std::optional<char> Next();
    /// Takes everything up to and with the next `wanted`; false at the end of the file.
    bool TakeUntil(char wanted);
    /// Passes over bytes, also beyond the end of the file.
    void Skip(std::int64_t bytes);
    /// Fills the destination as far as the file reaches.
    void Read(std::span<std::uint8_t> destination);

  private:
    // Text is scanned in large windows. Behind a payload only a header is expected, and what the window takes
    // beyond it would have to be copied.
    static constexpr std::size_t kTextWindow = 65536;
    static constexpr std::size_t kHeaderWindow = 128;

    bool Fill();

    const ReadableFile& file_;
    std::vector<std::uint8_t> window_;
    std::size_t at_ = 0;
    std::size_t end_ = 0;
    std::int64_t offset_ = 0;  ///< of the window's end in the file
};

}  // namespace zu
