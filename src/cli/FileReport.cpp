#include "cli/FileReport.h"

#include <algorithm>
#include <memory>

#include "cli/TerminalText.h"
#include "core/CommandTable.h"
#include "display/GroupEdits.h"
#include "display/Lines.h"
#include "files/Ini.h"
#include "state/Catalogue.h"
#include "state/Model.h"
#include "state/Rates.h"

namespace zu {
namespace {

constexpr std::array<std::string_view, 5> kPodModes{"Logic", "Pat Gen", "Pat Gen (II)", "Transfer off",
                                                    "out of use"};

template <std::size_t Size>
std::string TextOf(const std::array<std::string_view, Size>& texts, int index) {
    const bool known = index >= 0 && index < static_cast<int>(Size);
    return known ? std::string(texts[static_cast<std::size_t>(index)]) : std::string("unknown");
}

std::string MemoryModeText(int mode) {
    if (mode < 0 || mode >= kMemoryModes) return "unknown";
    // Mode 2 has no entry of its own in the menu.
    return mode == 2 ? "Small memory, doubled" : std::string(Traits(MemoryCommand(mode)).Text);
}

void AddHead(FileReport& report, const InstrumentState& state) {
    const auto ini = IniText::Load(report.File);
    if (ini) report.Saved = ini->Find("File", "DateTime").value_or("");
    report.FileVersion = state.Files.FileVersion;
    const int row = state.Identity.HardwareType;
    report.Model = {row, std::string(Model(row).ShortName), std::string(Model(row).FileLabel),
                    state.Shape.TotalChannels, state.Shape.WordsPerTrig};
    const ClockRecord& clock = state.Clock;
    report.Clock = {clock.ClockType, clock.ClockRate,
                    std::string(Trimmed(RateStatusText(clock.ClockType, clock.ClockRate))),
                    GetRateNS(clock.ClockType, clock.ClockRate)};
    const MemoryRecord& memory = state.Memory;
    report.Memory = {memory.HardwareMode, MemoryModeText(memory.HardwareMode), memory.HardwareMux,
                     memory.BufferLen, memory.DisplayLen};
}

void AddPods(FileReport& report, const InstrumentState& state) {
    for (int pod = 0; pod < std::min<int>(state.Shape.PodCount, kMaxPods); ++pod) {
        const auto p = static_cast<std::size_t>(pod);
        const int mode = state.Pods.HardwarePod[p];
        report.Pods.push_back({mode, TextOf(kPodModes, mode), GetBufLenFull(state.Buffer.BufLen, pod),
                               state.Pods.AdjAddr[p],
                               GetBufLenDisp(pod, state.Buffer.BufLen, state.Pods.AdjAddr[p])});
    }
}

void AddChannels(FileReport& report, const InstrumentState& state) {
    const auto plain = std::make_unique<InstrumentState>();
    plain->Identity = state.Identity;
    plain->Shape = state.Shape;
    ResetChannelNames(*plain);
    for (int channel = 0; channel < std::min(state.Shape.TotalChannels, kMaxChannels); ++channel) {
        const auto c = static_cast<std::size_t>(channel);
        const auto& name = state.Channels.ChannelName[c];
        report.Channels.push_back({std::string(name.View()), name != plain->Channels.ChannelName[c],
                                   state.Channels.ChannelInvert[c] != 0});
    }
}

void AddGroups(FileReport& report, const InstrumentState& state) {
    for (int number = 0; number < kGroupCount; ++number) {
        const GroupRecord& group = state.Groups[static_cast<std::size_t>(number)];
        const std::int32_t size = GroupSize(group);
        if (size == 0) continue;
        report.Groups.push_back({number,
                                 std::string(group.Name.View()),
                                 group.Mode,
                                 TextOf(kGroupModes, group.Mode),
                                 {group.Channels.begin(), group.Channels.begin() + size}});
    }
}

}  // namespace

FileReport MakeReport(CaptureSession& session, const std::string& path) {
    FileReport report;
    report.File = path;
    AddHead(report, session.State());
    AddPods(report, session.State());
    AddChannels(report, session.State());
    AddGroups(report, session.State());
    report.Records = RecordsOfFile(path);
    report.Ranges = RangesOf(report.Records);
    report.Problems = session.Host().Problems();
    return report;
}

}  // namespace zu
