#pragma once

#include <random>

#include "reference/Capture.h"

namespace zu::reference {

/// A plain triggered capture of 96 samples on some boards: two levels with a hole between them, words that
/// differ by board, levels and voltages that differ by group.
void MakeCapture(Capture& capture, int boards);
/// Pods in pattern modes, with data: 0 one pod, 1 the pods that release lines, 2 all kinds, 3 every pod.
void MakePatterns(Capture& capture, int variant);
/// Anything that settings can hold.
void MakeRandomCapture(Capture& capture, std::mt19937& random);

}  // namespace zu::reference
