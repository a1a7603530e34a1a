#include "display/Digest.h"

#include "display/ByteScan.h"
#include "state/SampleView.h"

namespace zu {
namespace {

constexpr std::uint8_t kAllBits = 0xFF;

void Digest(ColumnDigest& digest, const SampleView& view, const ColumnGrid& grid) {
    const ByteRun run{view.Data, view.Stored};
    digest.Columns = grid.Columns;
    digest.First = run.At(grid.Start, kAllBits);
    digest.Changed.resize(static_cast<std::size_t>(grid.Columns));
    digest.Last.resize(static_cast<std::size_t>(grid.Columns));
    std::uint8_t before = digest.First;
    std::int64_t at = grid.Start;
    for (std::size_t column = 0; column < digest.Last.size(); ++column, at += grid.Width) {
        digest.Changed[column] = run.Changes(at, at + grid.Width, before);
        digest.Last[column] = before = run.At(at + grid.Width - 1, kAllBits);
    }
}

}  // namespace

ColumnGrid GridOf(const TimeAxis& axis, std::int64_t length) {
    ColumnGrid grid;
    grid.Width = -std::int64_t{SafeZoom(axis.Zoom)};
    const std::int64_t rest = axis.First % grid.Width;
    grid.Start = axis.First - rest;
    const std::int64_t shown = ShownSamples(axis.First, axis.Zoom, axis.Width(), length);
    grid.Columns = shown > 0 ? (rest + shown) / grid.Width : 0;
    return grid;
}

void DigestSet::Begin(const TimeAxis& axis) {
    axis_ = axis;
    made_.fill(false);
}

const ColumnDigest& DigestSet::Of(const InstrumentState& state, int pod) {
    static const ColumnDigest kNone;
    if (pod < 0 || pod >= kMaxPods) return kNone;
    const auto index = static_cast<std::size_t>(pod);
    if (!made_[index]) {
        const SampleView view = BindPod(state, pod);
        Digest(digests_[index], view, GridOf(axis_, view.Shown));
        made_[index] = true;
    }
    return digests_[index];
}

}  // namespace zu
