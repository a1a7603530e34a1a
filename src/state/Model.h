#pragma once

#include "state/InstrumentState.h"

namespace zu {

/// The row taken in emulation for the state's series.
int SeriesDefaultRow(const InstrumentState& state);
/// Channels at full use in the present rate code, as the status bar shows them. Looks at the rate code only.
int DisplayChannelCount(const InstrumentState& state);

/// One group a pod, named "Group %d", eight channels each; the rest of each record is cleared.
void ResetGroups(InstrumentState& state);
/// Lines 0..159 the channels in style 5, lines 160..189 the groups in style 0, TimingLines = TotalChannels.
void ResetDisplayLines(InstrumentState& state);
/// Default names of the series; clears the inversion of every channel that it names.
void ResetChannelNames(InstrumentState& state);
/// Colours computed from the channel number.
void ResetChannelColors(InstrumentState& state);
/// All trigger words to "X".
void ResetTrigWords(InstrumentState& state);
/// Decode arrays and the direction buffer at DisplayLen, zeroed.
void ResizeDecodeBuffers(InstrumentState& state);
/// Decode arrays at the present DisplayLen; what is there below it stays. Directions are never cut.
void FitDecodeBuffers(InstrumentState& state);

/// Rebuilds everything that depends on HardwareType: shape, lengths, groups, buffers, lines, column widths.
/// A row without a shape keeps the previous one.
void ApplyModel(InstrumentState& state);
/// Frees all buffers, stores the row and applies it.
void ChangeModel(InstrumentState& state, int row);

/// Characters of each Statelist column from the size, format and name of its group.
void ComputeGroupWidths(InstrumentState& state);

}  // namespace zu
