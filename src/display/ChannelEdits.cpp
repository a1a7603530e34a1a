#include "display/ChannelEdits.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "state/Model.h"

namespace zu {
namespace {

constexpr int kSeriesPike = 0;
constexpr int kSeriesRoach = 2;

std::size_t At(int index) {
    return static_cast<std::size_t>(index);
}

bool IsChannel(int channel) {
    return channel >= 0 && channel < kMaxChannels;
}

/// The families that count their pods "1A", "2A" .. instead of naming channel numbers.
bool HasLetteredPods(const InstrumentState& state) {
    return state.Identity.ModelSeries == kSeriesPike || state.Identity.ModelSeries == kSeriesRoach;
}

std::int32_t Part(std::int32_t length, double share) {
    return static_cast<std::int32_t>(static_cast<double>(length) * share);
}

}  // namespace

ChannelNameEdit::ChannelNameEdit(InstrumentState& state) : state_(state) {
    for (std::size_t i = 0; i < names_.size(); ++i) names_[i] = state.Channels.ChannelName[i].View();
}

int ChannelNameEdit::PageCount() const {
    return std::clamp(state_.Shape.TotalChannels, 0, kMaxChannels) / kChannelsPerPage;
}

std::string ChannelNameEdit::PageText(int page) const {
    std::array<char, 32> text{};
    if (HasLetteredPods(state_)) {
        const int step = std::max(state_.Shape.BufStep, 1);
        std::snprintf(text.data(), text.size(), "%d%c", page % step + 1, 'A' + page / step);
    } else {
        const int first = page * kChannelsPerPage;
        std::snprintf(text.data(), text.size(), "%d..%d", first, first + kChannelsPerPage - 1);
    }
    return text.data();
}

std::string_view ChannelNameEdit::Name(int channel) const {
    return IsChannel(channel) ? names_[At(channel)].View() : std::string_view();
}

void ChannelNameEdit::SetName(int channel, std::string_view name) {
    if (IsChannel(channel)) names_[At(channel)] = name;
}

EditResult ChannelNameEdit::Reset() {
    // Channels that have no default name keep what was typed.
    auto names = state_.Channels.ChannelName;
    Accept();
    ResetChannelNames(state_);
    std::swap(names, state_.Channels.ChannelName);
    for (std::size_t i = 0; i < names_.size(); ++i) names_[i] = names[i].View();
    return {.Changed = true};
}

EditResult ChannelNameEdit::Accept() {
    for (std::size_t i = 0; i < names_.size(); ++i) state_.Channels.ChannelName[i] = names_[i].View();
    return {.Changed = true};
}

EditResult ToggleChannelInvert(InstrumentState& state, int channel) {
    if (!IsChannel(channel)) return {};
    std::int8_t& invert = state.Channels.ChannelInvert[At(channel)];
    invert = static_cast<std::int8_t>((invert + 1) & 1);
    return {.Changed = true};
}

EditResult SetChannelColor(InstrumentState& state, int channel, Rgb color) {
    if (!IsChannel(channel)) return {};
    state.Channels.ChannelColor[At(channel)] = color & 0xFFFFFFU;
    return {.Changed = true};
}

std::array<Point, 6> TraceExample(std::int32_t width, std::int32_t height, bool inverted) {
    const std::int32_t top = Part(height, 0.05);
    const std::int32_t bottom = top + Part(height, 0.9);
    const std::int32_t rest = inverted ? top : bottom;
    const std::int32_t pulse = inverted ? bottom : top;
    const std::int32_t rise = Part(width, 0.25);
    const std::int32_t fall = Part(width, 0.75);
    return {{{0, rest}, {rise, rest}, {rise, pulse}, {fall, pulse}, {fall, rest}, {width, rest}}};
}

}  // namespace zu
