#pragma once
// The alpha ramp of a window that fades in or out: a short run of layered-window alpha values, one
// for each tick of a timer.
#include <vector>

namespace lumora {

inline constexpr int kFadeMs = 180;
inline constexpr int kFadeTickMs = 15;

// The alpha of each tick from `from` towards `to` (0-255 each, brought into range), evenly spaced and
// ending exactly at `to`; empty when there is nothing to change. At least one step, however short the time.
std::vector<int> FadeSteps(int from, int to, int durationMs = kFadeMs, int tickMs = kFadeTickMs);

}  // namespace lumora
