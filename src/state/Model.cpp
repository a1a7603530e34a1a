#include "state/Model.h"

#include <algorithm>
#include <cstdio>

#include "state/Catalogue.h"

namespace zu {
namespace {

constexpr int kSeriesDace = 1;
constexpr int kSeriesTench = 3;
constexpr int kSeriesPerch = 5;
constexpr int kPerchNamedChannels = 32;
constexpr std::int32_t kDeepMemory = 1048575;  // from here on a scroll step is 256 samples
constexpr std::int32_t kSerialColumnWidth = 12;

std::size_t At(int index) {
    return static_cast<std::size_t>(index);
}

/// Channels that the multiplexed rates take away, per row 0..15 at rate codes 1, 3 and 4.
struct ChannelLoss {
    std::int32_t Rate1, Rate3, Rate4;
};
constexpr std::array<ChannelLoss, 16> kChannelLoss{{
    {96, 64, 0},  // 0
    {0, 0, 16},   // 1
    {0, 0, 32},   // 2
    {24, 16, 0},  // 3
    {48, 32, 0},  // 4
    {96, 64, 0},  // 5
    {0, 0, 16},   // 6
    {0, 0, 32},   // 7
    {24, 16, 0},  // 8
    {48, 32, 0},  // 9
    {96, 64, 0},  // 10
    {0, 0, 16},   // 11
    {0, 0, 32},   // 12
    {16, 0, 0},   // 13
    {32, 0, 0},   // 14
    {64, 0, 0},   // 15
}};

void ApplyShape(InstrumentState& state, const ModelTraits& model) {
    ShapeRecord& shape = state.Shape;
    shape.SamplesDefault = model.SamplesDefault;
    shape.ChPerSlice = model.ChPerSlice;
    shape.WordLen = model.ChPerSlice + 5;
    shape.WordsPerTrig = model.WordsPerTrig;
    shape.TotalChannels = model.TotalChannels;
    shape.PodCount = model.PodCount;
    shape.BufCount = model.BufCount;
    shape.BufStep = model.PodCount / model.WordsPerTrig;
    shape.ScrollStep = model.SamplesDefault < kDeepMemory ? 32 : 256;
    state.Memory.BufferLen = state.Memory.DisplayLen = model.SamplesDefault;
    state.Memory.HardwareMode = state.Memory.HardwareMux = 0;
    state.Pattern.PatLimit = model.SamplesDefault;
}

template <typename... Args>
std::string Format(const char* format, Args... args) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), format, args...);
    return text.data();
}

std::string DefaultChannelName(const InstrumentState& state, int channel) {
    const int byte = channel / 8;
    const int step = std::max(state.Shape.BufStep, 1);
    const int inBoard = (byte * 8) % std::max(state.Shape.ChPerSlice, 1) + channel % 8;
    switch (state.Identity.ModelSeries) {
        case kSeriesPerch:
            return Format("Bank%d Ch %d", byte % step + 1, inBoard);
        case kSeriesDace:
        case kSeriesTench:
            return Format("Ch %d", channel);
        default:
            return Format("Pod %d%c Ch %d", byte % step + 1, 'A' + byte / step, inBoard);
    }
}

std::int32_t PlainWidth(std::int32_t size, std::int8_t format) {
    constexpr std::int8_t kHex = 0;
    constexpr std::int8_t kDecimal = 3;
    if (format == kHex) return size / 4 + 1 + (size % 4 != 0 ? 1 : 0);
    if (format == kDecimal) return size / 3 + 1 + (size % 3 != 0 ? 1 : 0) + (size > 13 ? 1 : 0);
    return size + 1;
}

bool HasDirectionBuffer(int row) {
    return row >= 25 && row <= 27;
}

void SetAllLengths(InstrumentState& state, std::int32_t length) {
    for (int i = 0; i < kMaxPods; ++i) {
        SetBufLenFull(state.Buffer.BufLen, i, i < state.Shape.BufCount ? length : 0);
    }
}

}  // namespace

int SeriesDefaultRow(const InstrumentState& state) {
    return Series(state.Identity.ModelSeries).DefaultRow;
}

int DisplayChannelCount(const InstrumentState& state) {
    const std::int32_t total = state.Shape.TotalChannels;
    if (state.Identity.HardwareType >= kChannelLoss.size()) return total;
    const ChannelLoss& loss = kChannelLoss[state.Identity.HardwareType];
    switch (state.Clock.ClockRate) {
        case 1:
            return total - loss.Rate1;
        case 3:
            return total - loss.Rate3;
        case 4:
            return total - loss.Rate4;
        default:
            return total;
    }
}

