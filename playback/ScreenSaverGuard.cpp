#include "playback/ScreenSaverGuard.h"

#include "settings/OptionNames.h"
#include "settings/SettingsStore.h"

namespace lumora {

void ScreenSaverGuard::Update(bool playing) {
    const bool on = playing && settings_.IsOn(opt::kStopScreenSaver);
    if (on == on_) return;
    on_ = on;
    power_.KeepDisplayOn(on);
}

}  // namespace lumora
