#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "state/InstrumentState.h"
#include "state/SampleView.h"

namespace zu::test {

/// The searches sample by sample and character by character: slow and obvious, to compare the fast ones with.
class PlainSearch {
  public:
    PlainSearch(const InstrumentState& state, int step) : state_(state), step_(step) {
        for (int pod = 0; pod < kMaxPods; ++pod) views_[static_cast<std::size_t>(pod)] = BindPod(state, pod);
        const bool timing = state.Windows.ActiveView == 0;
        position_ = timing ? state.Timing.TimingDataPos : state.StateList.StateDataPos;
        if (position_ < 0) position_ = 0;
    }

    /// Place found; -1 for none.
    [[nodiscard]] std::int64_t Find() const {
        return state_.Search.SearchMode == 'S' ? FindSerial() : FindParallel();
    }

  private:
    [[nodiscard]] std::int64_t Start() const {
        if (step_ < 0) return position_ - 1;
        return position_ + 1 < views_[0].Shown - 1 ? position_ + 1 : position_;
    }
    [[nodiscard]] bool Inside(std::int64_t i, std::int64_t length) const {
        return step_ > 0 ? i < length - 1 : i >= 1;
    }

    /// Board b, lane l of a pod: eight characters, each group of eight followed by a blank, the last lane
    /// first.
    [[nodiscard]] bool PodMatches(int pod, std::int64_t i) const {
        const SampleView& view = views_[static_cast<std::size_t>(pod)];
        const int perBoard = state_.Shape.ChPerSlice / 8;
        if (i >= view.Shown || perBoard <= 0 || pod >= perBoard * state_.Shape.WordsPerTrig) return true;
        const auto at = std::size_t{9} * static_cast<std::size_t>(perBoard - 1 - pod % perBoard);
        const auto& entry = state_.Search.SearchWd[static_cast<std::size_t>(pod / perBoard)];
        unsigned care = 0;
        unsigned dontCare = 0;
        for (unsigned bit = 0; bit < 8; ++bit) {
            const std::size_t place = at + 7 - bit;
            const char c = place < kTrigWordText - 1 ? entry[place] : 'X';
            if (c == '1' || c == 'X' || c == 'x') care |= 1U << bit;
            if (c == 'X' || c == 'x') dontCare |= 1U << bit;
        }
        const unsigned v = view.At(i);
        return (v & care) == v && (v | dontCare) == care;
    }
    [[nodiscard]] std::int64_t FindParallel() const {
        std::int64_t i = Start();
        if (i >= views_[0].Shown) i = step_ < 0 ? views_[0].Shown - 1 : i;
        for (; Inside(i, views_[0].Shown); i += step_) {
            bool all = true;
            for (int pod = 0; pod < kMaxPods; ++pod) all = all && PodMatches(pod, i);
            if (all) return i;
        }
        return -1;
    }

    [[nodiscard]] std::int64_t FindSerial() const {
        std::string pattern;
        const auto word = state_.Search.SearchWord.View();
        for (auto c = word.rbegin(); c != word.rend(); ++c) {
            if (*c == '0' || *c == '1' || *c == 'X' || *c == 'x') pattern += *c;
        }
        const int channel = state_.Search.SearchCh;
        if (channel < 0 || channel >= state_.Shape.TotalChannels || pattern.empty()) return -1;
        const SampleView& view = views_[static_cast<std::size_t>(channel / 8)];
        std::int64_t i = Start();
        if (step_ < 0 && i >= view.Shown) i = view.Shown - 1;
        std::int64_t began = i;
        std::size_t k = 0;
        while (Inside(i, view.Shown)) {
            const char c = pattern[k];
            const bool high = (view.At(i) >> (channel % 8) & 1) != 0;
            if (c == 'X' || c == 'x' || high == (c == '1')) {
                if (k++ == 0) began = i;
            } else if (k > 0) {
                i = began;
                k = 0;
            }
            i += step_;
            if (k == pattern.size()) return i;
        }
        return -1;
    }

    const InstrumentState& state_;
    int step_;
    std::int64_t position_ = 0;
    std::array<SampleView, kMaxPods> views_{};
};

}  // namespace zu::test
