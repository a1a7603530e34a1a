#pragma once

#include <algorithm>
#include <gtest/gtest.h>
#include <ostream>

#include "LiveBench.h"
#include "state/SampleView.h"

namespace zu::test {

/// How an instrument samples and stores: model, memory mode, clock.
struct StorageCase {
    int Row;
    int Mode;
    int Rate;
    int ClockType = 0;

    /// Samples of a pod in each clock: what the manual of the instrument says of its rates.
    [[nodiscard]] int Phases() const {
        if (ClockType != 0) return 1;
        if (Rate <= 2) return 4;
        return Rate <= 4 || Mode == 3 ? 2 : 1;
    }
    [[nodiscard]] int Depth() const {
        if (Mode == 0) return 8192;
        return Row == 1 || Row == 2 || Row == 11 || Row == 12 ? 32768 : 131072;
    }
    [[nodiscard]] double PeriodNs() const {
        if (ClockType == 5) return 10;
        return ClockType != 0 ? 1000 : kRates[static_cast<std::size_t>(Rate)].PeriodNs;
    }
    /// Place of the trigger's sample among those of the memory, for a trigger cursor.
    [[nodiscard]] std::int64_t TriggerIndex(std::int64_t cursor) const {
        const std::int64_t grain = 2 * Phases();
        return std::min((cursor + 16 * Phases()) / grain, std::int64_t{Depth()} / 2 - 2) * grain;
    }
    friend void PrintTo(const StorageCase& c, std::ostream* out) {
        *out << "row " << c.Row << " mode " << c.Mode << " clock " << c.ClockType << " rate " << c.Rate;
    }
};

inline std::string StorageName(const testing::TestParamInfo<StorageCase>& info) {
    const StorageCase& c = info.param;
    return "Row" + std::to_string(c.Row) + "Mode" + std::to_string(c.Mode) + "Clock" +
           std::to_string(c.ClockType) + "Rate" + std::to_string(c.Rate);
}

/// Every way of storing samples on every kind of instrument.
inline constexpr StorageCase kStorageCases[] = {
    {15, 0, 5},    {15, 1, 6},    {13, 1, 8},    {14, 0, 12},   {11, 0, 5},    {12, 1, 9},    {1, 0, 5},
    {2, 1, 6},     {3, 0, 8},     {3, 1, 10},    {4, 0, 5},     {5, 0, 28},    {5, 1, 5},     {15, 0, 34},
    {13, 0, 3},    {13, 1, 3},    {13, 3, 3},    {14, 0, 3},    {14, 1, 3},    {14, 3, 3},    {15, 0, 3},
    {15, 1, 3},    {15, 3, 3},    {13, 3, 5},    {13, 3, 6},    {13, 3, 8},    {13, 3, 27},   {13, 3, 34},
    {14, 3, 5},    {14, 3, 6},    {14, 3, 8},    {14, 3, 27},   {14, 3, 34},   {15, 3, 5},    {15, 3, 6},
    {15, 3, 8},    {15, 3, 27},   {15, 3, 34},   {11, 0, 4},    {11, 1, 4},    {12, 0, 4},    {12, 1, 4},
    {1, 0, 4},     {1, 1, 4},     {2, 0, 4},     {2, 1, 4},     {3, 0, 3},     {3, 1, 3},     {5, 0, 3},
    {5, 1, 3},     {13, 0, 1},    {13, 1, 1},    {14, 0, 1},    {14, 1, 1},    {15, 0, 1},    {15, 1, 1},
    {3, 0, 1},     {3, 1, 1},     {4, 0, 1},     {4, 1, 1},     {5, 0, 1},     {5, 1, 1},     {15, 0, 5, 1},
    {15, 0, 5, 2}, {15, 0, 5, 5}, {13, 1, 5, 1}, {13, 1, 5, 2}, {13, 1, 5, 5}, {11, 0, 5, 1}, {12, 0, 5, 5},
    {5, 0, 5, 1},  {5, 0, 5, 2},  {5, 0, 5, 5},  {1, 0, 5, 2},  {3, 0, 5, 5},  {2, 1, 5, 1}};

/// The program on an instrument that is set up for a case, with a trigger on pod 0.
struct StorageBench : LiveBench {
    static constexpr int kValue = 0x40;  ///< of pod 0 at the trigger
    static constexpr int kSamplesPerStep = 3;

