#pragma once

#include <array>
#include <cstdint>
#include <functional>

#include "TraceBench.h"

namespace zu::test {

/// Boards with filled memories behind recording operations: which lane or bank a block read gets follows from
/// the registers written. A sample is a byte of (pod, index), and the memories hold the samples as the
/// instrument's interleave puts them there.
class MemoryFake : public RegisterOps {
  public:
    enum class Fill { Plain, Dual, Quad };
    using Source = std::function<std::uint8_t(int pod, std::int64_t index)>;

    MemoryFake(bool laterWrites, bool banks, Fill fill, bool swappedPhases, Source source)
        : laterWrites_(laterWrites),
          banks_(banks),
          fill_(fill),
          swapped_(swappedPhases),
          source_(std::move(source)) {}

    int Blocks = 0;       ///< block reads served
    int ClosedReads = 0;  ///< block reads with no memory open
    bool Dead = false;    ///< block reads bring nothing

    void RegWrite(std::uint16_t, std::uint16_t port, std::uint8_t value) override {
        const int at = port - kTraceAddress;
        const auto board = static_cast<std::size_t>(at >> 10 & 3);
        Board& b = boards_[board];
        switch (at & 15) {
            case 0:
                b.Latch = value;
                break;
            case 2:
                if (!laterWrites_ && (b.R2 & 4) == 0 && (value & 4) != 0) b.Lanes = b.Latch;
                b.R2 = value;
                break;
            case 3:
                b.Open = (value & 1) == 0;
                break;
            case 5:
                b.Bank = value;
                break;
            case 9:
                if (laterWrites_) b.Lanes = value;
                break;
            default:
                break;
        }
    }
    std::uint8_t RegRead(std::uint16_t, std::uint16_t) override { return 0; }
    void RegReadBlock(std::uint16_t, std::uint16_t port, std::int32_t count, std::uint8_t* buffer) override {
        const int board = (port - kTraceAddress) >> 10 & 3;
        const Board& b = boards_[static_cast<std::size_t>(board)];
        ++Blocks;
        if (!b.Open) ++ClosedReads;
        if (Dead) return;
        for (std::int32_t i = 0; i < count; ++i)
            buffer[i] = banks_ ? Bank(board, b.Bank, i) : Lane(board, b.Lanes, i);
    }

  private:
    struct Board {
        std::uint8_t Latch = 0;
        std::uint8_t R2 = 0;
        std::uint8_t Bank = 0;
        std::uint8_t Lanes = 0xFF;
        bool Open = false;
    };

    [[nodiscard]] std::uint8_t Bank(int board, int r5, std::int64_t i) const {
        const int group = r5 >> 2 & 3;
        const int k = r5 >> 4 & 3;
        if (group == 3) return 0xFF;
        const int pod = 5 * board + 2 * group;
        switch (fill_) {
            case Fill::Plain:
                return source_(pod + (k & 1), i);
            case Fill::Dual:
                return source_(pod + (k & 1), 2 * i + ((k < 2) != swapped_ ? 1 : 2));
            case Fill::Quad:
                return source_(pod, 4 * i + 4 - k);
        }
        return 0;
    }
    [[nodiscard]] std::uint8_t Lane(int board, int s9, std::int64_t i) const {
        int lane = 0;
        while (lane < 5 && (s9 & 0x80 >> lane) != 0) ++lane;
        const int pod = 5 * board;
        switch (fill_) {
            case Fill::Plain:
                return source_(pod + lane, i);
            case Fill::Dual:
                return lane == 4 ? source_(pod + 4, 2 * i) : source_(pod + lane % 2, 2 * i - lane / 2 + 1);
            case Fill::Quad:
                return lane == 4 ? source_(pod + 4, 4 * i) : source_(pod, 4 * i + 4 - lane);
        }
        return 0;
    }

    bool laterWrites_;
    bool banks_;
    Fill fill_;
    bool swapped_;
    Source source_;
    std::array<Board, 4> boards_;
};

}  // namespace zu::test
