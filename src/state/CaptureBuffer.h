#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>

#include "state/Limits.h"

namespace zu {

using BufferLengths = std::array<std::int32_t, kMaxPods>;

/// Samples stored in buffer `index`; 0 when the index is outside 0..19.
std::int32_t GetBufLenFull(const BufferLengths& lengths, int index);
/// Stores the length of buffer `index`; an index outside 0..19 is ignored.
void SetBufLenFull(BufferLengths& lengths, int index, std::int32_t value);
/// Largest of the first `count` lengths; 0 when count is below 1.
std::int32_t GetLongestBufLen(const BufferLengths& lengths, int count);
/// Samples of buffer `index` that may be shown with trigger alignment `adjust`: the length less min(adjust,
/// 128), never below 0; 0 for an index outside 0..19. A negative alignment takes nothing off.
std::int32_t GetBufLenDisp(int index, const BufferLengths& lengths, std::int32_t adjust);

/// The sample store: one byte per sample and pod, bit b of pod p is channel 8p + b.
class CaptureBuffer {
  public:
    BufferLengths BufLen{};                        ///< valid samples per buffer, 0 = holds nothing
    std::array<std::uint8_t*, kMaxPods> Pod{};     ///< captured samples; null before Allocate
    std::array<std::uint8_t*, kMaxPods> PatPod{};  ///< pattern data, same layout
    std::uint8_t* Extra1 = nullptr;                ///< two blocks for arming and the pattern generator,
    std::uint8_t* Extra2 = nullptr;                ///< each as long as the longest buffer's slot

    /// Frees what is held and allocates zeroed memory for the present BufLen. Ends the program without
    /// memory.
    void Allocate();
    /// Frees all memory and sets every length to 0.
    void Free();
    /// Bytes that may be touched at Pod[index] and PatPod[index]: the room up to the end of the block of
    /// five.
    [[nodiscard]] std::size_t Room(int index) const;
    /// Captured samples of a buffer that are valid now; empty for a bad index or before Allocate.
    [[nodiscard]] std::span<std::uint8_t> Samples(int index);
    [[nodiscard]] std::span<std::uint8_t> Pattern(int index);

    /// Start of buffer `index` in its block of five: 4 x the lengths from the block's second buffer up to its
    /// own.
    static std::size_t BlockOffset(const BufferLengths& lengths, int index);
    /// Bytes of block `block` (0..3) for these lengths.
    static std::size_t BlockSize(const BufferLengths& lengths, int block);

  private:
    struct Release {
        void operator()(std::uint8_t* p) const {
            std::free(p);
        }  // NOLINT: calloc keeps untouched pages unmapped
    };
    using Block = std::unique_ptr<std::uint8_t[], Release>;
    static Block Zeroed(std::size_t bytes);

    std::array<Block, kMaxPods / 5> podBlocks_;
    std::array<Block, kMaxPods / 5> patBlocks_;
    Block extra1_;
    Block extra2_;
    std::array<std::size_t, kMaxPods> room_{};
};

}  // namespace zu
