#pragma once
// The lyrics display settings: the byte limit of one shown line ("Gc1Long") with its label and a
// preview that follows the slider, and the look of the two lines (colours and sizes).
#include <windows.h>

#include "ui/AudioDisplayWindow_win.h"

namespace lumora {

class LyricsSettingsDialog {
public:
    // Fields in and, after Run answered true, out.
    int lineByteLimit = 0;
    AudioDisplayWindow::LyricsLook look;

    // Modal over `owner`; true when the user confirmed.
    bool Run(HWND owner);
};

}  // namespace lumora
