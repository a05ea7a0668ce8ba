#include "platform/Volume_win.h"

#include <windows.h>
#include <mmsystem.h>

namespace lumora {

void WinVolume::SetLevel(int level) {
    if (level < 0) level = 0;
    if (level > 20) level = 20;
    const DWORD channel = static_cast<DWORD>(level) * 0xFFFF / 20;
    waveOutSetVolume(nullptr, channel | (channel << 16));
}

}  // namespace lumora
