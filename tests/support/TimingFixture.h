#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <random>

#include "display/RecorderCanvas.h"
#include "display/TimingPainter.h"
#include "state/InstrumentState.h"
#include "state/Model.h"

namespace zu::test {

/// Seeded numbers for property tests.
class Random {
  public:
    explicit Random(unsigned seed) : engine_(seed) {}
    /// 0 .. count - 1; 0 for a count below 1.
    std::int32_t Below(std::int64_t count) {
        return count < 1 ? 0 : static_cast<std::int32_t>(engine_() % static_cast<std::uint64_t>(count));
    }
    bool OneIn(std::int32_t count) { return Below(count) == 0; }
    std::int32_t Any() { return static_cast<std::int32_t>(static_cast<std::uint32_t>(engine_())); }

  private:
    std::mt19937 engine_;
};

/// A state with the shape, names and colours of a catalogue row, and nothing captured.
inline std::unique_ptr<InstrumentState> MakeState(int row = 13) {
    auto state = std::make_unique<InstrumentState>();
    ChangeModel(*state, row);
    ResetChannelNames(*state);
    ResetChannelColors(*state);
    ResetTrigWords(*state);
    state->Clock.ClockRate = 5;  // 10 ns
    return state;
}

/// Sets all buffers to `length` samples, zeroed, as a shorter memory would have them.
inline void SetLength(InstrumentState& state, std::int32_t length) {
    for (int pod = 0; pod < state.Shape.BufCount; ++pod) SetBufLenFull(state.Buffer.BufLen, pod, length);
    state.Memory.BufferLen = state.Memory.DisplayLen = length;
}

/// Fills one pod's samples from a function of the sample number.
inline void FillPod(InstrumentState& state, int pod, const std::function<int(std::int32_t)>& value) {
    const auto samples = state.Buffer.Samples(pod);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        samples[i] = static_cast<std::uint8_t>(value(static_cast<std::int32_t>(i)));
    }
}

/// Sets one channel at [from, to) to 1.
inline void SetHigh(InstrumentState& state, int channel, std::int32_t from, std::int32_t to) {
    const auto samples = state.Buffer.Samples(channel / 8);
    for (std::int32_t i = from; i < to; ++i) {
        samples[static_cast<std::size_t>(i)] |= static_cast<std::uint8_t>(1 << (channel % 8));
    }
}

/// Shows exactly these lines: source, style, mode.
struct Line {
    std::int32_t Source;
    int Style = 5;
    int Mode = 0;
};
inline void ShowLines(InstrumentState& state, std::initializer_list<Line> lines) {
    std::size_t at = 0;
    for (const Line& line : lines) {
        state.Timing.LineSource[at] = line.Source;
        state.Timing.LineStyle[at] = static_cast<std::uint8_t>(line.Style);
        state.Timing.LineMode[at++] = static_cast<std::int8_t>(line.Mode);
    }
    state.Timing.TimingLines = static_cast<std::int32_t>(at);
}

/// Sets the columns: type, range, level.
inline void ShowColumns(InstrumentState& state, std::initializer_list<TimingColumn> columns) {
    state.Timing.TimingDisp.fill({});
    std::size_t at = 0;
    for (const TimingColumn& column : columns) state.Timing.TimingDisp[at++] = column;
}

struct Painted {
    RecorderCanvas Canvas;
    PaintResult Result;
};
inline Painted Paint(InstrumentState& state, std::int32_t width, std::int32_t height,
                     const Metrics& metrics = {}) {
    Painted painted{RecorderCanvas(width, height, metrics), {}};
    painted.Result = PaintTiming(state, {width, height}, painted.Canvas);
    return painted;
}

/// All polylines of a drawing, in order.
inline std::vector<std::vector<Point>> Polylines(const RecorderCanvas& canvas) {
    std::vector<std::vector<Point>> lines;
    for (const auto& op : canvas.Ops()) {
        if (op.What == RecorderCanvas::Kind::Polyline) lines.push_back(op.Points);
    }
    return lines;
}

}  // namespace zu::test