    explicit StorageBench(const StorageCase& c, SimCable cable = SimCable::Usb, bool direct = true)
        : LiveBench(c.Row, cable, direct), Case(c) {
        EXPECT_EQ(State->Identity.Emulated, 0);
        SetRate(App, c.Rate);
        if (c.ClockType != 0) SetClockType(App, c.ClockType);
        SetMemoryMode(App, -1, c.Mode);
        EXPECT_EQ(State->Clock.ClockRate, c.Rate);
        EXPECT_EQ(State->Clock.ClockType, c.ClockType);
        EXPECT_EQ(State->Memory.HardwareMode, c.Mode);
        Signals->Step = static_cast<SimTicks>(c.PeriodNs() * kTicksPerNs) * kSamplesPerStep;
        for (std::size_t i = 0; i < State->Pods.ThrHd.size(); ++i) {
            State->Pods.ThrHd[i] = static_cast<std::uint16_t>(20 + 7 * i);
        }
        TriggerRecord& trigger = State->Trigger;
        trigger.SeqList.fill(0);
        trigger.EdgeList16.fill(0);
        trigger.TrigMatchMode.fill(1);
        trigger.TrigCntMd = 3;
        AddLevel(0, kValue);
    }

    void AddLevel(int level, int value) {
        SetAllWord(*State, 'X', level);
        for (int bit = 0; bit < 8; ++bit) {
            SetCharOfChannel(*State, bit, level, (value >> bit & 1) != 0 ? '1' : '0');
        }
        State->Trigger.SeqList[static_cast<std::size_t>(level)] = level + 1;
    }
    void SetCursor(std::int32_t at) { State->Cursors.Cur[kCursorT] = at; }
    [[nodiscard]] std::int32_t Cursor() const { return State->Cursors.Cur[kCursorT]; }

    /// Go, and polls until the capture is shown; false if it never is.
    bool Run() {
        Go(App);
        for (int tick = 0; tick < 60; ++tick) {
            if (Capture().CaptureState == 0) return Capture().CaptureCount == 1;
            TimerBody(App, kHardwareTimer);
            Sim().Advance(std::max(30e6, Case.PeriodNs() * Case.Phases() * Case.Depth() / 4));
        }
        return false;
    }
    [[nodiscard]] int Samples(int pod) const { return GetBufLenFull(State->Buffer.BufLen, pod); }

    /// Every stored sample of every pod follows from the value that pod 0 had at sample `at`.
    void ExpectSamples(std::int64_t at, int value) {
        for (int pod = 0; pod < State->Shape.PodCount; ++pod) {
            const std::span<const std::uint8_t> samples = State->Buffer.Samples(pod);
            // The fifth pod of an older board is stored once a clock, and its last few clocks not at all.
            const int repeated = Case.Row <= 10 && pod % 5 == 4 ? Case.Phases() : 1;
            const auto end = static_cast<std::int64_t>(samples.size()) - (repeated > 1 ? 4 * repeated : 0);
            for (std::int64_t i = Case.Phases() > 1 ? 1 : 0; i < end; ++i) {
                const std::int64_t taken = i / repeated * repeated;
                const auto expected =
                    static_cast<std::uint8_t>(value + 7 * pod + FloorDiv(taken - at, kSamplesPerStep));
                ASSERT_EQ(samples[static_cast<std::size_t>(i)], expected) << "pod " << pod << " sample " << i;
            }
        }
    }
    /// Alignment that brings an edge at sample `found` to the cursor; 0 where the search does not reach it.
    [[nodiscard]] std::int32_t Alignment(std::int64_t found) const {
        const int pods = State->Shape.PodCount;
        const bool reached = found > Cursor() && found < GetLongestBufLen(State->Buffer.BufLen, pods);
        return reached ? static_cast<std::int32_t>(found - Cursor()) : 0;
    }
    void ExpectAlignment(std::int32_t alignment) const {
        for (int pod = 0; pod < State->Shape.PodCount; ++pod) {
            EXPECT_EQ(State->Pods.AdjAddr[static_cast<std::size_t>(pod)], alignment) << "pod " << pod;
        }
    }

    StorageCase Case;
};

}  // namespace zu::test
