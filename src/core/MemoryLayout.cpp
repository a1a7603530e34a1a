#include "core/MemoryLayout.h"

#include <algorithm>
#include <array>
#include <span>

#include "state/Catalogue.h"

namespace zu {
namespace {

constexpr std::string_view kError = "ERROR:";
constexpr std::string_view kNoPattern =
    "This mode is not availalbe with the Pattern Generator. Memory mode has been reset.";
constexpr std::string_view kInternalOnly =
    "This mode is only available with and internal clock <= 250MHz. Memory mode has been reset.";

constexpr std::int32_t kKeep = 0;  ///< in a length table: BufferLen stays

using ModeLengths = std::array<std::int32_t, kMemoryModes>;

constexpr ModeLengths kTopRateLengths{32768, 524288, 65536, 524288};
constexpr ModeLengths kPlainLengths{8192, 131072, 16384, 262144};
constexpr ModeLengths kTenchLengths{8192,  1048576, kKeep, kKeep, 16384, 2097152,
                                    32768, 4194304, kKeep, kKeep, kKeep, kKeep};
constexpr ModeLengths kPerchLengths{4096,    8192,    kKeep, kKeep,  262144, 524288,
                                    1048576, 2097152, 65536, 131072, 524288, 1048576};

/// What one multiplexed setting does to the buffers of a block.
struct MuxPattern {
    std::int32_t DisplayFactor;
    std::array<std::int32_t, 5> Factor;  ///< of BufferLen, by place in the block
};

enum class Family : std::uint8_t { None, Central, Early, EarlyB, Dace, Tench512, Tench1024, Perch };

struct LayoutRow {
    Family Kind;
    std::int32_t Small;  ///< BufferLen of mode 0; 0 where a table by mode holds instead
    std::int32_t Other;  ///< BufferLen of every other mode
    MuxPattern Mux1;
    MuxPattern Mux2;
};

constexpr MuxPattern kEveryOther{4, {1, 0, 1, 0, 1}};
constexpr MuxPattern kHalf{2, {2, 2, 0, 0, 2}};
constexpr MuxPattern kQuarter{4, {4, 0, 0, 0, 4}};
constexpr MuxPattern kAll{1, {1, 1, 1, 1, 1}};
constexpr MuxPattern kFirstTwo{1, {1, 1, 0, 0, 0}};
constexpr MuxPattern kFirstOne{1, {1, 0, 0, 0, 0}};
constexpr MuxPattern kMiddleTwo{1, {0, 1, 1, 0, 0}};

constexpr LayoutRow kNone{Family::None, 0, 0, kAll, kAll};
constexpr LayoutRow kCentral{Family::Central, 0, 0, kEveryOther, kEveryOther};
constexpr LayoutRow kEarlySmall{Family::Early, 8192, 32768, kHalf, kQuarter};
constexpr LayoutRow kEarlySmallB{Family::EarlyB, 8192, 32768, kHalf, kQuarter};
constexpr LayoutRow kEarlyLargeB{Family::EarlyB, 8192, 131072, kHalf, kQuarter};
constexpr LayoutRow kDace{Family::Dace, 2048, 131072, kAll, kAll};
constexpr LayoutRow kTench512{Family::Tench512, 8192, 524288, kFirstTwo, kFirstTwo};
constexpr LayoutRow kTench1024{Family::Tench1024, 0, 0, kFirstTwo, kFirstOne};
constexpr LayoutRow kPerch{Family::Perch, 0, 0, kMiddleTwo, kFirstOne};

constexpr std::array<LayoutRow, kModelRows> kLayouts{
    kCentral,      // 0
    kEarlySmall,   // 1
    kEarlySmall,   // 2
    kEarlyLargeB,  // 3
    kEarlyLargeB,  // 4
    kEarlyLargeB,  // 5
    kEarlySmall,   // 6
    kEarlySmall,   // 7
    kEarlyLargeB,  // 8
    kEarlyLargeB,  // 9
    kEarlyLargeB,  // 10
    kEarlySmallB,  // 11
    kEarlySmallB,  // 12
    kCentral,      // 13
    kCentral,      // 14
    kCentral,      // 15
    kDace,         // 16
    kDace,         // 17
    kTench512,     // 18
    kTench1024,    // 19
    kTench512,     // 20
    kNone,         // 21
    kNone,         // 22
    kNone,         // 23
    kNone,         // 24
    kPerch,        // 25
    kPerch,        // 26
    kPerch,        // 27
};

/// A move from one memory mode to another.
struct ModeMove {
    std::int8_t From;
    std::int8_t To;
};
constexpr std::array kDoubled{ModeMove{0, 4}, ModeMove{1, 5}};
constexpr std::array kQuadrupled{ModeMove{0, 6}, ModeMove{4, 6}, ModeMove{1, 7}, ModeMove{5, 7}};
constexpr std::array kPerchLarge{ModeMove{0, 1}, ModeMove{4, 5}, ModeMove{6, 7}, ModeMove{8, 9},
                                 ModeMove{10, 11}};
constexpr std::array kPerchSmall{ModeMove{1, 0},  ModeMove{5, 4},  ModeMove{6, 4}, ModeMove{7, 4},
                                 ModeMove{10, 4}, ModeMove{11, 4}, ModeMove{9, 8}};

void Move(std::int8_t& mode, std::span<const ModeMove> moves) {
    for (const ModeMove& move : moves) {
        if (mode == move.From) {
            mode = move.To;
            return;
        }
    }
}

/// What a layout decides on.
struct Choice {
    InstrumentState& State;
    int Row;
    std::int8_t Mux;

