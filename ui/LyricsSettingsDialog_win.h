#pragma once
// The lyrics display settings: the byte limit of one shown line ("Gc1Long") with its label and a
// preview that follows the slider, and the look of the two lines (colours and sizes).
#include <windows.h>

#include "mediainfo/LyricsLook.h"
#include "ui/WindowBase_win.h"

namespace lumora {

class LyricsSettingsDialog final : public WindowBase<LyricsSettingsDialog> {
public:
    // Fields in and, after Run answered true, out.
    LyricsDisplaySettings settings;

    // Modal over `owner`; true when the user confirmed.
    bool Run(HWND owner);

    INT_PTR OnDialogMessage(UINT msg, WPARAM wp, LPARAM lp);

private:
    void OnInit();
    void ShowLimit();
    bool PickColour(std::uint32_t& colour);
    void PickPicture();
    void Confirm();

    LyricsDisplaySettings edited_;  // what the dialog shows; copied out on OK
    COLORREF custom_[16] = {};
};

}  // namespace lumora
