#pragma once
// The sound card inspector's window: the first wave-output device's name, identifiers, driver version,
// channels, and the lists of its formats and extra functions. Read-only; its button reads the device again.
#include <windows.h>

#include "tools/SoundCard.h"  // kSoundCardButtonText and kSoundCardButtonTip for the settings dialog's button

namespace lumora {

// Modal over `owner`. With no sound card it only tells the user so, and no window opens.
void ShowSoundCardInspector(HWND owner);

}  // namespace lumora
