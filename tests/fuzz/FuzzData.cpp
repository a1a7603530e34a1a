#include <algorithm>
#include <string_view>

#include "FuzzEntries.h"
#include "files/DataFile.h"
#include "files/Ini.h"
#include "files/SlowRecordReader.h"
#include "support/MemoryFile.h"
#include "support/StartState.h"

namespace zu::test {
namespace {

constexpr std::int32_t kLength = 40;
constexpr std::size_t kDirection = 32;

/// A model with three short buffers, filled with known bytes; version and pod modes come from the file.
void Prepare(InstrumentState& state, const IniText& ini) {
    state.Identity.Emulated = 1;
    state.Memory.BufferLen = kLength;
    for (int pod = 0; pod < kMaxPods; ++pod) SetBufLenFull(state.Buffer.BufLen, pod, pod < 3 ? kLength : 0);
    state.Files.FileVersion = ini.Int32("File", "FileVersion").value_or(0);
    state.Pattern.DirectionBuffer.assign(kDirection, 'i');
    for (std::size_t pod = 0; pod < 3; ++pod) {
        const auto mode = ini.Number("Hardware", "Pod" + std::to_string(pod)).value_or(0);
        state.Pods.HardwarePod[pod] = static_cast<std::int8_t>(mode);
        std::fill_n(state.Buffer.Pod[pod], 2 * kLength, std::uint8_t{'s'});
        std::fill_n(state.Buffer.PatPod[pod], 2 * kLength, std::uint8_t{'p'});
    }
}

SlowRecordReader PlainReader(const InstrumentState& state) {
    SlowRecordReader slow;
    slow.HardwareType = state.Identity.HardwareType;
    slow.FileVersion = state.Files.FileVersion;
    slow.Buffers = 3;
    slow.DirectionLength = kLength;
    slow.Direction = std::string(kDirection, 'i');
    for (std::size_t pod = 0; pod < 3; ++pod) {
        slow.PodModes[pod] = state.Pods.HardwarePod[pod];
        slow.Samples[pod] = std::string(kLength, 's');
        slow.Patterns[pod] = std::string(kLength, 'p');
    }
    return slow;
}

/// Whether a buffer holds these bytes and nothing was written behind them.
bool Holds(const std::uint8_t* buffer, const std::string& bytes, char behind) {
    const std::string_view all(reinterpret_cast<const char*>(buffer), 2 * kLength);
    return all.substr(0, kLength) == bytes &&
           all.find_first_not_of(behind, kLength) == std::string_view::npos;
}

std::string Compare(const InstrumentState& state, const SlowRecordReader& slow) {
    for (std::size_t pod = 0; pod < 3; ++pod) {
        if (!Holds(state.Buffer.Pod[pod], slow.Samples[pod], 's')) return "samples differ";
        if (!Holds(state.Buffer.PatPod[pod], slow.Patterns[pod], 'p')) return "pattern differs";
    }
    const auto& direction = state.Pattern.DirectionBuffer;
    if (!std::equal(direction.begin(), direction.end(), slow.Direction.begin(), slow.Direction.end(),
                    [](std::uint8_t a, char b) { return a == static_cast<std::uint8_t>(b); })) {
        return "direction differs";
    }
    return state.Identity.Emulated == slow.Emulated ? "" : "emulation differs";
}

}  // namespace

std::string FuzzData(std::span<const std::uint8_t> bytes) {
    static const std::unique_ptr<InstrumentState> kState = StartState(16, 1);
    const std::string file(bytes.begin(), bytes.end());
    const MemoryFile onDisk(file);
    Prepare(*kState, IniText::Load(onDisk.Path()).value_or(IniText{}));
    SlowRecordReader slow = PlainReader(*kState);
    slow.Run(file);
    ScriptedHost host;
    std::vector<std::pair<int, int>> modes;
    DataFileHooks hooks;
    hooks.ApplyMemoryMode = [&modes](int mux, int mode) { modes.emplace_back(mux, mode); };
    if (ReadDataFile(*kState, host, onDisk.Path(), "ZU", false, hooks) != LoadStatus::Loaded)
        return "not loaded";
    if (host.Boxes != slow.Boxes) return "messages differ";
    if (modes != slow.Modes) return "memory modes differ";
    HardwareTypeOfFile(onDisk.Path());
    return Compare(*kState, slow);
}

}  // namespace zu::test
