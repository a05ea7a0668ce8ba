#include "common/Fade.h"

#include <algorithm>

namespace lumora {

std::vector<int> FadeSteps(int from, int to, int durationMs, int tickMs) {
    from = std::clamp(from, 0, 255);
    to = std::clamp(to, 0, 255);
    std::vector<int> steps;
    if (from == to) return steps;
    const int count = std::max(1, tickMs > 0 ? durationMs / tickMs : 1);
    for (int i = 1; i <= count; ++i) steps.push_back(from + (to - from) * i / count);
    return steps;
}

}  // namespace lumora
