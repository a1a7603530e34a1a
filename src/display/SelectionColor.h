#pragma once

#include <array>

#include "state/InstrumentState.h"

namespace zu {

/// Ground of selected rows: a quarter of the grid's colour over the background, so that text stays readable.
inline Rgb SelectionColor(const InstrumentState& state) {
    const Rgb ground = state.Screen.ScreenColor[1];
    const Rgb grid = state.Screen.ScreenColor[2];
    Rgb mixed = 0;
    for (int shift = 0; shift < 24; shift += 8) {
        mixed |= ((grid >> shift & 0xFF) + 3 * (ground >> shift & 0xFF)) / 4 << shift;
    }
    return mixed;
}

}  // namespace zu
