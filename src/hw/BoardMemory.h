#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "hw/CaptureSetup.h"
#include "hw/Registers.h"

namespace zu {

/// Where the boards' pods stand in the capture buffer: 5 apart at the two fastest internal rates.
struct PodLayout {
    int Step = 0;          ///< pods from one board to the next
    int LengthStride = 0;  ///< entries of BufLen from one board to the next
};
PodLayout PodLayoutOf(const CaptureSetup& setup);

/// Brings the memory of halted boards into the capture buffer, with the interleave undone.
class BoardMemory {
  public:
    BoardMemory(HardwareSession& hardware, Registers& registers, const CaptureSetup& setup,
                InstrumentState& state);
    void Read(int board);

  private:
    void ReadLater(int board);
    void ReadLaterPlain(int board);
    void ReadLaterDual(int board);
    void ReadLaterQuad(int board);
    void SelectBank(int board, int selector);
    void ReadBank(int board, int selector, std::span<std::uint8_t> bytes);

    void ReadEarlier(int board);
    void ReadLane(int board, int lane);
    void JoinEarlierDual(int board);
    void JoinEarlierQuad(int board);
    [[nodiscard]] int LaneTarget(int lane) const;

    [[nodiscard]] int Pod(int board, int lane) const;
    [[nodiscard]] bool IsRead(int board, int lane) const;
    [[nodiscard]] std::size_t Length(int board, int lane) const;
    [[nodiscard]] std::span<std::uint8_t> Slot(int board, int lane) const;
    /// A region of the scratch memory for the phase of a lane.
    std::span<std::uint8_t> Phase(int lane, std::size_t count);

    HardwareSession& hardware_;
    Registers& registers_;
    const CaptureSetup& setup_;
    InstrumentState& state_;
    PodLayout layout_;
    std::size_t regionSize_ = 0;
    std::array<std::span<std::uint8_t>, kBoardLanes> phases_;  ///< of the present board, empty if not read
};

}  // namespace zu
