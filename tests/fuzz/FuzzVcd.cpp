#include <algorithm>

#include "FuzzEntries.h"
#include "files/Vcd.h"

namespace zu::test {

std::string FuzzVcd(std::span<const std::uint8_t> bytes) {
    const auto dump = ParseVcd({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    if (!dump) return {};
    if (dump->Channels.empty() || dump->Channels.size() > kMaxChannels) return "count of channels";
    if (dump->Picoseconds < 1) return "length";
    for (std::size_t pod = 0; pod < dump->Pods.size(); ++pod) {
        const auto& changes = dump->Pods[pod];
        if (!changes.empty() && pod * 8 >= dump->Channels.size()) return "changes without a signal";
        const std::size_t first = std::min(pod * 8, dump->Channels.size());
        const std::size_t named = std::min<std::size_t>(dump->Channels.size() - first, 8);
        std::int64_t time = -1;
        for (const VcdChange& change : changes) {
            if (change.Picoseconds <= time || change.Picoseconds > dump->Picoseconds) return "time";
            if (change.Value >> named != 0) return "level of a channel without a signal";
            time = change.Picoseconds;
        }
    }
    return {};
}

}  // namespace zu::test