void ResetGroups(InstrumentState& state) {
    for (int g = 0; g < kGroupCount; ++g) {
        GroupRecord& group = state.Groups[At(g)];
        group = GroupRecord{};
        group.Name = Format("Group %d", g + 1);
        if (g >= state.Shape.PodCount) continue;
        group.Size = 8;
        for (int i = 0; i < 8; ++i) group.Channels[At(i)] = 8 * g + i;
    }
}

void ResetDisplayLines(InstrumentState& state) {
    TimingRecord& timing = state.Timing;
    timing.LineSource.fill(0);
    timing.LineStyle.fill(0);
    timing.LineMode.fill(0);
    for (int line = 0; line < kFirstSpacerLine; ++line) {
        timing.LineSource[At(line)] = line;
        timing.LineStyle[At(line)] = line < kFirstGroupLine ? 5 : 0;
    }
    timing.TimingLines = state.Shape.TotalChannels;
}

void ResetChannelNames(InstrumentState& state) {
    int named = kMaxChannels;
    if (state.Identity.ModelSeries == kSeriesPerch) named = kPerchNamedChannels;
    if (state.Identity.ModelSeries == kSeriesDace || state.Identity.ModelSeries == kSeriesTench) {
        named = state.Shape.TotalChannels;
    }
    for (int channel = 0; channel < named; ++channel) {
        state.Channels.ChannelName[At(channel)] = DefaultChannelName(state, channel);
        state.Channels.ChannelInvert[At(channel)] = 0;
    }
}

void ResetChannelColors(InstrumentState& state) {
    for (unsigned i = 0; i < kMaxChannels; ++i) {
        state.Channels.ChannelColor[i] = MakeRgb(16 * i, 32 * i, 64 * i);
    }
}

void ResetTrigWords(InstrumentState& state) {
    // Five groups of eight on the 40-channel boards, four on all others.
    constexpr std::string_view kFive = "XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX XXXXXXXX";
    const std::string_view text = state.Shape.ChPerSlice == 40 ? kFive : kFive.substr(0, 35);
    for (auto& board : state.Trigger.TrigWord.Board) {
        for (auto& word : board) {
            word.fill('\0');
            std::copy(text.begin(), text.end(), word.begin());
        }
    }
}

void ResizeDecodeBuffers(InstrumentState& state) {
    state.Serial.SerialEvents.clear();
    for (auto& words : state.Serial.SpiSI) words.clear();
    for (auto& words : state.Serial.SpiSO) words.clear();
    state.Pattern.DirectionBuffer.clear();
    FitDecodeBuffers(state);
}

void FitDecodeBuffers(InstrumentState& state) {
    const auto length = static_cast<std::size_t>(std::max(state.Memory.DisplayLen, 0));
    state.Serial.SerialEvents.resize(length);
    for (auto& words : state.Serial.SpiSI) words.resize(length);
    for (auto& words : state.Serial.SpiSO) words.resize(length);
    std::vector<std::uint8_t>& directions = state.Pattern.DirectionBuffer;
    if (HasDirectionBuffer(state.Identity.HardwareType))
        directions.resize(std::max(directions.size(), length));
}

void ApplyModel(InstrumentState& state) {
    const int row = state.Identity.HardwareType;
    if (HasShape(row)) ApplyShape(state, Model(row));
    if (state.Timing.TimingChPos >= state.Shape.TotalChannels) {
        state.Timing.TimingChPos = std::max(state.Shape.TotalChannels - 1, 0);
    }
    ResetGroups(state);
    // The room is laid out once per model, for its plain depth; memory modes change lengths only.
    SetAllLengths(state, state.Shape.SamplesDefault);
    state.Buffer.Allocate();
    SetAllLengths(state, state.Memory.BufferLen);
    ResizeDecodeBuffers(state);
    ResetDisplayLines(state);
    ComputeGroupWidths(state);
}

void ChangeModel(InstrumentState& state, int row) {
    state.Buffer.Free();
    state.Identity.HardwareType = static_cast<std::uint8_t>(row);
    ApplyModel(state);
}

void ComputeGroupWidths(InstrumentState& state) {
    for (std::size_t column = 0; column < kGroupCount; ++column) {
        const int shown = state.StateList.ScreenL[column];
        std::int32_t& width = state.StateList.ScreenWidth[column];
        width = 0;
        if (shown < 0 || shown >= kGroupCount) continue;
        const GroupRecord& group = state.Groups[At(shown)];
        const std::int32_t size = std::clamp(group.Size, 0, kGroupSlots);
        if (size == 0) continue;
        width = PlainWidth(size, state.StateList.ScreenF[column]);
        const auto name = static_cast<std::int32_t>(group.Name.View().size());
        if (width < name) width = name + 1;
        if (state.Serial.SerialMode != 0 && shown == state.Serial.SerialGroup) {
            width = std::max(width, kSerialColumnWidth);
        }
    }
}

}  // namespace zu
