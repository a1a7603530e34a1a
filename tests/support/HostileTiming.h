#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "support/TimingFixture.h"

namespace zu::test {

/// Numbers that files of all sorts bring: small ones, limits, anything.
inline std::int32_t Number(Random& random, std::int32_t usual) {
    switch (random.Below(6)) {
        case 0: {
            constexpr std::int32_t kLimits[] = {INT32_MIN, INT32_MIN + 1, -1, 0, 1, INT32_MAX - 1, INT32_MAX};
            return kLimits[random.Below(7)];
        }
        case 1:
            return random.Any();
        case 2:
            return -random.Below(usual);
        default:
            return random.Below(usual);
    }
}
inline std::int8_t Byte(Random& random, std::int32_t usual) {
    return static_cast<std::int8_t>(random.OneIn(4) ? random.Any() : random.Below(usual));
}
inline std::uint8_t Unsigned(Random& random, std::int32_t usual) {
    return static_cast<std::uint8_t>(random.OneIn(4) ? random.Any() : random.Below(usual));
}

inline void ScribbleTiming(InstrumentState& state, Random& random) {
    TimingRecord& timing = state.Timing;
    constexpr std::int32_t kZooms[] = {50, 25, 10, 5, 2, 1, -1, -2, -4, -10, -40, -400, -4000};
    timing.ScreenZoom = random.OneIn(3) ? Number(random, 5000) : kZooms[random.Below(13)];
    timing.ZoomOrigin = Byte(random, 6);
    timing.TimingGrid = static_cast<std::uint8_t>(random.OneIn(20) ? random.Any() : 0);
    timing.TimingDataPos = Number(random, 9000);
    timing.TimingChPos = random.OneIn(3) ? Number(random, 300) : 0;
    timing.TimingLines = random.OneIn(3) ? Number(random, 400) : random.Below(30);
    for (auto& column : timing.TimingDisp) {
        column = {Unsigned(random, 17), Unsigned(random, 12), Byte(random, 18)};
        if (random.OneIn(3)) column.Type = 0;
    }
    for (auto& source : timing.LineSource)
        source = random.OneIn(3) ? Number(random, 240) : 160 + random.Below(30);
    for (auto& style : timing.LineStyle) style = Unsigned(random, 13);
    for (auto& mode : timing.LineMode) mode = Byte(random, 7);
    for (auto& at : state.Cursors.Cur) at = Number(random, 9000);
    state.Cursors.CursorDlgMode = Byte(random, 2);
}

inline void ScribbleGroups(InstrumentState& state, Random& random) {
    for (GroupRecord& group : state.Groups) {
        group.Size = random.OneIn(3) ? Number(random, 200) : random.Below(20);
        group.Mode = Byte(random, 8);
        group.TwosComplement = Byte(random, 2);
        const bool sane = random.OneIn(2);
        for (auto& channel : group.Channels) channel = sane ? random.Below(24) : Number(random, 170);
    }
    for (auto& entry : state.Translate.Entry) {
        if (!random.OneIn(100)) continue;
        entry = {std::string_view("1X"), std::string_view("label"), Number(random, 3), 2,
                 static_cast<std::uint32_t>(random.Any())};
    }
    state.Translate.TranslateCount = Number(random, 20);
    for (auto& entry : state.Trigger.SeqList) entry = Number(random, 18);
    for (auto& mode : state.Trigger.ModeList) mode = Number(random, 2);
}

inline void ScribbleSamples(InstrumentState& state, Random& random) {
    state.Clock.ClockType = Unsigned(random, 6);
    state.Clock.ClockRate = Unsigned(random, 36);
    state.Memory.DisplayLen = random.OneIn(3) ? Number(random, 9000) : 8192;
    state.Identity.Emulated = Unsigned(random, 3);
    for (std::size_t pod = 0; pod < kMaxPods; ++pod) {
        const std::int32_t most =
            std::min<std::int32_t>(8192, static_cast<std::int32_t>(state.Buffer.Room(static_cast<int>(pod))));
        state.Buffer.BufLen[pod] = random.OneIn(5) ? 0 : random.OneIn(3) ? random.Below(most + 1) : most;
        state.Pods.HardwarePod[pod] = Byte(random, 5);
        state.Pods.AdjAddr[pod] = random.OneIn(2) ? Number(random, 9000) : 0;
        if (!random.OneIn(4)) continue;
        const int step = 1 + random.Below(3000);
        FillPod(state, static_cast<int>(pod), [&](std::int32_t i) { return i / step * 37; });
    }
    for (auto* lines : {&state.Serial.SpiSI, &state.Serial.SpiSO}) {
        for (auto& entries : *lines) {
            entries.assign(static_cast<std::size_t>(random.OneIn(3) ? random.Below(9000) : 8192), 0);
            if (entries.empty() || random.OneIn(2)) continue;
            for (int i = 0; i < 300; ++i) {
                entries[static_cast<std::size_t>(random.Below(static_cast<std::int64_t>(entries.size())))] =
                    static_cast<std::uint16_t>(random.Any());
            }
        }
    }
}

/// Bytes of any kind, format characters and terminators among them.
inline std::string AnyText(Random& random, std::int32_t most) {
    constexpr std::string_view kUsual = "%n%s~ab1X\\/\xFF\n";
    std::string text(static_cast<std::size_t>(random.Below(most + 1)), ' ');
    for (char& c : text) {
        c = random.OneIn(2) ? static_cast<char>(random.Any())
                            : kUsual[static_cast<std::size_t>(random.Below(kUsual.size()))];
    }
    return text;
}

inline void ScribbleTexts(InstrumentState& state, Random& random) {
    for (auto& name : state.Channels.ChannelName) name = std::string_view(AnyText(random, 240));
    for (auto& invert : state.Channels.ChannelInvert) invert = Byte(random, 2);
    for (auto& color : state.Channels.ChannelColor) color = static_cast<Rgb>(random.Any());
    for (auto& color : state.Screen.ScreenColor) color = static_cast<Rgb>(random.Any());
    for (auto& color : state.Cursors.CursorColor) color = static_cast<Rgb>(random.Any());
    for (GroupRecord& group : state.Groups) {
        group.Name = std::string_view(AnyText(random, 16));
        group.Color = static_cast<Rgb>(random.Any());
    }
    for (auto& board : state.Trigger.TrigWord.Board) {
        for (auto& word : board) {
            for (auto& c : word) c = static_cast<char>(random.Any());
        }
    }
}

inline void Scribble(InstrumentState& state, Random& random) {
    ScribbleTiming(state, random);
    if (random.OneIn(4)) ScribbleTexts(state, random);
    ScribbleGroups(state, random);
    ScribbleSamples(state, random);
}

inline ViewGeom AnyGeometry(Random& random) {
    constexpr std::int32_t kSizes[] = {-50, 0, 1, 37, 149, 150, 151, 400, 1024};
    ViewGeom geom{kSizes[random.Below(9)], kSizes[random.Below(9)]};
    if (random.OneIn(30)) geom.Width = 3000 + random.Below(6000);
    return geom;
}

}  // namespace zu::test
