#include "serial/MicrowireDecoder.h"

#include <algorithm>
#include <array>

#include "serial/EventCodes.h"
#include "serial/LineScan.h"

namespace zu {

std::uint8_t DecodeMicrowire(InstrumentState& state) {
    SerialRecord& serial = state.Serial;
    if (serial.SerialGroup < 0 || serial.SerialGroup >= kGroupCount) return event::kNone;
    const auto& channels = state.Groups[static_cast<std::size_t>(serial.SerialGroup)].Channels;
    const Line clock = BindLine(state, channels[0]);
    const Line dataIn = BindLine(state, channels[1]);
    const Line dataOut = BindLine(state, channels[2]);
    const Line select = BindLine(state, channels[3]);
    const std::int32_t n =
        std::min({clock.View.Shown, dataIn.View.Shown, dataOut.View.Shown, select.View.Shown});
    std::fill(serial.SerialEvents.begin(), serial.SerialEvents.end(), event::kNone);
    serial.SerialFirst = serial.SerialLast = 0;

    std::uint8_t code = event::kNone;
    const std::int32_t selected = PairScan(select, select).FindFirst(true, 0, n);
    // The sample before the select counts, so that a clock edge at that very sample is a bit.
    for (std::int32_t v = std::max(selected - 1, 0); v < n - 1 && select.High(v + 1); ++v) {
        if (clock.High(v) || !clock.High(v + 1)) continue;
        code = dataIn.High(v + 1) ? event::kMicrowireIn1 : event::kMicrowireIn0;
    }
    return code;
}

}  // namespace zu
