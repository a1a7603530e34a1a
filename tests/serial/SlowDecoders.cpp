#include "SlowDecoders.h"

#include <algorithm>

namespace zu::test {
namespace {

struct SlowLine {
    const std::uint8_t* Bytes = nullptr;
    std::int64_t Length = 0;
    std::int64_t Base = 0;
    std::int64_t Shown = 0;
    int Mask = 0;

    [[nodiscard]] int Masked(std::int64_t i) const {
        if (i < 0 || Bytes == nullptr || Base + i >= Length) return 0;
        return Bytes[Base + i] & Mask;
    }
    [[nodiscard]] bool High(std::int64_t i) const { return Masked(i) != 0; }
};

SlowLine LineOf(const InstrumentState& state, int channel) {
    SlowLine line;
    if (channel < 0 || channel >= 160) return line;
    const auto pod = static_cast<std::size_t>(channel / 8);
    const int mode = state.Pods.HardwarePod[pod];
    const bool pattern = mode == 1 || mode == 2;
    line.Bytes = pattern ? state.Buffer.PatPod[pod] : state.Buffer.Pod[pod];
    line.Length = state.Buffer.BufLen[pod];
    line.Mask = 1 << (channel % 8);
    const std::int64_t adjust = pattern ? 0 : state.Pods.AdjAddr[pod];
    line.Base = adjust >= 0 && adjust <= line.Length ? adjust : 0;
    line.Shown = std::max<std::int64_t>(line.Length - std::clamp<std::int64_t>(adjust, 0, 128), 0);
    return line;
}

int EventOfPair(const SlowLine& scl, const SlowLine& sda, std::int64_t v, std::int64_t n) {
    const auto level = [n](const SlowLine& line, std::int64_t i) {
        const bool beyond = i == n && line.Base + n >= line.Length;
        return line.High(beyond ? n - 1 : i);
    };
    const bool scl0 = level(scl, v), scl1 = level(scl, v + 1);
    const bool sda0 = level(sda, v), sda1 = level(sda, v + 1);
    if (scl0 && scl1 && sda0 && !sda1) return 1;
    if (scl0 && scl1 && !sda0 && sda1) return 2;
    if (scl0 && !scl1) return sda0 ? 4 : 3;
    return 0;
}

void FrameSlowly(std::vector<std::uint8_t>& events, std::int64_t n) {
    for (std::int64_t i = 0; i < n; ++i) {
        if (events[static_cast<std::size_t>(i)] != 1) continue;
        int bits = 0;
        std::int64_t j = i + 1;
        for (;;) {
            if (j == n) return;
            std::uint8_t& code = events[static_cast<std::size_t>(j)];
            if (code == 2) break;
            if (code != 0 && code != 1 && ++bits == 9) {
                if (code != 3 && code != 4) break;
                code = code == 4 ? 16 : 15;
                bits = 0;
                i = j;
            }
            ++j;
            if (j < n && events[static_cast<std::size_t>(j)] == 1) break;
        }
        // The bits from the last acknowledge to the stop are never 17 and, being less than nine, a multiple
        // of nine only when there are none: the EEPROM layer finds nothing to rename.
    }
}

/// One group, in rounds of one sample.
void RunSlowly(const GroupRecord& group, const std::array<SlowLine, 4>& lines, std::int64_t n,
               std::vector<std::uint16_t>& siWords, std::vector<std::uint16_t>& soWords, SlowSpi& result) {
    const auto& [clock, si, so, cs] = lines;
    const std::int64_t last = n - 1;
    const int active = group.CsActiveHigh != 0 ? 1 : 0;
    const int idle = 1 - active;
    int bits = 0;
    unsigned siByte = 0;
    unsigned soByte = 0;
    std::int64_t s = 0;
    std::int64_t i = 0;
    const auto word = [](std::vector<std::uint16_t>& words, std::int64_t at) -> std::uint16_t& {
        return words[static_cast<std::size_t>(at)];
    };
    while (i < last) {
        const unsigned weight = group.BitOrder == 1 ? 1U << bits : 0x80U >> bits;
        if (cs.Masked(i) == idle && cs.Masked(i + 1) == active && clock.High(i)) {
            std::int64_t k = i;
            while (k < last && clock.High(k + 1)) ++k;
            if (k == last) return;
            i = k == i ? i + 1 : k;
            continue;
        }
        if (cs.Masked(i) != active) {
            word(siWords, i) = word(soWords, i) = 0;
            ++i;
            bits = 0;
            siByte = soByte = 0;
            continue;
        }
        if (bits == 0) s = i;
        const std::int64_t e = i++;
        const bool before = clock.High(e);
        const bool after = clock.High(e + 1);
        const bool rising = group.Mode == 3 || group.Mode == 6;
        if (before == after || after != rising) continue;
        if (so.High(e)) {
            soByte += weight;
            word(soWords, e) |= 0x400;
        }
        if (si.High(e)) {
            siByte += weight;
            word(siWords, e) |= 0x400;
        }
        if (++bits < 8) continue;
        for (auto* words : {&siWords, &soWords}) {
            word(*words, s) |= 0x100;
            word(*words, e) |= 0x1000;
        }
        word(siWords, s) = static_cast<std::uint16_t>(word(siWords, s) + siByte);
        word(soWords, s) = static_cast<std::uint16_t>(word(soWords, s) + soByte);
        (result.Any ? result.Last : result.First) = static_cast<std::int32_t>(s);
        result.Any = true;
        bits = 0;
        siByte = soByte = 0;
    }
}

}  // namespace

SlowI2c DecodeSlowlyI2c(const InstrumentState& state) {
    SlowI2c result;
    for (int g = kGroupCount - 1; g >= 0; --g) {
        if (state.Groups[static_cast<std::size_t>(g)].Mode == 1) result.Group = g;
    }
    const auto& channels = state.Groups[static_cast<std::size_t>(result.Group)].Channels;
    const SlowLine scl = LineOf(state, channels[0]);
    const SlowLine sda = LineOf(state, channels[1]);
    const auto room = static_cast<std::int64_t>(state.Serial.SerialEvents.size());
    const std::int64_t n = std::min({scl.Shown, sda.Shown, room});
    result.Events.assign(state.Serial.SerialEvents.size(), 0);
    bool afterMark = false;
    std::int64_t first = n;
    std::int64_t last = -1;
    for (std::int64_t v = 0; v < n; ++v) {
        const int code = EventOfPair(scl, sda, v, n);
        if (code == 0) continue;
        const bool mark = code <= 2;
        const bool stored = (mark || !afterMark) && v + 1 < room;
        afterMark = mark;
        if (!stored) continue;
        result.Events[static_cast<std::size_t>(v + 1)] = static_cast<std::uint8_t>(code);
        first = std::min(first, v + 1);
        last = std::max(last, v + 1);
    }
    if (last >= first) {
        result.First = static_cast<std::int32_t>(first);
        result.Last = static_cast<std::int32_t>(last);
    }
    FrameSlowly(result.Events, n);
    return result;
}

SlowSpi DecodeSlowlySpi(const InstrumentState& state) {
    SlowSpi result;
    result.Si = state.Serial.SpiSI;
    result.So = state.Serial.SpiSO;
    std::size_t slot = 0;
    for (const GroupRecord& group : state.Groups) {
        if (slot == kSpiSlots || group.Mode < 3 || group.Mode > 6 || group.Size != 4) continue;
        std::array<SlowLine, 4> lines;
        auto n = static_cast<std::int64_t>(result.Si[slot].size());
        for (std::size_t role = 0; role < 4; ++role) {
            lines[role] = LineOf(state, group.Channels[role]);
            n = std::clamp<std::int64_t>(lines[role].Length, 0, n);
        }
        for (std::int64_t i = 0; i < n; ++i) {
            result.Si[slot][static_cast<std::size_t>(i)] = result.So[slot][static_cast<std::size_t>(i)] = 0;
        }
        RunSlowly(group, lines, n, result.Si[slot], result.So[slot], result);
        ++slot;
    }
    return result;
}

std::uint8_t DecodeSlowlyMicrowire(const InstrumentState& state) {
    const auto& channels = state.Groups[static_cast<std::size_t>(state.Serial.SerialGroup)].Channels;
    std::array<SlowLine, 4> lines;
    std::int64_t n = INT64_MAX;
    for (std::size_t role = 0; role < 4; ++role) {
        lines[role] = LineOf(state, channels[role]);
        n = std::min(n, lines[role].Shown);
    }
    std::int64_t v = 0;
    while (v < n && !lines[3].High(v)) ++v;
    if (v >= n) return 0;
    if (v > 0) --v;
    std::uint8_t code = 0;
    for (; v + 1 < n && lines[3].High(v + 1); ++v) {
        if (!lines[0].High(v) && lines[0].High(v + 1)) code = lines[1].High(v + 1) ? 26 : 27;
    }
    return code;
}

}  // namespace zu::test
