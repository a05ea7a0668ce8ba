#include "app/TimerPlan.h"

#include <algorithm>

namespace lumora {

TimerPlan PlanTimers(const TimerInputs& in) {
    TimerPlan plan;
    plan.progress = in.playing;
    plan.openDisplay = in.decoder1 && in.playing && !in.displayClosedByUser;
    plan.display = in.decoder1 && in.playing && (in.displayShown || plan.openDisplay);
    plan.volume = in.volumeChanging;
    // "L53" counts steps of 50 ms in sixths: 6, its default, is 50 ms; below 1 it is 1.
    plan.volumeIntervalMs = static_cast<unsigned>(std::max<long long>(1, in.volumeStepSetting.value_or(6)) * 50 / 6);
    return plan;
}

}  // namespace lumora
