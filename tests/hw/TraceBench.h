#pragma once

#include <gtest/gtest.h>

#include "Script.h"
#include "hw/BackEnds.h"
#include "support/ScriptedHost.h"

// The sequences are written a second time, as scripts of shadows and registers, and compared with what goes
// out line by line.

namespace zu::test {

inline constexpr std::uint16_t kTraceAddress = 0x230;

/// A session on recording operations, with the same starting shadows as a script.
struct TraceBench {
    ScriptedHost Host;
    HardwareSession Hardware{Host};
    InstrumentState State;
    RecordingOps Ops;
    TraceLog FlushLog{[this](std::string_view line) { Ops.Text += std::string(line) + "\n"; }};
    Script Expected;

    TraceBench(int type, bool direct, unsigned seed = 1) : Expected(type, direct, kTraceAddress) {
        Hardware.Ops = &Ops;
        Hardware.PodRegsDirect = direct ? 1 : 0;
        Hardware.Slots->Usb.SetTrace(&FlushLog);
        for (int b = 0; b < 4; ++b) {
            SetBoardBase(Hardware.Ports, b, static_cast<std::uint16_t>(kTraceAddress + 0x400 * b));
        }
        State.Identity.HardwareType = static_cast<std::uint8_t>(type);
        State.Identity.Emulated = 0;
        State.Shape.PodCount = 20;
        State.Shape.BufStep = 5;
        State.Shape.WordsPerTrig = 4;
        Expected.FillShadows(seed);
        Expected.CopyShadowsTo(Hardware.Shadows);
    }

    void Compare() {
        EXPECT_EQ(Difference(Expected.Text, Ops.Text), "");
        EXPECT_EQ(Expected.ShadowDifference(Hardware.Shadows), "");
    }
};

/// Puts a selector into S8 and sends it.
inline void Selector(Script& s, int selector) {
    s.Do(0, "S8&1f");
    s.S(8, 0) += 32 * selector;
    s.Do(0, "W8");
}

/// Clock held; returns the selector that was.
inline int Hold(Script& s) {
    const int held = s.S(8, 0) / 32;
    s.Do(0, "S8|e0 W8");
    if (s.Type >= 6 && s.Type <= 15) s.Do(0, "S10-10");
    return held;
}

}  // namespace zu::test
