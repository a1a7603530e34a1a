#pragma once

#include <array>

#include "state/CaptureBuffer.h"
#include "state/CaptureRecords.h"
#include "state/FileRecords.h"
#include "state/InstrumentRecords.h"
#include "state/ViewRecords.h"

namespace zu {

/// The one record of what the program knows. One instance, passed by reference, edited directly; whoever
/// changes something redraws by an explicit call. The initial values are those that need no model; core's
/// InitDefaults sets the rest.
struct InstrumentState {
    CommandOptions Command;
    IdentityRecord Identity;
    ShapeRecord Shape;
    ClockRecord Clock;
    MemoryRecord Memory;
    PodRecord Pods;
    CaptureRecord Capture;
    TriggerRecord Trigger;
    CursorRecord Cursors;
    WindowRecord Windows;
    TimingRecord Timing;
    StateListRecord StateList;
    ScreenRecord Screen;
    ChannelRecord Channels;
    std::array<GroupRecord, kGroupCount> Groups;
    SerialRecord Serial;
    SearchRecord Search;
    PrintRecord Print;
    PatternRecord Pattern;
    FileRecord Files;
    TranslateRecord Translate;
    CaptureBuffer Buffer;
};

}  // namespace zu
