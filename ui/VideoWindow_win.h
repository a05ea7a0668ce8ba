#pragma once
// The video window: MCI draws the picture as its child; it keeps the picture filling it.
#include <windows.h>

#include <ocidl.h>

#include <functional>
#include <optional>
#include <string>

#include "settings/WindowPlacement.h"
#include "ui/WindowBase_win.h"

namespace lumora {

class VideoWindow final : public WindowBase<VideoWindow> {
public:
    VideoWindow() = default;

    bool Create(HWND owner);
    // Shows the window with a client area of that size, or over the whole screen.
    void ShowSized(long width, long height);
    void ShowFullScreen();
    void ShowAsIs();
    void Hide();
    // A still picture (BMP, JPEG, GIF, WMF, EMF, icon, cursor) drawn to fit; false when it cannot be read.
    bool ShowPicture(const std::string& path);
    void ClearPicture();
    // Puts the window at its kept place, or, without one, centred on the owner's screen.
    void Restore(const std::optional<WindowRect>& kept);
    // Its place out of full screen.
    WindowRect Place() const;
    // Called with the new client size whenever it changes.
    std::function<void(long width, long height)> onResize;
    // Called when the user closes the window (it only hides).
    std::function<void()> onClose;
    // While set, the screen saver's and the display power-off's system commands are refused.
    bool refuseScreenSaver = false;

    LRESULT OnMessage(UINT msg, WPARAM wp, LPARAM lp);

private:
    void LeaveFullScreen();
    void Centre();

    HWND owner_ = nullptr;
    bool fullScreen_ = false;
    int dpi_ = 96;
    bool centred_ = false;  // no kept place: centred on the owner's screen when first shown at its size
    IPicture* picture_ = nullptr;
    void PaintPicture(HDC dc);
    RECT normal_{};
};

}  // namespace lumora
