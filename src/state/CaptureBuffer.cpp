#include "state/CaptureBuffer.h"

#include <algorithm>
#include <new>

namespace zu {
namespace {

constexpr int kBuffersPerBlock = 5;
// The factor is the room for multiplexed depth: at the top rates a pod holds up to four times its plain
// length.
constexpr std::size_t kDepthFactor = 4;
constexpr std::size_t kSmallestBlock = 131072;
constexpr std::size_t kBlockTail = 16;

bool IsBuffer(int index) {
    return index >= 0 && index < kMaxPods;
}

std::size_t Length(const BufferLengths& lengths, int index) {
    return static_cast<std::size_t>(std::max(lengths[static_cast<std::size_t>(index)], 0));
}

}  // namespace

std::int32_t GetBufLenFull(const BufferLengths& lengths, int index) {
    return IsBuffer(index) ? lengths[static_cast<std::size_t>(index)] : 0;
}

void SetBufLenFull(BufferLengths& lengths, int index, std::int32_t value) {
    if (IsBuffer(index)) lengths[static_cast<std::size_t>(index)] = value;
}

std::int32_t GetLongestBufLen(const BufferLengths& lengths, int count) {
    if (count < 1) return 0;
    return *std::max_element(lengths.begin(), lengths.begin() + std::min(count, kMaxPods));
}

std::int32_t GetBufLenDisp(int index, const BufferLengths& lengths, std::int32_t adjust) {
    // Only the first 128 samples of an alignment are taken off; a negative one counts as 0.
    const std::int64_t shown = std::int64_t{GetBufLenFull(lengths, index)} - std::clamp(adjust, 0, 128);
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(shown, 0, INT32_MAX));
}

std::size_t CaptureBuffer::BlockOffset(const BufferLengths& lengths, int index) {
    // The step to a buffer is its own length, not that of the one before it; every reader relies on it.
    std::size_t sum = 0;
    for (int i = index - index % kBuffersPerBlock + 1; i <= index; ++i) sum += Length(lengths, i);
    return kDepthFactor * sum;
}

std::size_t CaptureBuffer::BlockSize(const BufferLengths& lengths, int block) {
    std::size_t sum = 0;
    std::size_t size = kSmallestBlock;
    for (int i = block * kBuffersPerBlock; i < (block + 1) * kBuffersPerBlock; ++i) {
        sum += Length(lengths, i);
        size = std::max(size, BlockOffset(lengths, i) + kDepthFactor * Length(lengths, i) + kBlockTail);
    }
    return std::max(size, kDepthFactor * sum);
}

CaptureBuffer::Block CaptureBuffer::Zeroed(std::size_t bytes) {
    Block block(static_cast<std::uint8_t*>(std::calloc(bytes, 1)));  // NOLINT(cppcoreguidelines-no-malloc)
    if (!block) throw std::bad_alloc();
    return block;
}

void CaptureBuffer::Allocate() {
    std::size_t longest = kSmallestBlock;
    for (int block = 0; block < kMaxPods / kBuffersPerBlock; ++block) {
        const auto b = static_cast<std::size_t>(block);
        const std::size_t size = BlockSize(BufLen, block);
        podBlocks_[b] = Zeroed(size);
        patBlocks_[b] = Zeroed(size);
        for (int i = block * kBuffersPerBlock; i < (block + 1) * kBuffersPerBlock; ++i) {
            const auto k = static_cast<std::size_t>(i);
            const std::size_t offset = BlockOffset(BufLen, i);
            Pod[k] = podBlocks_[b].get() + offset;
            PatPod[k] = patBlocks_[b].get() + offset;
            room_[k] = size - offset;
            longest = std::max(longest, kDepthFactor * Length(BufLen, i) + kBlockTail);
        }
    }
    extra1_ = Zeroed(longest);
    extra2_ = Zeroed(longest);
    Extra1 = extra1_.get();
    Extra2 = extra2_.get();
}

void CaptureBuffer::Free() {
    for (auto& block : podBlocks_) block.reset();
    for (auto& block : patBlocks_) block.reset();
    extra1_.reset();
    extra2_.reset();
    Pod.fill(nullptr);
    PatPod.fill(nullptr);
    Extra1 = Extra2 = nullptr;
    room_.fill(0);
    BufLen.fill(0);
}

std::size_t CaptureBuffer::Room(int index) const {
    return IsBuffer(index) ? room_[static_cast<std::size_t>(index)] : 0;
}

std::span<std::uint8_t> CaptureBuffer::Samples(int index) {
    const std::size_t length = IsBuffer(index) ? std::min(Length(BufLen, index), Room(index)) : 0;
    return length == 0 ? std::span<std::uint8_t>{} : std::span(Pod[static_cast<std::size_t>(index)], length);
}

std::span<std::uint8_t> CaptureBuffer::Pattern(int index) {
    const std::size_t length = IsBuffer(index) ? std::min(Length(BufLen, index), Room(index)) : 0;
    return length == 0 ? std::span<std::uint8_t>{}
                       : std::span(PatPod[static_cast<std::size_t>(index)], length);
}

}  // namespace zu
