#pragma once

#include <cstdint>
#include <string>

#include "display/Canvas.h"
#include "display/Events.h"
#include "display/StateListLayout.h"
#include "state/InstrumentState.h"

namespace zu {

/// What the Statelist looks like apart from the state.
struct StateListGeom {
    std::int32_t Width = 0;  ///< client pixels
    std::int32_t Height = 0;
    std::int64_t SelectFirst = 0;  ///< selected samples; none when First is not below End
    std::int64_t SelectEnd = 0;
};

/// What a paint of the Statelist tells its window.
struct StateListResult {
    std::string Title;
    ScrollRange Horizontal;
    ScrollRange Vertical;
    std::int32_t Rows = 0;  ///< whole rows, the header among them
};

/// Paints the whole list. The state stays as it is.
StateListResult PaintStateList(const InstrumentState& state, const StateListGeom& geom, Canvas& canvas);

}  // namespace zu
