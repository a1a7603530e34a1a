#include "hw/Deinterleave.h"

#include <algorithm>
#include <cstring>

namespace zu {
namespace {

using Bytes = std::uint8_t __attribute__((vector_size(16)));
using Pairs = std::uint16_t __attribute__((vector_size(16)));
constexpr std::size_t kLanes = sizeof(Bytes);

template <typename Vector>
struct Halves {
    Vector Low;
    Vector High;
};

Bytes Load(const std::uint8_t* from) {
    Bytes bytes;
    std::memcpy(&bytes, from, sizeof bytes);
    return bytes;
}

template <typename Vector>
void Store(const Vector& vector, std::uint8_t* to) {
    std::memcpy(to, &vector, sizeof vector);
}

/// The bytes of the two in turn.
Halves<Bytes> Zip(Bytes a, Bytes b) {
    return {__builtin_shufflevector(a, b, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23),
            __builtin_shufflevector(a, b, 8, 24, 9, 25, 10, 26, 11, 27, 12, 28, 13, 29, 14, 30, 15, 31)};
}

/// The pairs of bytes of the two in turn.
Halves<Pairs> ZipPairs(Bytes a, Bytes b) {
    const auto x = reinterpret_cast<Pairs>(a);
    const auto y = reinterpret_cast<Pairs>(b);
    return {__builtin_shufflevector(x, y, 0, 8, 1, 9, 2, 10, 3, 11),
            __builtin_shufflevector(x, y, 4, 12, 5, 13, 6, 14, 7, 15)};
}

}  // namespace

void JoinTwoPhases(const std::uint8_t* first, const std::uint8_t* second, std::size_t count,
                   std::uint8_t* out) {
    std::size_t i = 0;
    for (; i + kLanes <= count; i += kLanes) {
        const Halves<Bytes> joined = Zip(Load(first + i), Load(second + i));
        Store(joined.Low, out + 2 * i);
        Store(joined.High, out + 2 * i + kLanes);
    }
    for (; i < count; ++i) {
        out[2 * i] = first[i];
        out[2 * i + 1] = second[i];
    }
}

void JoinFourPhases(std::span<const std::uint8_t* const, 4> phases, std::size_t count, std::uint8_t* out) {
    std::size_t i = 0;
    for (; i + kLanes <= count; i += kLanes) {
        const Halves<Bytes> front = Zip(Load(phases[0] + i), Load(phases[1] + i));
        const Halves<Bytes> back = Zip(Load(phases[2] + i), Load(phases[3] + i));
        const Halves<Pairs> low = ZipPairs(front.Low, back.Low);
        const Halves<Pairs> high = ZipPairs(front.High, back.High);
        std::uint8_t* to = out + 4 * i;
        Store(low.Low, to);
        Store(low.High, to + kLanes);
        Store(high.Low, to + 2 * kLanes);
        Store(high.High, to + 3 * kLanes);
    }
    for (; i < count; ++i) {
        for (std::size_t p = 0; p < 4; ++p) out[4 * i + p] = phases[p][i];
    }
}

void StorePhase(std::span<const std::uint8_t> phase, std::size_t first, std::size_t stride,
                std::span<std::uint8_t> out) {
    std::size_t at = first;
    for (const std::uint8_t byte : phase) {
        if (at >= out.size()) return;
        out[at] = byte;
        at += stride;
    }
}

void RepeatSamples(std::span<const std::uint8_t> samples, std::size_t times, std::span<std::uint8_t> out) {
    const std::size_t count = std::min(samples.size(), out.size() / times);
    for (std::size_t i = 0; i < count; ++i) std::fill_n(out.data() + i * times, times, samples[i]);
}

}  // namespace zu
