#pragma once

#include <QCursor>

#include "display/Events.h"
#include "state/ViewRecords.h"

namespace zu {

/// Mouse pointer for a shape; those of the cursors carry the cursor's letter and colour.
QCursor MakePointer(PointerShape shape, const CursorRecord& cursors);

}  // namespace zu
