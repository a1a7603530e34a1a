#include <algorithm>

#include "reference/Capture.h"

namespace zu::reference {
namespace {

/// The word of the last level in use; -1 without one.
int LastWord(const Capture& capture) {
    for (int k = 15; k >= 0; --k) {
        const int level = capture.Levels.at(Index(k));
        if (level >= 1 && level <= 16) return level - 1;
    }
    return -1;
}

bool PodMatches(const std::string& text, int lane, int sample) {
    for (int bit = 0; bit < 8; ++bit) {
        const char c = text.at(Index(43 - 9 * lane - bit));
        const bool one = (sample >> bit & 1) != 0;
        if ((c == '1' && !one) || (c == '0' && one)) return false;
    }
    return true;
}

bool Matches(const Capture& capture, int word, int step, int pos) {
    for (int b = 0; b < capture.Boards; ++b) {
        for (int lane = 0; lane < step; ++lane) {
            const auto pod = Index(b * step + lane);
            if (static_cast<int>(pod) >= capture.PodCount) continue;
            if (capture.Pods.at(pod) != 0 || pos >= capture.Lengths.at(pod)) continue;
            const std::string& text = capture.Words.at(Index(word)).at(Index(b));
            if (!PodMatches(text, lane, capture.Samples.at(pod).at(Index(pos)))) return false;
        }
    }
    return true;
}

}  // namespace

int FindAlignment(const Capture& capture, int step) {
    if (capture.OutputMode == 0 && capture.HasPatternPod()) return 0;
    const int word = LastWord(capture);
    if (word < 0) return 0;
    const int longest =
        *std::max_element(capture.Lengths.begin(), capture.Lengths.begin() + capture.PodCount);
    const int start = std::max(capture.Position, 0);
    bool armed = false;
    for (int pos = start; pos <= start + 128; ++pos) {
        if (pos >= longest) return 0;
        bool looked = Matches(capture, word, step, pos);
        if (capture.Edge != 0) looked = !looked;
        if (!looked) {
            armed = true;
        } else if (armed) {
            const bool counts = capture.Edge == 1 && (capture.CountMode == 0 || capture.CountMode == 1);
            return pos - start + (counts ? capture.Count : 0);
        }
    }
    return 0;
}

}  // namespace zu::reference
