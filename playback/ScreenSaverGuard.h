#pragma once
// "在播放器正在播放的时，停止屏幕保护程序。（播放结束时会恢复）": while a file plays (not paused, not
// stopped) and the option is on, the display stays on; otherwise the system's idle timers run as before.
// The option is read at every update, so a change in the settings dialog counts from the next one.
#include "ports/DisplayPower.h"

namespace lumora {

class SettingsStore;

class ScreenSaverGuard {
public:
    ScreenSaverGuard(const SettingsStore& settings, DisplayPower& power) : settings_(settings), power_(power) {}
    // After every change of the playback state (and on the progress ticks); tells the port only changes.
    void Update(bool playing);

private:
    const SettingsStore& settings_;
    DisplayPower& power_;
    bool on_ = false;
};

}  // namespace lumora
