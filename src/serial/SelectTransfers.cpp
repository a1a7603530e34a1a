#include "serial/SelectTransfers.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "serial/LineScan.h"
#include "serial/SpiDecoder.h"

namespace zu {
namespace {

/// Samples of a line that were recorded and are shown.
std::int32_t Recorded(const Line& line) {
    return std::min(line.View.Shown, line.View.Stored);
}

/// Periods of an active chip select in the first `n` samples.
std::vector<SelectTransfer> Periods(const Line& select, bool activeLevel, std::int32_t n) {
    std::vector<SelectTransfer> periods;
    PairScan scan(select, select);
    for (std::int32_t i = scan.FindFirst(activeLevel, 0, n); i < n;) {
        const std::int32_t end = scan.FindFirst(!activeLevel, i, n);
        periods.push_back({.Start = i, .End = end < n ? end : -1, .Bytes = {}, .In = {}, .Out = {}});
        i = scan.FindFirst(activeLevel, end, n);
    }
    return periods;
}

char Digit(const Line& line, std::int32_t i) {
    return line.High(i) ? '1' : '0';
}

std::string Hex(std::uint8_t value) {
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), " %2.2X", static_cast<unsigned>(value));
    return text.data();
}

}  // namespace

std::vector<SelectTransfer> SpiTransfers(const InstrumentState& state, int slot) {
    const int number = SpiGroup(state, slot);
    if (number < 0) return {};
    const GroupRecord& group = state.Groups[static_cast<std::size_t>(number)];
    const Line select = BindLine(state, group.Channels[3]);
    const bool activeHigh = group.CsActiveHigh != 0;
    // An active level of 1 is seen on bit 0 of a pod only, as the decoder sees it.
    if (activeHigh && select.Mask != 1) return {};
    auto transfers = Periods(select, activeHigh, Recorded(select));
    auto byte = NextSpiByte(state, slot, 0);
    for (std::size_t t = 0; t < transfers.size(); ++t) {
        const bool isLast = t + 1 == transfers.size();
        while (byte && (isLast || byte->Start < transfers[t + 1].Start)) {
            transfers[t].Bytes.push_back(*byte);
            byte = NextSpiByte(state, slot, byte->Start + 1);
        }
    }
    return transfers;
}

std::vector<SelectTransfer> MicrowireTransfers(const InstrumentState& state) {
    const std::int32_t number = state.Serial.SerialGroup;
    if (number < 0 || number >= kGroupCount) return {};
    const auto& channels = state.Groups[static_cast<std::size_t>(number)].Channels;
    const Line clock = BindLine(state, channels[0]);
    const Line in = BindLine(state, channels[1]);
    const Line out = BindLine(state, channels[2]);
    const Line select = BindLine(state, channels[3]);
    const std::int32_t n = std::min({Recorded(clock), Recorded(in), Recorded(out), Recorded(select)});
    auto transfers = Periods(select, true, n);
    for (SelectTransfer& transfer : transfers) {
        const std::int32_t end = transfer.End < 0 ? n : transfer.End;
        for (std::int32_t i = std::max(transfer.Start, 1); i < end; ++i) {
            if (clock.High(i - 1) || !clock.High(i)) continue;
            transfer.In += Digit(in, i);
            transfer.Out += Digit(out, i);
        }
    }
    return transfers;
}

std::string SpiTransferText(const SelectTransfer& transfer) {
    std::string si = "SI";
    std::string so = "SO";
    for (const SpiByte& byte : transfer.Bytes) {
        si += Hex(byte.Si);
        so += Hex(byte.So);
    }
    return si + " | " + so;
}

std::string MicrowireTransferText(const SelectTransfer& transfer) {
    return "DI " + transfer.In + " | DO " + transfer.Out;
}

}  // namespace zu