    [[nodiscard]] bool Internal() const { return State.Clock.ClockType == 0; }
    [[nodiscard]] int Code() const { return State.Clock.ClockRate; }
    [[nodiscard]] bool InternalCode(int code) const { return Internal() && Code() == code; }
    std::int8_t& Mode() { return State.Memory.HardwareMode; }
};

void SetBufferLen(Choice& c, const ModeLengths& lengths) {
    const int mode = c.Mode();
    if (mode < 0 || mode >= kMemoryModes) return;
    const std::int32_t length = lengths[static_cast<std::size_t>(mode)];
    if (length != kKeep) c.State.Memory.BufferLen = length;
}

void ChooseCentral(Choice& c) {
    if (c.Mux != -1) return;
    if (!c.Internal() || c.Code() >= 3) c.Mux = 0;
    if (c.InternalCode(1)) c.Mux = 1;  // codes 0 and 2 leave it open
}

/// Mode 3 becomes 1 and mode 2 becomes 0, with a text.
void ResetDeepModes(Choice& c, Host& host, std::string_view text) {
    constexpr std::array kPlain{ModeMove{3, 1}, ModeMove{2, 0}};
    if (c.Mode() != 3 && c.Mode() != 2) return;
    host.Message(text, kError);
    Move(c.Mode(), kPlain);
}

void SettleCentral(Choice& c, Host& host) {
    ChooseCentral(c);
    if (HasPatternPod(c.State)) ResetDeepModes(c, host, kNoPattern);
    if (!c.Internal()) ResetDeepModes(c, host, kInternalOnly);
    if (c.InternalCode(1)) {
        SetBufferLen(c, kTopRateLengths);
    } else if (!c.Internal() || c.Code() >= 3) {
        SetBufferLen(c, kPlainLengths);
    }
}

void SettleEarly(Choice& c, const LayoutRow& layout) {
    constexpr int kQualifiedClock = 3;  // the other external types go by the rate code
    if (c.Mux != -1) return;
    if (c.Code() >= 5 || c.State.Clock.ClockType == kQualifiedClock) {
        c.Mux = 0;
    } else if (layout.Kind == Family::Early) {
        if (c.Code() == 4) c.Mux = 1;
    } else {
        if (c.Code() == 3) c.Mux = 1;
        if (c.Code() == 1) c.Mux = 2;
    }
}

void SettleTench512(Choice& c) {
    if (c.Mux != -1) return;
    const int mode = c.Mode();
    if (mode == 0 || mode == 1) c.Mux = 0;
    if (mode >= 4 && mode <= 7) c.Mux = 1;
    if (c.InternalCode(1)) {
        c.Mux = 1;
        Move(c.Mode(), kDoubled);
    }
}

void SettleTench1024(Choice& c) {
    if (c.Mux == -1) {
        const int mode = c.Mode();
        if (mode == 0 || mode == 1) c.Mux = 0;
        if (mode == 4 || mode == 5) c.Mux = 1;
        if (mode == 6 || mode == 7) c.Mux = 2;
        if (c.InternalCode(0)) {
            c.Mux = 2;
            Move(c.Mode(), kQuadrupled);
        }
        if (c.InternalCode(1) && c.Mux == 0) {
            c.Mux = 1;
            Move(c.Mode(), kDoubled);
        }
    }
    SetBufferLen(c, kTenchLengths);
}

void SettlePerchWideB(Choice& c) {
    if (c.Mux == -1) {
        constexpr std::array<std::int8_t, kMemoryModes> kMux{0, 1, -1, -1, 0, 1, 0, 1, 0, 1, 0, 1};
        const int mode = c.Mode();
        if (mode >= 0 && mode < kMemoryModes) c.Mux = kMux[static_cast<std::size_t>(mode)];
        if (c.InternalCode(2)) c.Mux = 1;
    }
    if (c.Mux == 1) Move(c.Mode(), kPerchLarge);
}

void SettlePerch(Choice& c) {
    constexpr int kWideB = 27;
    if (c.Row == kWideB) {
        SettlePerchWideB(c);
    } else {
        c.State.Clock.ClockRate = std::max<std::uint8_t>(c.State.Clock.ClockRate, 4);
        c.Mux = 0;
        Move(c.Mode(), kPerchSmall);
    }
    SetBufferLen(c, kPerchLengths);
}

void Settle(Choice& c, const LayoutRow& layout, Host& host) {
    switch (layout.Kind) {
        case Family::None:
            break;
        case Family::Central:
            SettleCentral(c, host);
            break;
        case Family::Early:
        case Family::EarlyB:
            SettleEarly(c, layout);
            break;
        case Family::Dace:
            if (c.Mux == -1) c.Mux = 0;
            break;
        case Family::Tench512:
            SettleTench512(c);
            break;
        case Family::Tench1024:
            SettleTench1024(c);
            break;
        case Family::Perch:
            SettlePerch(c);
            break;
    }
    if (layout.Small > 0) c.State.Memory.BufferLen = c.Mode() == 0 ? layout.Small : layout.Other;
}

/// Places in a block: five on the boards of 40 channels, else the pods of a board.
int BlockPlaces(const InstrumentState& state, Family kind) {
    const bool ofFive = kind == Family::Central || kind == Family::Early || kind == Family::EarlyB;
    return ofFive ? 5 : std::max(state.Shape.BufStep, 1);
}

/// What a buffer may hold: its share of the memory that was laid out for the model.
std::int32_t Share(const InstrumentState& state, int index, std::int64_t length) {
    const auto room = static_cast<std::int64_t>(state.Buffer.Room(index));
    const std::int64_t slot = std::int64_t{4} * state.Shape.SamplesDefault;
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(length, 0, std::min(room, slot)));
}

void SetLengths(InstrumentState& state, const MuxPattern& pattern, int places) {
    MemoryRecord& memory = state.Memory;
    memory.DisplayLen = memory.BufferLen * pattern.DisplayFactor;
    for (int i = 0; i < kMaxPods; ++i) {
        const auto place = static_cast<std::size_t>(i % places);
        const bool used = i < state.Shape.BufCount && place < pattern.Factor.size();
        const std::int64_t length = used ? std::int64_t{memory.BufferLen} * pattern.Factor[place] : 0;
        SetBufLenFull(state.Buffer.BufLen, i, Share(state, i, length));
    }
}

}  // namespace

bool HasPatternPod(const InstrumentState& state) {
    const auto count = static_cast<std::ptrdiff_t>(std::clamp<int>(state.Shape.PodCount, 0, kMaxPods));
    const auto& pods = state.Pods.HardwarePod;
    return std::any_of(pods.begin(), pods.begin() + count, IsPatternMode);
}

void RunMemoryLayout(App& app, int mux) {
    InstrumentState& state = app.State;
    const int row = state.Identity.HardwareType;
    const LayoutRow& layout = row < kModelRows ? kLayouts[static_cast<std::size_t>(row)] : kNone;
    if (layout.Kind == Family::None) return;
    Choice choice{state, row, static_cast<std::int8_t>(mux)};
    Settle(choice, layout, app.Host);
    state.Memory.HardwareMux = choice.Mux;
    const int places = BlockPlaces(state, layout.Kind);
    if (choice.Mux == 0) SetLengths(state, kAll, 5);
    if (choice.Mux == 1) SetLengths(state, layout.Mux1, places);
    if (choice.Mux == 2) SetLengths(state, layout.Mux2, places);
}

}  // namespace zu
