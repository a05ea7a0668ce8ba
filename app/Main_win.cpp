// Lumora's entry point. Start-up loads the options; the windows are built on top of this.
#include <windows.h>

#include "ui/Prompts_win.h"
#include "platform/Registry_win.h"
#include "settings/RegistryWrapper.h"
#include "settings/SettingsStore.h"

namespace {

lumora::ScreenExtent ScreenInTwips() {
    HDC dc = GetDC(nullptr);
    const int dpiX = dc ? GetDeviceCaps(dc, LOGPIXELSX) : 96;
    const int dpiY = dc ? GetDeviceCaps(dc, LOGPIXELSY) : 96;
    if (dc) ReleaseDC(nullptr, dc);
    return {static_cast<long long>(GetSystemMetrics(SM_CXSCREEN)) * 1440 / (dpiX > 0 ? dpiX : 96),
            static_cast<long long>(GetSystemMetrics(SM_CYSCREEN)) * 1440 / (dpiY > 0 ? dpiY : 96)};
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    lumora::WinRegistry registry;
    lumora::WinPrompts prompts;
    lumora::RegistryWrapper wrapper(registry, prompts);
    lumora::SettingsStore settings;
    return lumora::LoadSettings(settings, wrapper, ScreenInTwips()) ? 0 : 1;
}
